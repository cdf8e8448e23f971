#include "polygon/outline_facts.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

#include "arc/as_arc.h"
#include "arc/probe_abscissas.h"
#include "polygon/area.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

bool IsInReach(CBoundingRect<double> const & rect)
{
    constexpr double largest = 1e15;
    return rect.minX > -largest && rect.minY > -largest && rect.maxX < largest && rect.maxY < largest;
}

double RoomFor(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    double const size = (a.maxX - a.minX) + (a.maxY - a.minY) + (b.maxX - b.minX) + (b.maxY - b.minY);
    double const largest = std::max({std::fabs(a.minX), std::fabs(a.minY), std::fabs(a.maxX), std::fabs(a.maxY)});
    return 0.25 + 2.5e-7 * size + 1e-11 * largest;
}

namespace
{

bool HasSamePoints(CPathObjectBase const & a, CPathObjectBase const & b)
{
    auto const isSame = [](TPoint<double> const & p, TPoint<double> const & q) { return p.x == q.x && p.y == q.y; };
    return std::equal(a.GetPointsBegin(), a.GetPointsEnd(), b.GetPointsBegin(), b.GetPointsEnd(), isSame);
}

/// Cleaning up changes nothing.
bool IsClean(CPathObjectPolyline const & polyline)
{
    CPathObjectPolyline cleaned(polyline);
    cleaned.Cleanup(false);
    return HasSamePoints(cleaned, polyline);
}

bool IsSteadyPolyline(CPathObjectPolyline const & polyline)
{
    if (polyline.IsSingleSegment())
    {
        return true;
    }
    CPathObjectPolyline reversed(polyline);
    reversed.Reverse();
    return IsClean(polyline) && IsClean(reversed);
}

TObjectFacts Describe(CPathObjectBase const & object, TPoint<double> const & origin, double length)
{
    TObjectFacts facts;
    facts.rect = object.GetBoundingRect();
    facts.isArc = !object.CanAppendVertex();
    if (IsInReach(facts.rect) && object.IsValid() && object.GetUserInfo() == nullptr &&
        !(object.GetStartPoint() == object.GetEndPoint()))
    {
        facts.area = SignedAreaTo(object, origin);
        facts.length = length > 0.0 ? length : object.CalculateLength();
        if (CPathObjectArc const* arc = AsArc(object))
        {
            facts.isSteady = IsSteadyArc(*arc);
        }
        else if (auto const* polyline = dynamic_cast<CPathObjectPolyline const*>(&object))
        {
            facts.isSteady = IsSteadyPolyline(*polyline);
        }
    }
    return facts;
}

/// About nearly one centre: an arc that isn't joined with its neighbour may be so with that and what came before it.
bool AreNearlyOfOneCircle(CPathObjectBase const & object, CPathObjectBase const & next)
{
    CPathObjectArc const* const a = AsArc(object);
    CPathObjectArc const* const b = AsArc(next);
    if (a == nullptr || b == nullptr)
    {
        return false;
    }
    TPoint<double> const & c = a->GetCentre();
    TPoint<double> const & d = b->GetCentre();
    double const room = 1e-12 * std::max({std::fabs(c.x), std::fabs(c.y), std::fabs(d.x), std::fabs(d.y)});
    return std::fabs(c.x - d.x) <= room && std::fabs(c.y - d.y) <= room;
}

bool AreJoined(CPathObjectBase const & object, CPathObjectBase const & next)
{
    return AreNearlyOfOneCircle(object, next) ||
           std::unique_ptr<CPathObjectBase const>(object.Append(&next)) != nullptr;
}

} // namespace

void TFactsSum::Add(TObjectFacts const & facts, bool isReversed)
{
    rect.Include(facts.rect);
    area += isReversed ? -facts.area : facts.area;
    length += facts.length;
    hasArc = hasArc || facts.isArc;
    isSteady = isSteady && facts.isSteady;
    isFirm = isFirm && facts.isFirm;
    isApart = isApart && facts.isApart;
}

void TFactsSum::Add(TFactsSum const & sum)
{
    rect.Include(sum.rect);
    area += sum.area;
    length += sum.length;
    hasArc = hasArc || sum.hasArc;
    isSteady = isSteady && sum.isSteady;
    isFirm = isFirm && sum.isFirm;
    isApart = isApart && sum.isApart;
}

// --- blocks ---

