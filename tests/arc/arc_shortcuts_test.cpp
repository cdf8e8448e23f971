// What is told of arcs without working it out, against working it out: many arcs, sizes and places from fine to coarse,
// ends and points next to where the answer changes.
#include <functional>

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
    double const reach = random.Coin() ? 0 : std::pow(10, random.In(-3, random.Coin() ? 9.3 : 14));
    Point const centre{random.In(-reach, reach), random.Coin() ? 0 : random.In(-reach, reach)};
    return {centre, radius, from, size < 0 ? size + 2 * Pi : size};
}

} // namespace

TEST(ArcShortcuts, ChordsAreThoseOfAllGridPointsAsked)
{
    CRandom random(41);
    for (int i = 0; i < 30000; ++i)
    {
        AngleArc const arc = DrawArc(random);
        double const part = std::max(random.In(-0.1, 1.1), 0.0); // an end may lie in the centre
        Sweep const sweep = {arc.At(0), OnCircle(arc.centre, arc.radius * part, arc.from + arc.size), arc.centre,
                             arc.radius};
        SetIndexUse(EIndexUse::eNever);
        auto const asked = BuildArcPoints(sweep);
        SetIndexUse(EIndexUse::eWhenItPays);
        auto const told = BuildArcPoints(sweep);
        ASSERT_TRUE(std::equal(asked.begin(), asked.end(), told.begin(), told.end(), IsExactlyEqual)) << i;
    }
}

/// Some ends are level with the centre and so near to each other that their misfit says which comes first.
CPathObjectArc DrawUnfitArc(CRandom & random, AngleArc const & a)
{
    double const misfit = random.Coin() ? 0 : random.In(-0.009, 0.009) * (random.Coin() ? 1 : 100);
    Point start = a.At(0), end = OnCircle(a.centre, a.radius + misfit, a.from + a.size);
    if (random.In(0, 1) < 0.1)
    {
        double const side = random.Coin() ? a.radius : -a.radius;
        start = {a.centre.x + side, a.centre.y + (random.Coin() ? 0 : std::pow(10, random.In(-13, -3)))};
        end = {a.centre.x + side + misfit, a.centre.y};
    }
    if (random.Coin()) std::swap(start, end);
    if (random.In(0, 1) < 0.1) // repaired, it may have its centre in its mid-point
    {
        double const move = random.In(-9, 9);
        CPathObjectArc arc(start, end, random.Coin() ? start : Point(a.centre.x + move, a.centre.y), random.Coin());
        arc.TryToCorrectProblems();
        if (random.Coin()) arc.Translate(0, 0); // and a rectangle that fits
        return arc;
    }
    return {start, end, a.centre, random.Coin(), a.radius};
}

TEST(ArcShortcuts, PointsAreClearlyFarAndCrossedAsComputed)
{
    CRandom random(42);
    int far = 0, counted = 0, below = 0;
    for (int i = 0; i < 150000; ++i)
    {
        AngleArc const a = DrawArc(random);
        CPathObjectArc const arc = DrawUnfitArc(random, a);
        Point const c = arc.GetCentre();
        double const r = arc.GetRadius();
        double const off = (random.Coin() ? 1 : -1) * std::pow(10, random.In(-2, 4));
        double const end = a.from + (random.Coin() ? a.size : 0);
        Point p = OnCircle(c, r + off, random.Coin() ? DrawAngle(random) : end + off / r);
        if (i % 4 == 0) // beside an abscissa of the arc, and often below it
        {
            double const xs[] = {c.x - r, c.x + r, arc.GetStartPoint().x, arc.GetEndPoint().x};
            p.x = xs[i / 4 % 4] + off * 1e-3;
            p.y -= random.Coin() ? 2 * r : 0;
        }
        if (i % 8 == 2) p = {arc.GetEndPoint().x + random.In(-0.2, 0.2), arc.GetEndPoint().y + random.In(-0.2, 0.2)};
        if (i % 8 == 6) p = {c.x + (random.Coin() ? r : -r), c.y};
        bool const isTooSteep = i % 16 == 1; // for the computation: it takes the point for one of the circle
        if (isTooSteep) p.x = c.x + 1e-200;
        double const distance = std::pow(10, random.In(-1.5, 3));
        Point closest;
        bool const isFar = IsClearlyFarther(arc, p, distance);
        ASSERT_TRUE(!isFar || arc.SquareDistanceToPoint(p.x, p.y, closest) > distance * distance) << i;
        far += isFar;
        if (!IsSteadyArc(arc)) continue; // as no full circle is
        CPathObjectArc turned(arc);
        turned.Translate(0, 0);
        bool const isCounterClockwise = turned.IsCounterClockwise();
        turned.Reverse(), turned.Translate(0, 0);
        ASSERT_NE(isCounterClockwise, turned.IsCounterClockwise()) << i;
        CBoundingRect<double> around = arc.GetBoundingRect();
        around.Inflate(0.12);
        ASSERT_TRUE(isTooSteep || around.ContainsPoint(p.x, p.y) || !arc.IsPointOnPath(p.x, p.y)) << i;
        if (IsNearAbscissa(arc, p.x)) continue;
        bool const isOdd = (arc.IntersectWithVerticalProbeLine(p) & 1U) != 0;
        if (IsClearlyFarther(arc, p, 0.11))
        {
            ASSERT_EQ(isOdd, IsClearlyCrossed(arc, p)) << i;
            ++counted;
        }
        if (p.y < arc.GetBoundingRect().minY - 0.12)
        {
            ASSERT_EQ(isOdd, (p.x < arc.GetStartPoint().x) != (p.x < arc.GetEndPoint().x)) << i;
            ++below;
        }
    }
    EXPECT_GT(far, 40000);
    EXPECT_GT(counted, 20000);
    EXPECT_GT(below, 5000);
}

