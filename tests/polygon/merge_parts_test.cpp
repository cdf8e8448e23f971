// What a merge keeps beside the polygon that grows: the polygons that wait and the holes, against plain lists of them.
#include <gtest/gtest.h>

#include <cmath>
#include <utility>
#include <vector>

#include "numeric/chain_index.h"
#include "polygon/booleans.h"
#include "polygon/merge.h"
#include "polygon/target_holes.h"
#include "polygon/waiting_polygons.h"
#include "support/builders.h"
#include "support/shape_generators.h"

namespace geometry::test
{
namespace
{

/// On a coarse lattice, so that sides meet, and now and then apart from it by less or more than the tolerance.
CBoundingRect<double> RandomRect(CShapeGenerator & random)
{
    double const unit = random.Int(0, 20) == 0 ? 1e302 : 1e6;
    auto const at = [&]
    { return unit * random.Int(-9, 9) * (1 + random.Int(-1, 1) * (random.Int(0, 1) ? 4e-15 : 4e-13)); };
    double const x = at(), y = at();
    return {x, y, x + unit * random.Int(1, 3), y + unit * random.Int(1, 3)};
}

std::unique_ptr<CPolygon> RandomPolygon(CShapeGenerator & random)
{
    CBoundingRect<double> const r = RandomRect(random);
    return std::make_unique<CPolygon>(RectLine(r.minX, r.minY, r.maxX, r.maxY).release());
}

TEST(MergeParts, RingsInAnyOrderAreNestedByWhatIsAroundThem)
{
    CShapeGenerator random(5);
    std::vector<std::pair<double, double>> places; // x of the middle, half the width: solid, hole, solid
    for (int i = 0; i < 30; ++i)
    {
        for (double const half : {45.0, 30.0, 15.0})
            places.emplace_back(100.0 * i, half);
    }
    for (int round = 0; round < 20; ++round)
    {
        OwningPolygonVector rings;
        for (std::size_t i = places.size(); i-- > 0;)
        {
            std::swap(places[i], places[static_cast<std::size_t>(random.Int(0, static_cast<int>(i)))]);
            auto const [x, half] = places[i];
            PushPolygon(rings, std::make_unique<CPolygon>(RectLine(x - half, -half, x + half, half).release()));
        }
        NestRings(rings);
        ASSERT_EQ(rings.size(), 60U);
        for (CPolygon const* ring : rings)
        {
            double const width = ring->GetBoundingRect().maxX - ring->GetBoundingRect().minX;
            ASSERT_EQ(ring->GetArea(), width > 40.0 ? 90.0 * 90.0 - 60.0 * 60.0 : 30.0 * 30.0);
        }
    }
}

TEST(MergeParts, PolygonsThatWaitAreFoundWhereTheyStand)
{
    for (EIndexUse const use : {EIndexUse::eNever, EIndexUse::eWhenItPays, EIndexUse::eAlways})
    {
        SetIndexUse(use);
        CShapeGenerator random(4);
        CWaitingPolygons waiting, others;
        for (int step = 0; step < 3000; ++step)
        {
            // more and more of them, then fewer and fewer
            if (random.Int(0, 2999) > step) waiting.Add(RandomPolygon(random));
            std::size_t const place = static_cast<std::size_t>(random.Int(0, 99999)) % (waiting.GetEnd() + 1);
            if (place < waiting.GetEnd() && waiting.At(place) != nullptr && random.Int(0, 3) > 0)
                others.Add(waiting.Take(place));
            if (step % 500 == 499) waiting.AddAll(others);
            if (step % 300 == 299) waiting.Tidy();
            std::vector<std::size_t> expected;
            CBoundingRect<double> const box = RandomRect(random);
            for (std::size_t i = place; i < waiting.GetEnd(); ++i)
                if (waiting.At(i) != nullptr && box.Overlaps(waiting.At(i)->GetBoundingRect())) expected.push_back(i);
            ASSERT_EQ(waiting.FindOverlapping(box, place), expected) << step;
        }
        OwningPolygonVector all;
        waiting.TakeAll(all);
        EXPECT_TRUE(waiting.IsEmpty() && std::find(all.begin(), all.end(), nullptr) == all.end());
    }
    SetIndexUse(EIndexUse::eWhenItPays);
}

TEST(MergeParts, MergingAllIsMergingTheFirstWithTheOthers)
{
    CShapeGenerator random(6);
    for (int i = 0; i < 100; ++i)
    {
        OwningPolygonVector all, merged, expected;
        for (int n = random.Int(1, 90); n > 0; --n)
            PushPolygon(all,
                        MakePolygon(Mapped(random.Any(), 1, 0, random.Int(0, 16) * 1024, random.Int(0, 16) * 1024)));
        std::unique_ptr<CPolygonClipBase<double>> const clipper(CreateClipper());
        MergePolygonRange(*all[0], expected, PolygonRange(all.begin() + 1, all.end()), *clipper);
        MergeAll(all, merged, *clipper);
        std::string texts[2];
        for (std::size_t k = 0; k < expected.size() || k < merged.size(); ++k)
            texts[0] += k < expected.size() ? PrintShape(ShapeOf(*expected[k])) : "",
                texts[1] += k < merged.size() ? PrintShape(ShapeOf(*merged[k])) : "";
        ASSERT_EQ(texts[0], texts[1]) << i;
    }
}

TEST(MergeParts, HolesKeepTheirOrderWhenSomeAreReplaced)
{
    CShapeGenerator random(5);
    for (int round = 0; round < 50; ++round)
    {
        CTargetHoles holes;
        PolygonVector expected;
        CPolygon target;
        for (int step = 0; step < 60; ++step)
        {
            OwningPolygonVector pieces;
            for (int i = random.Int(0, 3); i > 0; --i)
                PushPolygon(pieces, RandomPolygon(random));
            std::size_t const at = static_cast<std::size_t>(random.Int(0, 99)) % (expected.size() + 1);
            auto const place = expected.begin() + static_cast<std::ptrdiff_t>(at);
            if (step % 20 == 19)
            {
                holes.DeleteFrom(at);
                expected.resize(at);
                holes.GiveBackTo(target);
                EXPECT_TRUE(holes.IsEmpty());
                holes.TakeFrom(target);
            }
            else if (at < expected.size() && random.Int(0, 1) == 0)
            {
                expected.insert(expected.erase(place), pieces.begin(), pieces.end());
                holes.Replace(at, pieces);
            }
            else
            {
                expected.insert(expected.begin(), pieces.begin(), pieces.end());
                holes.PutInFront(pieces);
            }
            ASSERT_EQ(holes.GetAll(), expected);
            std::vector<std::size_t> overlapping;
            CBoundingRect<double> const box = RandomRect(random);
            for (std::size_t i = 0; i < expected.size(); ++i)
                if (expected[i]->GetBoundingRect().Overlaps(box)) overlapping.push_back(i);
            ASSERT_EQ(holes.FindOverlapping(box), overlapping);
        }
    }
}

TEST(MergeParts, HolesThatBearHolesAreNoticedWhereverTheyComeFrom)
{
    CTargetHoles holes;
    OwningPolygonVector ring;
    PushPolygon(ring, std::make_unique<CPolygon>(RectLine(0, 0, 9, 9).release()));
    CPolygonInternals::AddAsHole(*ring[0], *std::make_unique<CPolygon>(RectLine(3, 3, 6, 6).release()).release());
    EXPECT_FALSE(holes.HasNested());
    holes.PutInFront(ring);
    EXPECT_TRUE(holes.HasNested());
    CPolygon target;
    holes.GiveBackTo(target);
    CPolygonInternals::DeleteHoles(target);
    holes.TakeFrom(target);
    EXPECT_FALSE(holes.HasNested());
}

} // namespace

} // namespace geometry::test
