// Reads path data: a command letter, then its arguments, which may come several times over. Arcs come in as end
// points and a radius, and become arcs about a centre: the centre stands on the perpendicular through the middle of the
// chord. A gap that is left by rounding where a subpath closes is taken out, any other is closed by a segment.

#include "path_data.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace svg
{
namespace
{

constexpr double ClosingGapLimit = 1e-9; // part of the largest coordinate: what sums of relative steps may lose

bool IsSamePlace(CPoint const & a, CPoint const & b)
{
    return a.x == b.x && a.y == b.y;
}

double LargestCoordinate(CPoint const & a, CPoint const & b)
{
    return std::max({std::fabs(a.x), std::fabs(a.y), std::fabs(b.x), std::fabs(b.y)});
}

//           centre
//          /   |        half the chord and the height are the legs of a right triangle with the radius.
//     r  /     | h      The centre lies left of the chord for the small counter-clockwise arc and for the large
//      /       |        clockwise one, else right of it.
// start -----middle----- end
//         half
CPoint FindCentre(CPoint const & start, CPoint const & end, double radius, bool left)
{
    double const dx = end.x - start.x;
    double const dy = end.y - start.y;
    double const chord = std::hypot(dx, dy);
    double const half = 0.5 * chord;
    double const noise = 8.0 * std::numeric_limits<double>::epsilon() * (radius + LargestCoordinate(start, end));
    // Within the rounding of the coordinates it is a half circle, and a radius that doesn't reach grows until it is
    // one.
    double const height = radius - half > noise ? std::sqrt((radius - half) * (radius + half)) : 0.0;
    double const side = left ? height : -height;
    return {0.5 * (start.x + end.x) - side * dy / chord, 0.5 * (start.y + end.y) + side * dx / chord};
}

class CPathDataReader
{
public:
    explicit CPathDataReader(std::string_view data) : m_Data(data) {}

    std::vector<COutline> Read()
    {
        SkipSeparators();
        while (m_Position < m_Data.size())
        {
            TakeCommand(m_Data[m_Position]);
            bool more = true;
            while (more)
            {
                RunCommand();
                SkipSeparators();
                more = m_Letter != 'Z' && IsAtNumber();
                if (m_Letter == 'M') m_Letter = 'L'; // further pairs of a move draw
            }
        }
        CloseOutline();
        return std::move(m_Outlines);
    }

private:
    [[noreturn]] void Refuse(std::string const & why) const
    {
        throw CPathDataError("command " + std::string(1, m_Written) + " at character " + std::to_string(m_Begin + 1) +
                             ": " + why);
    }

    void TakeCommand(char letter)
    {
        m_Begin = m_Position;
        m_Written = letter;
        m_Relative = letter >= 'a' && letter <= 'z';
        m_Letter = m_Relative ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (std::string_view("CSQT").find(m_Letter) != std::string_view::npos) Refuse("Bezier curves are not taken");
        if (std::string_view("MLHVAZ").find(m_Letter) == std::string_view::npos) Refuse("no such command");
        if (!m_HasStarted && m_Letter != 'M') Refuse("a path begins with M");
        m_HasStarted = true;
        ++m_Position;
    }

    void RunCommand()
    {
        CPoint const origin = m_Relative ? m_Current : CPoint();
        switch (m_Letter)
        {
        case 'M':
            CloseOutline();
            m_Current = TakePoint(origin);
            m_Start = m_Current;
            break;
        case 'L':
            DrawSegment(TakePoint(origin));
            break;
        case 'H':
            DrawSegment({origin.x + TakeNumber(), m_Current.y});
            break;
        case 'V':
            DrawSegment({m_Current.x, origin.y + TakeNumber()});
            break;
        case 'A':
            TakeArc(origin);
            break;
        default:
            CloseOutline();
            break;
        }
    }

    void TakeArc(CPoint const & origin)
    {
        double const radiusX = std::fabs(TakeNumber());
        double const radiusY = std::fabs(TakeNumber());
        TakeNumber(); // turning the axes of a circle changes nothing
        bool const large = TakeFlag();
        bool const counterClockwise = TakeFlag();
        CPoint const end = TakePoint(origin);
        if (radiusX != radiusY) Refuse("elliptical arcs are not taken");
        if (radiusX == 0.0)
        {
            DrawSegment(end);
            return;
        }
        if (IsSamePlace(m_Current, end)) return; // draws nothing, as laid down for SVG

        CPiece piece;
        piece.kind = counterClockwise ? CPiece::EKind::eArcCounterClockwise : CPiece::EKind::eArcClockwise;
        piece.start = m_Current;
        piece.end = end;
        piece.centre = FindCentre(m_Current, end, radiusX, large != counterClockwise);
        m_Outline.push_back(piece);
        m_Current = end;
    }

    void DrawSegment(CPoint const & end)
    {
        if (IsSamePlace(m_Current, end)) return;
        CPiece piece;
        piece.start = m_Current;
        piece.end = end;
        m_Outline.push_back(piece);
        m_Current = end;
    }

    void CloseOutline()
    {
        double const gap = std::hypot(m_Current.x - m_Start.x, m_Current.y - m_Start.y);
        if (!m_Outline.empty() && gap <= ClosingGapLimit * LargestCoordinate(m_Current, m_Start))
        {
            m_Outline.back().end = m_Start;
        }
        else
        {
            DrawSegment(m_Start);
        }
        m_Current = m_Start;

        bool const hasArc = std::any_of(m_Outline.begin(), m_Outline.end(),
                                        [](CPiece const & piece) { return piece.kind != CPiece::EKind::eSegment; });
        if (hasArc || m_Outline.size() > 2) m_Outlines.push_back(std::move(m_Outline));
        m_Outline.clear();
    }

    CPoint TakePoint(CPoint const & origin)
    {
        double const x = TakeNumber();
        double const y = TakeNumber();
        return {origin.x + x, origin.y + y};
    }

    bool TakeFlag()
    {
        SkipSeparators();
        char const flag = m_Position < m_Data.size() ? m_Data[m_Position] : ' ';
        if (flag != '0' && flag != '1') Refuse("malformed flag");
        ++m_Position;
        return flag == '1';
    }

    double TakeNumber()
    {
        SkipSeparators();
        if (!IsAtNumber()) Refuse("malformed or missing number");
        if (m_Data[m_Position] == '+') ++m_Position;
        double value = 0.0;
        char const* const begin = m_Data.data() + m_Position;
        auto const [end, error] = std::from_chars(begin, m_Data.data() + m_Data.size(), value);
        if (error != std::errc() || !std::isfinite(value)) Refuse("malformed number");
        m_Position += static_cast<std::size_t>(end - begin);
        return value;
    }

    /// Sign, digit or point: the letters of `inf` and `nan` are no numbers here.
    bool IsAtNumber() const
    {
        std::size_t position = m_Position;
        if (position < m_Data.size() && (m_Data[position] == '+' || m_Data[position] == '-')) ++position;
        if (position < m_Data.size() && m_Data[position] == '.') ++position;
        return position < m_Data.size() && m_Data[position] >= '0' && m_Data[position] <= '9';
    }

    void SkipSeparators()
    {
        while (m_Position < m_Data.size() && std::string_view(" \t\r\n\f,").find(m_Data[m_Position]) != m_Data.npos)
        {
            ++m_Position;
        }
    }

    std::string_view m_Data;
    std::size_t m_Position = 0;
    std::size_t m_Begin = 0; ///< where the command stands
    char m_Written = ' ';    ///< its letter as written
    char m_Letter = ' ';     ///< the same as a capital; L for the further pairs of M
    bool m_Relative = false;
    bool m_HasStarted = false;
    CPoint m_Current;
    CPoint m_Start; ///< of the present subpath
    COutline m_Outline;
    std::vector<COutline> m_Outlines;
};

} // namespace

std::vector<COutline> ReadPathData(std::string_view data)
{
    return CPathDataReader(data).Read();
}

} // namespace svg
