// The arc object: what follows from its four points, how it changes, joins, and what it owns.
#include <algorithm>
#include <cfloat>
#include <memory>

#include <gtest/gtest.h>

#include <geometry/path/path_object_polyline.h>

#include "arc/arc_geometry.h"
#include "arc/arc_samples.h"
#include "support/test_access.h"

using namespace arc_samples;
using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CTestAccess;

namespace
{

/// Counts its living copies, and remembers which join made it.
struct CTag : CPathObjectBase::CUserInfoInterface
{
    static inline int living = 0;
    CPathObjectBase const* first;
    CPathObjectBase const* second;

    CTag(CPathObjectBase const* a, CPathObjectBase const* b) : first(a), second(b) { ++living; }
    ~CTag() override { --living; }
    CTag* Clone() const override { return new CTag(first, second); }
    CTag* CloneForMerge(CPathObjectBase const* a, CPathObjectBase const* b) const override { return new CTag(a, b); }
};

} // namespace

// Length, rectangle, mid-point, direction and chords of random arcs, against their angles.
TEST(Arc, FollowsFromItsAngles)
{
    CRandom random(5);
    for (int i = 0; i < 3000; ++i)
    {
        AngleArc const a = random.Arc(100, i % 2 == 0 ? 0.001 : 1.0);
        bool const ccw = random.Coin();
        CPathObjectArc const arc = a.ToArc(ccw);
        EXPECT_NEAR(a.radius * a.size, arc.CalculateLength(), 1e-9);
        EXPECT_LT(Distance(a.At(0.5), arc.GetInbetweenPoint()), 1e-8) << i;

        geometry::CBoundingRect<double> sampled;
        for (int k = 0; k <= 1000; ++k)
        {
            sampled.Include(a.At(k / 1000.0));
        }
        auto const & rect = arc.GetBoundingRect();
        EXPECT_LT(Distance(Point(sampled.minX, sampled.minY), Point(rect.minX, rect.minY)), 1e-3) << i;
        EXPECT_LT(Distance(Point(sampled.maxX, sampled.maxY), Point(rect.maxX, rect.maxY)), 1e-3) << i;

        CPathObjectArc derived; // the direction from four points
        derived.SetArc(arc.GetStartPoint(), arc.GetEndPoint(), arc.GetCentre(), arc.GetInbetweenPoint(), -1);
        EXPECT_EQ(ccw, derived.IsCounterClockwise()) << i;

        auto const & chords = CTestAccess::GetArcPoints(arc);
        EXPECT_TRUE(chords.front() == arc.GetStartPoint() && chords.back() == arc.GetEndPoint()) << i;
        double turned = 0;
        for (std::size_t k = 1; k < chords.size(); ++k)
        {
            EXPECT_NEAR(a.radius, Distance(a.centre, chords[k]), 1e-9);
            turned += 2 * std::asin(std::min(1.0, Distance(chords[k - 1], chords[k]) / 2 / a.radius));
        }
        EXPECT_NEAR(a.size, turned, 1e-5) << i; // each chord once, none backward
    }
}

TEST(Arc, ChordsStandOnOneGrid)
{
    EXPECT_EQ(17u, CTestAccess::GetArcPoints(CPathObjectArc(Point(1, 0), Point(0, 1), Point(), true)).size());
    EXPECT_EQ(49u, CTestAccess::GetArcPoints(CPathObjectArc(Point(1, 0), Point(0, 1), Point(), false)).size());
    CPathObjectArc const circle(Point(3, 4), 2); // clockwise from the right, wherever it starts
    EXPECT_EQ(65u, CTestAccess::GetArcPoints(circle).size());
    EXPECT_TRUE(circle.IsFullCircle() && circle.GetStartPoint() == Point(1, 4));
    EXPECT_TRUE(circle.GetPointsBegin()[0] == Point(5, 4) && circle.GetPointsBegin()[16] == Point(3, 2));
}

