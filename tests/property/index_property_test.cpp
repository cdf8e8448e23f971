// The fast ways by an index against the plain loops: the same results bit for bit.
#include <geometry/numeric/self_destructing_container.h>
#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <numbers>
#include <sstream>
#include <thread>

#include "numeric/chain_index.h"
#include "polygon/folding.h"
#include "polygon/outline_facts.h"
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

/// Notes what it is asked for, and of which objects.
struct CNotedInfo : CPathObjectBase::CUserInfoInterface
{
    CNotedInfo(std::size_t number, std::ostream & calls) : m_Number(number), m_Calls(calls) {}
    CUserInfoInterface* Clone() const override
    {
        m_Calls << " c" << m_Number;
        return new CNotedInfo(*this);
    }
    CUserInfoInterface* CloneForMerge(CPathObjectBase const* first, CPathObjectBase const* second) const override
    {
        m_Calls << " m" << m_Number << std::hexfloat;
        for (auto const & p :
             {first->GetStartPoint(), first->GetEndPoint(), second->GetStartPoint(), second->GetEndPoint()})
            m_Calls << ' ' << p.x << ',' << p.y;
        return new CNotedInfo(*this);
    }

    std::size_t m_Number;
    std::ostream & m_Calls;
};

/// Gives such a user info to every `step`th path object; 0: to none.
void Note(CPolygon const & polygon, std::size_t step, std::ostream & calls)
{
    for (std::size_t i = 0; step != 0 && i < polygon.GetOutline().size(); i += step)
        polygon.GetOutline()[i]->SetUserInfo(new CNotedInfo(i, calls));
}

/// All results as text with every digit, how many attempts the outlines took, and the calls of user infos.
std::string Fingerprint(Shape const & first, Shape const & second, EIndexUse use, std::size_t noted)
{
    TIndexUse const guard(use);
    auto const a = MakePolygon(first), b = MakePolygon(second);
    std::string text;
    std::ostringstream calls;
    Note(*a, noted, calls), Note(*b, noted, calls);
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
    return text + calls.str();
}

using Make = Shape (*)(CShapeGenerator & generator);

/// The ring of an outline as a clip reads it.
CPathObjectHolder* MakeRing(CPolygon const & polygon, CRingMemory & memory)
{
    CPathObjectHolder* const ring = MakeHolder(memory);
    ring->m_Next = ring->m_Previous = ring;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        bool const isFirst = object == polygon.GetOutline().front();
        (isFirst ? ring : InsertHolder(nullptr, ring, ring->m_Previous, false))->m_SharedObject = object;
    }
    return ring;
}

/// Cuts, flags, partners, marks and objects of two rings, one after the other.
void PrintRings(std::ostream & text, CPathObjectHolder const* subject, CPathObjectHolder const* clip)
{
    std::map<CPathObjectHolder const*, std::size_t> number{{nullptr, 0}};
    std::vector<CPathObjectHolder const*> holders;
    for (CPathObjectHolder const* const ring : {subject, clip})
        for (CPathObjectHolder const* h = ring; h != ring || number.count(h) == 0; h = h->m_Next)
            number.emplace(h, number.size()), holders.push_back(h);
    for (CPathObjectHolder const* h : holders)
    {
        text << '\n'
             << h->m_IsIntersection << h->m_WasIntersection << h->m_NewVertex << static_cast<int>(h->m_Direction)
             << ' ';
        text << number[h->m_Neighbour] << ' ' << h->GetPathObject()->CanAppendVertex();
        for (auto const & entry : h->HasSplitPositions() ? *h->m_SplitPositions : CPathObjectBase::SplitPositionList())
            for (auto const & point : entry.second)
                text << (&point == &entry.second.front() ? " | " : " ") << point.x << ',' << point.y << point.touchOnly;
        for (auto p = h->GetPathObject()->GetPointsBegin(); p != h->GetPathObject()->GetPointsEnd(); ++p)
            text << ' ' << p->x << ',' << p->y;
    }
}

