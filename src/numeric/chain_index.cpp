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

CChainIndex::CChainIndex(std::vector<Rect> rects)
{
    m_Levels.push_back(std::move(rects));
    while (m_Levels.back().size() > 1)
    {
        std::vector<Rect> const & below = m_Levels.back();
        std::vector<Rect> level((below.size() + FanOut - 1) >> FanOutBits);
        for (std::size_t i = 0; i < below.size(); ++i)
        {
            level[i >> FanOutBits].Include(below[i]);
        }
        m_Levels.push_back(std::move(level));
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
