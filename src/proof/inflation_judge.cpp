// Points stand beside the middles of edges of the polygon, at parts of the distance and beyond it, and beside those of
// the result. Bands are up to half a percent wider than asked for: in between, nothing is wrong.
#include "proof/inflation_judge.h"

#include <cmath>

#include "arc/as_arc.h"
#include "proof/region_proof.h"

namespace geometry
{

namespace
{

constexpr double widest = 1.0049;   // of a band, as a part of the distance
constexpr std::size_t looks = 32;   // at least, along a ring that has as many objects
constexpr std::size_t perLook = 32; // objects, in longer ones

} // namespace

CInflationJudge::CInflationJudge(CPolygon const & polygon, double amount)
    : m_Polygon(polygon), m_Distance(std::fabs(amount)), m_IsGrown(amount > 0.0), m_Clearance(ToleranceOf({&polygon}))
{
}

bool CInflationJudge::IsContradiction(TPoint<double> const & point, PolygonVector const & result) const
{
    TPoint<double> closest;
    double const distance = std::sqrt(m_Polygon.SquareDistanceToPoint(point.x, point.y, false, closest));
    bool const isInside = m_Polygon.PointInPolygon(point.x, point.y);
    bool const isInBand = distance < m_Distance - m_Clearance;
    bool const isBeyond = distance > widest * m_Distance + m_Clearance;
    if (!(isInBand || isBeyond) || !(distance > m_Clearance))
    {
        return false;
    }
    bool const isExpected = m_IsGrown ? isInside || isInBand : isInside && isBeyond;
    std::size_t count = 0;
    for (CPolygon const* piece : result)
    {
        count += piece->GetBoundingRect().ContainsPoint(point.x, point.y) && piece->PointInPolygon(point.x, point.y);
    }
    return count != (isExpected ? 1U : 0U);
}

/// Looks at both sides of every `step`th object of the ring.
std::optional<TPoint<double>> CInflationJudge::FindBeside(CPolygon const & ring, std::size_t step, double distance,
                                                          PolygonVector const & result) const
{
    auto const & outline = ring.GetOutline();
    for (std::size_t i = step / 2; i < outline.size(); i += step)
    {
        TPoint<double> const at = outline[i]->GetInbetweenPoint();
        TPoint<double> across;
        if (CPathObjectArc const* const arc = AsArc(*outline[i]))
        {
            across = TPoint<double>(at.x - arc->GetCentre().x, at.y - arc->GetCentre().y);
        }
        else
        {
            TPoint<double> const start = outline[i]->GetStartPoint();
            across = TPoint<double>(start.y - at.y, at.x - start.x);
        }
        double const length = std::sqrt(across.x * across.x + across.y * across.y);
        for (double const side : {distance, -distance})
        {
            TPoint<double> const point(at.x + across.x / length * side, at.y + across.y / length * side);
            if (length > 0.0 && IsContradiction(point, result))
            {
                return point;
            }
        }
    }
    return std::nullopt;
}

std::optional<TPoint<double>> CInflationJudge::FindContradiction(PolygonVector const & result) const
{
    auto const findAround = [&](CPolygon const & ring, double distance)
    {
        std::size_t const count = ring.GetOutline().size();
        return FindBeside(ring, count / (looks + count / perLook) + 1, distance, result);
    };
    auto const findIn = [&](CPolygon const & polygon, double distance)
    {
        std::optional<TPoint<double>> found = findAround(polygon, distance);
        for (CPolygon const* hole : polygon.GetHoles())
        {
            found = found ? found : findAround(*hole, distance);
        }
        return found;
    };
    for (double const part : {0.6, 1.05})
    {
        if (std::optional<TPoint<double>> const found = findIn(m_Polygon, part * m_Distance))
        {
            return found;
        }
    }
    for (CPolygon const* piece : result)
    {
        if (std::optional<TPoint<double>> const found = findIn(*piece, 2.0 * m_Clearance + 0.01 * m_Distance))
        {
            return found;
        }
    }
    return std::nullopt;
}

} // namespace geometry