/// What each stage of a clip makes of the two rings.
std::string Stages(CPolygon const & first, CPolygon const & second, EIndexUse use)
{
    TIndexUse const guard(use);
    std::ostringstream text;
    text << std::hexfloat;
    CRingMemory subjectMemory, clipMemory;
    CPathObjectHolder *subject = MakeRing(second, subjectMemory), *clip = MakeRing(first, clipMemory);
    text << NoteCuts(subject, clip);
    PrintRings(text, subject, clip);
    DeleteRing(subject), DeleteRing(clip);
    subject = MakeRing(second, subjectMemory), clip = MakeRing(first, clipMemory);
    bool const sameWinding = CTestAccess::GetWinding(first) == CTestAccess::GetWinding(second);
    auto const outcome = FindAndSplitIntersections(subject, clip, sameWinding);
    text << static_cast<int>(outcome);
    PrintRings(text, subject, clip);
    CRingIndex indexes[2];
    indexes[0].Serve(subject, nullptr), indexes[1].Serve(clip, nullptr);
    CPathObjectHolder *const s = SelectStartHolder(subject), *const c = SelectStartHolder(clip);
    if (outcome == EIntersectionOutcome::eIntersections && s != nullptr && c != nullptr)
    {
        text << static_cast<int>(ResolveDegenerateIntersections(s, sameWinding));
        PrintRings(text, s, c);
        text << static_cast<int>(MarkRing(s, c, false, first.GetBoundingRect()));
        text << static_cast<int>(MarkRing(c, s, true, second.GetBoundingRect()));
        PrintRings(text, s, c);
    }
    DeleteRing(subject), DeleteRing(clip);
    return text.str();
}

/// An arc whose ends all but meet, level with its centre: their misfit says which of them comes first.
Shape AllButClosed(CShapeGenerator & g)
{
    double const x = g.Int(2, 9) * (g.Int(0, 1) == 0 ? -CShapeGenerator::Unit : CShapeGenerator::Unit);
    TEdge const arc{{x - g.Real(0.001, 0.009), 0}, true, g.Int(0, 1) == 0, {}, true};
    TEdge const corner{{x * 1.25, g.Int(-2, 2) * 256.0}, false, true, {}, true};
    return Mapped({{{{x, 0}, false, true, {}, false}, arc, corner}}, 1, 0, g.Int(-4, 4) * 512, g.Int(-4, 4) * 512);
}

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
        Shape first = i % 25 == 0 ? AllButClosed(generator) : make(generator);
        for (TEdge & edge : first[0]) // arcs fit badly
            edge.centre.x += i % 25 == 1 ? generator.Int(-1, 1) * 128 : 0;
        Shape const second = i % 7 == 0 ? generator.Disguised(first) : make(generator);
        auto const all = [&](EIndexUse use)
        {
            return Stages(*MakePolygon(first), *MakePolygon(second), use) +
                   Fingerprint(first, second, use, i % 11 < 5 ? static_cast<std::size_t>(i % 11) : 0);
        };
        ASSERT_EQ(all(EIndexUse::eNever), all(EIndexUse::eAlways))
            << "\n  A " << PrintShape(first) << "\n  B " << PrintShape(second);
    }
}

/// Points count as on an arc of 1e-7 units that passes for nearly its whole circle, and are far from its rectangle.
TEST(IndexProperty, ArcsOfDoubtfulSenseHoldPointsAsInThePlainLoops)
{
    Shape const first = ParseShape("M -4096,0 L 5557.8377344865112,1145.5203514887667 A ccw 4763.703125,2019.625 "
                                   "5557.837734543451,1145.5203514257248 A cw 3348.71875,341.515625 "
                                   "5674.6609730490154,0 L 4093.8211596864344,-522.89427884622853 L -4096,0 Z");
    Shape const second = ParseShape("M 4093.8211596864344,-522.89427884622853 L 5557.837734543451,1145.515625 A cw "
                                    "4763.703125,2019.625 5557.8377344865112,1145.5203514887667 L 4096,2752 L "
                                    "4093.8211596864344,-522.89427884622853 Z");
    EXPECT_EQ(Stages(*MakePolygon(first), *MakePolygon(second), EIndexUse::eNever),
              Stages(*MakePolygon(first), *MakePolygon(second), EIndexUse::eAlways));
}

