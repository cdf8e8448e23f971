// Linking and freeing the elements of rings. Everything here works in loops: rings have millions of elements.
#include "clip/holder.h"

#include <memory>
#include <new>
#include <utility>

namespace geometry
{

CPathObjectHolder::~CPathObjectHolder()
{
    delete m_OwnObject;
    ClearSplitPositions();
}

CPathObjectBase::SplitPositionList & CPathObjectHolder::GetSplitPositions()
{
    using List = CPathObjectBase::SplitPositionList;
    if (m_SplitPositions == nullptr)
    {
        void* const place = m_Memory->TakeForCuts(sizeof(List));
        m_SplitPositions = new (place) List(&m_Memory->GetCuts());
    }
    return *m_SplitPositions;
}

void CPathObjectHolder::ClearSplitPositions()
{
    if (m_SplitPositions != nullptr)
    {
        std::destroy_at(std::exchange(m_SplitPositions, nullptr));
    }
}

void CPathObjectHolder::ClearIntersection()
{
    m_IsIntersection = false;
    if (m_Neighbour != nullptr)
    {
        m_Neighbour->m_IsIntersection = false;
    }
}

void CPathObjectHolder::TakeObject(CPathObjectBase* object)
{
    delete m_OwnObject;
    m_OwnObject = object;
    m_SharedObject = nullptr;
}

CPathObjectHolder* MakeHolder(CRingMemory & memory)
{
    return new (memory.TakeForHolder(sizeof(CPathObjectHolder))) CPathObjectHolder(memory);
}

void DeleteRing(CPathObjectHolder*& ring)
{
    while (ring != nullptr)
    {
        CPathObjectHolder* const furtherRing = ring->m_NextRing;
        CPathObjectHolder* const first = ring;
        CPathObjectHolder* holder = first;
        do
        {
            std::destroy_at(std::exchange(holder, holder->m_Next));
        } while (holder != nullptr && holder != first);
        ring = furtherRing;
    }
}

CPathObjectHolder* InsertHolder(std::unique_ptr<CPathObjectBase> object, CPathObjectHolder* next,
                                CPathObjectHolder* previous, bool intersection)
{
    CPathObjectHolder* const holder = MakeHolder(*previous->m_Memory);
    holder->m_OwnObject = object.release();
    holder->m_IsIntersection = intersection;
    holder->m_WasIntersection = intersection;
    holder->m_Next = next;
    holder->m_Previous = previous;
    previous->m_Next = holder;
    next->m_Previous = holder;
    return holder;
}

std::size_t CountHolders(CPathObjectHolder const* ring)
{
    std::size_t count = 1;
    for (CPathObjectHolder const* holder = ring->m_Next; holder != ring; holder = holder->m_Next)
    {
        ++count;
    }
    return count;
}

CLinkedPathObject::~CLinkedPathObject()
{
    if (m_Previous != nullptr)
    {
        m_Previous->m_Next = nullptr;
    }
    // what hangs on this element is strung on one list, so that no destructor calls another in turn
    CLinkedPathObject* pending = nullptr;
    auto const adopt = [&pending](CLinkedPathObject* first)
    {
        if (first == nullptr)
        {
            return;
        }
        CLinkedPathObject* last = first;
        while (last->m_Next != nullptr)
        {
            last = last->m_Next;
        }
        last->m_Next = pending;
        pending = first;
    };
    adopt(std::exchange(m_Next, nullptr));
    adopt(std::exchange(m_NextRing, nullptr));
    while (pending != nullptr)
    {
        CLinkedPathObject* const element = pending;
        pending = std::exchange(element->m_Next, nullptr);
        element->m_Previous = nullptr;
        adopt(std::exchange(element->m_NextRing, nullptr));
        delete element;
    }
    DropObject();
}

void CLinkedPathObject::DropObject()
{
    if (!m_IsBorrowed)
    {
        delete m_PathObject;
    }
    m_IsBorrowed = false;
}

CPathObjectBase*& CLinkedPathObject::OwnObject()
{
    if (m_IsBorrowed)
    {
        m_PathObject = m_PathObject->Clone();
        m_IsBorrowed = false;
    }
    return m_PathObject;
}

void CLinkedPathObject::TakeObject(CPathObjectBase* object)
{
    DropObject();
    m_PathObject = object;
    m_Place = NoPlace;
}

} // namespace geometry
