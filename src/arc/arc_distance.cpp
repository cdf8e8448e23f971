// Distances of an arc to points, polylines and arcs: the sweep of the arc is handed to the kernels.
//
// Against a polyline the segments are walked; once a first distance is known, those outside the arc's rectangle
// inflated by it are skipped. Closest points are worked out in locals, so that a caller may pass one object twice.
#include <cfloat>
#include <cmath>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/distance_kernels.h"

namespace geometry
{

double CPathObjectArc::SquareDistanceToPoint(double x, double y, TPoint<double> & closest) const
{
    if (!IsValid())
    {
        return DBL_MAX;
    }
    TPoint<double> found;
    double const result = SquareDistanceArcPoint(SweepOf(*this), TPoint<double>(x, y), found);
    closest = found;
    return result;
}

double CPathObjectArc::SquareDistanceToPath(CPathObjectPolyline const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    double best = DBL_MAX;
    if (!IsValid())
    {
        return best;
    }
    Sweep const sweep = SweepOf(*this);
    bool const isFullCircle = IsFullCircle();
    bool isPruning = false;
    CBoundingRect<double> reach;
    PointIterator const end = other.GetPointsEnd();
    PointIterator p = other.GetPointsBegin();
    for (PointIterator q = p; p != end && ++q != end; p = q)
    {
        if (isPruning && !CBoundingRect<double>(*p, *q).Overlaps(reach))
        {
            continue;
        }
        TPoint<double> onArc;
        TPoint<double> onSegment;
        double const d = isFullCircle ? SquareDistanceCircleSegment(sweep.C, sweep.r, *p, *q, onArc, onSegment)
                                      : SquareDistanceArcSegment(sweep, *p, *q, onArc, onSegment);
        if (d < best)
        {
            best = d;
            onThis = onArc;
            onOther = onSegment;
            if (IsAlmostEqual(d, 0.0, FineUlpLimit))
            {
                return 0.0;
            }
            reach = m_BoundingRect;
            reach.Inflate(std::sqrt(best));
            isPruning = true;
        }
    }
    return best;
}

double CPathObjectArc::SquareDistanceToPath(CPathObjectArc const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    if (!IsValid() || !other.IsValid())
    {
        return DBL_MAX;
    }
    TPoint<double> out1;
    TPoint<double> out2;
    double const result = SquareDistanceArcArc(SweepOf(*this), SweepOf(other), out1, out2);
    onThis = out1;
    onOther = out2;
    return result;
}

double CPathObjectArc::SquareDistanceToPath(CPathObjectBase const & other, TPoint<double> & onThis,
                                            TPoint<double> & onOther) const
{
    return other.SquareDistanceToPath(*this, onOther, onThis);
}

} // namespace geometry
