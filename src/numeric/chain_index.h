// A search tree over the rectangles of consecutive pieces of a chain: the segments of a polyline, the objects of a
// ring. Neighbours in a chain are neighbours in the plane, so no sorting is needed: each node holds the rectangle
// around eight consecutive ones of the level below. A search passes over whole nodes and finds the pieces in chain
// order, which is what lets it stand in for a loop over all of them. Building costs less than a single such loop does.
#pragma once

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstddef>
#include <vector>

#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

class CChainIndex
{
public:
    using Rect = CBoundingRect<double>;

    /// Not to be asked before `Rebuild`.
    CChainIndex() = default;
    /// One rectangle a piece, in chain order.
    explicit CChainIndex(std::vector<Rect> rects) { Rebuild(rects); }

    /// The same for other pieces. The rectangles so far, of no use any more, go to `rects`: who builds often needs no
    /// new memory.
    void Rebuild(std::vector<Rect> & rects);
    /// Gives the memory of the rectangles to `rects` before: not to be asked then until `Rebuild`.
    void GiveRects(std::vector<Rect> & rects)
    {
        if (!m_Levels.empty())
        {
            m_Levels.front().swap(rects);
        }
    }

    std::size_t GetCount() const { return m_Levels.front().size(); }
    Rect const & GetRect(std::size_t piece) const { return m_Levels.front()[piece]; }
    /// The rectangle around all pieces.
    Rect const & GetRect() const { return m_Levels[m_Height - 1].front(); }

    /// What to do with the pieces in a rectangle.
    enum class EAction
    {
        ePass, ///< nothing
        eOpen, ///< look at them one by one
        eTake  ///< take them as a whole
    };

    /// Walks the pieces in chain order, as `classify` says of the rectangles around them: calls `visit(i)` for each
    /// piece to be looked at, until it answers false, and `take(first, last)` for ranges to be taken. A rectangle
    /// around another one must not be passed where that one isn't.
    template <typename Classify, typename Visit, typename Take>
    void Walk(Classify const & classify, Visit const & visit, Take const & take) const
    {
        std::size_t level = m_Height - 1;
        std::vector<Rect> const* row = &m_Levels[level];
        for (std::size_t place = 0; place < row->size();)
        {
            EAction const action = classify((*row)[place]);
            if (action == EAction::eOpen && level > 0)
            {
                row = &m_Levels[--level];
                place <<= FanOutBits;
                continue;
            }
            if (action == EAction::eOpen && !visit(place))
            {
                return;
            }
            if (action == EAction::eTake)
            {
                std::size_t const shift = FanOutBits * level;
                take(place << shift, std::min((place + 1) << shift, GetCount()));
            }
            ++place;
            // up again to the largest node that begins here
            while (place % FanOut == 0 && level + 1 < m_Height)
            {
                row = &m_Levels[++level];
                place >>= FanOutBits;
            }
        }
    }

    /// Calls `visit(i)` for each piece whose rectangle passes `mayMeet`, in chain order, until `visit` answers false.
    template <typename MayMeet, typename Visit>
    void Search(MayMeet const & mayMeet, Visit const & visit) const
    {
        Walk([&](Rect const & rect) { return mayMeet(rect) ? EAction::eOpen : EAction::ePass; }, visit,
             [](std::size_t, std::size_t) {});
    }

    /// Walks the pairs of a piece of this chain and a piece of `other`, in no order that a caller could rely on.
    /// `measure(rect, otherRect)` is a bound of the pairs in two rectangles, which are looked into while
    /// `isWanted(bound, i, j)`, i and j being their first pieces: those of small bounds first. Calls `visit(i, j)` for
    /// the pairs that are wanted to the end.
    template <typename Measure, typename IsWanted, typename Visit>
    void WalkPairs(CChainIndex const & other, Measure const & measure, IsWanted const & isWanted,
                   Visit const & visit) const
    {
        std::size_t const top = m_Height - 1;
        std::size_t const otherTop = other.m_Height - 1;
        std::vector<TNodePair> waiting;
        waiting.reserve((top + otherTop + 1) << FanOutBits);
        waiting.push_back({measure(GetRect(), other.GetRect()), top, 0, otherTop, 0});
        while (!waiting.empty())
        {
            TNodePair const pair = waiting.back();
            waiting.pop_back();
            if (!isWanted(pair.bound, pair.GetFirst(), pair.GetOtherFirst()))
            {
                continue;
            }
            if (pair.level == 0 && pair.otherLevel == 0)
            {
                visit(pair.place, pair.otherPlace);
                continue;
            }
            std::size_t const known = waiting.size();
            bool const opensOther = pair.otherLevel > pair.level;
            TNodePair child = pair;
            --(opensOther ? child.otherLevel : child.level);
            std::size_t & place = opensOther ? child.otherPlace : child.place;
            std::vector<Rect> const & row = opensOther ? other.m_Levels[child.otherLevel] : m_Levels[child.level];
            place <<= FanOutBits;
            for (std::size_t const end = std::min(place + FanOut, row.size()); place < end; ++place)
            {
                child.bound =
                    measure(m_Levels[child.level][child.place], other.m_Levels[child.otherLevel][child.otherPlace]);
                if (isWanted(child.bound, child.GetFirst(), child.GetOtherFirst()))
                {
                    waiting.push_back(child);
                }
            }
            std::sort(waiting.begin() + static_cast<std::ptrdiff_t>(known), waiting.end()); // the first one last
        }
    }

private:
    static constexpr std::size_t FanOutBits = 3;
    static constexpr std::size_t FanOut = std::size_t{1} << FanOutBits;

    struct TNodePair
    {
        double bound;
        std::size_t level;
        std::size_t place;
        std::size_t otherLevel;
        std::size_t otherPlace;

        std::size_t GetFirst() const { return place << (FanOutBits * level); }
        std::size_t GetOtherFirst() const { return otherPlace << (FanOutBits * otherLevel); }
        /// The one with the greater bound comes before, and of equal ones the later one of the chain.
        bool operator<(TNodePair const & next) const
        {
            return bound > next.bound || (bound == next.bound && place + otherPlace > next.place + next.otherPlace);
        }
    };

    std::vector<std::vector<Rect>> m_Levels; ///< the pieces first
    std::size_t m_Height = 0;                ///< of the levels: the last one holds a single rectangle
};

/// The coordinates are so that no product of the geometry overflows or vanishes: rectangles stand for the piece, then.
inline bool IsIndexable(TPoint<double> const & point)
{
    auto const isInRange = [](double value)
    { return value == 0.0 || (1e-60 < std::fabs(value) && std::fabs(value) < 1e30); };
    return isInRange(point.x) && isInRange(point.y);
}

/// When fast ways by an index are taken instead of the plain loops that give the same. For tests, which compare the
/// two.
enum class EIndexUse
{
    eNever,
    eWhenItPays,
    eAlways
};

void SetIndexUse(EIndexUse use);

extern std::atomic<EIndexUse> indexUse; ///< what `SetIndexUse` says

/// An index is to be used where it `pays`. Asked for nearly every object.
inline bool IsIndexUsed(bool pays)
{
    EIndexUse const use = indexUse.load(std::memory_order_relaxed);
    return use == EIndexUse::eWhenItPays ? pays : use == EIndexUse::eAlways;
}

} // namespace geometry
