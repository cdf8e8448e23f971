// Where a clip has its rings: holders and lists of cuts, made by the hundred thousand and gone together.
#pragma once

#include <array>
#include <cstddef>
#include <memory_resource>

namespace geometry
{

/// Memory that is taken in pieces and given back as a whole; that of small rings is part of the object. What lies in it
/// must be destroyed before it goes.
class CRingMemory
{
public:
    CRingMemory() = default;
    CRingMemory(CRingMemory const &) = delete;
    CRingMemory & operator=(CRingMemory const &) = delete;

    std::pmr::memory_resource & GetHolders() { return m_Holders; }
    std::pmr::memory_resource & GetCuts() { return m_Cuts; }
    /// No list holds a cut any more.
    void ReleaseCuts() { m_Cuts.release(); }
    /// Nor is there a holder any more.
    void Release()
    {
        m_Cuts.release();
        m_Holders.release();
    }

private:
    std::array<std::byte, 8192> m_FirstHolders;
    std::array<std::byte, 4096> m_FirstCuts;
    std::pmr::monotonic_buffer_resource m_Holders{m_FirstHolders.data(), m_FirstHolders.size()};
    std::pmr::monotonic_buffer_resource m_Cuts{m_FirstCuts.data(), m_FirstCuts.size()};
};

} // namespace geometry
