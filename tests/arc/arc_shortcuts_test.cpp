// What is told of arcs without working it out, against working it out: many arcs, sizes and places from fine to coarse,
// ends and points next to where the answer changes.
#include <gtest/gtest.h>

#include "arc/arc_geometry.h"
#include "arc/arc_samples.h"
#include "arc/probe_abscissas.h"
#include "numeric/chain_index.h"

namespace geometry
{

using namespace test;

namespace
{

/// Often a multiple of 1/128 of the turn, give or take a little.
double DrawAngle(CRandom & random)
{
    double const angle = random.In(-Pi, Pi);
    double const step = Pi / 64;
    double const shift = random.Coin() ? 0 : std::pow(10, random.In(-17, -1));
    return random.Coin() ? angle : std::round(angle / step) * step + shift;
}

AngleArc DrawArc(CRandom & random)
{
    double const radius = std::pow(10, random.In(-2, 9));
    double const from = DrawAngle(random);
    double const size = random.Coin() ? DrawAngle(random) - from : std::pow(10, random.In(-16, 0.7));
    double const reach = random.Coin() ? 0 : std::pow(10, random.In(-3, 9.3));
    return {random.PointIn(-reach, reach), radius, from, size < 0 ? size + 2 * Pi : size};
}

} // namespace

TEST(ArcShortcuts, ChordsAreThoseOfAllGridPointsAsked)
{
    CRandom random(41);
    for (int i = 0; i < 30000; ++i)
    {
        AngleArc const arc = DrawArc(random);
        Sweep const sweep = {arc.At(0), OnCircle(arc.centre, arc.radius * random.In(0.5, 1.1), arc.from + arc.size),
                             arc.centre, arc.radius};
        SetIndexUse(EIndexUse::eNever);
        auto const asked = BuildArcPoints(sweep);
        SetIndexUse(EIndexUse::eWhenItPays);
        auto const told = BuildArcPoints(sweep);
        ASSERT_TRUE(std::equal(asked.begin(), asked.end(), told.begin(), told.end(), IsExactlyEqual)) << i;
    }
}

TEST(ArcShortcuts, PointsAreClearlyFarAndCrossedAsComputed)
{
    CRandom random(42);
    int far = 0, counted = 0;
    for (int i = 0; i < 100000; ++i)
    {
        AngleArc const a = DrawArc(random);
        double const misfit = random.Coin() ? 0 : random.In(-0.009, 0.009);
        CPathObjectArc const arc(a.At(0), OnCircle(a.centre, a.radius + misfit, a.from + a.size), a.centre,
                                 random.Coin(), a.radius);
        double const off = (random.Coin() ? 1 : -1) * std::pow(10, random.In(-2, 4));
        Point const p = OnCircle(a.centre, a.radius + off, random.Coin() ? DrawAngle(random) : a.from + off / a.radius);
        double const distance = std::pow(10, random.In(-1.5, 3));
        Point closest;
        bool const isFar = IsClearlyFarther(arc, p, distance);
        ASSERT_TRUE(!isFar || arc.SquareDistanceToPoint(p.x, p.y, closest) > distance * distance) << i;
        far += isFar;
        CProbeAbscissas abscissas;
        if (!IsSteadyArc(arc) || !IsClearlyFarther(arc, p, 0.11)) continue;
        abscissas.Add(arc), abscissas.Prepare();
        if (abscissas.IsNear(p.x)) continue;
        ASSERT_EQ((arc.IntersectWithVerticalProbeLine(p) & 1U) != 0, IsClearlyCrossed(arc, p)) << i;
        ++counted;
    }
    EXPECT_GT(far, 30000);
    EXPECT_GT(counted, 20000);
}

TEST(ArcShortcuts, AbscissasOfManyAreThoseOfEach)
{
    CRandom random(43);
    CProbeAbscissas all;
    CAbscissaField field;
    field.Reset(-150, 150, 200); // what is beyond counts at the end
    std::vector<CProbeAbscissas> each(200);
    for (CProbeAbscissas & one : each)
    {
        CPathObjectArc const arc = random.Arc().ToArc(true);
        one.Add(arc), one.Prepare(), all.Add(arc), field.Add(arc);
    }
    all.Prepare();
    int passed = 0, told = 0;
    for (int i = 0; i < 20000; ++i)
    {
        double const x = random.In(-210, 210);
        bool const isNear = std::any_of(each.begin(), each.end(), [x](auto const & one) { return one.IsNear(x); });
        ASSERT_EQ(isNear, all.IsNear(x)) << x;
        ASSERT_TRUE(!isNear || field.MayBeNear(x)) << x;
        passed += !isNear, told += !field.MayBeNear(x);
    }
    EXPECT_GT(told, passed / 2);
}

} // namespace geometry
