// Inflating an arc: a ring sector with round ends, made of arcs again. A full circle becomes a ring or a disc. Where
// the round ends reach each other, the sector and two discs about its ends are merged.
#include <memory>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/sweep_kernels.h"
#include "polygon/band.h"
#include "polygon/outline_builder.h"

namespace geometry
{

namespace
{

std::unique_ptr<CPolygon> MakeDisc(TPoint<double> const & centre, double radius)
{
    OwnedPathObjects objects;
    objects.push_back(std::make_unique<CPathObjectArc>(centre, radius));
    return MakePolygonFrom(std::move(objects));
}

CPolygon* TakeFirst(PolygonVector & polygons)
{
    return polygons.empty() ? nullptr : TakePolygon(polygons, 0).release();
}

CPolygon* InflateCircle(TPoint<double> const & centre, double radius, double d)
{
    std::unique_ptr<CPolygon> outer = MakeDisc(centre, radius + d);
    if (!(radius > d))
    {
        return outer.release();
    }
    OwningPolygonVector ring;
    outer->SubtractPolygon(ring, *MakeDisc(centre, radius - d));
    return TakeFirst(ring);
}

/// `p` moved away from `centre` by `amount`; a negative amount may take it through the centre.
TPoint<double> MovedOutward(TPoint<double> p, TPoint<double> centre, double amount)
{
    ExtendSegment(p, centre, amount, 0.0);
    return p;
}

//            .-- Ao     The sector between the inner and the outer circle, from A to B counter-clockwise. Its straight
//          .'    |      ends get a half circle each where these stay apart.
//        Bo      A
//          '-B.  |
//             Bi-Ai     + C (to the left, about which A turns into B)
struct TSector
{
    TSector(Sweep const & sweep, double d)
        : s(sweep), hasInnerArc(!IsAlmostEqual(s.r, d)), Ai(hasInnerArc ? MovedOutward(s.A, s.C, -d) : s.C),
          Ao(MovedOutward(s.A, s.C, d)), Bi(hasInnerArc ? MovedOutward(s.B, s.C, -d) : s.C),
          Bo(MovedOutward(s.B, s.C, d))
    {
    }

    /// The path objects of the outline in order; the ends of the sector as given.
    OwnedPathObjects Outline(std::unique_ptr<CPathObjectBase> endAtA, std::unique_ptr<CPathObjectBase> endAtB) const
    {
        OwnedPathObjects objects;
        if (hasInnerArc)
        {
            objects.push_back(std::make_unique<CPathObjectArc>(Bi, Ai, s.C, false));
        }
        objects.push_back(std::move(endAtA));
        objects.push_back(std::make_unique<CPathObjectArc>(Ao, Bo, s.C, true));
        objects.push_back(std::move(endAtB));
        return objects;
    }

    Sweep s;
    bool hasInnerArc; ///< false: its radius is nothing but rounding, and the two ends meet in the centre
    TPoint<double> Ai, Ao, Bi, Bo;
};

std::unique_ptr<CPolygon> MakeSectorWithRoundEnds(TSector const & sector)
{
    return MakePolygonFrom(sector.Outline(std::make_unique<CPathObjectArc>(sector.Ai, sector.Ao, sector.s.A, true),
                                          std::make_unique<CPathObjectArc>(sector.Bo, sector.Bi, sector.s.B, true)));
}

std::unique_ptr<CPolygon> MakeSector(TSector const & sector)
{
    TPoint<double> const endAtA[] = {sector.Ai, sector.Ao};
    return MakePolygonFrom(sector.Outline(std::make_unique<CPathObjectPolyline>(endAtA, endAtA + 2),
                                          std::make_unique<CPathObjectPolyline>(sector.Bo, sector.Bi)));
}

} // namespace

CPolygon* CPathObjectArc::GetInflatePolygon(double const & distance) const
{
    if (!(distance > 0.0) || !IsValid())
    {
        return nullptr;
    }
    if (IsFullCircle())
    {
        return InflateCircle(GetCentre(), m_Radius, distance);
    }
    if (IsDegenerate())
    {
        return MakeDisc(GetStartPoint(), distance).release(); // its sector would be a ring about the centre, or nothing
    }
    TSector const sector(SweepOf(*this), distance);
    if (2.0 * distance <= DistanceBetween(GetStartPoint(), GetEndPoint()))
    {
        return MakeSectorWithRoundEnds(sector).release();
    }
    OwningPolygonVector ends;
    PushPolygon(ends, MakeDisc(GetStartPoint(), distance));
    PushPolygon(ends, MakeDisc(GetEndPoint(), distance));
    return UniteBand(*MakeSector(sector), PolygonRange(ends.begin(), ends.end())).release();
}

} // namespace geometry
