// The elements of the clipper's rings. A ring of holders is an outline under work: a circular doubly linked list whose
// elements bear whole path objects. A result ring is a plain list of path objects that the clipper owns.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>

#include <geometry/path/path_object_base.h>

#include "clip/ring_memory.h"

namespace geometry
{

struct TFoldedRun;

/// Of what isn't an object of a folded outline.
constexpr std::uint32_t NoPlace = 0xFFFFFFFF;

/// Where a trace goes on from a holder.
enum EWalkDirection : std::uint8_t
{
    eWalkUnmarked = 0,
    eWalkBackward = 1, ///< the part of the ring before the holder belongs to the result
    eWalkForward = 2   ///< the part of the ring after the holder belongs to the result
};

/// One element of a ring. Its object runs from its start point to its end point, where the object of the next holder
/// starts. A ring is built open (outer links null) and closed before a run.
class CPathObjectHolder
{
public:
    explicit CPathObjectHolder(CRingMemory & memory) : m_Memory(&memory) {}
    CPathObjectHolder(CPathObjectHolder const &) = delete;
    CPathObjectHolder & operator=(CPathObjectHolder const &) = delete;
    /// Deletes the own object and the cuts, but no linked holder.
    virtual ~CPathObjectHolder();

    /// The own object if there is one, else the shared one.
    CPathObjectBase const* GetPathObject() const { return m_OwnObject != nullptr ? m_OwnObject : m_SharedObject; }
    TPoint<double> const & GetStartPoint() const { return GetPathObject()->GetStartPoint(); }
    /// The holder is an intersection, or was one when it was made: its start point lies on the other ring.
    bool HasIntersectionHistory() const { return m_IsIntersection || m_WasIntersection; }
    /// `m_IsIntersection` of this holder and of its neighbour, if there is one, becomes false.
    void ClearIntersection();
    /// Replaces the object by `object`, which the holder owns then.
    void TakeObject(CPathObjectBase* object);
    /// The cuts against all objects of the other ring, to be added to.
    CPathObjectBase::SplitPositionList & GetSplitPositions();
    bool HasSplitPositions() const { return m_SplitPositions != nullptr && !m_SplitPositions->empty(); }
    void ClearSplitPositions();

    CPathObjectBase const* m_SharedObject = nullptr; ///< belongs to the input polygon; null with an own object
    CPathObjectBase* m_OwnObject = nullptr;          ///< owned; takes precedence
    CPathObjectHolder* m_Next = nullptr;
    CPathObjectHolder* m_Previous = nullptr;
    CPathObjectHolder* m_NextRing = nullptr; ///< a further ring of the same side; stays null
    CPathObjectBase::SplitPositionList* m_SplitPositions =
        nullptr;                              ///< owned, in the memory of the ring; null until asked
    CPathObjectHolder* m_Neighbour = nullptr; ///< the same intersection on the other ring; not owned
    TFoldedRun const* m_Run = nullptr; ///< what the holder stands for if that is more than its object, which then is a
                                       ///< segment from the start to the end of it; not owned
    CRingMemory* m_Memory;             ///< of the ring; not owned
    EWalkDirection m_Direction = eWalkUnmarked; ///< where a trace goes on from here
    bool m_IsIntersection = false;              ///< the start point is an intersection
    bool m_WasIntersection = false;             ///< stays when `m_IsIntersection` is cleared
    bool m_NewVertex : 1 = false;               ///< made by a cut, not a vertex of the input
    bool m_Visited : 1 = false;                 ///< the trace has passed here
    bool m_IsOfFirst : 1 = false;               ///< the place is one of the outline that a folded one is clipped with
    std::uint32_t m_Place = NoPlace;            ///< of the shared object, if that is one of a folded outline
};

/// A new holder, not linked yet. It goes with the ring that it is linked into.
CPathObjectHolder* MakeHolder(CRingMemory & memory);

/// Destroys all holders of a ring, open or closed, and sets the pointer to null.
void DeleteRing(CPathObjectHolder*& ring);

/// A new holder that owns `object`, linked between `previous` and `next`.
CPathObjectHolder* InsertHolder(std::unique_ptr<CPathObjectBase> object, CPathObjectHolder* next,
                                CPathObjectHolder* previous, bool intersection);

/// The number of holders of a closed ring.
std::size_t CountHolders(CPathObjectHolder const* ring);

/// One element of a result ring: a list that is not closed into a circle.
class CLinkedPathObject
{
public:
    /// Elements are made in the memory of a clip, and that goes as a whole: to delete one destroys it only.
    static void* operator new(std::size_t size, CResultMemory & memory) { return memory.Take(size); }
    static void operator delete(void*, CResultMemory &) {}
    static void operator delete(void*) {}

