// Walks the lists of a board file: what lies on the edge becomes loose outline pieces, the copper of the layer becomes
// obstacles, and what lies there but isn't taken is counted by name. Everything else has no meaning for a pour.

#include "board_reader.h"

#include "arc_geometry.h"
#include "item_values.h"
#include "layers.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace copper_pour
{
namespace
{

class CBoardReader
{
public:
    CBoardReader(CNode const & root, std::string const & layer) : m_Root(root), m_Layers(root, layer) {}

    CBoard Read()
    {
        for (CNode const & item : m_Root.items)
        {
            if (item.isList) ReadItem(item);
        }
        return std::move(m_Board);
    }

private:
    void ReadItem(CNode const & item)
    {
        std::string_view const name = item.Name();
        if (name == "segment")
        {
            if (m_Layers.HasMeant(item)) ReadSegment(item);
        }
        else if (name == "arc")
        {
            if (m_Layers.HasMeant(item)) ReadTrackArc(item);
        }
        else if (name == "via")
        {
            ReadVia(item);
        }
        else if (name == "module" || name == "footprint")
        {
            ReadFootprint(item);
        }
        else if (name != "layers")
        {
            ReadDrawing(item, CPlace());
        }
    }

    // --- copper ---

    void ReadSegment(CNode const & item)
    {
        CObstacle track;
        track.start = PointOf(item, "start");
        track.end = PointOf(item, "end");
        track.radius = 0.5 * PositiveLength(Need(item, "width"), 1);
        AddObstacle(item, track);
    }

    void ReadTrackArc(CNode const & item)
    {
        CPoint const middle = PointOf(item, "mid");
        CObstacle track;
        track.start = PointOf(item, "start");
        track.end = PointOf(item, "end");
        track.radius = 0.5 * PositiveLength(Need(item, "width"), 1);
        if (track.start == track.end) Refuse(item, "the ends of the arc meet");
        if (!IsFlat(track.start, middle, track.end))
        {
            track.kind = CObstacle::EKind::eArcTrack;
            track.centre = CircleCentre(track.start, middle, track.end);
            track.isCounterClockwise = Cross(track.start, middle, track.end) > 0.0;
        }
        AddObstacle(item, track);
    }

    void ReadVia(CNode const & item)
    {
        bool const isPartial = item.Word(1) == "blind" || item.Word(1) == "micro" || item.Word(1) == "buried";
        if (isPartial && !m_Layers.IsSpanned(item)) return;
        AddDisc(item, PointOf(item, "at"), 0.5 * PositiveLength(Need(item, "size"), 1));
    }

    void ReadFootprint(CNode const & item)
    {
        CPlace const place = PlaceOf(item);
        for (CNode const & part : item.items)
        {
            if (!part.isList) continue;
            if (part.Name() == "pad")
            {
                if (m_Layers.HasMeant(part)) ReadPad(part, place);
            }
            else if (part.Name() != "layer" && part.Name() != "layers")
            {
                ReadDrawing(part, place);
            }
        }
    }

    /// The angle of a pad is that on the board; its position is that in the footprint.
    void ReadPad(CNode const & item, CPlace const & footprint)
    {
        std::string_view const shape = item.Word(3);
        CNode const & size = Need(item, "size");
        double const width = LengthAt(size, 1);
        double const height = LengthAt(size, 2);
        CPlace place = PlaceOf(item);
        place.position = footprint.Apply(place.position);
        CNode const* const drill = item.Find("drill");
        if (drill != nullptr && drill->Find("offset") != nullptr)
        {
            place.position = place.Apply(PointOf(*drill, "offset"));
        }
        if (width <= 0.0 || height <= 0.0) return Skip("pad without a size");
        if (shape == "circle") return AddDisc(item, place.position, 0.5 * width);
        if (shape == "oval") return AddOval(item, place, width, height);
        if (shape == "rect") return AddRect(item, place, width, height, 0.0);
        if (shape != "roundrect") return Skip("pad of shape '" + std::string(shape) + "'");
        if (item.Find("chamfer") != nullptr) return Skip("pad with chamfers");
        double const ratio = NumberAt(Need(item, "roundrect_rratio"), 1);
        if (!(ratio >= 0.0 && ratio <= 0.5)) Refuse(item, "the corner ratio isn't between 0 and 0.5");
        double const shorter = std::min(width, height);
        AddRect(item, place, width, height, ratio == 0.5 ? 0.5 * shorter : Round(ratio * shorter));
    }

    void AddDisc(CNode const & item, CPoint const & centre, double radius)
    {
        CObstacle disc;
        disc.start = centre;
        disc.end = centre;
        disc.radius = radius;
        AddObstacle(item, disc);
    }

    void AddOval(CNode const & item, CPlace const & place, double width, double height)
    {
        double const half = 0.5 * std::fabs(width - height);
        CPoint const tip = width > height ? CPoint(half, 0.0) : CPoint(0.0, half);
        CPoint const turned = Turned(tip, CPoint(0.0, 0.0), -place.degrees);
        CObstacle oval;
        oval.start = CPoint(place.position.x - turned.x, place.position.y - turned.y);
        oval.end = CPoint(place.position.x + turned.x, place.position.y + turned.y);
        oval.radius = 0.5 * std::min(width, height);
        AddObstacle(item, oval);
    }

    void AddRect(CNode const & item, CPlace const & place, double width, double height, double radius)
    {
        bool const isUpright = std::remainder(place.degrees, 180.0) == 0.0;
        bool const isAcross = !isUpright && std::remainder(place.degrees, 90.0) == 0.0;
        CObstacle rect;
        rect.kind = CObstacle::EKind::eRoundRect;
        rect.centre = place.position;
        rect.width = isAcross ? height : width; // a quarter turn needs no sines
        rect.height = isAcross ? width : height;
        rect.radius = radius;
        rect.angle = isUpright || isAcross ? 0.0 : -std::remainder(place.degrees, 360.0) * Pi / 180.0;
        AddObstacle(item, rect);
    }

    void AddObstacle(CNode const & item, CObstacle obstacle)
    {
        bool const isRect = obstacle.kind == CObstacle::EKind::eRoundRect;
        CheckReach(item, isRect ? obstacle.centre : obstacle.start);
        CheckReach(item, isRect ? obstacle.centre : obstacle.end);
        obstacle.isHole = item.Name() == "pad" && item.Word(2) == "np_thru_hole";
        m_Board.obstacles.push_back(obstacle);
    }

    // --- the edge ---

    /// A drawing of the board or, with the prefix fp, of a footprint: on the edge, a piece of outline.
    void ReadDrawing(CNode const & item, CPlace const & place)
    {
        std::string const name(item.Name());
        if (!m_Layers.IsOnEdge(item))
        {
            if (m_Layers.HasMeant(item)) Skip(name + " on the layer");
            return;
        }
        bool const isDrawing = name.starts_with("gr_") || name.starts_with("fp_");
        std::string const kind = isDrawing ? name.substr(3) : "";
        if (kind == "line")
        {
            AddLine(item, place.Apply(PointOf(item, "start")), place.Apply(PointOf(item, "end")));
        }
        else if (kind == "rect" && item.Find("radius") == nullptr)
        {
            AddRing(item, place);
        }
        else if (kind == "arc")
        {
            item.Find("mid") != nullptr ? AddArcThrough(item, place) : AddArcByAngle(item, place);
        }
        else if (kind == "circle")
        {
            COutlinePiece & circle = AddLine(item, place.Apply(PointOf(item, "end")), CPoint());
            circle.kind = COutlinePiece::EKind::eCircle;
            circle.end = circle.start;
            circle.centre = place.Apply(PointOf(item, "center"));
            if (circle.start == circle.centre) Refuse(item, "a circle without a radius");
        }
        else
        {
            Skip(name + " on the edge");
        }
    }

    COutlinePiece & AddLine(CNode const & item, CPoint const & start, CPoint const & end)
    {
        CheckReach(item, start);
        CheckReach(item, end);
        COutlinePiece piece;
        piece.start = start;
        piece.end = end;
        piece.line = item.line;
        m_Board.outline.push_back(piece);
        return m_Board.outline.back();
    }

    void AddRing(CNode const & item, CPlace const & place)
    {
        CPoint const a = PointOf(item, "start");
        CPoint const b = PointOf(item, "end");
        CPoint const corners[] = {a, CPoint(b.x, a.y), b, CPoint(a.x, b.y), a};
        for (std::size_t i = 0; i < 4; ++i)
        {
            AddLine(item, place.Apply(corners[i]), place.Apply(corners[i + 1]));
        }
    }

    /// The newer form: both ends and a point between them.
    void AddArcThrough(CNode const & item, CPlace const & place)
    {
        CPoint const start = place.Apply(PointOf(item, "start"));
        CPoint const middle = place.Apply(PointOf(item, "mid"));
        CPoint const end = place.Apply(PointOf(item, "end"));
        if (start == end) Refuse(item, "the ends of the arc meet");
        COutlinePiece & piece = AddLine(item, start, end);
        if (IsFlat(start, middle, end)) return;
        piece.kind = COutlinePiece::EKind::eArc;
        piece.centre = CircleCentre(start, middle, end);
        piece.isCounterClockwise = Cross(start, middle, end) > 0.0;
    }

    /// The older form: `start` is the centre, `end` one end, and the angle leads to the other one, clockwise as seen.
    void AddArcByAngle(CNode const & item, CPlace const & place)
    {
        CPoint const centre = place.Apply(PointOf(item, "start"));
        CPoint const start = place.Apply(PointOf(item, "end"));
        double const degrees = NumberAt(Need(item, "angle"), 1);
        if (start == centre) Refuse(item, "an arc without a radius");
        if (!(std::fabs(degrees) <= 360.0) || degrees == 0.0) Refuse(item, "an arc that turns by no angle up to 360");
        CPoint const end = Turned(start, centre, degrees);
        COutlinePiece & piece = AddLine(item, start, CPoint(Round(end.x), Round(end.y)));
        piece.kind = std::fabs(degrees) == 360.0 ? COutlinePiece::EKind::eCircle : COutlinePiece::EKind::eArc;
        piece.centre = centre;
        piece.isCounterClockwise = degrees > 0.0;
    }

    // --- helpers ---

    static double PositiveLength(CNode const & item, std::size_t index)
    {
        double const length = LengthAt(item, index);
        if (length <= 0.0) Refuse(item, "must be greater than 0");
        return length;
    }

    /// Footprints may carry their items beyond 1 m: with sizes and clearance all numbers have to stay within 32 bits.
    static void CheckReach(CNode const & item, CPoint const & point)
    {
        if (std::max(std::fabs(point.x), std::fabs(point.y)) > 1e9) Refuse(item, "lies beyond 1 m");
    }

    void Skip(std::string const & what) { ++m_Board.skipped[what]; }

    CNode const & m_Root;
    CLayers m_Layers;
    CBoard m_Board;
};

CBoard ReadText(std::string const & text, std::string const & layer)
{
    CNode const root = ParseList(text);
    if (root.Name() != "kicad_pcb") Refuse(root, "this is no board");
    if (NumberAt(Need(root, "version"), 1) < 4) Refuse(root, "the format is older than version 4");
    return CBoardReader(root, layer).Read();
}

} // namespace

CBoard ReadBoard(std::string const & file, std::string const & layer)
{
    std::ifstream in(file, std::ios::binary);
    if (!in) throw CBoardError(file + ": can't be read");
    std::string const text(std::istreambuf_iterator<char>(in), {});
    try
    {
        CBoard board = ReadText(text, layer);
        board.name = file;
        return board;
    }
    catch (CBoardError const & error)
    {
        throw CBoardError(file + ": " + error.what());
    }
}

} // namespace copper_pour