/// The facts of the object at `k`, also for one that is `turned`.
TObjectFacts COutlineFacts::TBlock::Get(std::size_t k, bool turned) const
{
    TObjectFacts facts = At(k);
    facts.area = isReversed != turned ? -facts.area : facts.area;
    return facts;
}

/// Puts the objects in path order.
void COutlineFacts::TBlock::Straighten()
{
    if (isReversed)
    {
        std::reverse(objects.begin(), objects.begin() + static_cast<std::ptrdiff_t>(count));
        for (std::size_t k = 0; k < count; ++k)
        {
            objects[k].area = -objects[k].area;
        }
        isReversed = false;
    }
}

void COutlineFacts::TBlock::SumUp()
{
    if (!isSummed)
    {
        sum = TFactsSum();
        for (std::size_t k = 0; k < count; ++k)
        {
            sum.Add(At(k), isReversed);
        }
        isSummed = true;
    }
}

std::size_t COutlineFacts::FindBlock(std::size_t object) const
{
    auto const behind = std::upper_bound(m_Starts.begin(), m_Starts.end(), object);
    return static_cast<std::size_t>(behind - m_Starts.begin()) - (behind == m_Starts.begin() ? 0 : 1);
}

TFactsSum COutlineFacts::Sum(std::size_t first, std::size_t last) const
{
    TFactsSum sum;
    for (std::size_t b = FindBlock(first); b < m_Blocks.size() && m_Starts[b] < last; ++b)
    {
        TBlock const & block = *m_Blocks[b];
        if (m_Starts[b] >= first && m_Starts[b] + block.count <= last)
        {
            sum.Add(block.sum);
            continue;
        }
        std::size_t const end = std::min(last - m_Starts[b], block.count);
        for (std::size_t k = std::max(first, m_Starts[b]) - m_Starts[b]; k < end; ++k)
        {
            sum.Add(block.At(k), block.isReversed);
        }
    }
    return sum;
}

double COutlineFacts::GetAreaRounding(CBoundingRect<double> const & bounds) const
{
    double const reachX = std::max(std::fabs(bounds.minX - m_Origin.x), std::fabs(bounds.maxX - m_Origin.x));
    double const reachY = std::max(std::fabs(bounds.minY - m_Origin.y), std::fabs(bounds.maxY - m_Origin.y));
    double const reach = reachX + reachY;
    double const gap = 1e-13 * (reach + std::fabs(m_Origin.x) + std::fabs(m_Origin.y)); // between two objects, at most
    return static_cast<double>(m_Count) * reach * (1e-14 * reach + gap);
}

// --- growing ---

void COutlineFacts::Restart(TPoint<double> const & origin)
{
    for (std::unique_ptr<TBlock> & block : m_Blocks)
    {
        if (block != nullptr && m_Spare.size() < MaxSpare)
        {
            m_Spare.push_back(std::move(block));
        }
    }
    m_Origin = origin;
    m_Count = 0;
    m_Blocks.clear();
    m_Starts.clear();
    m_OpenJoints.clear();
}

void COutlineFacts::Reserve(std::size_t count)
{
    constexpr std::size_t fewJoints = 16;                  // runs have none
    std::size_t const blocks = 2 * (count / Capacity + 1); // most of those taken over aren't full
    m_Blocks.reserve(blocks);
    m_Starts.reserve(blocks);
    m_OpenJoints.reserve(std::min(count, fewJoints));
}

TObjectFacts COutlineFacts::Append(CPathObjectBase const & object, double length)
{
    TObjectFacts const facts = Describe(object, m_Origin, length);
    AppendClone(facts);
    return facts;
}

std::unique_ptr<COutlineFacts::TBlock> COutlineFacts::MakeBlock()
{
    if (m_Spare.empty())
    {
        return std::make_unique<TBlock>();
    }
    std::unique_ptr<TBlock> block = std::move(m_Spare.back());
    m_Spare.pop_back();
    block->count = 0;
    block->isReversed = false;
    block->isSummed = false;
    return block;
}

void COutlineFacts::Append(TObjectFacts const & facts)
{
    if (m_Blocks.empty() || m_Blocks.back()->count == Capacity)
    {
        m_Blocks.push_back(MakeBlock());
    }
    TBlock & block = *m_Blocks.back();
    block.Straighten();
    block.objects[block.count++] = facts;
    block.isSummed = false;
    ++m_Count;
}

