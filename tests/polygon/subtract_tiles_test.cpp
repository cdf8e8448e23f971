// Subtracting many polygons in tiles: the exact region without seams, the same with any number of workers, and requests
// to stop, exceptions and wild coordinates. The thread sanitizer runs all of it. Each set begins with small squares at
// the origin, so that the grid does, too.
#include <array>
#include <atomic>
#include <chrono>
#include <cmath>
#include <stdexcept>

#include <geometry/clip/polygon_clip_base.h>
#include <gtest/gtest.h>

#include "support/builders.h"
#include "support/failing_allocator.h"
#include "support/region_oracle.h"
#include "support/shape_generators.h"

namespace geometry::test
{

using Clock = std::chrono::steady_clock;
constexpr double Side = 24000000.0;

/// Counts the living objects of its kind. Cloning throws on threads of the library if `isBroken`.
struct CCountedInfo : CPathObjectBase::CUserInfoInterface
{
    CCountedInfo() { ++alive; }
    ~CCountedInfo() override { --alive; }
    CUserInfoInterface* Clone() const override
    {
        if (isBroken && this_thread::get_id() != thread::id()) throw std::runtime_error("no copy");
        ++cloned;
        return new CCountedInfo;
    }
    CUserInfoInterface* CloneForMerge(CPathObjectBase const*, CPathObjectBase const*) const override { return Clone(); }
    static inline std::atomic<long> alive{0}, cloned{0};
    static inline std::atomic<bool> isBroken{false};
};

struct TBoard
{
    TBoard(CPolygon const & s, int squares, std::vector<CPolygon> const & others = {}) : subject(s)
    {
        for (int i = 0; i < squares; ++i)
            Add(Rect(2000.0 * i, 0, 2000.0 * i + 1000, 1000));
        for (CPolygon const & polygon : others)
            Add(polygon);
    }
    void Add(CPolygon const & polygon) { PushPolygon(cutters, std::make_unique<CPolygon>(polygon)); }
    PolygonRange Range() const { return {cutters.begin(), cutters.end()}; }