    explicit CLinkedPathObject(CPathObjectBase* object) : m_PathObject(object) {}
    CLinkedPathObject(CLinkedPathObject const &) = delete;
    CLinkedPathObject & operator=(CLinkedPathObject const &) = delete;
    /// Cuts itself off the element before it, then deletes all that follows. Works in a loop: chains are long.
    virtual ~CLinkedPathObject();

    /// Replaces the object; the old one is deleted.
    void TakeObject(CPathObjectBase* object);
    /// The object, to be changed or given away: its own one.
    CPathObjectBase*& OwnObject();
    /// Where the facts of the folded outline tell of the object.
    std::uint32_t PlaceOfFacts() const { return m_IsOfFirst ? NoPlace : m_Place; }

    CPathObjectBase* m_PathObject;           ///< owned, unless it is borrowed
    CLinkedPathObject* m_Next = nullptr;     ///< owned
    CLinkedPathObject* m_Previous = nullptr; ///< not owned
    CLinkedPathObject* m_NextRing = nullptr; ///< at the first element of a ring: the next result ring; owned
    TFoldedRun const* m_Run = nullptr;       ///< as in a holder
    double m_Length = 0.0;                   ///< of the finished object, once it was asked for
    std::uint32_t m_Place = NoPlace;         ///< of the object of a folded outline that this one is, or is a clone of
    bool m_IsOfFirst = false;                ///< as in a holder
    bool m_IsBorrowed = false;               ///< the object at that place itself
    bool m_IsReversed = false;               ///< the run, or the clone
    bool m_IsBackward = false; ///< at the head of a growing ring: the vertices of the object stand in reverse

private:
    void DropObject();
};

/// Walks the objects of a ring once round. A whole ring is the range from `(h, false)` to `(h, true)`.
template <typename Holder>
class PathObjectIterator final
{
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = CPathObjectBase const*;
    using difference_type = int;
    using pointer = value_type const*;
    using reference = value_type;

    PathObjectIterator(Holder* holder, bool wrapped) : m_First(holder), m_Current(holder), m_Wrapped(wrapped) {}
    PathObjectIterator(PathObjectIterator const &) = default;
    virtual ~PathObjectIterator() = default;

    virtual PathObjectIterator & operator++(int) { return Increment(); }
    virtual PathObjectIterator & operator++() { return Increment(); }
    virtual PathObjectIterator & operator--(int) { return Decrement(); }
    virtual PathObjectIterator & operator--() { return Decrement(); }
    /// All fields agree, or both have come round.
    virtual bool operator==(PathObjectIterator const & other) const
    {
        return (m_Wrapped && other.m_Wrapped) ||
               (m_First == other.m_First && m_Current == other.m_Current && m_Wrapped == other.m_Wrapped);
    }
    virtual bool operator!=(PathObjectIterator const & other) const { return !(*this == other); }
    virtual PathObjectIterator & operator=(PathObjectIterator const & other) = default;
    virtual CPathObjectBase const* operator*() const { return m_Current->GetPathObject(); }

private:
    PathObjectIterator & Increment()
    {
        m_Current = m_Current->m_Next;
        m_Wrapped = m_Current == nullptr || m_Current == m_First;
        return *this;
    }

    PathObjectIterator & Decrement()
    {
        if (m_Wrapped)
        {
            if (m_Current != nullptr && m_Current->m_Previous != nullptr)
            {
                m_Wrapped = false;
                m_Current = m_Current->m_Previous;
            }
        }
        else if (m_Current == m_First)
        {
            m_Wrapped = true;
        }
        else
        {
            m_Current = m_Current->m_Previous;
        }
        return *this;
    }

    Holder* m_First;   ///< where the walk started
    Holder* m_Current; ///< null off the end of an open ring
    bool m_Wrapped;    ///< the walk has come back to `m_First`, or off the end of an open ring
};

using RingIterator = PathObjectIterator<CPathObjectHolder const>;

} // namespace geometry
