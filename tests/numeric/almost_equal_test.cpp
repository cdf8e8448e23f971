// The laws of the tolerant comparison and of the rectangles built on it.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <limits>

#include <geometry/numeric/bounding_rect.h>

namespace geometry
{
namespace
{

constexpr double inf = std::numeric_limits<double>::infinity();

double UnitsAbove(double value, int units)
{
    for (int i = 0; i < units; ++i)
    {
        value = std::nextafter(value, inf);
    }
    return value;
}

TEST(AlmostEqual, LimitIsIncludedOnBothSidesOfAPowerOfTwoAndOfZero)
{
    for (double const base : {1.0, -1.0, 1e6, -3.5, 0.0, std::nextafter(2.0, 0.0), -DBL_MIN, 5e-323})
    {
        for (std::uint32_t const limit : {StandardUlpLimit, FineUlpLimit})
        {
            double const at = UnitsAbove(base, static_cast<int>(limit));
            EXPECT_TRUE(IsAlmostEqual(base, at, limit) && IsAlmostEqual(at, base, limit)) << base;
            EXPECT_FALSE(IsAlmostEqual(base, UnitsAbove(at, 1), limit)) << base;
        }
    }
}

TEST(AlmostEqual, HasNoAbsoluteEpsilonAndNoWrapAround)
{
    EXPECT_TRUE(IsAlmostEqual(0.0, -0.0));
    EXPECT_FALSE(IsAlmostEqual(1e-300, 0.0));
    EXPECT_FALSE(IsAlmostEqual(DBL_MAX, -DBL_MAX));
    EXPECT_FALSE(IsAlmostEqual(inf, -inf));
    EXPECT_TRUE(IsAlmostEqual(inf, inf));
    EXPECT_TRUE(IsAlmostEqual(inf, DBL_MAX)) << "one unit apart: infinities are no special case";
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_FALSE(IsClearlyGreater(nan, 1.0) || IsClearlyLess(nan, 1.0) || IsAlmostEqual(nan, 1.0));
}

TEST(AlmostEqual, IsNotTransitive)
{
    double const b = UnitsAbove(1.0, 80);
    double const c = UnitsAbove(b, 80);
    EXPECT_TRUE(IsAlmostEqual(1.0, b) && IsAlmostEqual(b, c));
    EXPECT_FALSE(IsAlmostEqual(1.0, c));
}

TEST(BoundingRect, TouchWithinToleranceOverlaps)
{
    CBoundingRect<double> const left(0.0, 0.0, 1.0, 1.0);
    for (auto const & [units, expected] : {std::pair(0, true), {50, true}, {200, false}})
    {
        double const x = UnitsAbove(1.0, units);
        EXPECT_EQ(left.Overlaps(CBoundingRect<double>(x, 0.0, 2.0, 1.0)), expected) << units;
        EXPECT_EQ(left.ContainsPoint(x, 0.5), expected) << units;
        EXPECT_EQ(left.ContainsRect(CBoundingRect<double>(0.5, 0.5, x, 1.0)), expected) << units;
    }
}

TEST(BoundingRect, EmptyOverlapsNothingAndStaysEmptyWhenInflated)
{
    CBoundingRect<double> empty;
    EXPECT_FALSE(empty.Overlaps(empty));
    empty.Inflate(DBL_MAX);
    empty.Include(TPoint<double>(3.0, 4.0));
    EXPECT_EQ(empty.minX, empty.maxX);
    EXPECT_TRUE(empty.Overlaps(CBoundingRect<double>(2.0, 3.0, 4.0, 5.0)));
    empty.Inflate(-2.0);
    EXPECT_EQ(empty.minX, 1.0);
    EXPECT_EQ(empty.maxY, 6.0);
}

TEST(BoundingRect, IntegersAreTruncatedTowardZeroSaturatedAndSorted)
{
    auto const rect = ToIntegerRect(CBoundingRect<double>(-0.5, 1.9, 0.5, 2.1));
    EXPECT_EQ(rect.minX, 0);
    EXPECT_EQ(rect.maxX, 0);
    EXPECT_EQ(rect.minY, 1);
    EXPECT_EQ(rect.maxY, 2);
    auto const empty = ToIntegerRect(CBoundingRect<double>());
    EXPECT_EQ(empty.minX, std::numeric_limits<int>::min());
    EXPECT_EQ(empty.maxX, std::numeric_limits<int>::max());
    double const nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(ToIntegerRect(CBoundingRect<double>(nan, -inf, 1e300, inf)).minX, 0);
}

} // namespace
} // namespace geometry