TEST(Arc, ChordLongerThanTheDiameterBecomesAHalfCircle)
{
    CPathObjectArc arc(Point(0, 0), Point(3, 0), Point(1.5, 0.2), true, 1.0);
    arc.TryToCorrectProblems();
    EXPECT_TRUE(arc.GetCentre() == Point(1.5, 0) && arc.GetRadius() == 1.5);
    Point centre(0.1, 5); // two circles of radius 5 through the ends: the nearer one
    double radius = 5;
    geometry::CorrectArcCentre(Point(-3, 0), Point(3, 0), centre, radius);
    EXPECT_LT(Distance(centre, Point(0, 4)), 1e-15);
}

TEST(Arc, ReverseAndTransformsKeepTheTrack)
{
    CRandom random(6);
    for (int i = 0; i < 500; ++i)
    {
        CPathObjectArc const arc = random.Arc().ToArc(random.Coin());
        CPathObjectArc changed(arc);
        auto const chords = CTestAccess::GetArcPoints(changed);
        changed.Reverse();
        EXPECT_TRUE(changed.IsCoincidentWith(arc) && arc.CalculateLength() == changed.CalculateLength());
        EXPECT_TRUE(std::equal(chords.rbegin(), chords.rend(), changed.GetPointsBegin(), changed.GetPointsEnd()));
        changed.Scale(-2, 2); // mirrors
        changed.RotateDegrees(90);
        EXPECT_EQ(arc.IsCounterClockwise(), changed.IsCounterClockwise());
        EXPECT_NEAR(2 * arc.CalculateLength(), changed.CalculateLength(), 1e-9);
    }
    CPathObjectArc circle(Point(1, 1), 1);
    circle.Scale(-1, 3);
    EXPECT_EQ(geometry::eDirectionClockwise, CTestAccess::GetDirection(circle)); // a closed arc keeps its direction
}

TEST(Arc, SetArcTakesItsOwnPointsAndKeepsAKnownDirection)
{
    CPathObjectArc arc(Point(1, 0), Point(0, 1), Point(), true);
    arc.SetArc(arc.GetEndPoint(), arc.GetStartPoint(), arc.GetCentre(), false, 0.0);
    EXPECT_TRUE(arc.GetStartPoint() == Point(0, 1) && arc.GetEndPoint() == Point(1, 0) && arc.GetRadius() == 1.0);
    arc.SetArc(Point(1, 0), Point(0, 1), Point(), Point(0.6, 0.8), 7);
    EXPECT_TRUE(!arc.IsCounterClockwise() && arc.GetRadius() == 7.0);
}

TEST(Arc, JoinsArcsOfOneCircleAndOwnsItsUserInfo)
{
    {
        auto const make = [](double from, double to)
        { return CPathObjectArc(OnCircle({}, 10, from), OnCircle({}, 10, to), Point(), to > from); };
        CPathObjectArc const a = make(0, 1);
        CPathObjectArc b = make(1, 2);
        b.SetUserInfo(new CTag(nullptr, nullptr));
        // The result runs through the first, then the second; the user info is that of the object that does the work.
        std::unique_ptr<CPathObjectBase> joined(a.Append(&b));
        ASSERT_NE(nullptr, joined);
        EXPECT_TRUE(joined->GetStartPoint() == a.GetStartPoint() && joined->GetEndPoint() == b.GetEndPoint());
        auto const* const tag = static_cast<CTag*>(joined->GetUserInfo());
        EXPECT_TRUE(tag != nullptr && tag->first == &a && tag->second == &b);
        joined.reset(b.MergeWith(&a)); // by prepending
        EXPECT_TRUE(joined != nullptr && joined->GetUserInfo() == nullptr && joined->CalculateLength() > 19.9);
        EXPECT_EQ(nullptr, b.Append(&a));

        CPathObjectArc const backward = make(2, 1);
        CPathObjectArc const unset;
        CPathObjectPolyline const line(a.GetEndPoint(), Point());
        for (CPathObjectBase const* other : std::initializer_list<CPathObjectBase const*>{&backward, &unset, &line})
        {
            EXPECT_TRUE(a.MergeWith(other) == nullptr && other->MergeWith(&a) == nullptr);
        }

        CPathObjectArc copy(b);
        std::vector<CPathObjectBase*> parts;
        b.CreatePathParts(parts, b.GetBoundingRect());
        ASSERT_EQ(1u, parts.size());
        EXPECT_EQ(3, CTag::living);
        delete parts[0];
        copy = a;
        CPathObjectBase::PathObjectHash hash;
        b.CreatePathParts(hash);
        EXPECT_EQ(2, CTag::living);
    }
    EXPECT_EQ(0, CTag::living);
}

