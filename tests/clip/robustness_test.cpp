// What every boolean has to withstand: allocation failure anywhere, user info that must balance, coordinates that make
// no sense, outlines that cross themselves, and very long rings.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "support/builders.h"
#include "support/failing_allocator.h"
#include "support/test_access.h"

namespace geometry
{
namespace
{

using test::Disc;
using test::Point;
using test::Rect;
using test::WithHole;

/// Counts the living objects of its kind, and the joins.
struct CCountingInfo : CPathObjectBase::CUserInfoInterface
{
    CCountingInfo() { ++alive; }
    CCountingInfo(CCountingInfo const & other) : CUserInfoInterface(other) { ++alive; }
    ~CCountingInfo() override { --alive; }
    CUserInfoInterface* Clone() const override { return new CCountingInfo(*this); }
    CUserInfoInterface* CloneForMerge(CPathObjectBase const* first, CPathObjectBase const* second) const override
    {
        EXPECT_TRUE(first->GetEndPoint() == second->GetStartPoint()) << "the first runs into the second";
        ++merges;
        return new CCountingInfo(*this);
    }
    static long alive;
    static long merges;
};
long CCountingInfo::alive = 0;
long CCountingInfo::merges = 0;

void AttachInfo(CPolygon const & polygon)
{
    for (CPathObjectBase* object : polygon.GetOutline())
    {
        object->SetUserInfo(new CCountingInfo);
    }
    for (CPolygon const* hole : polygon.GetHoles())
    {
        AttachInfo(*hole);
    }
}

using Operation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;
Operation const operations[] = {&CPolygon::SubtractPolygon, &CPolygon::IntersectPolygon, &CPolygon::XORPolygon};

/// Pairs that reach every part of the booleans: crossings of lines and arcs, holes cut, carried over and united.
std::vector<std::pair<CPolygon, CPolygon>> & WorkingPairs()
{
    static std::vector<std::pair<CPolygon, CPolygon>> pairs;
    if (pairs.empty())
    {
        pairs.reserve(8);
        pairs.emplace_back(WithHole(Rect(0, 0, 10, 10), Disc(3, 3, 1)), WithHole(Rect(2, 2, 12, 8), Disc(6, 5, 2)));
        pairs.emplace_back(WithHole(Disc(0, 0, 5), Rect(-1, -1, 1, 1)), WithHole(Rect(-3, -3, 3, 3), Disc(0, 0, 2)));
        pairs.emplace_back(WithHole(Rect(0, 0, 9, 9), Rect(1, 1, 4, 4)), Rect(3, 3, 8, 6));
        pairs.emplace_back(Rect(0, 0, 4, 4), Rect(4, 4, 6, 6));
    }
    return pairs;
}

TEST(BooleanRobustness, UserInfoBalancesThroughSplitsJoinsAndResults)
{
    for (auto const & [first, second] : WorkingPairs())
    {
        CPolygon const a(first);
        CPolygon const b(second);
        AttachInfo(a);
        AttachInfo(b);
        long const before = CCountingInfo::alive;
        for (Operation operation : operations)
        {
            std::vector<CPolygon*> result;
            EXPECT_TRUE((a.*operation)(result, b));
            for (CPolygon const* piece : result)
            {
                for (CPathObjectBase const* object : piece->GetOutline())
                {
                    EXPECT_NE(object->GetUserInfo(), nullptr) << "every piece of an outline keeps its info";
                }
            }
            DeletePolygons(result);
            EXPECT_EQ(CCountingInfo::alive, before);
        }
    }
    EXPECT_EQ(CCountingInfo::alive, 0);
    EXPECT_GT(CCountingInfo::merges, 0);
}

TEST(BooleanRobustness, AnyFailingAllocationLeavesEverythingDestructible)
{
    for (auto const & [first, second] : WorkingPairs())
    {
        CPolygon const a(first);
        CPolygon const b(second);
        AttachInfo(a);
        AttachInfo(b);
        long const before = CCountingInfo::alive;
        double const areaBefore = a.GetArea();
        for (Operation operation : operations)
        {
            long allowed = 0;
            for (bool isDone = false; !isDone; ++allowed)
            {
                OwningPolygonVector result;
                try
                {
                    test::CAllocationLimit const limit(allowed);
                    isDone = (a.*operation)(result, b);
                    ASSERT_TRUE(isDone);
                }
                catch (std::bad_alloc const &)
                {
                }
                DeletePolygons(result);
                ASSERT_EQ(CCountingInfo::alive, before) << "leaked after " << allowed << " allocations";
                ASSERT_LT(allowed, 100000);
            }
            EXPECT_GT(allowed, 10);
        }
        EXPECT_EQ(a.GetArea(), areaBefore);
    }
}

/// Random outlines with values that make no sense, crossing themselves at will.
CPolygon RandomNonsense(std::mt19937_64 & random)
{
    static double const strange[] = {std::numeric_limits<double>::quiet_NaN(),
                                     std::numeric_limits<double>::infinity(),
                                     -std::numeric_limits<double>::infinity(),
                                     1e300,
                                     -1e300,
                                     1e-300,
                                     5e9,
                                     std::numeric_limits<double>::max()};
    auto const number = [&]() -> double
    { return random() % 8 == 0 ? strange[random() % std::size(strange)] : static_cast<double>(random() % 6); };
    std::vector<CPathObjectBase*> objects;
    Point at(number(), number());
    for (std::size_t i = 0, n = 1 + random() % 5; i < n; ++i)
    {
        Point const next(number(), number());
        if (random() % 3 == 0)
        {
            bool const isGivenRadius = random() % 2 == 0;
            objects.push_back(new CPathObjectArc(at, random() % 6 == 0 ? at : next, Point(number(), number()),
                                                 random() % 2 == 0, isGivenRadius ? number() : -1.0));
        }
        else
        {
            auto* const line = new CPathObjectPolyline(at, next);
            line->AddVertex(number(), number());
            objects.push_back(line);
        }
        at = objects.back()->GetEndPoint();
    }
    CPolygon const polygon(objects.begin(), objects.end(), CPolygon::TCloneObjects());
    for (CPathObjectBase const* object : objects)
    {
        delete object;
    }
    return polygon;
}

TEST(BooleanRobustness, NonsenseEndsInSomeAnswer)
{
    std::mt19937_64 random(20261123);
    for (int round = 0; round < 4000; ++round)
    {
        SCOPED_TRACE(round);
        CPolygon const a = RandomNonsense(random);
        CPolygon const b = RandomNonsense(random);
        std::vector<CPolygon*> result;
        for (Operation operation : operations)
        {
            bool const isDone = (a.*operation)(result, b);
            EXPECT_TRUE(isDone || result.empty());
        }
        CPolygon withHole(a);
        std::vector<CPolygon*> extra;
        withHole.AddHole(&b, nullptr, nullptr, extra);
        withHole.PointInPolygon(1.0, std::numeric_limits<double>::quiet_NaN());
        withHole.IsCoincidentWith(a);
        a.GetUnlikelyEdgePoint(b);
        CTestAccess::ReverseWinding(withHole);
        if (!a.GetOutline().empty() && !b.GetOutline().empty())
        {
            Point onA, onB;
            std::vector<Point> points;
            a.GetOutline()[0]->SquareDistanceToPath(*b.GetOutline()[0], onA, onB);
            a.GetOutline()[0]->IntersectWithPath(*b.GetOutline()[0], points);
            a.GetOutline()[0]->WindAroundPoint(onA);
            a.GetOutline()[0]->CalculateLength();
            a.GetOutline()[0]->Cleanup(true);
        }
        DeletePolygons(extra);
        DeletePolygons(result);
    }
}

TEST(BooleanRobustness, EmptyAndOnePointPiecesAreRefusedOrFail)
{
    CPolygon const square = Rect(0, 0, 1, 1);
    CPathObjectPolyline point;
    point.AddVertex(3.0, 3.0);
    CPathObjectArc const unset;
    CPathObjectBase const* const pieces[] = {&point, &unset, nullptr};
    CPolygon const empty(std::begin(pieces), std::end(pieces), CPolygon::TCloneObjects());
    EXPECT_TRUE(empty.GetOutline().empty());
    std::vector<CPolygon*> result;
    EXPECT_TRUE(square.SubtractPolygon(result, empty));
    EXPECT_EQ(test::TotalArea(result), 1.0) << "an empty rectangle overlaps nothing";
    EXPECT_TRUE(empty.IntersectPolygon(result, square));
    EXPECT_TRUE(result.empty());
}

TEST(LongRings, AMillionElementsAreFreedWithoutRecursion)
{
    constexpr int count = 1000000;
    CRingMemory memory;
    CResultMemory resultMemory;
    auto* const head = new (resultMemory) CLinkedPathObject(nullptr);
    CLinkedPathObject* last = head;
    CPathObjectHolder* ring = MakeHolder(memory);
    ring->m_Next = ring->m_Previous = ring;
    for (int i = 0; i < count; ++i)
    {
        auto* const element = new (resultMemory) CLinkedPathObject(nullptr);
        CLinkedPathObject*& link = i % 2 == 0 ? last->m_Next : last->m_NextRing;
        link = element;
        last = element;
        InsertHolder(nullptr, ring, ring->m_Previous, false);
    }
    EXPECT_EQ(CountHolders(ring), count + 1U);
    delete head;
    DeleteRing(ring);
    EXPECT_EQ(ring, nullptr);
}

TEST(LongRings, AnOutlineOfManyObjectsIsCut)
{
    // a wavy band: half discs alternate with straight pieces, so that nothing joins
    constexpr int waves = 20000;
    std::vector<CPathObjectBase*> objects;
    for (int i = 0; i < waves; ++i)
    {
        double const x = 4.0 * i;
        objects.push_back(new CPathObjectArc(Point(x, 0), Point(x + 2, 0), Point(x + 1, 0), i % 2 == 0));
        objects.push_back(new CPathObjectPolyline(Point(x + 2, 0), Point(x + 4, 0)));
    }
    objects.push_back(test::Line({{4.0 * waves, 0}, {4.0 * waves, 10}, {0, 10}, {0, 0}}).release());
    CPolygon const band(objects.begin(), objects.end());
    CPolygon const bar = Rect(-5, 3, 4.0 * waves + 5, 5);
    std::vector<CPolygon*> result;
    EXPECT_TRUE(band.SubtractPolygon(result, bar));
    EXPECT_NEAR(test::TotalArea(result), band.GetArea() - 8.0 * waves, 1e-6);
    EXPECT_EQ(result.size(), 2U);
    DeletePolygons(result);
}

} // namespace
} // namespace geometry