/// An arc that ends a rounding error beside one of the points that prove a result: its neighbour counts or itself.
TEST(IndexProperty, ProofsTellTheEndsOfArcsAsInThePlainLoops)
{
    Shape const crossing = ParseShape("M -512,1024 L 512,1024 512,2048 -512,2048 Z");
    for (double const target : {-1e9, 0.0, 1e9})
    {
        double const proof = 0.7548776662466927 * 8192, x = target == 0 ? proof : std::nextafter(proof, target);
        Shape const plate = {{{{8192, 0}, false, true, {}, true},
                              {{8192, 4096}, false, true, {}, false},
                              {{x, 4096}, true, true, {(8192 + x) / 2, 4096}, true},
                              {{0, 4096}, false, true, {}, true},
                              {{0, 0}, false, true, {}, false}}};
        EXPECT_EQ(Fingerprint(plate, crossing, EIndexUse::eNever, 0),
                  Fingerprint(plate, crossing, EIndexUse::eAlways, 0));
        SelfDestructingContainer<std::vector<CPolygon*>> left;
        MakePolygon(plate)->SubtractPolygon(left, *MakePolygon(crossing));
        ASSERT_EQ(left.size(), 1U);
        EXPECT_NEAR(left[0]->GetArea(), MakePolygon(plate)->GetArea() - 512 * 1024, 1);
    }
}

/// What many shapes come to: all in one, taken away from one, and the first one's outline as a band; with the calls of
/// the user infos that every `noted`th shape has.
std::string FingerprintOfMany(std::vector<Shape> const & shapes, EIndexUse use, std::size_t noted)
{
    TIndexUse const guard(use);
    std::ostringstream calls;
    std::vector<std::unique_ptr<CPolygon>> polygons;
    std::vector<CPolygon const*> range;
    for (Shape const & shape : shapes)
    {
        polygons.push_back(MakePolygon(shape));
        range.push_back(polygons.back().get());
        Note(*polygons.back(), noted != 0 && polygons.size() % noted == 0 ? 2 : 0, calls);
    }
    std::string text;
    SelfDestructingContainer<std::vector<CPolygon*>> merged, left, grown;
    text += CPolygon::MergePolygons(merged, range) ? "true" : "false";
    std::vector<CPolygon const*> const rest(range.begin() + 1, range.end());
    text += range.front()->SubtractPolygons(left, rest, 1) ? " true" : " false";
    if (shapes.size() % 2 == 0) merged.front()->GetInflatedPolygon(grown, shapes.size() % 8 == 0 ? 700.0 : -300.0);
    for (auto const* result : {&merged, &left, &grown})
        for (CPolygon const* polygon : *result)
            text += '\n' + PrintShape(ShapeOf(*polygon));
    return text + calls.str();
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
        std::size_t const noted = i % 3 == 0 ? 1 + shapes.size() % 9 : 0;
        ASSERT_EQ(FingerprintOfMany(shapes, EIndexUse::eNever, noted),
                  FingerprintOfMany(shapes, EIndexUse::eAlways, noted))
            << i;
    }
}

/// Distances and containments in hexadecimal digits. Several points, so that an index comes to be.
std::string Measure(Shape const & first, Shape const & second, EIndexUse use)
{
    TIndexUse const guard(use);
    auto const a = MakePolygon(first), b = MakePolygon(second);
    std::ostringstream text;
    text << std::hexfloat;
    TPoint<double> p, q;
    auto const print = [&](double d) { text << d << ' ' << p.x << ',' << p.y << ' ' << q.x << ',' << q.y << '\n'; };
    for (int solid = 0; solid < 8; ++solid)
    {
        if (solid == 4) CTestAccess::ReverseWinding(*a);
        print(a->SquareDistanceToPolygon(*b, (solid & 1) != 0, (solid & 2) != 0, p, q));
    }
    for (Ring const & ring : second)
        for (std::size_t i = 0; i < ring.size() && i < 12; ++i)
        {
            TPoint<double> const & at = ring[i].end;
            text << a->PointInPolygon(at.x, at.y) << a->PolygonInPolygon(*b) << ' ';
            print(a->SquareDistanceToPoint(at.x, at.y, i % 2 == 0, p));
        }
    for (std::size_t i = 0; i < 12; ++i) // object by object
    {
        auto const &x = a->GetOutline(), &y = b->GetOutline();
        print(x[i % x.size()]->SquareDistanceToPath(*y[i * 5 % y.size()], p, q));
    }
    return text.str();
}