/// The objects from `begin` to before `end` of a block. A whole one is taken as it is, unless it fits into the last.
void COutlineFacts::AppendBlock(std::unique_ptr<TBlock> & block, std::size_t begin, std::size_t end, bool isReversed)
{
    bool const isWhole = begin == 0 && end == block->count;
    if (isWhole && (m_Blocks.empty() || m_Blocks.back()->count + block->count > Capacity))
    {
        m_Count += block->count;
        m_Blocks.push_back(std::move(block));
        if (isReversed)
        {
            TBlock & turned = *m_Blocks.back();
            turned.isReversed = !turned.isReversed;
            turned.sum.area = -turned.sum.area;
        }
        return;
    }
    for (std::size_t k = begin; k < end; ++k)
    {
        Append(block->Get(isReversed ? end - 1 - (k - begin) : k, isReversed));
    }
}

void COutlineFacts::AppendRun(COutlineFacts & source, std::size_t first, std::size_t last, bool isReversed)
{
    std::size_t const firstBlock = source.FindBlock(first);
    std::size_t const lastBlock = source.FindBlock(last - 1);
    for (std::size_t i = 0; i <= lastBlock - firstBlock; ++i)
    {
        std::size_t const b = isReversed ? lastBlock - i : firstBlock + i;
        std::size_t const start = source.m_Starts[b];
        AppendBlock(source.m_Blocks[b], std::max(first, start) - start,
                    std::min(last - start, source.m_Blocks[b]->count), isReversed);
    }
    m_OpenJoints.push_back(m_Count - 1);
}

void COutlineFacts::Complete(Outline const & outline)
{
    m_Starts.clear();
    m_Starts.reserve(m_Blocks.size());
    std::size_t count = 0;
    for (auto const & block : m_Blocks)
    {
        m_Starts.push_back(count);
        count += block->count;
    }
    std::size_t b = 0;
    for (std::size_t const i : m_OpenJoints)
    {
        while (b + 1 < m_Blocks.size() && m_Starts[b + 1] <= i)
        {
            ++b;
        }
        TBlock & block = *m_Blocks[b];
        TBlock const & nextBlock = i + 1 < m_Starts[b] + block.count ? block : *m_Blocks[(b + 1) % m_Blocks.size()];
        std::size_t const next = i + 1 < m_Count ? i + 1 : 0;
        std::size_t const nextInBlock = &nextBlock == &block && next != 0 ? next - m_Starts[b] : 0;
        TObjectFacts & facts = block.At(i - m_Starts[b]);
        TObjectFacts const & nextFacts = nextBlock.At(nextInBlock);
        // an arc is never joined with a polyline
        bool const isApart = facts.isSteady && nextFacts.isSteady &&
                             outline[i]->GetEndPoint() == outline[next]->GetStartPoint() &&
                             (facts.isArc != nextFacts.isArc || !AreJoined(*outline[i], *outline[next]));
        block.isSummed = block.isSummed && facts.isApart == isApart;
        facts.isApart = isApart;
    }
    m_OpenJoints.clear();
    for (auto const & block : m_Blocks)
    {
        block->SumUp();
    }
}

void COutlineFacts::MoveByNothing(Outline const & outline, std::size_t first, std::size_t last)
{
    for (std::size_t b = FindBlock(first); b < m_Blocks.size() && m_Starts[b] < last; ++b)
    {
        TBlock & block = *m_Blocks[b];
        for (std::size_t k = 0; !block.sum.isFirm && k < block.count; ++k)
        {
            std::size_t const i = m_Starts[b] + k;
            if (i >= first && i < last && !block.At(k).isFirm)
            {
                outline[i]->Translate(0.0, 0.0); // an arc gets its radius anew
                TObjectFacts const moved = Describe(*outline[i], m_Origin, 0.0);
                TObjectFacts & facts = block.At(k);
                facts.rect = moved.rect;
                facts.length = moved.length;
                facts.area = block.isReversed ? -moved.area : moved.area;
                facts.isFirm = true;
                block.isSummed = false;
            }
        }
        block.SumUp();
    }
}

COutlineFacts const & CPolygonInternals::CompleteFacts(CPolygon & polygon)
{
    auto const & outline = polygon.m_Outline;
    if (polygon.m_Facts == nullptr || polygon.m_Facts->GetCount() != outline.size())
    {
        auto facts = std::make_shared<COutlineFacts>(outline.front()->GetStartPoint());
        facts->Reserve(outline.size());
        for (CPathObjectBase const* object : outline)
        {
            facts->Append(*object);
        }
        facts->Complete(outline);
        polygon.m_Facts = std::move(facts);
    }
    return *polygon.m_Facts;
}

} // namespace geometry
