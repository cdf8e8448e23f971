// A band of a segment may be half a percent too wide, and its rounded ends are; nothing may be narrower. Between the
// two limits nothing is said.
#include "band.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <cstdio>

#include <geometry/arc/path_object_arc.h>

namespace trials
{

namespace
{

constexpr double Widest = 1.0050; // bands along segments: 1 / cos(pi / 32)
constexpr double Narrowest = 0.999;
constexpr double ArcTolerance = 0.07;
constexpr int RandomCount = 30;

template <typename Visit>
void ForEachEdge(TFaces const & faces, int limit, CRandom & random, Visit const & visit)
{
    double const share = faces.edgeCount > limit ? static_cast<double>(limit) / faces.edgeCount : 1.0;
    for (TFace const & face : faces.faces)
    {
        for (TRing const & ring : face)
        {
            for (TEdge const & edge : ring)
            {
                if (share == 1.0 || random.Chance(share)) visit(edge);
            }
        }
    }
}

double ToleranceOf(TFaces const & faces, double side)
{
    double const ulp = std::nextafter(faces.farthest, DBL_MAX) - faces.farthest;
    return 1e-6 * side + ArcTolerance + 400.0 * ulp;
}

TSpot SpotOf(geometry::TPoint<double> const & p, TSpot const & origin)
{
    return TSpot{p.x, p.y} - origin;
}

std::string Said(char const* what, double is, double should)
{
    char text[200];
    std::snprintf(text, sizeof text, "%s %.17g, should be %.17g", what, is, should);
    return text;
}

} // namespace

CBand::CBand(geometry::CPolygon const & polygon, double amount, CRandom random)
    : m_IsPath(false), m_Amount(amount), m_Source(ReadFaces({&polygon}, OriginOf({&polygon}))), m_InSource(m_Source),
      m_Tolerance(ToleranceOf(m_Source, std::min(m_Source.smallestSide, std::abs(amount)))), m_Random(random)
{
}

CBand::CBand(geometry::CPathObjectBase const & path, double distance, CRandom random)
    : m_IsPath(true), m_Amount(distance),
      m_Source(ReadPath(path, OriginNear(path.GetStartPoint().x, path.GetStartPoint().y))), m_InSource(TFaces()),
      m_Tolerance(ToleranceOf(m_Source, distance)), m_Random(random)
{
}

CBand::EPlace CBand::Find(TSpot const & p) const
{
    double const distance = Distance(p, m_Source);
    bool const isInside = !m_IsPath && m_InSource.Count(p) > 0;
    double const amount = std::abs(m_Amount);
    bool const isNear = distance < amount * Narrowest - m_Tolerance;
    bool const isFar = distance > amount * Widest + m_Tolerance;
    bool const isDoubtful = !m_IsPath && distance < m_Tolerance;
    if (!isNear && !isFar) return ePlaceUnclear;
    if (isDoubtful) return m_Amount > 0.0 ? ePlaceIn : ePlaceOut;
    if (m_Amount > 0.0) return isInside || isNear ? ePlaceIn : ePlaceOut;
    return isInside && isFar ? ePlaceIn : ePlaceOut;
}

std::vector<TSpot> CBand::MakeSpots(TFaces const & result) const
{
    std::vector<TSpot> spots;
    double const amount = std::abs(m_Amount);
    double const margin = 1.5 * std::max(0.0, m_Amount);
    for (int i = 0; i < RandomCount; ++i)
    {
        spots.push_back({m_Random.Real(m_Source.low.x - margin, m_Source.high.x + margin),
                         m_Random.Real(m_Source.low.y - margin, m_Source.high.y + margin)});
    }
    TSpot normal;
    ForEachEdge(m_Source, 60, m_Random,
                [&](TEdge const & edge)
                {
                    TSpot const middle = MiddleOf(edge, normal);
                    for (double const factor : {0.02, 0.5, 0.99, 1.02, 1.5})
                    {
                        spots.push_back(middle + factor * amount * normal);
                        spots.push_back(middle - factor * amount * normal);
                    }
                    TSpot const around = {std::cos(m_Random.Angle()), std::sin(m_Random.Angle())};
                    spots.push_back(edge.a + m_Random.Real(0.0, 1.2) * amount * around);
                });
    double const step = 0.0061 * amount + 3.0 * m_Tolerance;
    ForEachEdge(result, 60, m_Random,
                [&](TEdge const & edge)
                {
                    TSpot const middle = MiddleOf(edge, normal);
                    spots.push_back(middle + step * normal);
                    spots.push_back(middle - step * normal);
                });
    return spots;
}

std::string CBand::Check(Polygons const & result) const
{
    TFaces const faces = ReadFaces(result, m_Source.origin);
    TMembership<double> const covers(faces);
    for (TSpot const & spot : MakeSpots(faces))
    {
        EPlace const place = Find(spot);
        if (place == ePlaceUnclear || covers.Count(spot) == place) continue;
        int const count = TMembership<long double>(faces, 0.7).Count(spot);
        if (count == place || count != TMembership<long double>(faces, 2.2).Count(spot)) continue;
        TSpot const at = spot + m_Source.origin;
        char text[200];
        std::snprintf(text, sizeof text, "at (%.17g,%.17g) covered %d times, should be %d; %.9g from the outline", at.x,
                      at.y, count, static_cast<int>(place), Distance(spot, m_Source));
        return text;
    }
    return {};
}

std::string DescribePath(geometry::CPathObjectBase const & path, double distance)
{
    std::string line = " path";
    char text[100];
    auto const add = [&](char const* what, geometry::TPoint<double> const & p)
    {
        std::snprintf(text, sizeof text, " %s%.17g,%.17g", what, p.x, p.y);
        line += text;
    };
    if (auto const* arc = dynamic_cast<geometry::CPathObjectArc const*>(&path))
    {
        add("M ", arc->GetStartPoint());
        add(arc->IsCounterClockwise() ? "A ccw " : "A cw ", arc->GetCentre());
        add("", arc->GetEndPoint());
    }
    else
    {
        for (auto p = path.GetPointsBegin(); p != path.GetPointsEnd(); ++p)
        {
            add(p == path.GetPointsBegin() ? "M " : "", *p);
        }
    }
    std::snprintf(text, sizeof text, " distance %.17g", distance);
    return line + text;
}

namespace
{

/// The smallest distance that a few points of `a` have from `b`: never less than the true one.
double LeastSeen(TFaces const & a, TFaces const & b, bool bSolid, CRandom & random)
{
    TMembership<double> const inB(b);
    double least = DBL_MAX;
    TSpot normal;
    ForEachEdge(a, 80, random,
                [&](TEdge const & edge)
                {
                    for (TSpot const & p : {edge.a, MiddleOf(edge, normal)})
                    {
                        least = std::min(least, bSolid && inB.Count(p) > 0 ? 0.0 : Distance(p, b));
                    }
                });
    return least;
}

bool IsOn(TSpot const & p, TFaces const & faces, bool isSolid, double tolerance)
{
    return Distance(p, faces) <= tolerance || (isSolid && TMembership<double>(faces).Count(p) > 0);
}

std::string CheckPoints(geometry::CPolygon const & a, TFaces const & faces, double tolerance, CRandom & random)
{
    TMembership<double> const inside(faces);
    for (int i = 0; i < 8; ++i)
    {
        TSpot const width = faces.high - faces.low;
        TSpot const p = {faces.low.x + random.Real(-0.5, 1.5) * width.x,
                         faces.low.y + random.Real(-0.5, 1.5) * width.y};
        bool const isSolid = random.Chance(0.5);
        double const right = isSolid && inside.Count(p) > 0 ? 0.0 : Distance(p, faces);
        if (right == 0.0 && Distance(p, faces) < tolerance) continue;
        geometry::TPoint<double> closest;
        double const found =
            std::sqrt(a.SquareDistanceToPoint(p.x + faces.origin.x, p.y + faces.origin.y, isSolid, closest));
        if (!(std::abs(found - right) <= tolerance)) return Said("distance of a point", found, right);
        if (std::abs(Length(SpotOf(closest, faces.origin) - p) - right) > tolerance)
            return Said("closest point at", Length(SpotOf(closest, faces.origin) - p), right);
    }
    return {};
}

} // namespace

std::string CheckDistances(geometry::CPolygon const & a, geometry::CPolygon const & b, CScene const & scene,
                           CRandom & random)
{
    double const tolerance = scene.GetTolerance();
    TFaces const & inA = scene.GetFirst();
    TFaces const & inB = scene.GetSecond();
    for (int solid = 0; solid < 4; ++solid)
    {
        bool const aSolid = solid % 2 == 1;
        bool const bSolid = solid / 2 == 1;
        geometry::TPoint<double> onA;
        geometry::TPoint<double> onB;
        double const found = std::sqrt(a.SquareDistanceToPolygon(b, aSolid, bSolid, onA, onB));
        double const seen = std::min(LeastSeen(inA, inB, bSolid, random), LeastSeen(inB, inA, aSolid, random));
        std::string const which = "distance (solid " + std::to_string(solid) + ")";
        if (!(found <= seen + tolerance)) return Said(which.c_str(), found, seen);
        TSpot const p = SpotOf(onA, inA.origin);
        TSpot const q = SpotOf(onB, inA.origin);
        if (std::abs(Length(p - q) - found) > tolerance)
            return Said((which + " of points").c_str(), Length(p - q), found);
        if (!IsOn(p, inA, aSolid, tolerance))
            return Said((which + " first point off by").c_str(), Distance(p, inA), 0.0);
        if (!IsOn(q, inB, bSolid, tolerance))
            return Said((which + " second point off by").c_str(), Distance(q, inB), 0.0);
    }
    return CheckPoints(a, inA, tolerance, random);
}

} // namespace trials
