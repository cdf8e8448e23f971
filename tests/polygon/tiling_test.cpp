// Tiles: their order, what they share of the polygon, and what is refused.
#include <gtest/gtest.h>

#include <cmath>

#include "support/builders.h"

namespace geometry
{

using test::Rect;

TEST(Tiling, ColumnByColumnFromTheLowerLeftCornerOfTheRectangle)
{
    CPolygon const whole = test::WithHole(Rect(1e6, -1e6, 4e6, 2e6), test::Disc(3e6, 0, 4e5)); // across a line
    OwningPolygonVector tiles;
    tiles.push_back(const_cast<CPolygon*>(&whole)); // not the operation's to delete
    whole.TilePolygon(1, tiles);
    ASSERT_EQ(tiles.size(), 4U);
    EXPECT_TRUE(tiles[1]->GetBoundingRect().minY > 9e5 && tiles[2]->GetBoundingRect().minX > 2.9e6) << "columns";
    EXPECT_NEAR(test::TotalArea(tiles), whole.GetArea(), 1.0);
}

TEST(Tiling, RefusesWhatWouldNotEnd)
{
    std::pair<CPolygon, unsigned int> const cases[] = {
        {Rect(0, 0, 9, 9), 0},     {Rect(0, 0, 9, 9), 2148}, {Rect(0, 0, HUGE_VAL, 9), 1},
        {Rect(NAN, 0, 9, NAN), 1}, {Rect(0, 0, 1e15, 9), 1}, {Rect(0, 4e22, 9, std::nextafter(4e22, HUGE_VAL)), 1}};
    for (auto const & [polygon, n] : cases)
    {
        OwningPolygonVector tiles;
        polygon.TilePolygon(n, tiles);
        EXPECT_TRUE(tiles.empty()) << n << ' ' << polygon.GetBoundingRect().maxX;
    }
}

} // namespace geometry
