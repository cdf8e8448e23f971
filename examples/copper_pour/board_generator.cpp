// Random obstacles on a plain board. The numbers come from the random engine itself, since the distributions of the
// standard library differ between machines.

#include "board_generator.h"

#include "arc_geometry.h"

#include <algorithm>
#include <random>

namespace copper_pour
{
namespace
{

constexpr double ShapesPerPlainBoard = 300.0; // more of them get a larger board, so that it doesn't fill up
constexpr double Corner = 5e6;
constexpr double HoleRadius = 1.6e6;
constexpr double Grid = 1e4; // 10 um

class CGenerator
{
public:
    explicit CGenerator(std::uint64_t seed) : m_Random(seed) {}

    CBoard Make(std::size_t shapes)
    {
        double const scale = std::clamp(std::sqrt(static_cast<double>(shapes) / ShapesPerPlainBoard), 1.0, 15.0);
        m_Width = 1e6 * std::round(100.0 * scale);
        m_Height = 1e6 * std::round(80.0 * scale);
        AddEdge();
        for (std::size_t i = 0; i < shapes; ++i)
        {
            AddObstacle();
        }
        return std::move(m_Board);
    }

private:
    /// A multiple of the grid in [low, high).
    double Length(double low, double high)
    {
        auto const steps = static_cast<std::uint64_t>((high - low) / Grid);
        return low + Grid * static_cast<double>(m_Random() % steps);
    }

    std::uint64_t Below(std::uint64_t count) { return m_Random() % count; }

    bool IsOnBoard(CPoint const & point) const
    {
        return point.x > 1e6 && point.x < m_Width - 1e6 && point.y > 1e6 && point.y < m_Height - 1e6;
    }

    CPoint Anywhere() { return {Length(2e6, m_Width - 2e6), Length(2e6, m_Height - 2e6)}; }

    void AddEdge()
    {
        CPoint const centres[] = {{Corner, Corner},
                                  {m_Width - Corner, Corner},
                                  {m_Width - Corner, m_Height - Corner},
                                  {Corner, m_Height - Corner}};
        CPoint const directions[] = {{-1, 0}, {0, -1}, {1, 0}, {0, 1}, {-1, 0}};
        CPoint last(0.0, m_Height - Corner);
        for (std::size_t i = 0; i < 4; ++i)
        {
            CPoint const & c = centres[i];
            COutlinePiece side;
            side.start = last;
            side.end = CPoint(c.x + Corner * directions[i].x, c.y + Corner * directions[i].y);
            COutlinePiece corner;
            corner.kind = COutlinePiece::EKind::eArc;
            corner.start = side.end;
            corner.end = CPoint(c.x + Corner * directions[i + 1].x, c.y + Corner * directions[i + 1].y);
            corner.centre = c;
            corner.isCounterClockwise = true;
            last = corner.end;
            COutlinePiece hole;
            hole.kind = COutlinePiece::EKind::eCircle;
            hole.centre = c;
            hole.start = hole.end = CPoint(c.x + HoleRadius, c.y);
            m_Board.outline.insert(m_Board.outline.end(), {hole, corner, side});
        }
    }

    void AddObstacle()
    {
        switch (Below(10))
        {
        case 0:
        case 1:
        case 2:
            return AddTrack();
        case 3:
            return AddRoundedTrack();
        case 4:
            return AddArcTrack();
        case 5:
        case 6:
            return AddDisc();
        default:
            return AddPad();
        }
    }

    /// Up to three segments from somewhere, in the directions of the eight winds.
    void AddTrack()
    {
        CObstacle track;
        track.end = Anywhere();
        track.radius = Length(1e5, 3e5);
        std::uint64_t wind = Below(8);
        for (int i = 0; i < 3; ++i)
        {
            double const length = Length(1e6, 6e6);
            static constexpr int dx[] = {1, 1, 0, -1, -1, -1, 0, 1};
            static constexpr int dy[] = {0, 1, 1, 1, 0, -1, -1, -1};
            CPoint const next(track.end.x + dx[wind] * length, track.end.y + dy[wind] * length);
            wind = (wind + 7 + Below(3)) % 8;
            if (!IsOnBoard(next)) continue;
            track.start = track.end;
            track.end = next;
            m_Board.obstacles.push_back(track);
        }
    }

    /// A segment, an arc that goes on smoothly, and a segment again: on whole nanometres, as boards store them.
    void AddRoundedTrack()
    {
        double const heading = 45.0 * static_cast<double>(Below(8));
        double const turn = (Below(2) == 0 ? 1.0 : -1.0) * (Below(2) == 0 ? 45.0 : 90.0);
        double const turnRadius = Length(1e6, 4e6);
        CPoint const middle(Length(15e6, m_Width - 15e6), Length(15e6, m_Height - 15e6));
        CPoint const corner = Whole(Ahead(middle, heading, Length(1e6, 6e6)));
        CPoint const centre = Ahead(corner, heading + (turn > 0.0 ? 90.0 : -90.0), turnRadius);
        CObstacle track;
        track.radius = Length(1e5, 3e5);
        track.start = middle;
        track.end = corner;
        m_Board.obstacles.push_back(track);
        track.kind = CObstacle::EKind::eArcTrack;
        track.start = corner;
        track.end = Whole(Turned(corner, centre, turn));
        track.centre = centre;
        track.isCounterClockwise = turn > 0.0;
        m_Board.obstacles.push_back(track);
        track.kind = CObstacle::EKind::eStadium;
        track.start = track.end;
        track.end = Whole(Ahead(track.start, heading + turn, Length(1e6, 6e6)));
        m_Board.obstacles.push_back(track);
    }

    static CPoint Ahead(CPoint const & from, double degrees, double distance)
    {
        return Turned(CPoint(from.x + distance, from.y), from, degrees);
    }

    static CPoint Whole(CPoint const & point) { return {Round(point.x), Round(point.y)}; }

    void AddArcTrack()
    {
        CObstacle track;
        track.kind = CObstacle::EKind::eArcTrack;
        track.centre = CPoint(Length(10e6, m_Width - 10e6), Length(10e6, m_Height - 10e6));
        track.start = CPoint(track.centre.x + Length(2e6, 8e6), track.centre.y + Length(-3e6, 3e6));
        track.end = Turned(track.start, track.centre, 30.0 + 15.0 * static_cast<double>(Below(17)));
        track.isCounterClockwise = true;
        track.radius = Length(1e5, 3e5);
        m_Board.obstacles.push_back(track);
    }

    void AddDisc()
    {
        CObstacle disc;
        disc.start = disc.end = Anywhere();
        disc.radius = Length(3e5, 8e5);
        m_Board.obstacles.push_back(disc);
    }

    void AddPad()
    {
        CObstacle pad;
        pad.kind = CObstacle::EKind::eRoundRect;
        pad.centre = Anywhere();
        pad.width = Length(5e5, 3e6);
        pad.height = Length(5e5, 2e6);
        pad.radius = Below(2) == 0 ? 0.0 : 0.25 * std::min(pad.width, pad.height);
        pad.angle = Pi / 12.0 * static_cast<double>(Below(4) == 0 ? Below(12) : 0);
        m_Board.obstacles.push_back(pad);
    }

    std::mt19937_64 m_Random;
    double m_Width = 0.0;
    double m_Height = 0.0;
    CBoard m_Board;
};

} // namespace

CBoard GenerateBoard(std::size_t shapes, std::uint64_t seed)
{
    CBoard board = CGenerator(seed).Make(shapes);
    board.name = "a board made up with seed " + std::to_string(seed);
    return board;
}

} // namespace copper_pour
