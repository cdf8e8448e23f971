// Where a clip has its rings: holders, pieces and lists of cuts, made by the hundred thousand and gone together.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
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
using CResultMemory = CMemoryStack<1024>;

} // namespace geometry
