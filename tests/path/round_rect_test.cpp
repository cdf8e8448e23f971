// Rounded rectangles, and what the bands of path objects do with bad numbers and without memory.
#include <gtest/gtest.h>

#include <cmath>
#include <new>

#include "support/builders.h"
#include "support/failing_allocator.h"

namespace geometry::test
{
namespace
{

TEST(RoundRect, HasTheObjectsAndTheAreaAtAnyAngle)
{
    double const cases[][4] = {{8, 4, 0, 1}, {8, 4, 1, 8}, {4, 8, 2, 4}, {8, 4, 2, 4}, {4, 4, 2, 1}};
    for (auto const & [width, height, radius, objects] : cases)
    {
        for (double const angle : {0.0, 1e-300, 0.7, -40.0})
        {
            std::unique_ptr<CPolygon const> const polygon(
                CPathObjectPolyline::RoundRectAsPolygon({-3, 5, width - 3, height + 5}, radius, angle));
            EXPECT_EQ(polygon->GetOutline().size(), objects) << "nothing was added to close it";
            EXPECT_NEAR(polygon->GetArea(), width * height - (4.0 - std::acos(-1.0)) * radius * radius, 1e-12);
            EXPECT_TRUE(polygon->PointInPolygon(width / 2 - 3, height / 2 + 5)) << "turned about its middle";
        }
    }
}

TEST(Inflate, BadNumbersAndLackOfMemoryEndWell)
{
    double const bad[] = {std::nan(""), INFINITY, 1e300, -1e300, -1.0, 0.0, 5e-324, 700.0};
    for (std::size_t i = 0; i < 64; ++i)
    {
        double const a = bad[i % 8], b = bad[i / 8];
        delete CPathObjectPolyline::RoundRectAsPolygon({a, 0, b, 1}, b, a);
        delete CPathObjectArc({a, 0.0}, {9.0, b}, {b, 1.0}, true).GetInflatePolygon(b);
        delete Line({{a, b}, {1000, b}, {5, 7}})->GetInflatePolygon(std::fabs(a));
        EXPECT_EQ(CPathObjectArc().GetInflatePolygon(a), nullptr);
        OwningPolygonVector result;
        Rect(0, 0, 1e4, i % 3 == 0 ? b : 2e4).GetInflatedPolygon(result, a);
    }
    CPolygon const square = Rect(0, 0, 1000, 1000);
    std::vector<CPathObjectBase*> objects;
    for (long allowed = 0; objects.empty() && allowed < 5000; allowed += 1 + allowed / 20)
    {
        try
        {
            CAllocationLimit const limit(allowed);
            OwningPolygonVector result;
            square.GetInflatedPolygon(result, 100.0);
            delete CPathObjectArc({0.0, 0.0}, {1.0, 1.0}, {1.0, 0.0}, true).GetInflatePolygon(30.0);
            CPathObjectPolyline::RoundRectAsPathObjects({0, 0, 9, 9}, 1.0, 0.5, objects);
        }
        catch (std::bad_alloc const &)
        {
            EXPECT_TRUE(objects.empty());
        }
    }
    EXPECT_EQ(objects.size(), 8U);
    CPolygon const owner(objects.begin(), objects.end());
}

} // namespace
} // namespace geometry::test
