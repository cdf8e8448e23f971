// Where a clip has its rings: holders, pieces and lists of cuts, made by the hundred thousand and gone together.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <memory_resource>
#include <vector>

namespace geometry
{

/// Memory that is taken in pieces and given back as a whole: first `FirstSize` bytes of the object itself, then blocks
/// of growing size. None is so large that `malloc` would fetch it from the system for itself alone and give it back
/// there: what one stage of a clip leaves serves the next.
template <std::size_t FirstSize>
class CMemoryStack final : public std::pmr::memory_resource
{
public:
    CMemoryStack() = default;
    CMemoryStack(CMemoryStack const &) = delete;
    CMemoryStack & operator=(CMemoryStack const &) = delete;

    /// Aligned for any type made of pointers and numbers. What lies in it must be destroyed before `Release`.
    void* Take(std::size_t size)
    {
        std::size_t const taken = (size + Alignment - 1) / Alignment * Alignment;
        if (taken > m_Left)
        {
            AddBlock(taken);
        }
        std::byte* const place = m_Next;
        m_Next += taken;
        m_Left -= taken;
        return place;
    }

    void Release()
    {
        m_Blocks.clear();
        m_Next = m_First.data();
        m_Left = FirstSize;
    }

private:
    static constexpr std::size_t Alignment = alignof(double);
    static constexpr std::size_t MaxBlockSize = 60000;
    static_assert(FirstSize % Alignment == 0);

    void AddBlock(std::size_t atLeast)
    {
        std::size_t const grown = FirstSize << std::min<std::size_t>(m_Blocks.size() + 1, 8);
        std::size_t const size = std::max(std::min(grown, MaxBlockSize), atLeast);
        m_Blocks.push_back(std::make_unique_for_overwrite<std::byte[]>(size));
        m_Next = m_Blocks.back().get();
        m_Left = size;
    }

    void* do_allocate(std::size_t size, std::size_t) override { return Take(size); }
    void do_deallocate(void*, std::size_t, std::size_t) override {}
    bool do_is_equal(std::pmr::memory_resource const & other) const noexcept override { return this == &other; }

    alignas(Alignment) std::array<std::byte, FirstSize> m_First;
    std::vector<std::unique_ptr<std::byte[]>> m_Blocks;
    std::byte* m_Next = m_First.data();
    std::size_t m_Left = FirstSize;
};

class CRingIndex;

/// Memory for a few arrays that mostly are short: on the stack as long as they fit, else of the heap.
template <std::size_t Size>
class CStackBuffer final : public std::pmr::memory_resource
{
public:
    CStackBuffer() = default;
    CStackBuffer(CStackBuffer const &) = delete;
    CStackBuffer & operator=(CStackBuffer const &) = delete;

private:
    bool IsMine(void const* place) const
    {
        std::less<void const*> const isBefore;
        return !isBefore(place, m_Bytes.data()) && isBefore(place, m_Bytes.data() + Size);
    }
    void* do_allocate(std::size_t size, std::size_t alignment) override
    {
        std::size_t const begin = (m_Used + alignment - 1) / alignment * alignment;
        if (alignment > alignof(double) || begin > Size || size > Size - begin)
        {
            return std::pmr::new_delete_resource()->allocate(size, alignment);
        }
        m_Used = begin + size;
        return m_Bytes.data() + begin;
    }
    void do_deallocate(void* place, std::size_t size, std::size_t alignment) override
    {
        if (!IsMine(place))
        {
            std::pmr::new_delete_resource()->deallocate(place, size, alignment);
        }
    }
    bool do_is_equal(std::pmr::memory_resource const & other) const noexcept override { return this == &other; }

    alignas(double) std::array<std::byte, Size> m_Bytes;
    std::size_t m_Used = 0;
};

/// The memory of one ring. That of small rings is part of the object.
class CRingMemory
{
public:
    /// What answers point questions to the ring; not owned, null if there is nothing.
    CRingIndex* GetIndex() const { return m_Index; }
    void SetIndex(CRingIndex* index) { m_Index = index; }
    void* TakeForHolder(std::size_t size) { return m_Holders.Take(size); }
    void* TakeForCuts(std::size_t size) { return m_Cuts.Take(size); }
    std::pmr::memory_resource & GetCuts() { return m_Cuts; }
    std::pmr::memory_resource & GetPieces() { return m_Holders; }
    /// No list holds a cut any more.
    void ReleaseCuts() { m_Cuts.Release(); }
    /// Nor is there a holder any more.
    void Release()
    {
        m_Cuts.Release();
        m_Holders.Release();
        m_Index = nullptr;
    }

private:
    CRingIndex* m_Index = nullptr;
    CMemoryStack<8192> m_Holders;
    CMemoryStack<4096> m_Cuts;
};

/// That of the elements of all result rings of a clip.
using CResultMemory = CMemoryStack<4096>;

} // namespace geometry
