// A large subtraction costs least where little meets little. Each tile takes its part of the subject, unites what is to
// be subtracted there and subtracts it; then the area of the treated tiles is cut out of the subject and replaced by
// what they came to. The tiles are independent, so any number of threads can work on them, and they are joined in their
// own order, so that the result doesn't tell who did what.
#include "polygon/subtract_tiles.h"

#include <algorithm>
#include <deque>
#include <exception>
#include <iterator>
#include <utility>

#include <geometry/thread/thread.h>

#include "numeric/chain_index.h"
#include "polygon/merge.h"
#include "polygon/subtract_tile.h"
#include "polygon/tile_seams.h"
#include "proof/proved.h"
#include "report/reporting.h"
#include "thread/join_all.h"
#include "thread/mutex.h"

namespace geometry
{

namespace
{

constexpr double TileSide = 24000000.0;
constexpr std::size_t MaxTileCount = 1U << 16; // twice those of all coordinates of 32 bits

// --- the grid ---

using Tiles = std::deque<CSubtractTile>; // its elements never move

/// The tile borders along one axis, the last one at `last`. Empty if there is nothing between the two or the tiles have
/// no end: steps are lost in rounding, or there are too many.
std::vector<double> TileBorders(double first, double last)
{
    std::vector<double> borders;
    for (double at = first; at < last; at += TileSide)
    {
        if (borders.size() > MaxTileCount || !(at + TileSide > at))
        {
            return {};
        }
        borders.push_back(at);
    }
    if (!borders.empty())
    {
        borders.push_back(last);
    }
    return borders;
}

/// Columns from left to right, each from bottom to top. False if they have no end. The borders are left in `grid`.
bool MakeTiles(CBoundingRect<double> const & bounds, TTileGrid & grid, Tiles & tiles)
{
    bool const hasExtent = bounds.minX < bounds.maxX && bounds.minY < bounds.maxY;
    if (!hasExtent)
    {
        return true;
    }
    grid.x = TileBorders(bounds.minX, bounds.maxX);
    grid.y = TileBorders(bounds.minY, bounds.maxY);
    if (grid.x.empty() || grid.y.empty() || (grid.x.size() - 1) * (grid.y.size() - 1) > MaxTileCount)
    {
        return false;
    }
    for (std::size_t column = 1; column < grid.x.size(); ++column)
    {
        for (std::size_t row = 1; row < grid.y.size(); ++row)
        {
            tiles.emplace_back(CBoundingRect<double>(grid.x[column - 1], grid.y[row - 1], grid.x[column], grid.y[row]));
        }
    }
    return true;
}

// --- the workers ---

/// What the workers of one call share.
struct TTileQueue
{
    TTileQueue(Tiles & tiles, CPolygon const & s, TCutters const & c)
        : cursor(tiles.begin()), end(tiles.end()), subject(s), cutters(c)
    {
    }

    mutex guard;            ///< of the three that follow
    Tiles::iterator cursor; ///< the next tile to take
    Tiles::iterator end;
    std::exception_ptr failure; ///< the first exception of a worker
    CPolygon const & subject;
    TCutters const & cutters;
};

void ProcessTile(CSubtractTile & tile, CPolygon const & subject, TCutters const & cutters, Clipper & clipper)
{
    this_thread::cancellation_point();
    CReportTrial trial;
    tile.Process(subject, cutters, clipper);
    tile.m_Reports = trial.GetEntries();
}

/// Takes tile after tile. An exception other than a cancellation ends the work of all and waits for the caller.
void RunWorker(TTileQueue & queue)
{
    try
    {
        std::unique_ptr<Clipper> const clipper(CreateClipper());
        for (;;)
        {
            CSubtractTile* tile = nullptr;
            {
                mutex_guard const lock(queue.guard);
                if (queue.cursor == queue.end)
                {
                    return;
                }
                tile = &*queue.cursor++;
            }
            ProcessTile(*tile, queue.subject, queue.cutters, *clipper);
        }
    }
    catch (thread_canceled const &)
    {
        throw;
    }
    catch (...)
    {
        mutex_guard const lock(queue.guard);
        queue.cursor = queue.end;
        queue.failure = queue.failure ? queue.failure : std::current_exception();
    }
}

/// Starts all workers, or, if one can't be started, stops those that run and waits for them.
std::vector<thread*> StartWorkers(unsigned int count, TTileQueue & queue)
{
    std::vector<thread*> threads;
    threads.reserve(count);
    try
    {
        while (threads.size() < count)
        {
            threads.push_back(new thread([&queue] { RunWorker(queue); }));
        }
    }
    catch (...)
    {
        for (thread* started : threads)
        {
            started->cancel();
        }
        this_thread::disable_cancellation const uninterrupted;
        JoinAll(threads);
        throw;
    }
    return threads;
}

/// Works on all tiles. Fails: `thread_canceled` if the calling thread is asked to stop; no worker runs any more then.
void RunSubtractTiles(unsigned int workers, Tiles & tiles, CPolygon const & subject, TCutters const & cutters)
{
    if (workers < 2)
    {
        std::unique_ptr<Clipper> const clipper(CreateClipper());
        for (CSubtractTile & tile : tiles)
        {
            ProcessTile(tile, subject, cutters, *clipper);
        }
        return;
    }
    if (tiles.empty())
    {
        return;
    }
    TTileQueue queue(tiles, subject, cutters);
    auto const count = static_cast<unsigned int>(std::min<std::size_t>(workers, tiles.size()));
    std::vector<thread*> threads = StartWorkers(count, queue);
    JoinAll(threads);
    if (queue.failure)
    {
        std::rethrow_exception(queue.failure);
    }
}

// --- putting the picture together again ---

/// The steps from the treated tiles to the result. Each is skipped once the calling thread is asked to stop.
class CTileJoiner
{
public:
    /// `copy` is one of the subject, or null.
    CTileJoiner(CPolygon const & subject, std::unique_ptr<CPolygon> copy, TTileGrid const & grid, Tiles & tiles,
                Clipper & clipper)
        : m_Subject(subject), m_Copy(std::move(copy)), m_Grid(grid), m_Tiles(tiles), m_Clipper(clipper)
    {
    }

