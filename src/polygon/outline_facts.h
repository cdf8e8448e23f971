// What is known of each path object of an outline, so that an operation can pass over it without looking at it. Kept
// with a polygon that grows or shrinks step by step, and handed on from each step to the next for the objects that it
// leaves as they are. The facts stand in blocks of a few neighbours, which are passed over, and handed on, as a whole.
#pragma once

#include <array>
#include <memory>
#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

struct TObjectFacts
{
    CBoundingRect<double> rect;
    double area = 0.0;   ///< between the object and the origin of the facts, signed, in square coordinate units
    double length = 0.0; ///< in coordinate units; 0: neither is known, of one with a user info, for example
    bool isArc = false;
    bool isSteady = false; ///< a clip that doesn't come near takes it over unchanged, whichever way round
    bool isFirm = false;   ///< moved by nothing, as later attempts of a clip do, it stays the same bit for bit
    bool isApart = false;  ///< the next object of the outline, or the first after the last, begins where this one
                           ///< ends, and isn't joined with it to a single one
};

/// Those of several consecutive objects together.
struct TFactsSum
{
    CBoundingRect<double> rect;
    double area = 0.0;
    double length = 0.0;
    bool hasArc = false;
    bool isSteady = true; ///< each of them is, and so on
    bool isFirm = true;
    bool isApart = true;

    void Add(TObjectFacts const & facts, bool isReversed);
    void Add(TFactsSum const & sum);
};

/// Coordinates within which arcs are clipped.
bool IsInReach(CBoundingRect<double> const & rect);

/// Above all distances at which an outline within `a` takes notice of anything in `b`: 0.1 for arcs, 1e-7 of the size
/// of an object, 100 units in the last place. Steady objects, and places in reach, provided.
double RoomFor(CBoundingRect<double> const & a, CBoundingRect<double> const & b);

inline bool IsApart(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    return a.maxX < b.minX || a.minX > b.maxX || a.maxY < b.minY || a.minY > b.maxY;
}

class COutlineFacts
{
public:
    using Outline = std::vector<CPathObjectBase*>;

    explicit COutlineFacts(TPoint<double> const & origin) : m_Origin(origin) {}

    /// The point to which areas are measured.
    TPoint<double> const & GetOrigin() const { return m_Origin; }
    std::size_t GetCount() const { return m_Count; }
    /// Those of one object, also if it is `turned` round.
    TObjectFacts GetFacts(std::size_t object, bool turned) const
    {
        std::size_t const b = FindBlock(object);
        return m_Blocks[b]->Get(object - m_Starts[b], turned);
    }
    TFactsSum Sum(std::size_t first, std::size_t last) const;
    /// How far the sum of all areas may be from the true one, and any other computation of it, in an outline within
    /// `bounds`.
    double GetAreaRounding(CBoundingRect<double> const & bounds) const;

    /// Calls `visit(i, facts)` for the objects from `first` to before `last` in those blocks of which `isWanted(sum)`,
    /// in path order, until `visit` answers false. The areas of these facts may have the wrong sign.
    template <typename IsWanted, typename Visit>
    void Walk(std::size_t first, std::size_t last, IsWanted const & isWanted, Visit const & visit) const
    {
        for (std::size_t b = FindBlock(first); b < m_Blocks.size() && m_Starts[b] < last; ++b)
        {
            TBlock const & block = *m_Blocks[b];
            if (!isWanted(block.sum))
            {
                continue;
            }
            std::size_t const begin = std::max(first, m_Starts[b]) - m_Starts[b];
            std::size_t const end = std::min(last - m_Starts[b], block.count);
            for (std::size_t k = begin; k < end; ++k)
            {
                if (!visit(m_Starts[b] + k, block.At(k)))
                {
                    return;
                }
            }
        }
    }

