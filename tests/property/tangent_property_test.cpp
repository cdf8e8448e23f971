// A band that goes straight, on along an arc, and straight again, in whole coordinates: the outlines of its parts run
// along each other but for rounding, and overlap in the discs at the joints. What they cover is known in closed form.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "support/builders.h"

namespace geometry
{

using test::Point;

Point Ahead(Point const & from, double angle, double distance)
{
    return {std::round(from.x + distance * std::cos(angle)), std::round(from.y + distance * std::sin(angle))};
}

CPolygon Stadium(Point const & a, Point const & b, double r)
{
    double const f = r / std::hypot(b.x - a.x, b.y - a.y);
    Point const n((a.y - b.y) * f, (b.x - a.x) * f);
    Point const c[] = {{a.x - n.x, a.y - n.y}, {b.x - n.x, b.y - n.y}, {b.x + n.x, b.y + n.y}, {a.x + n.x, a.y + n.y}};
    CPathObjectBase* outline[] = {new CPathObjectPolyline(c[0], c[1]), new CPathObjectArc(c[1], c[2], b, true),
                                  new CPathObjectPolyline(c[2], c[3]), new CPathObjectArc(c[3], c[0], a, true)};
    return CPolygon(std::begin(outline), std::end(outline));
}

TEST(TangentBands, OverlapInTheDiscsAtTheJoints)
{
    std::mt19937 random(1);
    auto const whole = [&](int low, int high) { return std::uniform_int_distribution<int>(low, high)(random); };
    CPolygon const board = test::Rect(0, 0, 1e8, 1e8);
    for (int round = 0; round < 2000; ++round)
    {
        double const heading = whole(0, 7) * std::atan(1.0);
        double const side = whole(0, 1) * 2 - 1;
        double const turn = whole(1, 2) * std::atan(1.0) * side;
        double const r = whole(20, 60) * 1e4;
        Point const start(whole(30000000, 70000000), whole(30000000, 70000000));
        Point const joint = Ahead(start, heading, whole(2000000, 8000000));
        Point const end = Ahead(joint, heading + turn / 2, std::abs(2 * whole(1200000, 6000000) * std::sin(turn / 2)));
        double const rise = 0.5 / std::tan(turn / 2); // of the centre over the chord
        Point const centre((joint.x + end.x) / 2 - (end.y - joint.y) * rise,
                           (joint.y + end.y) / 2 + (end.x - joint.x) * rise);
        CPolygon const first = Stadium(start, joint, r);
        std::unique_ptr<CPolygon> const bend(CPathObjectArc(joint, end, centre, side > 0).GetInflatePolygon(r));
        CPolygon const last = Stadium(end, Ahead(end, heading + turn, whole(2000000, 8000000)), r);
        double const disc = r * r * std::atan(1.0) * 4;
        double const covered = first.GetArea() + bend->GetArea() + last.GetArea() - 2 * disc;
        OwningPolygonVector left;
        left.push_back(new CPolygon(board));
        for (CPolygon const* band : {&first, static_cast<CPolygon const*>(bend.get()), &last})
        {
            OwningPolygonVector pieces;
            ASSERT_TRUE(left[0]->SubtractPolygon(pieces, *band) && pieces.size() == 1);
            left.swap(pieces);
        }
        EXPECT_NEAR((board.GetArea() - test::TotalArea(left)) / disc, covered / disc, 1e-3) << round;
        EXPECT_FALSE(left[0]->PointInPolygon(joint.x, joint.y) || left[0]->PointInPolygon(end.x, end.y)) << round;
    }
}

} // namespace geometry
