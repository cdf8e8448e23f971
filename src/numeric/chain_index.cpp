#include "numeric/chain_index.h"

#include <utility>

#include <geometry/numeric/lazy_chain_index.h>

namespace geometry
{

std::atomic<EIndexUse> indexUse{EIndexUse::eWhenItPays};

void SetIndexUse(EIndexUse use)
{
    indexUse.store(use, std::memory_order_relaxed);
}

void CChainIndex::Rebuild(std::vector<Rect> & rects)
{
    constexpr std::size_t few = 4;
    m_Levels.resize(std::max(m_Levels.size(), few));
    m_Levels.front().swap(rects);
    for (m_Height = 1; m_Levels[m_Height - 1].size() > 1; ++m_Height)
    {
        if (m_Height == m_Levels.size())
        {
            m_Levels.emplace_back();
        }
        std::vector<Rect> const & below = m_Levels[m_Height - 1];
        std::vector<Rect> & level = m_Levels[m_Height];
        level.assign((below.size() + FanOut - 1) >> FanOutBits, Rect());
        for (std::size_t i = 0; i < below.size(); ++i)
        {
            level[i >> FanOutBits].Include(below[i]);
        }
    }
}

// --- kept with an object ---

void CLazyChainIndex::Drop() noexcept
{
    delete m_Index.load(std::memory_order_relaxed);
    m_Index.store(nullptr, std::memory_order_relaxed);
}

CChainIndex const* CLazyChainIndex::Set(CChainIndex const* index) const noexcept
{
    CChainIndex const* present = nullptr;
    if (!m_Index.compare_exchange_strong(present, index, std::memory_order_acq_rel))
    {
        delete index;
        return present;
    }
    return index;
}

} // namespace geometry