    bool Join(PolygonVector & result)
    {
        using Step = void (CTileJoiner::*)();
        for (Step const step : {&CTileJoiner::Collect, &CTileJoiner::MergePieces, &CTileJoiner::CutTilesOut})
        {
            if (this_thread::cancellation_requested())
            {
                return m_IsDone;
            }
            (this->*step)();
        }
        AppendPolygons(m_Work, m_Merged);
        AppendPolygons(m_Work, m_BorderIslands);
        if (!this_thread::cancellation_requested())
        {
            MergeAll(result);
            AppendPolygons(result, m_Islands);
            RemoveSeams(m_Grid, result);
        }
        return m_IsDone;
    }

private:
    void Collect();
    void MergePieces();
    void CutTilesOut();
    void MergeAll(PolygonVector & result);

    CPolygon const & m_Subject;
    std::unique_ptr<CPolygon> m_Copy;
    TTileGrid const & m_Grid;
    Tiles & m_Tiles;
    Clipper & m_Clipper;
    PolygonRange m_Cuts;                 ///< the cut rectangles of the treated tiles; the tiles own them
    OwningPolygonVector m_Pieces;        ///< of all tiles, in tile order
    OwningPolygonVector m_Islands;       ///< the same
    OwningPolygonVector m_BorderIslands; ///< the same
    OwningPolygonVector m_Merged;        ///< of the pieces
    OwningPolygonVector m_Work;          ///< the subject outside the treated tiles, then also what they came to
    bool m_IsDone = false;               ///< by the last step that said anything
};

void CTileJoiner::Collect()
{
    for (CSubtractTile & tile : m_Tiles)
    {
        for (CReport::TEntry const & entry : tile.m_Reports)
        {
            Report(entry.reason, entry.place);
        }
        if (tile.m_CutRect != nullptr)
        {
            m_Cuts.push_back(tile.m_CutRect.get());
        }
        AppendPolygons(m_Pieces, tile.m_Pieces);
        AppendPolygons(m_Islands, tile.m_Islands);
        AppendPolygons(m_BorderIslands, tile.m_BorderIslands);
    }
}

void CTileJoiner::MergePieces()
{
    if (m_Pieces.size() > 1)
    {
        m_IsDone = MergeAllRestricted(m_Pieces, m_Merged, m_Clipper) != Clipper::eClipFailed;
    }
    else if (m_Pieces.size() == 1)
    {
        AppendPolygons(m_Merged, m_Pieces);
        m_IsDone = true;
    }
}

void CTileJoiner::CutTilesOut()
{
    PushPolygon(m_Work, m_Copy != nullptr ? std::move(m_Copy) : std::make_unique<CPolygon>(m_Subject));
    OwningPolygonVector rectangles;
    PolygonRange cuts = m_Cuts;
    m_IsDone = true;
    if (cuts.size() > 1)
    {
        OwningPolygonVector copies;
        for (CPolygon const* cut : cuts)
        {
            PushPolygon(copies, std::make_unique<CPolygon>(*cut));
        }
        m_IsDone = MergeAllRestricted(copies, rectangles, m_Clipper) != Clipper::eClipFailed;
        cuts.assign(rectangles.begin(), rectangles.end());
    }
    if (m_IsDone && !cuts.empty())
    {
        m_IsDone = SubtractPolygonRange(m_Work, cuts, m_Clipper) != Clipper::eClipFailed;
    }
}

void CTileJoiner::MergeAll(PolygonVector & result)
{
    if (m_Work.size() == 1)
    {
        AppendPolygons(result, m_Work);
        m_IsDone = true;
    }
    else if (!m_Work.empty())
    {
        MovePolygon(m_Work, 0, m_Work); // a merge begins with the last
        for (PolygonVector & group : GroupPolygons(m_Work))
        {
            m_IsDone =
                MergeCompletely(group, result, m_Clipper, EMergeOrder::eLastFirst, EMergeStop::eWhenAsked).code !=
                Clipper::eClipFailed;
        }
        if (!m_IsDone)
        {
            DeletePolygons(result);
        }
    }
}

} // namespace

namespace
{

/// A copy with facts, of which the tiles take their parts quickly. Null where each tile makes a copy of its own: the
/// calls of a user info can be counted.
std::unique_ptr<CPolygon> MakeSharedSubject(CPolygon const & subject)
{
    if (!IsIndexUsed(true) || subject.GetOutline().empty() || HasUserInfo(subject))
    {
        return nullptr;
    }
    auto shared = std::make_unique<CPolygon>(subject);
    CPolygonInternals::CompleteFacts(*shared);
    return shared;
}

/// Makes the tiles find `polygons`, which they only ask. Copies stand for those with a user info, whose clones can be
/// counted, and for all where one of them is there twice.
void FillCutters(PolygonRange const & polygons, TBorrowedPolygons & cutters, OwningPolygonVector & copies)
{
    PolygonRange sorted(polygons);
    std::sort(sorted.begin(), sorted.end());
    bool const hasRepeated = std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end();
    for (CPolygon const* polygon : polygons)
    {
        if (hasRepeated || HasUserInfo(*polygon))
        {
            PushPolygon(copies, std::make_unique<CPolygon>(*polygon));
            cutters.hash.AddNew(copies.back());
        }
        else
        {
            cutters.hash.AddNew(const_cast<CPolygon*>(polygon));
        }
    }
}

} // namespace

bool SubtractInTiles(CPolygon const & subject, PolygonVector & result, PolygonRange const & polygons, Clipper & clipper,
                     unsigned int workers, bool areUsedUp)
{
    OwningPolygonVector copies;
    TBorrowedPolygons cutters;
    FillCutters(polygons, cutters, copies);
    CBoundingRect<double> bounds;
    for (CPolygon const* polygon : polygons)
    {
        bounds.Include(polygon->GetBoundingRect());
    }
    TTileGrid grid;
    Tiles tiles;
    if (!MakeTiles(bounds, grid, tiles) || this_thread::cancellation_requested())
    {
        return false;
    }
    std::unique_ptr<CPolygon> shared = MakeSharedSubject(subject);
    try
    {
        RunSubtractTiles(workers == 0 ? thread::hardware_concurrency() : workers, tiles,
                         shared != nullptr ? *shared : subject, {cutters.hash, areUsedUp});
    }
    catch (thread_canceled const &)
    {
        this_thread::Cancel(); // the exception has taken the request: it goes on
    }
    return CTileJoiner(subject, std::move(shared), grid, tiles, clipper).Join(result);
}

namespace
{

bool SubtractMany(CPolygon const & polygon, PolygonVector & pieces, PolygonRange const & range, unsigned int workers,
                  bool mayUseTiles)
{
    if (this_thread::cancellation_requested())
    {
        return false;
    }
    if (mayUseTiles && !range.empty())
    {
        return CPolygonInternals::SubtractPolygonsCore(polygon, pieces, range, workers);
    }
    PushPolygon(pieces, std::make_unique<CPolygon>(polygon));
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    return range.empty() || SubtractPolygonRange(pieces, range, *clipper) != Clipper::eClipFailed;
}

} // namespace

bool CPolygon::SubtractPolygons(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons,
                                unsigned int workers) const
{
    PolygonRange range;
    std::copy_if(polygons.begin(), polygons.end(), std::back_inserter(range),
                 [](CPolygon const* polygon) { return polygon != nullptr && !polygon->GetOutline().empty(); });
    bool mayUseTiles = true; // the first time: their seams are what may have gone wrong
    auto const run = [&](PolygonRange const & first, PolygonRange const & second, PolygonVector & out)
    {
        OwningPolygonVector pieces;
        bool const isDone = SubtractMany(*first.front(), pieces, second, workers, std::exchange(mayUseTiles, false)) &&
                            !this_thread::cancellation_requested();
        if (!isDone)
        {
            DeletePolygons(pieces);
        }
        out.swap(pieces); // what it held goes with `pieces`
        return isDone;
    };
    bool const isDone = RunProved({CReport::eOperationSubtractMany,
                                   {this},
                                   range,
                                   [](std::size_t first, std::size_t second) { return first > 0 && second == 0; }},
                                  result, run);
    CPolygonInternals::ForgetFacts(result);
    return isDone;
}

} // namespace geometry
