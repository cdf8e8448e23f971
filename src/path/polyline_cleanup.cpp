// Removal of what a polyline doesn't need: first duplicates and spikes, then collinear vertices. Both passes work in
// place and in linear time: what is kept is packed to the front, what is still to be seen stands behind a gap.
#include <geometry/path/path_object_polyline.h>

namespace geometry
{

void CPathObjectPolyline::Cleanup(bool mayRemoveStartPoint)
{
    if (m_Points.empty())
    {
        return;
    }
    bool changed = RemoveDuplicatesAndSpikes();
    if (m_Points.size() >= 3)
    {
        changed = RemoveCollinearVertices(mayRemoveStartPoint) || changed;
    }
    if (changed)
    {
        RecalculateBoundingRect();
    }
}

bool CPathObjectPolyline::RemoveDuplicatesAndSpikes()
{
    // The path is p[0 .. kept) followed by p[todo .. n): p[kept - 1] is the previous vertex, p[todo] the current one.
    m_SegmentIndex.Clear();
    Points & p = m_Points;
    std::size_t const n = p.size();
    std::size_t kept = 1;
    std::size_t todo = 1;
    while (todo < n)
    {
        if (p[todo] == p[kept - 1])
        {
            ++todo;
        }
        else if (todo + 1 == n)
        {
            break;
        }
        else if (p[todo + 1] == p[kept - 1])
        {
            todo += 2; // there and back again
        }
        else
        {
            p[kept++] = p[todo++];
            continue;
        }
        if (kept > 1) // look again at the pair before the removal
        {
            p[--todo] = p[--kept];
        }
    }
    bool const changed = kept != todo;
    p.erase(p.begin() + static_cast<std::ptrdiff_t>(kept), p.begin() + static_cast<std::ptrdiff_t>(todo));
    return changed;
}

namespace
{

/// `point` with each coordinate that is almost that of `reference` replaced by it: slopes ignore rounding.
TPoint<double> Snap(TPoint<double> const & point, TPoint<double> const & reference)
{
    return TPoint<double>(IsAlmostEqual(point.x, reference.x) ? reference.x : point.x,
                          IsAlmostEqual(point.y, reference.y) ? reference.y : point.y);
}

/// An infinity on a vertical step, NaN on none.
double Slope(TPoint<double> const & from, TPoint<double> const & to)
{
    return (to.y - from.y) / (to.x - from.x);
}

} // namespace

bool CPathObjectPolyline::RemoveCollinearVertices(bool mayRemoveStartPoint)
{
    m_SegmentIndex.Clear();
    Points & p = m_Points;
    bool const closed = p.front() == p.back();
    TPoint<double> const first = p.front();
    if (closed)
    {
        p.pop_back();
    }
    std::size_t const n = p.size();
    // The path is p[0 .. kept) followed by p[todo .. n); p[todo] is the vertex under test. The first vertex of an
    // open path is never tested, its last vertex has no successor.
    std::size_t kept = closed ? 0 : 1;
    std::size_t todo = kept;
    TPoint<double> const before = closed ? p.back() : p.front();
    TPoint<double> last = Snap(p[todo], before);
    double slope = Slope(before, last);
    bool changed = false;
    while (todo < n && (closed || todo + 1 < n))
    {
        TPoint<double> const & successor = todo + 1 < n ? p[todo + 1] : (kept > 0 ? p[0] : p[todo]);
        TPoint<double> const next = Snap(successor, last);
        double const nextSlope = Slope(last, next);
        last = next;
        if (IsAlmostEqual(nextSlope, slope, FineUlpLimit) && (mayRemoveStartPoint || !closed || !(p[todo] == first)))
        {
            ++todo;
            changed = true;
        }
        else
        {
            p[kept++] = p[todo++];
        }
        slope = nextSlope;
    }
    p.erase(p.begin() + static_cast<std::ptrdiff_t>(kept), p.begin() + static_cast<std::ptrdiff_t>(todo));
    if (closed && !p.empty() && !(p.front() == p.back()))
    {
        TPoint<double> const start = p.front();
        p.push_back(start);
    }
    return changed;
}

} // namespace geometry
