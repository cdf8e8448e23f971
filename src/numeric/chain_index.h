// A search tree over the rectangles of consecutive pieces of a chain: the segments of a polyline, the objects of a ring.
// Neighbours in a chain are neighbours in the plane, so no sorting is needed: each node holds the rectangle around
// eight consecutive ones of the level below. A search passes over whole nodes and finds the pieces in chain order, which
// is what lets it stand in for a loop over all of them. Building costs less than a single such loop does.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

class CChainIndex
{
public:
    using Rect = CBoundingRect<double>;

    /// One rectangle a piece, in chain order.
    explicit CChainIndex(std::vector<Rect> rects);

    std::size_t GetCount() const { return m_Levels.front().size(); }
    /// The rectangle around all pieces.
    Rect const & GetRect() const { return m_Levels.back().front(); }

    /// What to do with the pieces in a rectangle.
    enum class EAction
    {
        ePass, ///< nothing
        eOpen, ///< look at them one by one
        eTake  ///< take them as a whole
    };

    /// Walks the pieces in chain order, as `classify` says of the rectangles around them: calls `visit(i)` for each
    /// piece to be looked at, until it answers false, and `take(first, last)` for ranges to be taken. A rectangle around
    /// another one must not be passed where that one isn't.
    template <typename Classify, typename Visit, typename Take>
    void Walk(Classify const & classify, Visit const & visit, Take const & take) const
    {
        std::size_t const count = GetCount();
        std::size_t level = m_Levels.size() - 1;
        for (std::size_t i = 0; i < count;)
        {
            EAction const action = classify(m_Levels[level][i >> (FanOutBits * level)]);
            std::size_t const end = std::min(i + (std::size_t{1} << (FanOutBits * level)), count);
            if (action == EAction::eOpen && level > 0)
            {
                --level;
                continue;
            }
            if (action == EAction::eOpen && !visit(i))
            {
                return;
            }
            if (action == EAction::eTake)
            {
                take(i, end);
            }
            i = end;
            // up again to the largest node that begins here
            while (level + 1 < m_Levels.size() && (i & ((std::size_t{1} << (FanOutBits * (level + 1))) - 1)) == 0)
            {
                ++level;
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

private:
    static constexpr std::size_t FanOutBits = 3;

    std::vector<std::vector<Rect>> m_Levels; ///< the pieces first, a single rectangle last
};

/// When fast ways by an index are taken instead of the plain loops that give the same. For tests, which compare the two.
enum class EIndexUse
{
    eNever,
    eWhenItPays,
    eAlways
};

void SetIndexUse(EIndexUse use);

/// An index is to be used where it `pays`.
bool IsIndexUsed(bool pays);

} // namespace geometry