    CPolygon subject;
    OwningPolygonVector cutters;
};

/// The result, bit by bit, and how many clips came to nothing; empty if it failed.
std::string Subtract(CPolygon const & subject, PolygonRange const & cutters, unsigned int workers)
{
    auto const gaveUp = CPolygonClipBase<double>::GetGaveUpCount();
    OwningPolygonVector result;
    if (!subject.SubtractPolygons(result, cutters, workers)) return result.empty() ? "" : "not empty";
    std::string text = std::to_string(CPolygonClipBase<double>::GetGaveUpCount() - gaveUp) + " gave up";
    for (CPolygon const* polygon : result)
        text += '\n' + PrintShape(ShapeOf(*polygon));
    return text;
}

std::string Subtract(TBoard const & board, unsigned int workers)
{
    return Subtract(board.subject, board.Range(), workers);
}

/// What is wrong with the result: also vertices at a tile border that are on no outline of the input.
std::string FaultsOf(TBoard const & board, PolygonVector & result)
{
    std::string faults = board.subject.SubtractPolygons(result, board.Range(), 1) ? "" : "false ";
    auto const isMember = [](bool inSubject, bool inCutter) { return inSubject && !inCutter; };
    TJudgement const judgement = Judge({&board.subject}, board.Range(), {{&result, isMember}});
    TVerdict const & verdict = judgement.verdicts[0];
    double const limit = 1e-8 * judgement.boundingArea; // retries of the clipper move outlines
    if (!(verdict.difference <= limit && std::abs(TotalArea(result) - verdict.area) <= limit)) faults += "off ";
    if (!(verdict.overlap <= limit)) faults += "overlap ";
    auto const isAtBorder = [](double x) { return std::abs(x - Side * std::round(x / Side)) < 0.35; };
    auto const isSeam = [&](Point const & v)
    {
        Point at;
        auto const isOn = [&](CPolygon const* p) { return p->SquareDistanceToPoint(v.x, v.y, false, at) < 25.0; };
        return (isAtBorder(v.x) || isAtBorder(v.y)) && !isOn(&board.subject) &&
               std::none_of(board.cutters.begin(), board.cutters.end(), isOn);
    };
    for (CPolygon const* ring : result)
        if (std::any_of(ring->GetVerticesBegin(), ring->GetVerticesEnd(), isSeam)) faults += "seam ";
    return faults;
}

/// Plates, rings, stadiums and gears; some reach a tile border exactly, or where the tiles are cut.
std::unique_ptr<TBoard> MakeBoard(unsigned int seed)
{
    CShapeGenerator random(seed);
    double const size = Side * random.Int(2, 4);
    Shape const plate =
        ParseShape("M -0.1,-0.2 L 1.2,-0.2 A ccw 1,0.35 0.8,0.9 L -0.1,0.8 Z M 0.4,0.3 A cw 0.5,0.3 0.4,0.3 Z");
    auto board = std::make_unique<TBoard>(*MakePolygon(Mapped(plate, size, 0, 0, 0)), 1);
    while (board->cutters.size() < 60)
    {
        Shape const shape = Mapped(seed % 2 == 0 ? random.Holed() : random.Any(), random.Int(100, 800), 0, 0, 0);
        CBoundingRect<double> const at = MakePolygon(shape)->GetBoundingRect();
        auto const place = [&](double low, double high)
        {
            double const places[] = {Side - low, Side - high, Side - high + 0.1, Side};
            int const choice = random.Int(0, 5);
            return choice < 4 ? places[choice] : random.Real(-low, size - high);
        };
        double const x = place(at.minX, at.maxX), y = place(at.minY, at.maxY);
        if (x + at.minX >= 0 && y + at.minY >= 0) board->Add(*MakePolygon(Mapped(shape, 1, 0, x, y)));
    }
    return board;
}

/// Discs and a ring with 50 user infos, in four tiles.
std::unique_ptr<TBoard> MakeSmallBoard()
{
    auto board = std::make_unique<TBoard>(WithHole(Rect(1e6, -1e6, 47e6, 40e6), Rect(2e7, 2e7, 26e6, 26e6)), 1);
    for (int i = 0; i < 48; ++i)
        board->Add(Disc(4e6 + i % 7 * 6.4e6, 2e6 + i / 7 * 6.4e6, i % 5 == 0 ? 3.6e6 : 2e6));
    board->Add(WithHole(Disc(24e6, 23e6, 9e6), Disc(24e6, 23e6, 8e6)));
    for (CPolygon const* polygon : board->cutters)
        polygon->GetOutline().front()->SetUserInfo(new CCountedInfo);
    return board;
}

TEST(SubtractTiles, KnownRegions)
{
    CPolygon const whole = Rect(-1e6, -1e6, 60e6, 30e6), far = Rect(47e6, 23e6, 48e6, 24e6);
    CPolygon const holed = WithHole(whole, Rect(1e7, 1e7, 3e7, 2e7)),
                   frame = WithHole(Rect(4e6, 4e6, 9e6, 9e6), Disc(6e6, 6e6, 1e6));
    struct
    {
        char const* name;
        CPolygon subject;
        int squares;
        std::vector<CPolygon> cutters; ///< beside the squares
        std::size_t count;
    } const cases[] = {
        {"49: no tiles", whole, 49, {}, 1},
        {"50: one tile", whole, 50, {}, 1},
        {"within the tile", Rect(0, 0, 1e7, 1e7), 50, {far}, 1},
        {"at a border, at a corner", whole, 50, {far, Rect(23e6, 2e6, Side, 3e6), Rect(Side, 2e6, 25e6, Side)}, 1},
        {"cut along a border", whole, 50, {far, Rect(Side, -2e6, Side + 1, 31e6)}, 2},
        {"across a corner of tiles", whole, 50, {Disc(Side, Side, 3e6), Rect(47e6, 29e6, 48e6, 48e6)}, 1},
        {"hole touched and entered", holed, 50, {far, Rect(8e6, 12e6, 10e6, 14e6), Disc(30e6, 15e6, 2e6)}, 1},
        {"hole covered", holed, 50, {Rect(9e6, 9e6, 31e6, 21e6)}, 1},
        {"islands", whole, 50, {WithHole(Rect(26e6, 4e6, 46e6, 22e6), Rect(3e7, 9e6, 4e7, 1e7)), frame}, 3},
        {"nothing left", whole, 50, {Rect(-2e6, -2e6, 61e6, 31e6)}, 0},
        {"nothing hit", Rect(0, 2e6, 3e7, 4e6), 50, {far}, 1},
    };
    for (auto const & test : cases)
    {
        OwningPolygonVector result;
        EXPECT_EQ(FaultsOf(TBoard(test.subject, test.squares, test.cutters), result), "") << test.name;
        ASSERT_EQ(result.size(), test.count) << test.name;
        EXPECT_TRUE(test.count < 3 || result[1]->GetBoundingRect().minX < result[2]->GetBoundingRect().minX)
            << "islands in tile order";
    }
}

/// Two tiles see them whole: an island that ends just before a border in a hole that ends just beyond it, and a slot.
TEST(SubtractTiles, WhatLiesInTheOverlapOfTilesCountsOnce)
{
    CPolygon const ring = WithHole(Rect(1e7, 4e6, Side + 0.2, 2e7), Rect(12e6, 6e6, Side - 0.1, 18e6));
    for (CPolygon const & cutter : {ring, Rect(Side - 0.2, 4e6, Side + 0.2, 2e7)})
    {
        OwningPolygonVector result;
        TBoard const board(Rect(-1e6, -1e6, 6e7, 3e7), 50, {Rect(47e6, 23e6, 48e6, 24e6), cutter});
        EXPECT_EQ(FaultsOf(board, result), "");
        EXPECT_EQ(result.size(), 1 + cutter.GetHoles().size());
        EXPECT_EQ(result[0]->GetHoles().size(), 52U);
    }
}

TEST(SubtractTiles, RandomBoardsAreExactAndTheSameWithAnyNumberOfWorkers)
{
    int undecided = 0;
    for (unsigned int seed = 0; seed < 20; ++seed)
    {
        auto const board = MakeBoard(seed);
        std::string const expected = Subtract(*board, 1);
        for (unsigned int const workers : {2U, 3U, 8U})
            ASSERT_EQ(Subtract(*board, workers), expected) << seed;
        OwningPolygonVector result;
        std::string const faults = FaultsOf(*board, result);
        bool const isDecided = expected[0] == '0';
        EXPECT_TRUE(faults.empty() || !isDecided) << "seed " << seed << ": " << faults;
        undecided += isDecided ? 0 : 1;
    }
    EXPECT_LE(undecided, 9) << "shapes lie on tile borders on purpose: some clips give up, and the count tells";
}

TEST(SubtractTiles, PolygonsGivenTwiceCountAsTwo)
{
    for (unsigned int seed = 0; seed < 20; ++seed)
    {
        auto const board = MakeBoard(seed);
        TBoard copies(board->subject, 0);
        PolygonRange repeated;
        for (CPolygon const* cutter : board->cutters)
            for (std::size_t n = 0; n < 1 + repeated.size() % 3; ++n)
                copies.Add(*cutter), repeated.push_back(cutter);
        ASSERT_EQ(Subtract(board->subject, repeated, 2), Subtract(copies, 1)) << seed;
    }
}

TEST(SubtractTiles, UserInfosAreClonedAsOftenAsTheyAlwaysWere)
{
    auto const board = MakeSmallBoard();
    long const before = CCountedInfo::cloned;
    Subtract(*board, 1);
    EXPECT_EQ(CCountedInfo::cloned - before, 1929);
}

TEST(SubtractTiles, RequestToStopAtAnyMomentEndsAllWorkersAndStaysPending)
{
    auto const board = MakeSmallBoard();
    auto const start = Clock::now();
    std::string const expected = Subtract(*board, 1);
    auto const duration = Clock::now() - start;
    CShapeGenerator random(1);
    int stopped = 0;
    for (int i = 0; i < 1000; ++i)
    {
        auto const moment = duration * random.Real(-0.05, 1.1); // before the call, if negative
        std::atomic<bool> isRunning{false};
        std::string answer;
        bool isPending = false;
        auto const work = [&]
        {
            while (moment.count() < 0 && !this_thread::cancellation_requested())
                this_thread::yield();
            isRunning = true;
            answer = Subtract(*board, static_cast<unsigned int>(i % 4));
            isPending = this_thread::cancellation_requested();
        };
        auto const workDisabled = [&]
        {
            this_thread::disable_cancellation const guard;
            work();
        };
        thread caller([&] { i % 3 == 0 ? workDisabled() : work(); });
        while (moment.count() >= 0 && !isRunning)
            this_thread::yield();
        for (auto const due = Clock::now() + moment; Clock::now() < due;)
            this_thread::yield();
        caller.cancel();
        caller.join();
        ASSERT_TRUE(answer.empty() ? isPending : answer == expected) << i << ' ' << answer.substr(0, 80);
        ASSERT_EQ(CCountedInfo::alive, 50);
        stopped += answer.empty() ? 1 : 0;
    }
    EXPECT_TRUE(stopped > 20 && stopped < 1000) << stopped; // on a busy machine most are done before they are asked
}

TEST(SubtractTiles, FreshOperandsServeSeveralThreadsThatStartWorkers)
{
    std::string const expected = Subtract(*MakeSmallBoard(), 1);
    auto const board = MakeSmallBoard(); // no cache of it is filled
    std::vector<std::string> answers(3);
    {
        thread a([&] { answers[0] = Subtract(*board, 1); }), b([&] { answers[1] = Subtract(*board, 2); });
        answers[2] = Subtract(*board, 30);
        a.join(), b.join();
    }
    EXPECT_EQ(answers, std::vector<std::string>(3, expected));
}

TEST(SubtractTiles, ExceptionsLeaveTheResultAsItWas)
{
    auto const board = MakeSmallBoard();
    OwningPolygonVector result;
    PushPolygon(result, std::make_unique<CPolygon>(board->subject));
    CPolygon const* const kept = result[0];
    auto const subtract = [&](unsigned int workers)
    { return board->subject.SubtractPolygons(result, board->Range(), workers); };
    CCountedInfo::isBroken = true;
    for (unsigned int workers = 2; workers < 12; ++workers)
        EXPECT_THROW(subtract(workers), std::runtime_error);
    CCountedInfo::isBroken = false;
    bool isDone = false;
    for (long allowed = 0; !isDone; allowed += 1 + allowed / 64)
    {
        ASSERT_TRUE(result.size() == 1 && result[0] == kept && CCountedInfo::alive == 50) << allowed;
        try
        {
            CAllocationLimit const limit(allowed);
            isDone = subtract(1 + allowed % 2);
        }
        catch (std::bad_alloc const &)
        {
        }
    }
}

TEST(SubtractTiles, WildCoordinatesEnd)
{
    for (double const wild : {HUGE_VAL, -HUGE_VAL, std::nan(""), 1e300, -1e300, 1e20, 3e16, 1e13, 5e9})
        for (CPolygon const & cutter : {Rect(1e6, 0, wild, 9e6), Rect(wild, wild, 9e6, 9e6), Disc(0, wild, 9e6),
                                        Disc(0, 0, wild), Rect(wild, 5, std::nextafter(wild, 0), 9e6)})
        {
            TBoard const board(Rect(-1e6, -1e6, 60e6, 30e6), 50, {cutter});
            OwningPolygonVector result;
            bool const isDone = board.subject.SubtractPolygons(result, board.Range(), 2);
            EXPECT_TRUE(isDone ? std::isfinite(TotalArea(result)) : result.empty()) << wild;
        }
}

TEST(SubtractTiles, OutlinesThatCrossThemselvesDontBreedHoles)
{
    // full circles across the edges of squares, and arcs that go back over themselves; the seeds are those that did
    constexpr std::array outlines{"M 0,0 L 4,0 A ccw 5,0 4,0 L 4,4 0,4 Z",
                                  "M 0,0 L 4,0 A cw 5,0 4,0 L 4,4 0,4 Z",
                                  "M 0,0 L 4,0 A ccw 3,1 4,0 L 4,4 0,4 Z",
                                  "M 0,0 L 4,0 A ccw 4,2 4,4 A cw 4,5 4,4 L 0,4 Z",
                                  "M 0,0 L 4,0 A ccw 4,-1 4,0 A ccw 4,2 4,4 A cw 3,4 4,4 L 0,4 Z",
                                  "M 0,0 A cw 1,0 0,0 A ccw -1,0 0,0 Z"};
    for (unsigned long const seed : {823UL, 880UL, 1505UL})
    {
        CShapeGenerator random(seed);
        TBoard board(Rect(-5e6, -5e6, 105e6, 105e6), 0);
        for (int i = 0; i < 60; ++i)
        {
            std::size_t const outline = random.Int(0, outlines.size() - 1);
            double const x = random.Int(0, 900) * 1e5;
            double const y = random.Int(0, 900) * 1e5;
            board.Add(*MakePolygon(Mapped(ParseShape(outlines.at(outline)), 2e6, 0, x, y)));
        }
        OwningPolygonVector result;
        EXPECT_TRUE(board.subject.SubtractPolygons(result, board.Range(), 1));
        std::size_t holes = 0;
        for (CPolygon const* polygon : result)
            holes += polygon->GetHoles().size();
        EXPECT_LT(holes, 10000U) << seed;
    }
}

} // namespace geometry::test