/// A ring of many edges around the origin, in waves or with teeth; on the lattice there are many equal distances.
Shape ManyEdges(CShapeGenerator & random)
{
    int const count = 4 * random.Int(8, 60), kind = random.Int(0, 3), waves = random.Int(1, 9);
    double const size = random.Int(4, 9) * CShapeGenerator::Unit, phase = random.Int(0, 1) * random.Real(0, 1);
    Ring ring;
    for (int i = 0; i < count; ++i)
    {
        double const angle = (i + phase) * 2 * std::numbers::pi / count;
        double const tooth = kind == 0 ? 1 + 0.2 * std::sin(waves * angle) : kind == 1 && i % 4 < 2 ? 0.9 : 1.0;
        TEdge edge{{tooth * size * std::cos(angle), tooth * size * std::sin(angle)}, kind == 1 && i % 2 == 1, true, {}};
        if (kind == 2) edge.end = {std::round(edge.end.x / 256) * 256, std::round(edge.end.y / 256) * 256};
        if (kind == 3) // flat teeth all but on the x axis, so that rounding says what is in reach of them
            edge.end = i > count - 3 ? TPoint<double>((count - 1 - i) * count * 64.0, 4096)
                                     : TPoint<double>((i + i % 2) * 64, i % 4 < 2 ? 512 : random.Real(0, 3e-12));
        edge.beginsObject = edge.isArc || waves % 2 == 0 || random.Int(0, 99) == 0;
        ring.push_back(edge);
    }
    return {ring};
}

/// What is known of an outline that went through several steps is what would be found out of it now.
void ExpectCurrentFacts(CPolygon const & polygon)
{
    if (!CPolygonInternals::HasFacts(polygon)) return;
    COutlineFacts const & kept = CPolygonInternals::FactsOf(polygon);
    COutlineFacts anew(kept.GetOrigin());
    for (CPathObjectBase const* object : polygon.GetOutline())
        anew.Append(*object);
    anew.Complete(polygon.GetOutline());
    ASSERT_EQ(kept.GetCount(), anew.GetCount());
    for (std::size_t i = 0; i < anew.GetCount(); ++i)
        for (std::size_t const last : {i + 1, std::min(i * i % 97 + i + 1, anew.GetCount())})
        {
            TFactsSum const a = kept.Sum(i, last), b = anew.Sum(i, last);
            EXPECT_TRUE(a.rect.minX == b.rect.minX && a.rect.minY == b.rect.minY && a.rect.maxX == b.rect.maxX &&
                        a.rect.maxY == b.rect.maxY);
            EXPECT_TRUE(a.hasArc == b.hasArc && a.isSteady == b.isSteady && a.isApart == b.isApart);
            EXPECT_NEAR(a.length, b.length, 1e-12 * b.length);
            EXPECT_NEAR(a.area, b.area, anew.GetAreaRounding(polygon.GetBoundingRect()));
        }
}

/// One outline that grows and shrinks step by step: small shapes begin at its vertices, or beside them by less than
/// what counts as on an arc, so that short arcs come to be; the two coordinates have different tolerances.
TEST(IndexProperty, OutlinesFoldAsIfThatWereNot)
{
    double const offsets[] = {0, 0, 1e-9, 0.005, 0.03, 0.05};
    for (unsigned int seed = 0; seed < 400; ++seed)
    {
        CShapeGenerator g(seed);
        Shape base = ManyEdges(g);
        for (TEdge & edge : base[0]) // arcs fit a little badly, or so much that they are repaired
            (seed % 2 == 0 ? edge.end : edge.centre).x += (seed % 2 == 0 ? 0.02 : 20) * g.Int(-1, 1);
        base = Mapped(base, 0.37, 0, 123456, seed % 3 == 0 ? 0 : 7e7);
        std::unique_ptr<CPolygon> outlines[] = {MakePolygon(base), MakePolygon(base)};
        for (int step = 0; step < 8 && outlines[0] != nullptr; ++step)
        {
            Shape const shape = Mapped(g.Any(), 0.37, 0, 0, 0);
            TPoint<double> const from = shape[0][0].end;
            auto const & objects = outlines[0]->GetOutline();
            TPoint<double> const to =
                objects[static_cast<std::size_t>(g.Int(0, 9999)) % objects.size()]->GetStartPoint();
            auto const first = MakePolygon(
                Mapped(shape, 1, 0, to.x - from.x + offsets[g.Int(0, 5)], to.y - from.y + offsets[g.Int(0, 5)]));
            EXPECT_EQ(Stages(*first, *outlines[0], EIndexUse::eNever),
                      Stages(*first, *outlines[1], EIndexUse::eAlways));
            std::string texts[2];
            auto const operation = static_cast<CPolygonClipBase<double>::EClipOperation>(g.Int(1, 2));
            for (int way = 0; way < 2; ++way)
            {
                TIndexUse const guard(way == 0 ? EIndexUse::eNever : EIndexUse::eAlways);
                std::unique_ptr<CPolygonClipBase<double>> const clipper(CreateClipper());
                clipper->SetOperation(operation);
                SelfDestructingContainer<std::vector<CPolygon*>> rings;
                auto const result = RunFoldedClip(*clipper, *first, *outlines[way]);
                if (result == CPolygonClipBase<double>::eClipResultReady) clipper->TakeResultPolygons(rings);
                texts[way] = std::to_string(result) + std::to_string(CTestAccess::GetAttempts(*clipper));
                for (CPolygon const* ring : rings)
                    texts[way] += PrintShape(ShapeOf(*ring));
                if (result == CPolygonClipBase<double>::eClipResultReady)
                    outlines[way].reset(rings.empty() ? nullptr : std::exchange(rings.front(), nullptr));
            }
            ASSERT_EQ(texts[0], texts[1]) << seed;
            if (outlines[1] != nullptr) ExpectCurrentFacts(*outlines[1]);
        }
    }
}

