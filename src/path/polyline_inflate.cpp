// Inflating a polyline: a rounded rectangle around each segment, turned into its direction, and all of them merged.
#include <geometry/path/path_object_polyline.h>

#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "path/segment_kernels.h"
#include "polygon/band.h"

namespace geometry
{

namespace
{

constexpr double HalfPi = 1.5707963267948966;
constexpr double Pi = 3.141592653589793;
constexpr double ThreeHalvesPi = 4.71238898038469;

/// Direction from the first point to the second, in radians from -pi/2 to 3 pi/2.
double AngleOfSegment(double const & x1, double const & y1, double const & x2, double const & y2)
{
    if (x1 == x2)
    {
        return y2 > y1 ? HalfPi : ThreeHalvesPi;
    }
    if (y1 == y2)
    {
        return x1 > x2 ? Pi : 0.0;
    }
    double const slope = (y2 - y1) / (x2 - x1);
    return x2 > x1 ? std::atan(slope) : std::atan(slope) + Pi;
}

/// The points within `distance` of a segment, and up to half a percent beyond, which makes up for the chords that stand
/// for an arc where an outline is walked vertex by vertex. A sloped segment is laid flat about its middle first.
std::unique_ptr<CPolygon> InflateSegment(TPoint<double> const & a, TPoint<double> const & b, double distance)
{
    CBoundingRect<double> rect(a, b);
    double angle = 0.0;
    if (a.x != b.x && a.y != b.y)
    {
        angle = AngleOfSegment(a.x, a.y, b.x, b.y);
        TPoint<double> const c = Midpoint(a, b);
        double const length = std::sqrt(SquareDistance(a, b));
        rect = CBoundingRect<double>(TPoint<double>(c.x - length * 0.5, c.y), TPoint<double>(c.x + length * 0.5, c.y));
    }
    double const d = CPathObjectArc::CalculateMinRadius(distance);
    rect.Inflate(d);
    return std::unique_ptr<CPolygon>(CPathObjectPolyline::RoundRectAsPolygon(rect, d, angle));
}

} // namespace

CPolygon* CPathObjectPolyline::GetInflatePolygon(double const & distance) const
{
    if (!(distance > 0.0))
    {
        return nullptr;
    }
    OwningPolygonVector bands;
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        // the disc around a repeated vertex is the round end of its neighbour, unless it is all there is
        bool const isPoint = IsExactlyEqual(m_Points[i - 1], m_Points[i]);
        if (!isPoint || (i + 1 == m_Points.size() && bands.empty()))
        {
            PushPolygon(bands, InflateSegment(m_Points[i - 1], m_Points[i], distance));
        }
    }
    if (bands.empty())
    {
        return nullptr;
    }
    std::unique_ptr<CPolygon> last = TakePolygon(bands, bands.size() - 1);
    if (bands.empty())
    {
        return last.release();
    }
    return UniteBand(*last, PolygonRange(bands.begin(), bands.end())).release();
}

} // namespace geometry
