// Booleans with holes: which piece a hole goes to, what comes back from inside holes, the order of results, the
// relations that the clipper reports, and cancellation.
#include <gtest/gtest.h>

#include <cmath>

#include "polygon/booleans.h"
#include "support/builders.h"
#include "support/shapes.h"
#include "support/test_access.h"

namespace geometry
{
namespace
{

using test::Disc;
using test::Line;
using test::Rect;
using test::TotalArea;
using test::WithHole;

/// The polygons of a result, freed at the end.
struct TResult : OwningPolygonVector
{
    CPolygon const & At(std::size_t i) const { return *at(i); }
};

TEST(NestRings, ARingInOneThatIsAHoleItselfStaysByItself)
{
    // a U, a bar across both its legs, judged to lie in it, and a square on the bar between the legs
    TResult rings;
    for (char const* text : {"M 0,0 L 100,0 100,100 60,100 60,20 40,20 40,100 0,100 Z",
                             "M 10,30 L 90,30 90,40 90,50 10,50 Z", "M 45,35 L 55,35 55,45 45,45 Z"})
    {
        PushPolygon(rings, test::MakePolygon(test::ParseShape(text)));
    }
    NestRings(rings);
    ASSERT_EQ(rings.size(), 2U);
    EXPECT_EQ(rings.At(0).GetHoles().size(), 1U);
    EXPECT_EQ(rings.At(1).GetArea(), 100.0);
}

TEST(Subtract, AHolePolygonStrictlyInsideLeavesAnIsland)
{
    TResult result;
    ASSERT_TRUE(Rect(0, 0, 9, 9).SubtractPolygon(result, WithHole(Rect(1, 1, 8, 8), Rect(3, 3, 5, 5))));
    ASSERT_EQ(result.size(), 2U);
    EXPECT_EQ(result.At(0).GetArea(), 32.0) << "the subject with the outline as a hole";
    EXPECT_EQ(result.At(1).GetArea(), 4.0) << "what survives inside the hole";
}

TEST(Holes, StayDisjoint)
{
    CPolygon const plate = Rect(0, 0, 20, 20);
    struct TCase
    {
        char const* name;
        std::vector<CPolygon> holes;
        std::size_t count;
        double area;      // of the plate and what the holes enclose
        double extraArea; // what the last one encloses
    };
    CPolygon const u(Line({{2, 2}, {10, 2}, {10, 10}, {8, 10}, {8, 4}, {4, 4}, {4, 10}, {2, 10}, {2, 2}}).release());
    CPolygon const lid = Rect(1, 9, 11, 11);
    TCase const cases[] = {
        {"apart", {Rect(1, 1, 2, 2), Disc(5, 5, 1)}, 2, 399 - std::acos(-1.0), 0},
        {"inside a present one", {Rect(1, 1, 9, 9), Rect(2, 2, 3, 3)}, 1, 336, 0},
        {"around a present one", {Rect(2, 2, 3, 3), Rect(1, 1, 9, 9)}, 1, 336, 0},
        {"overlapping", {Rect(1, 1, 3, 3), Rect(2, 2, 4, 4)}, 1, 393, 0},
        {"twice the same", {Rect(1, 1, 3, 3), Rect(1, 1, 3, 3)}, 1, 396, 0},
        {"closing a ring", {u, lid}, 1, 400 - 40 - 20 + 4, 20},
        {"a third within the ring", {u, Rect(5, 6, 6, 7), lid}, 1, 400 - 40 - 20 + 4 - 1, 19},
    };
    for (TCase const & c : cases)
    {
        CPolygon polygon(plate);
        TResult extra;
        for (CPolygon const & hole : c.holes)
        {
            polygon.AddHole(&hole, nullptr, nullptr, extra);
        }
        EXPECT_EQ(polygon.GetHoles().size(), c.count) << c.name;
        EXPECT_NEAR(TotalArea(extra), c.extraArea, 1e-9) << c.name;
        EXPECT_NEAR(polygon.GetArea() + TotalArea(extra), c.area, 1e-9) << c.name;
        for (CPolygon const* hole : polygon.GetHoles())
        {
            EXPECT_NE(CTestAccess::GetWinding(*hole), CTestAccess::GetWinding(polygon)) << c.name;
        }
    }
    CPolygon polygon = WithHole(plate, Rect(1, 1, 3, 3));
    CPolygon const farAway = Rect(15, 15, 16, 16);
    CPolygon const overlapping = Rect(2, 2, 4, 4);
    TResult extra;
    polygon.AddHole(&overlapping, nullptr, &farAway, extra);
    EXPECT_EQ(polygon.GetHoles().size(), 2U) << "what the clipped polygon can't have touched is added unseen";
    polygon.AddHole(nullptr, nullptr, nullptr, extra);
    EXPECT_EQ(polygon.GetHoles().size(), 2U);
}

TEST(Clipper, RelationsStatusAndAttempts)
{
    using Status = Clipper::EClipStatus;
    struct TCase
    {
        char const* name;
        CPolygon first, second;
        EClipResult result;
        Status status;
    };
    TCase const cases[] = {
        {"apart", Rect(0, 0, 1, 1), Rect(5, 5, 6, 6), Clipper::eClipSeparate, Status::eStatusSeparate},
        {"second inside", Rect(0, 0, 9, 9), Disc(4, 4, 1), Clipper::eClipSubjectInsideClip,
         Status::eStatusSubjectInsideClip},
        {"first inside", Disc(4, 4, 1), Rect(0, 0, 9, 9), Clipper::eClipClipInsideSubject,
         Status::eStatusClipInsideSubject},
        {"crossing", Rect(0, 0, 2, 2), Rect(1, 1, 3, 3), Clipper::eClipResultReady, Status::eStatusCrossing},
        {"same", Rect(0, 0, 2, 2), Rect(0, 0, 2, 2), Clipper::eClipResultReady, Status::eStatusCoincident},
        {"no clip outline", CPolygon(), Rect(0, 0, 2, 2), Clipper::eClipFailed, Status::eStatusClipEmpty},
        {"no subject outline", Rect(0, 0, 2, 2), CPolygon(), Clipper::eClipFailed, Status::eStatusSubjectEmpty},
        {"no outlines", CPolygon(), CPolygon(), Clipper::eClipResultReady, Status::eStatusBothEmptyOrGaveUp},
    };
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    for (TCase const & c : cases)
    {
        for (auto operation : {Clipper::eClipUnion, Clipper::eClipIntersection, Clipper::eClipDifference})
        {
            clipper->SetOperation(operation);
            EXPECT_EQ(clipper->RunClip(c.first, c.second), c.result) << c.name;
            EXPECT_EQ(clipper->GetStatus(), c.status) << c.name;
            EXPECT_LE(CTestAccess::GetAttempts(*clipper), 1U) << c.name;
        }
    }
    clipper->SetOperation(Clipper::eClipRelationOnly);
    EXPECT_EQ(clipper->RunClip(Rect(0, 0, 2, 2), Rect(1, 1, 3, 3)), Clipper::eClipSeparate);
    EXPECT_EQ(clipper->GetStatus(), Status::eStatusCrossing);
}

TEST(Clipper, TouchesAndOverlapsAreOrderedWithoutARetry)
{
    struct TCase
    {
        char const* name;
        CPolygon subject, clip;
        double unionArea, intersectionArea;
        std::size_t unionRings;
    };
    CPolygon const gate(Line({{0, 0}, {6, 0}, {6, 4}, {4, 4}, {4, 2}, {2, 2}, {2, 4}, {0, 4}, {0, 0}}).release());
    TCase const cases[] = {
        {"crossing", Rect(0, 0, 2, 2), Rect(1, 1, 3, 3), 7, 1, 1},
        {"shared edge", Rect(0, 0, 2, 2), Rect(2, 0, 4, 2), 8, 0, 1},
        {"corner to corner", Rect(0, 0, 2, 2), Rect(2, 2, 4, 4), 8, 0, 1},
        {"along an edge, then across", Rect(0, 0, 2, 2), Rect(1, 0, 3, 1), 5, 1, 1},
        {"corner on an edge from outside", Rect(0, 0, 4, 4), CPolygon(Line({{4, 2}, {6, 1}, {6, 3}, {4, 2}}).release()),
         18, 0, 1},
        {"corner on an edge from inside", Rect(0, 0, 4, 4), CPolygon(Line({{4, 2}, {2, 3}, {2, 1}, {4, 2}}).release()),
         16, 2, 1},
        {"bar over a gate encloses a hole", gate, Rect(1, 3, 5, 4), 22, 2, 2},
        {"bar on top of a gate", gate, Rect(0, 4, 6, 5), 26, 0, 2},
    };
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    for (TCase const & c : cases)
    {
        for (int turned = 0; turned < 4; ++turned)
        {
            CPolygon subject(c.subject);
            CPolygon clip(c.clip);
            if ((turned & 1) != 0)
            {
                CTestAccess::ReverseWinding(subject);
            }
            if ((turned & 2) != 0)
            {
                CTestAccess::ReverseWinding(clip);
            }
            double areas[3] = {};
            std::size_t rings[3] = {};
            for (auto operation : {Clipper::eClipIntersection, Clipper::eClipUnion, Clipper::eClipDifference})
            {
                clipper->SetOperation(operation);
                ASSERT_EQ(clipper->RunClip(clip, subject), Clipper::eClipResultReady) << c.name;
                EXPECT_EQ(CTestAccess::GetAttempts(*clipper), 1U) << c.name;
                TResult result;
                clipper->GetResultPolygons(result);
                rings[operation] = result.size();
                areas[operation] = TotalArea(result);
            }
            if (c.unionRings == 1)
            {
                EXPECT_EQ(areas[Clipper::eClipUnion], c.unionArea) << c.name;
            }
            EXPECT_EQ(rings[Clipper::eClipUnion], c.unionRings) << c.name;
            EXPECT_EQ(areas[Clipper::eClipIntersection], c.intersectionArea) << c.name;
            EXPECT_EQ(areas[Clipper::eClipDifference], subject.GetArea() - c.intersectionArea) << c.name;
        }
    }
}

TEST(BooleanThreads, APendingRequestStopsASubtractionAndStaysPending)
{
    bool isDone = true;
    bool isXorDone = true;
    bool isPending = false;
    TResult result;
    PushPolygon(result, std::make_unique<CPolygon>(Rect(0, 0, 1, 1)));
    thread worker(
        [&]
        {
            this_thread::Cancel();
            this_thread::disable_cancellation const guard;
            CPolygon const a = Rect(0, 0, 4, 4);
            isDone = a.SubtractPolygon(result, Rect(1, 1, 9, 9));
            TResult other;
            isXorDone = a.XORPolygon(other, Rect(9, 9, 10, 10));
            isPending = this_thread::cancellation_requested();
        });
    worker.join();
    EXPECT_FALSE(isDone);
    EXPECT_TRUE(result.empty());
    EXPECT_TRUE(isXorDone) << "operations that don't poll go on";
    EXPECT_TRUE(isPending);
}

} // namespace
} // namespace geometry