TEST(ArcShortcuts, AbscissasOfManyAreThoseOfEach)
{
    CRandom random(43);
    CAbscissaField field;
    field.Reset(-150, 150, 200); // what is beyond counts at the end
    std::vector<CPathObjectArc> arcs;
    for (int i = 0; i < 200; ++i)
    {
        arcs.push_back(random.Arc().ToArc(true));
        field.Add(arcs.back());
    }
    int passed = 0, told = 0;
    for (int i = 0; i < 20000; ++i)
    {
        double const x = random.In(-210, 210);
        bool const isNear =
            std::any_of(arcs.begin(), arcs.end(), [x](auto const & arc) { return IsNearAbscissa(arc, x); });
        ASSERT_TRUE(!isNear || field.MayBeNear(x)) << x;
        passed += !isNear, told += !field.MayBeNear(x);
    }
    EXPECT_GT(told, passed / 2);
}

TEST(ArcShortcuts, SteadinessIsForgottenWithEveryChange)
{
    CRandom random(44);
    int changed = 0;
    for (int i = 0; i < 4000; ++i)
    {
        AngleArc const a = DrawArc(random);
        Point const end = OnCircle(a.centre, a.radius + random.In(-0.02, 0.02), a.from + a.size);
        CPathObjectArc const drawn(a.At(0), end, a.centre, random.Coin(), random.Coin() ? a.radius : -1);
        CPathObjectArc arc;
        std::function<void()> const changes[] = {
            [&] { arc = drawn; },
            [&] { arc.TryToCorrectProblems(); },
            [&] { arc.Reverse(); },
            [&] { arc.Translate(random.In(-1e9, 1e9), 0), arc.Translate(-1e9, 0); },
            [&] { arc.Scale(1, random.In(0.999, 1)); },
            [&] { arc.RecalculateBoundingRect(); },
            [&] { arc.SetArc(a.At(0), end, a.centre, a.At(0.5), random.Coin() ? -1 : a.radius * 1.001); },
            [&] { arc.SetArc(a.At(0), end, a.centre, random.Coin(), random.Coin() ? -1 : a.radius * 1.001); }};
        bool isSteady = IsSteadyArc(arc);
        for (int step = 0; step < 8; ++step)
        {
            changes[static_cast<int>(random.In(0, 8))]();
            CPathObjectArc anew(arc);
            CArcInternals::SteadinessOf(anew) = eSteadinessUnknown;
            ASSERT_EQ(IsSteadyArc(arc), IsSteadyArc(anew)) << i << " " << step;
            changed += isSteady != IsSteadyArc(arc);
            isSteady = IsSteadyArc(arc);
        }
    }
    EXPECT_GT(changed, 2000);
}

} // namespace geometry
