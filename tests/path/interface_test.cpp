// The order of the virtual operations is part of the exported interface: it is read from the compiled classes.
#include <gtest/gtest.h>

#include <cstring>

#include "support/builders.h"

namespace geometry
{
namespace
{

#if defined(__GNUC__) && defined(__x86_64__)

/// The slot of a virtual operation: a pointer to it holds one plus the offset into the table of the class.
template <typename Operation>
std::ptrdiff_t SlotOf(Operation operation)
{
    std::ptrdiff_t offset = 0;
    static_assert(sizeof operation >= sizeof offset);
    std::memcpy(&offset, &operation, sizeof offset);
    return (offset - 1) / static_cast<std::ptrdiff_t>(sizeof(void*));
}

/// Opens the protected operation.
struct CPathObjectBaseOpened : CPathObjectBase
{
    using CPathObjectBase::DoPostTransformActions;
};

using Base = CPathObjectBase;
using Polyline = CPathObjectPolyline;
using Arc = CPathObjectArc;
using Points = Base::Points;
using Lists = Base::SplitPositionList;

template <typename Other>
using Intersect = bool (Base::*)(Other const &, Points &) const;
template <typename Other>
using Coincide = bool (Base::*)(Other const &) const;
template <typename Other>
using Distance = double (Base::*)(Other const &, TPoint<double> &, TPoint<double> &) const;
template <typename Other>
using Determine = Base::EPathSplitResult (Base::*)(Other const &, Lists &, Lists &) const;
using PartsInRect = void (Base::*)(std::vector<Base*> &, CBoundingRect<double> const &) const;
using PartsInHash = void (Base::*)(Base::PathObjectHash &) const;

TEST(PathObjectInterface, VirtualOperationsStandInTheirOrder)
{
    // the destructor takes the slots 0 and 1
    // clang-format off
    std::vector<std::ptrdiff_t> const slots = {
        SlotOf(&Base::Translate), SlotOf(&Base::Scale), SlotOf(&Base::RotateDegrees), SlotOf(&Base::RotateRadians),
        SlotOf(&Base::GetPointsBegin), SlotOf(&Base::GetPointsEnd), SlotOf(&Base::GetStartPoint),
        SlotOf(&Base::GetEndPoint), SlotOf(&Base::GetInbetweenPoint), SlotOf(&Base::IsDegenerate),
        SlotOf(&Base::IsSingleSegment), SlotOf(&Base::CalculateLength), SlotOf(&Base::Accept),
        SlotOf(&Base::IsPointOnPath),
        SlotOf<Intersect<Polyline>>(&Base::IntersectWithPath), SlotOf<Intersect<Arc>>(&Base::IntersectWithPath),
        SlotOf<Intersect<Base>>(&Base::IntersectWithPath),
        SlotOf<Coincide<Polyline>>(&Base::IsCoincidentWith), SlotOf<Coincide<Arc>>(&Base::IsCoincidentWith),
        SlotOf<Coincide<Base>>(&Base::IsCoincidentWith),
        SlotOf<Distance<Polyline>>(&Base::SquareDistanceToPath), SlotOf<Distance<Arc>>(&Base::SquareDistanceToPath),
        SlotOf<Distance<Base>>(&Base::SquareDistanceToPath), SlotOf(&Base::SquareDistanceToPoint),
        SlotOf<Determine<Polyline>>(&Base::DetermineSplitPositions),
        SlotOf<Determine<Arc>>(&Base::DetermineSplitPositions),
        SlotOf<Determine<Base>>(&Base::DetermineSplitPositions),
        SlotOf(&Base::DoSplits), SlotOf(&Base::Reverse), SlotOf(&Base::IsValid), SlotOf(&Base::Cleanup),
        SlotOf(&Base::Clone), SlotOf(&Base::MergeWith), SlotOf(&Base::MergeWithArc), SlotOf(&Base::MergeWithPolyline),
        SlotOf(&Base::Append), SlotOf(&Base::AppendArc), SlotOf(&Base::AppendPolyline),
        SlotOf(&Base::Prepend), SlotOf(&Base::PrependArc), SlotOf(&Base::PrependPolyline),
        SlotOf(&Base::IntersectWithVerticalProbeLine), SlotOf(&Base::WindAroundPoint),
        SlotOf(&Base::AppendValidWindingPoints),
        SlotOf(&Base::CanAppendVertex), SlotOf(&Base::AppendVertex),
        SlotOf(&Base::CanPrependVertex), SlotOf(&Base::PrependVertex),
        SlotOf<PartsInRect>(&Base::CreatePathParts), SlotOf<PartsInHash>(&Base::CreatePathParts),
        SlotOf(&Base::GetInflatePolygon), SlotOf(&Base::TryToCorrectProblems),
        SlotOf(&Base::RecalculateBoundingRect), SlotOf(&CPathObjectBaseOpened::DoPostTransformActions),
    };
    // clang-format on
    ASSERT_EQ(slots.size(), 54U);
    for (std::size_t i = 0; i < slots.size(); ++i)
    {
        EXPECT_EQ(slots[i], static_cast<std::ptrdiff_t>(i + 2)) << "operation " << i + 2 << " of 55";
    }
}

#endif

TEST(PathObjectInterface, ClosestPointsBelongToTheObjectCalledHoweverThePairIsForwarded)
{
    auto const low = test::Line({{0.0, 0.0}, {10.0, 0.0}});
    auto const high = test::Line({{0.0, 3.0}, {10.0, 4.0}});
    CPathObjectArc const dome({2.0, 1.0}, {-2.0, 1.0}, {0.0, 1.0}, true);
    CPathObjectArc const far({2.0, 9.0}, {-2.0, 9.0}, {0.0, 9.0}, true);
    CPathObjectBase const* const objects[] = {low.get(), high.get(), &dome, &far};
    for (CPathObjectBase const* a : objects)
    {
        for (CPathObjectBase const* b : objects)
        {
            TPoint<double> onA;
            TPoint<double> onB;
            double const distance = a->SquareDistanceToPath(*b, onA, onB);
            TPoint<double> ignored;
            EXPECT_LT(a->SquareDistanceToPoint(onA.x, onA.y, ignored), 1e-20);
            EXPECT_LT(b->SquareDistanceToPoint(onB.x, onB.y, ignored), 1e-20);
            double const dx = onA.x - onB.x;
            double const dy = onA.y - onB.y;
            EXPECT_NEAR(distance, dx * dx + dy * dy, 1e-12);
        }
    }
}

} // namespace
} // namespace geometry