    /// Calls `visit(i)` for all objects that the upward ray from `point` may cross, in path order.
    template <typename Visit>
    void VisitProbed(TPoint<double> const & point, Visit const & visit) const
    {
        auto const isInWay = [&](auto const & facts)
        {
            return !IsClearlyLess(point.x, facts.rect.minX) && !IsClearlyGreater(point.x, facts.rect.maxX) &&
                   !IsClearlyGreater(point.y, facts.rect.maxY);
        };
        Walk(0, m_Count, isInWay,
             [&](std::size_t i, TObjectFacts const & facts)
             {
                 if (isInWay(facts))
                 {
                     visit(i);
                 }
                 return true;
             });
    }
    /// Calls `visit(i)` for all objects that may hold `point` within tolerance, in path order, until it answers false.
    /// `bounds` is the rectangle around all of them.
    template <typename Visit>
    void VisitNear(CBoundingRect<double> const & bounds, TPoint<double> const & point, Visit const & visit) const
    {
        CBoundingRect<double> at(point, point);
        at.Inflate(RoomFor(bounds, at));
        auto const mayHold = [&](auto const & facts) { return !facts.isSteady || !IsApart(facts.rect, at); };
        Walk(0, m_Count, mayHold,
             [&](std::size_t i, TObjectFacts const & facts) { return !mayHold(facts) || visit(i); });
    }

    /// Forgets everything, but keeps memory for facts of another outline.
    void Restart(TPoint<double> const & origin);
    /// For an outline of `count` objects.
    void Reserve(std::size_t count);
    /// Puts the facts of an object behind the others. `length`: its length, or 0 if that isn't known.
    TObjectFacts Append(CPathObjectBase const & object, double length = 0.0);
    /// The same for a clone of an object, of which `facts` are known.
    void AppendClone(TObjectFacts const & facts)
    {
        Append(facts);
        m_OpenJoints.push_back(m_Count - 1);
    }
    /// The same for a run of objects of `source`, which loses their facts. Each is apart from the next one. They may be
    /// turned round.
    void AppendRun(COutlineFacts & source, std::size_t first, std::size_t last, bool isReversed);
    /// The last object is apart from the next one to be appended, as its facts say.
    void CloseJoint() { m_OpenJoints.pop_back(); }
    /// To be called after all have been appended: finds out what depends on their neighbours.
    void Complete(Outline const & outline);
    /// Moves the objects from `first` to before `last` by nothing, except those that this wouldn't change.
    void MoveByNothing(Outline const & outline, std::size_t first, std::size_t last);

private:
    static constexpr std::size_t Capacity = 16;
    static constexpr std::size_t MaxSpare = 16;

    struct TBlock
    {
        std::array<TObjectFacts, Capacity> objects;
        std::size_t count = 0;
        bool isReversed = false; ///< the objects stand against the path, and their areas have the wrong sign
        bool isSummed = false;
        TFactsSum sum;

        TObjectFacts const & At(std::size_t k) const { return objects[isReversed ? count - 1 - k : k]; }
        TObjectFacts & At(std::size_t k) { return objects[isReversed ? count - 1 - k : k]; }
        TObjectFacts Get(std::size_t k, bool turned) const;
        void Straighten();
        void SumUp();
    };

    std::size_t FindBlock(std::size_t object) const;
    std::unique_ptr<TBlock> MakeBlock();
    void Append(TObjectFacts const & facts);
    void AppendBlock(std::unique_ptr<TBlock> & block, std::size_t begin, std::size_t end, bool isReversed);

    TPoint<double> m_Origin;
    std::size_t m_Count = 0;
    std::vector<std::unique_ptr<TBlock>> m_Blocks;
    std::vector<std::unique_ptr<TBlock>> m_Spare; ///< to be used again
    std::vector<std::size_t> m_Starts;            ///< the first object of each block
    std::vector<std::size_t> m_OpenJoints;        ///< objects of which isn't known whether they are apart, ascending
};

} // namespace geometry