TEST(IndexProperty, DistancesAreThoseOfThePlainLoops)
{
    Make const families[] = {ManyEdges, [](CShapeGenerator & g) { return g.Any(); },
                             [](CShapeGenerator & g) { return g.Holed(); }};
    double const scales[] = {1, 1, 0.5, 1.0 / 3, 2, 0.9};
    CShapeGenerator generator(7);
    for (int i = 0; i < 3000; ++i)
    {
        auto const pick = [&](int most) { return generator.Int(0, most); };
        Shape first = families[pick(2)](generator);
        Shape second = pick(4) == 0 ? generator.Disguised(first) : families[pick(2)](generator);
        if (second.size() == 1 && pick(2) == 0) second.push_back(Reversed(Mapped(second, 0.25, 0, 0, 0)).front());
        int const reach = 40 * pick(1);
        double const step = pick(1) == 0 ? 512 : generator.Real(1, 512), turn = pick(9) == 0 ? generator.Real(0, 1) : 0;
        double const unit = pick(12) == 0 ? 1.0 / 2048 : 1; // arcs may count as one that end a unit apart
        second = Mapped(second, scales[pick(5)], turn, step * generator.Int(-reach, reach), -step * pick(reach));
        first = Mapped(first, unit, 0, 0, 0), second = Mapped(second, unit, 0, 0, 0);
        if (i < 50) // caps about nearly one centre, on opposite sides: rounding may take the gap of their circles
        {
            second = Mapped(ParseShape("M 3,-4 A ccw 0,0 3,4 L 2.5,0 Z"), 120, 0, 0, 0);
            first = Mapped(ParseShape("M -6,8 A ccw 0,0 -6,-8 L -4,0 Z"), 120, 0, (i - 25) * 1e-14, 0);
        }
        std::string const plain = Measure(first, second, EIndexUse::eNever);
        for (EIndexUse const use : {EIndexUse::eAlways, EIndexUse::eWhenItPays})
            ASSERT_EQ(plain, Measure(first, second, use))
                << i << "\n  A " << PrintShape(first) << "\n  B " << PrintShape(second);
    }
}

TEST(ThreadedIndex, ReadersOfOnePolygonShareIt)
{
    CShapeGenerator generator(3);
    auto const a = MakePolygon(ManyEdges(generator)), b = MakePolygon(Mapped(ManyEdges(generator), 1, 0, 20000, 0));
    std::vector<double> found(4);
    std::vector<std::thread> readers;
    for (double & d : found)
        readers.emplace_back(
            [&]
            {
                TPoint<double> p, q;
                for (int i = 0; i < 20; ++i)
                    d += a->SquareDistanceToPolygon(*b, false, true, p, q) + a->PointInPolygon(i * 64.0, i * 8.0);
            });
    for (std::thread & reader : readers)
        reader.join();
    EXPECT_EQ(found, std::vector<double>(4, found[0]));
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
