// Polygons as data: how outlines are built and closed, walked, wound, asked about points and each other; areas.
#include <gtest/gtest.h>

#include <cmath>

#include "support/builders.h"
#include "support/test_access.h"

namespace geometry
{
namespace
{

using test::Disc;
using test::Line;
using test::Point;
using test::Rect;
using test::RectLine;
using test::WithHole;

constexpr double pi = 3.141592653589793;

TEST(Polygon, RefusedObjectsStayWithTheCaller)
{
    auto const onePoint = Line({{0, 0}});
    auto const gap = Line({{5, 5}, {6, 6}});
    CPolygon polygon;
    for (CPathObjectBase* refused :
         {static_cast<CPathObjectBase*>(onePoint.get()), static_cast<CPathObjectBase*>(nullptr)})
    {
        CTestAccess::AppendPathObject(polygon, refused);
        EXPECT_TRUE(polygon.GetOutline().empty());
    }
    CTestAccess::AppendPathObject(polygon, Line({{0, 0}, {1, 0}, {1, 1}}).release());
    CTestAccess::AppendPathObject(polygon, gap.get());
    ASSERT_EQ(polygon.GetOutline().size(), 1U);
    EXPECT_FALSE(CTestAccess::EnsureValidPolygon(polygon, false)) << "it didn't close on its own";
    EXPECT_EQ(polygon.GetOutline().size(), 2U);
    EXPECT_TRUE(CTestAccess::EnsureValidPolygon(polygon, false));
    EXPECT_EQ(polygon.GetArea(), 0.5);
}

TEST(Polygon, AreaIsExactOnArcsWhereverTheyLie)
{
    double const far = 1e6;
    struct TCase
    {
        char const* name;
        CPolygon polygon;
        double area;
    };
    CPathObjectBase* lens[] = {new CPathObjectArc({0.6, 0.8}, {0.6, -0.8}, {0, 0}, false),
                               new CPathObjectArc({0.6, -0.8}, {0.6, 0.8}, {1.2, 0}, false)};
    double const angle = std::atan2(0.8, 0.6);
    CPathObjectBase* flat[] = {new CPathObjectArc({1e-3, 0}, {-1e-3, 0}, {0, -1e3}, true, -1.0)};
    double const sweep = 2e-6 * (1.0 + 1e-12 / 6.0); // 2 asin(1e-6), the radius being sqrt(1e6 + 1e-6)
    TCase const cases[] = {
        {"disc", Disc(0, 0, 3), 9 * pi},
        {"disc far away", Disc(far, -far, 3), 9 * pi},
        {"ring", WithHole(Disc(far, 0, 2), Disc(far, 0, 1)), 3 * pi},
        {"lens", CPolygon(std::begin(lens), std::end(lens)), 2 * (angle - std::sin(angle) * std::cos(angle))},
        {"flat arc on its chord", CPolygon(std::begin(flat), std::end(flat)), 1e6 * sweep * sweep * sweep / 12.0},
        {"empty", CPolygon(), 0.0},
    };
    for (TCase const & c : cases)
    {
        double const tolerance = std::string(c.name).find("far") != std::string::npos ? 1e-9 : 1e-12;
        EXPECT_NEAR(c.polygon.GetArea(), c.area, tolerance * c.area) << c.name;
    }
}

TEST(VertexIterator, WalksBothWaysOverJoinsTwice)
{
    CPathObjectBase* objects[] = {Line({{0, 0}, {1, 0}, {1, 1}}).release(), Line({{1, 1}, {0, 1}, {0, 0}}).release()};
    CPolygon const polygon(std::begin(objects), std::end(objects));
    std::vector<Point> forward;
    for (auto it = polygon.GetVerticesBegin(); it != polygon.GetVerticesEnd(); ++it)
    {
        forward.push_back(*it);
    }
    ASSERT_EQ(forward.size(), 6U);
    auto it = polygon.GetVerticesEnd();
    for (std::size_t i = forward.size(); i-- > 0;)
    {
        EXPECT_EQ(*--it, forward[i]);
    }
    EXPECT_TRUE(--it == polygon.GetVerticesBegin()) << "the walk stays at the first vertex";
    EXPECT_EQ((it++)->x, 1.0) << "the postfix step gives the iterator after it";

    CPolygon::TConstVertexIterator nothing(nullptr, false);
    EXPECT_TRUE(++nothing == CPolygon::TConstVertexIterator(nullptr, true));
    EXPECT_FALSE(nothing == polygon.GetVerticesEnd());
    CPolygon const empty;
    EXPECT_TRUE(empty.GetVerticesBegin() == empty.GetVerticesEnd());
}

TEST(Winding, HolesTurnAlongAndAnswersStay)
{
    CPolygon polygon = WithHole(Rect(0, 0, 4, 4), Rect(1, 1, 2, 2));
    EXPECT_EQ(CTestAccess::GetWinding(polygon), CPolygon::eWindingPositive);
    EXPECT_EQ(CTestAccess::GetWinding(*polygon.GetHoles()[0]), CPolygon::eWindingNegative);
    CTestAccess::ReverseWinding(polygon);
    EXPECT_EQ(CTestAccess::GetWinding(polygon), CPolygon::eWindingNegative);
    EXPECT_EQ(CTestAccess::GetWinding(*polygon.GetHoles()[0]), CPolygon::eWindingPositive);
    EXPECT_EQ(CTestAccess::GetWinding(CPolygon(polygon.GetOutline()[0]->Clone())), CPolygon::eWindingNegative)
        << "computed anew it is the same";
    EXPECT_TRUE(polygon.PointInPolygon(3, 3));
    EXPECT_FALSE(polygon.PointInPolygon(1.5, 1.5));
    CPolygon const line(Line({{0, 0}, {1, 0}, {2, 0}}).release());
    EXPECT_EQ(CTestAccess::GetWinding(line), CPolygon::eWindingPositive) << "no area counts as positive";
}

TEST(Containment, LeftAndLowerSidesAreInside)
{
    CPolygon const square = Rect(0, 0, 1, 1);
    EXPECT_TRUE(square.PointInPolygon(0.5, 0.5) && square.PointInPolygon(0.5, 0.0) && square.PointInPolygon(0.0, 0.5));
    EXPECT_FALSE(square.PointInPolygon(0.5, 1.0) || square.PointInPolygon(1.0, 0.5) || square.PointInPolygon(1.1, 0.5));
    CPolygon const holed = WithHole(Rect(0, 0, 4, 4), Rect(1, 1, 2, 2));
    EXPECT_FALSE(holed.PointInPolygon(1.0, 1.5)) << "the left side of a hole belongs to the hole";
    EXPECT_TRUE(holed.PointInPolygon(2.0, 1.5));
    EXPECT_TRUE(holed.PolygonInPolygon(Rect(1.2, 1.2, 1.8, 1.8))) << "holes aren't looked at";
    EXPECT_FALSE(holed.PolygonInPolygon(CPolygon()) || CPolygon().PolygonInPolygon(holed));
}

} // namespace
} // namespace geometry
