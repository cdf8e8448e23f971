// Path objects chained into an outline, polygons told apart into outlines and holes.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "support/builders.h"
#include "support/shapes.h"

namespace geometry
{

TEST(PathSorting, AnyOrderAndDirectionOfARingGivesARing)
{
    std::mt19937 random(4);
    auto const ring = test::MakePolygon(test::ParseShape(
        "M 0,0 L 1000,0 L 1500,-500 L 8000,0 A ccw 8000,3000 8000,6000 L 4000,6000 L 0,6000 A ccw 0,3000 0,0"));
    for (int round = 0; round < 200; ++round)
    {
        CPolygon::PathObjects objects;
        for (CPathObjectBase const* object : ring->GetOutline())
        {
            objects.push_back(object->Clone());
            if (random() % 2 == 0) objects.back()->Reverse();
        }
        std::shuffle(objects.begin(), objects.end(), random);
        CPathObjectBase const* const last = objects.back();
        ASSERT_TRUE(CPolygon::SortPathObjectsForProperPolygonCreation(objects));
        EXPECT_TRUE(objects.front() == last && CPolygon(objects.begin(), objects.end()).IsCoincidentWith(*ring))
            << "round " << round;
    }
}

TEST(PathSorting, WhatIsNoChainIsDeleted)
{
    auto const line = [](double x, double x2) { return test::Line({{x, 0}, {x2, 0}}).release(); };
    CPolygon::PathObjects cases[] = {
        {}, {line(0, 1)}, {line(0, 1), line(5, 6), line(1, 0)}, {line(0, 1), line(0, 2)}, {line(2, 1), line(0, 1)}};
    for (CPolygon::PathObjects & objects : cases)
    {
        // the last one is an open chain, which isn't refused
        EXPECT_EQ(CPolygon::SortPathObjectsForProperPolygonCreation(objects), &objects == cases + 4);
        EXPECT_EQ(objects.empty(), &objects != cases + 4);
        CPolygon const owner(objects.begin(), objects.end());
    }
}

TEST(PolygonGrouping, WhatLiesInAHoleIsAnOutlineHoweverDeep)
{
    OwningPolygonVector all, outlines, holes;
    for (double i : {0., 1., 2., 3., 50.})
    {
        all.push_back(new CPolygon(test::Rect(i, i, std::abs(20 - i), std::abs(20 - i))));
    }
    PolygonVector const expected(1, all[1]);
    std::mt19937 random(1);
    for (int round = 0; round < 50; ++round)
    {
        std::shuffle(all.begin(), all.end(), random);
        CPolygon::SplitPolygonsInOutlinesAndHoles(all, outlines, holes);
        EXPECT_TRUE(all.empty() && outlines.size() == 4 && holes == expected) << "round " << round;
        AppendPolygons(all, outlines);
        AppendPolygons(all, holes);
    }
}

} // namespace geometry