// An arc without points, and one that got a polyline's points through the base, answer without reading points.
TEST(Arc, WithoutFourPointsTakesPartInNothing)
{
    CPathObjectArc arcs[2];
    static_cast<CPathObjectBase &>(arcs[1]) = CPathObjectPolyline(Point(1, 2), Point(3, 4));
    CPathObjectArc const circle(Point(), 1);
    for (CPathObjectArc & arc : arcs)
    {
        arc.Reverse();
        arc.TryToCorrectProblems();
        arc.Translate(1, 1);
        EXPECT_TRUE(!arc.IsValid() && arc.IsDegenerate() && arc.GetPointsBegin() == arc.GetPointsEnd());
        EXPECT_FALSE(arc.IsPointOnPath(0, 0) || arc.IsFullCircle() || arc.IsCoincidentWith(arc));
        EXPECT_EQ(0u, arc.IntersectWithVerticalProbeLine(Point()) + arc.WindAroundPoint(Point()));
        std::vector<Point> points;
        EXPECT_FALSE(arc.IntersectWithPath(circle, points) || circle.IntersectWithPath(arc, points));
        Point p, q;
        EXPECT_EQ(DBL_MAX, circle.SquareDistanceToPath(static_cast<CPathObjectBase const &>(arc), p, q));
    }
}

// NaN, infinities, overflow and subnormal numbers: every operation ends.
TEST(Arc, BadInputEnds)
{
    double const values[] = {NAN, INFINITY, -INFINITY, 1e300, -1e300, 5e-324, 0, 1, 2};
    CRandom random(7);
    auto const any = [&] { return values[static_cast<int>(random.In(0, 9))]; };
    auto const anyPoint = [&] { return Point(any(), any()); };
    for (int i = 0; i < 20000; ++i)
    {
        CPathObjectArc arc(anyPoint(), anyPoint(), anyPoint(), random.Coin(), any());
        CPathObjectArc other(anyPoint(), anyPoint(), anyPoint(), random.Coin());
        CPathObjectPolyline line(anyPoint(), anyPoint());
        other.TryToCorrectProblems();
        arc.IsPointOnPath(any(), any());
        arc.IntersectWithVerticalProbeLine(anyPoint());
        arc.WindAroundPoint(anyPoint());
        EXPECT_LE(std::distance(arc.GetPointsBegin(), arc.GetPointsEnd()), 67);
        for (CPathObjectBase const* partner : std::initializer_list<CPathObjectBase*>{&line, &other})
        {
            Point p, q;
            std::vector<Point> points;
            arc.IntersectWithPath(*partner, points);
            arc.SquareDistanceToPath(*partner, p, q);
            CPathObjectBase::SplitPositionList mine, theirs;
            partner->DetermineSplitPositions(arc, theirs, mine);
            std::vector<CPathObjectBase::SplitPiece> pieces;
            arc.DoSplits(mine, pieces);
            partner->DoSplits(theirs, pieces);
            for (auto const & piece : pieces)
            {
                delete piece.first;
            }
        }
    }
}
