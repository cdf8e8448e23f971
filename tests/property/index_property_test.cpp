// The fast ways by an index against the plain loops: the same results bit for bit.
#include <geometry/numeric/self_destructing_container.h>
#include <gtest/gtest.h>

#include <cmath>

#include "numeric/chain_index.h"
#include "support/shape_generators.h"
#include "support/test_access.h"

namespace geometry::test
{
namespace
{

struct TIndexUse
{
    explicit TIndexUse(EIndexUse use) { SetIndexUse(use); }
    ~TIndexUse() { SetIndexUse(EIndexUse::eWhenItPays); }
};

/// All results as text with every digit, and how many attempts the outlines took.
std::string Fingerprint(Shape const & first, Shape const & second, EIndexUse use)
{
    TIndexUse const guard(use);
    auto const a = MakePolygon(first), b = MakePolygon(second);
    std::string text;
    using Operation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;
    for (Operation const operation : {&CPolygon::SubtractPolygon, &CPolygon::IntersectPolygon, &CPolygon::MergePolygon})
    {
        SelfDestructingContainer<std::vector<CPolygon*>> result;
        text += (a.get()->*operation)(result, *b) ? " true" : " false";
        for (CPolygon const* polygon : result)
            text += '\n' + PrintShape(ShapeOf(*polygon));
    }
    std::unique_ptr<CPolygonClipBase<double>> const clipper(CreateClipper());
    clipper->SetOperation(CPolygonClipBase<double>::eClipUnion);
    text += std::to_string(clipper->RunClip(*a, *b)) + ' ' + std::to_string(clipper->GetStatus()) + ' ' +
            std::to_string(CTestAccess::GetAttempts(*clipper));
    for (int i = 0; i < 8; ++i) // enough questions for an index
    {
        TPoint<double> const p = a->GetOutline().front()->GetInbetweenPoint();
        text += b->PointInPolygon(p.x + i * 512, p.y) ? '1' : '0';
    }
    return text;
}

using Make = Shape (*)(CShapeGenerator & generator);

TEST(IndexProperty, ResultsAreThoseOfThePlainLoops)
{
    Make const families[] = {
        [](CShapeGenerator & g) { return g.General(); }, [](CShapeGenerator & g) { return g.Lattice(); },
        [](CShapeGenerator & g) { return g.Round(); },   [](CShapeGenerator & g) { return g.Curved(); },
        [](CShapeGenerator & g) { return g.Holed(); },   [](CShapeGenerator & g) { return g.Any(); },
    };
    CShapeGenerator generator(99);
    for (int i = 0; i < 6000; ++i)
    {
        Make const make = families[i % 6];
        Shape const first = make(generator);
        Shape const second = i % 7 == 0 ? generator.Disguised(first) : make(generator);
        std::string const plain = Fingerprint(first, second, EIndexUse::eNever);
        ASSERT_EQ(plain, Fingerprint(first, second, EIndexUse::eAlways))
            << "\n  A " << PrintShape(first) << "\n  B " << PrintShape(second);
    }
}

/// What many shapes come to: all in one, taken away from one, and the first one's outline as a band.
std::string FingerprintOfMany(std::vector<Shape> const & shapes, EIndexUse use)
{
    TIndexUse const guard(use);
    std::vector<std::unique_ptr<CPolygon>> polygons;
    std::vector<CPolygon const*> range;
    for (Shape const & shape : shapes)
    {
        polygons.push_back(MakePolygon(shape));
        range.push_back(polygons.back().get());
    }
    std::string text;
    SelfDestructingContainer<std::vector<CPolygon*>> merged, left, grown;
    text += CPolygon::MergePolygons(merged, range) ? "true" : "false";
    std::vector<CPolygon const*> const rest(range.begin() + 1, range.end());
    text += range.front()->SubtractPolygons(left, rest, 1) ? " true" : " false";
    if (shapes.size() % 4 == 0) merged.front()->GetInflatedPolygon(grown, shapes.size() % 8 == 0 ? 700.0 : -300.0);
    for (auto const* result : {&merged, &left, &grown})
        for (CPolygon const* polygon : *result)
            text += '\n' + PrintShape(ShapeOf(*polygon));
    return text;
}

TEST(IndexProperty, LargeOutlinesGrowAsInThePlainLoops)
{
    CShapeGenerator generator(7);
    for (int i = 0; i < 200; ++i)
    {
        std::vector<Shape> shapes(static_cast<std::size_t>(generator.Int(5, i % 10 == 0 ? 120 : 40)));
        int const room = static_cast<int>((1 + i % 3) * std::sqrt(shapes.size()));
        for (Shape & shape : shapes)
        {
            shape = i % 4 == 0 ? generator.Any() : i % 4 == 1 ? generator.Lattice() : generator.Round();
            shape = Mapped(shape, 1, 0, generator.Int(0, room) * CShapeGenerator::Unit,
                           generator.Int(0, room) * CShapeGenerator::Unit);
        }
        ASSERT_EQ(FingerprintOfMany(shapes, EIndexUse::eNever), FingerprintOfMany(shapes, EIndexUse::eAlways)) << i;
    }
}

TEST(ChainIndex, FindsInOrderWhatALoopFinds)
{
    CShapeGenerator random(5);
    for (int count = 1; count < 700; count += 1 + count / 3)
    {
        std::vector<CBoundingRect<double>> rects;
        double x = 0, y = 0;
        for (int i = 0; i < count; ++i)
        {
            rects.emplace_back(TPoint<double>(x, y), TPoint<double>(x + random.Real(0, 9), y + random.Real(0, 9)));
            x += random.Real(-9, 9);
            y += random.Real(-9, 9);
        }
        CChainIndex const index(rects);
        for (int question = 0; question < 50; ++question)
        {
            TPoint<double> const low(random.Real(-99, 99), random.Real(-99, 99));
            CBoundingRect<double> const query(low, TPoint<double>(low.x + random.Real(0, 60), low.y + 30));
            std::size_t const most = question % 2 == 0 ? 3 : rects.size(); // every other search is stopped
            std::vector<std::size_t> found, expected;
            index.Search([&](auto const & r) { return query.Overlaps(r); },
                         [&](std::size_t i)
                         {
                             found.push_back(i);
                             return found.size() < most;
                         });
            for (std::size_t i = 0; i < rects.size() && expected.size() < most; ++i)
                if (query.Overlaps(rects[i])) expected.push_back(i);
            EXPECT_EQ(found, expected);
        }
    }
}

} // namespace
} // namespace geometry::test
