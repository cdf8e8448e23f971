/// \file
/// Where an object keeps a search tree over its pieces, once enough questions were asked to pay for it.
#pragma once

#include <atomic>

#include <geometry/export.h>

namespace geometry
{

class CChainIndex;

/// Internal to the library. Safe for concurrent readers; a copy starts without an index; whoever changes the pieces
/// calls `Clear`.
class GEOMETRY_EXPORT CLazyChainIndex
{
public:
    CLazyChainIndex() noexcept = default;
    CLazyChainIndex(CLazyChainIndex const &) noexcept {}
    CLazyChainIndex & operator=(CLazyChainIndex const &) noexcept
    {
        Clear();
        return *this;
    }
    ~CLazyChainIndex() { Clear(); }

    /// The index, or null.
    CChainIndex const* Get() const noexcept { return m_Index.load(std::memory_order_acquire); }
    /// Counts a question; the number of questions since the last change.
    unsigned int CountQuestion() const noexcept
    {
        unsigned int const count = m_Questions.load(std::memory_order_relaxed) + 1;
        m_Questions.store(count, std::memory_order_relaxed); // one lost now and then does no harm
        return count;
    }
    /// Takes over `index`, unless one stands already; the one that stands.
    CChainIndex const* Set(CChainIndex const* index) const noexcept;
    void Clear() noexcept
    {
        m_Questions.store(0, std::memory_order_relaxed);
        if (m_Index.load(std::memory_order_relaxed) != nullptr)
        {
            Drop();
        }
    }

private:
    void Drop() noexcept;

    mutable std::atomic<CChainIndex const*> m_Index{nullptr}; ///< owned
    mutable std::atomic<unsigned int> m_Questions{0};
};

} // namespace geometry
