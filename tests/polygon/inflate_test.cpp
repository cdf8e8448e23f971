// Growing and shrinking: closed forms, and the distances from the result to the tracks that it was made from.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iostream>

#include "support/builders.h"
#include "support/shape_generators.h"

namespace geometry::test
{
namespace
{

using Tracks = std::vector<CPathObjectBase const*>;
double const pi = std::acos(-1.0);
double const segmentFactor = 1.0 / std::cos(pi / 32.0); // how much wider than asked for the bands of segments are

Tracks TracksOf(PolygonVector const & polygons)
{
    Tracks tracks;
    for (CPolygon const* polygon : polygons)
    {
        tracks.insert(tracks.end(), polygon->GetOutline().begin(), polygon->GetOutline().end());
        Tracks const ofHoles = TracksOf(polygon->GetHoles());
        tracks.insert(tracks.end(), ofHoles.begin(), ofHoles.end());
    }
    return tracks;
}

/// `shape` is `region` (null: nothing) grown or shrunk by `amount`, or up to `amount * factor`: judged by vertices,
/// chord points and middles of its boundary, and by the membership of points anywhere.
bool IsInflated(PolygonVector const & shape, Tracks const & tracks, CPolygon const* region, double amount,
                double factor, CShapeGenerator & random)
{
    auto distanceOf = [&](Point p, double square = 1e300, Point closest = {})
    {
        for (CPathObjectBase const* track : tracks)
            square = std::min(square, track->SquareDistanceToPoint(p.x, p.y, closest));
        return std::sqrt(square);
    };
    double const d = std::fabs(amount);
    auto isAtDistance = [&](double x) { return x > d - 0.05 && x < d * factor + 0.05; }; // arcs: known to 0.03
    CBoundingRect<double> rect;
    for (CPathObjectBase const* track : tracks)
        rect.Include(track->GetBoundingRect());
    for (int k = 0; k < 40; ++k)
    {
        Point const p(random.Real(rect.minX - d, rect.maxX + d), random.Real(rect.minY - d, rect.maxY + d));
        double const distance = distanceOf(p);
        bool const isInside = region != nullptr && region->PointInPolygon(p.x, p.y);
        bool const isMember = amount > 0 ? isInside || distance < d : isInside && distance > d;
        auto covers = [&](CPolygon const* polygon) { return polygon->PointInPolygon(p.x, p.y); };
        if (!isAtDistance(distance) && std::any_of(shape.begin(), shape.end(), covers) != isMember) return false;
    }
    for (CPathObjectBase const* object : TracksOf(shape))
    {
        std::vector<Point> points = Vertices(*object);
        points.push_back(object->GetInbetweenPoint());
        if (!std::all_of(points.begin(), points.end(), [&](Point p) { return isAtDistance(distanceOf(p)); }))
            return false;
    }
    return true;
}

bool Covers(CPolygon const & cover, CPolygon const & polygon, CShapeGenerator & random)
{
    CBoundingRect<double> const & rect = polygon.GetBoundingRect();
    for (int k = 0; k < 100; ++k)
    {
        Point const p(random.Real(rect.minX, rect.maxX), random.Real(rect.minY, rect.maxY));
        if (polygon.PointInPolygon(p.x, p.y) && !cover.PointInPolygon(p.x, p.y)) return false;
    }
    return true;
}

TEST(Inflate, ClosedForms)
{
    double const d = 100.0 * segmentFactor;
    CPolygon const plate = Rect(0, 0, 1000, 1000);
    CPolygon const holed = WithHole(plate, Rect(400, 400, 600, 600));
    auto const dumbbell = MakePolygon(ParseShape("M 0,0 L 9,0 9,4 15,4 15,0 24,0 24,9 15,9 15,4.1 9,4.1 9,9 0,9 Z"));
    struct TCase
    {
        CPolygon polygon;
        double amount;
        std::size_t count, holes;
        double area;
    };
    TCase const cases[] = {{plate, -600, 0, 0, 0},
                           {holed, 100, 1, 0, 1e6 + 4000 * d + pi * d * d}, // the hole closes
                           {holed, -100, 1, 1, (1000 - 2 * d) * (1000 - 2 * d) - 4e4 - 800 * d - pi * d * d},
                           {*dumbbell, -0.2, 2, 0, 2 * (9 - d / 250) * (9 - d / 250)}, // the neck goes
                           {holed, std::nan(""), 1, 1, 96e4}};
    for (TCase const & c : cases)
    {
        OwningPolygonVector result;
        plate.GetInflatedPolygon(result, 0.0); // adds copies, which the next call deletes
        plate.GetInflatedPolygon(result, 0.0);
        EXPECT_EQ(TotalArea(result), 2e6);
        c.polygon.GetInflatedPolygon(result, c.amount);
        ASSERT_EQ(result.size(), c.count) << c.amount;
        EXPECT_NEAR(TotalArea(result), c.area, 1e-4 * c.area) << c.amount;
        EXPECT_EQ(c.count == 0 ? 0 : result[0]->GetHoles().size(), c.holes) << c.amount;
    }
}

TEST(Inflate, BandOfAnArcIsTheTrackWidenedByTheDistance)
{
    CShapeGenerator random(7);
    for (int i = 0; i < 1200; ++i)
    {
        double const sweeps[] = {random.Real(0.1, 6.2), pi, random.Real(0.02, 0.05), random.Real(6.2, 6.28)};
        double const r = random.Real(1000, 20000);
        double const angle = random.Real(0, 2 * pi);
        double const end = angle + sweeps[i % 4];
        Point const centre(random.Real(-1e4, 1e4), random.Real(-1e4, 1e4));
        Point const a(centre.x + r * std::cos(angle), centre.y + r * std::sin(angle));
        Point const b(centre.x + r * std::cos(end), centre.y + r * std::sin(end));
        // any; to the centre; the round ends just touch
        double const distances[] = {r * random.Real(0.02, 3), r, std::hypot(a.x - b.x, a.y - b.y) / 2};
        double const d = distances[i % 3];
        CPathObjectArc const arc(i % 8 < 4 ? a : b, i % 8 < 4 ? b : a, centre, i % 8 < 4);
        OwningPolygonVector band;
        band.push_back(arc.GetInflatePolygon(d));
        EXPECT_TRUE(IsInflated(band, {&arc}, nullptr, d, 1, random)) << r << ' ' << d << ' ' << angle << ' ' << end;
    }
    CPathObjectArc point;
    point.SetArc({9, 0}, {9, 0}, {0, 0}, {9, 0}, 9);
    EXPECT_NEAR(std::unique_ptr<CPolygon>(point.GetInflatePolygon(1000.0))->GetArea(), pi * 1e6, 1e-6) << "no ring";
}

TEST(Inflate, RandomPolygonsKeepTheDistance)
{
    int failures = 0;
    CShapeGenerator random(11);
    for (int i = 0; i < 2400; ++i)
    {
        Shape const shape = i % 8 < 4 ? random.Any() : random.Holed();
        auto const polygon = MakePolygon(shape);
        double const amount = (i % 2 == 0 ? 1024.0 : random.Real(20, 3000)) * (i % 4 < 2 ? 1 : -1);
        OwningPolygonVector result;
        polygon->GetInflatedPolygon(result, amount);
        bool isRight = IsInflated(result, TracksOf({polygon.get()}), polygon.get(), amount, segmentFactor, random);
        if (amount > 0 && i % 16 < 4 && isRight)
        {
            OwningPolygonVector again; // grown, and shrunk by as much, it covers what it was
            result[0]->GetInflatedPolygon(again, -amount / segmentFactor);
            isRight = again.size() == 1 && Covers(*again[0], *polygon, random);
        }
        if (!isRight)
        {
            ++failures;
            std::cout << "wrong: by " << amount << ": " << PrintShape(shape) << '\n';
        }
    }
    EXPECT_EQ(failures, 0);
}

} // namespace
} // namespace geometry::test
