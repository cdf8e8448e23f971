#include "clip/fold.h"

#include <algorithm>
#include <cmath>

#include <geometry/arc/path_object_arc.h>

#include "numeric/chain_index.h"
#include "path/probe_parity.h"
#include "polygon/outline_facts.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinFoldedCount = 12; // path objects; below, reading them one by one is as fast
constexpr std::size_t Neighbours = 2;      // how far from a place the clipper looks along the ring

bool BearsUserInfo(CPathObjectBase const* object)
{
    return object->GetUserInfo() != nullptr;
}

} // namespace

bool CFold::MayFold(CPolygon const & polygon)
{
    auto const count = polygon.GetOutline().size();
    return IsIndexUsed(count >= MinFoldedCount) && count > 2 * Neighbours;
}

std::unique_ptr<CFold> CFold::Make(CPolygon const & polygon, CPolygon const & other, TPoint<double> const* shift,
                                   std::unique_ptr<CFold> & spare)
{
    auto const & otherOutline = other.GetOutline();
    if (!MayFold(polygon) || !CPolygonInternals::HasFacts(polygon) || !IsInReach(polygon.GetBoundingRect()) ||
        !IsInReach(other.GetBoundingRect()) || std::any_of(otherOutline.begin(), otherOutline.end(), BearsUserInfo))
    {
        return nullptr;
    }
    std::unique_ptr<CFold> fold = spare != nullptr ? std::move(spare) : std::unique_ptr<CFold>(new CFold);
    fold->Begin(polygon, shift != nullptr);
    fold->SetWindow(other.GetBoundingRect(), shift != nullptr ? *shift : TPoint<double>());
    fold->FindRuns();
    fold->NoteAbscissas();
    std::size_t count = 0;
    for (TFoldedRun const & run : fold->m_Runs)
    {
        count += run.last - run.first;
    }
    // the cancellation of infinities isn't thought through: such outlines go the plain way
    bool const isWorthIt = count > 0 && IsIndexUsed(count >= MinFoldedCount / 2) && std::isfinite(fold->m_RunLength);
    if (!isWorthIt)
    {
        spare = std::move(fold);
    }
    return fold;
}

void CFold::Begin(CPolygon const & polygon, bool isShifted)
{
    m_Polygon = &polygon;
    m_IsShifted = isShifted;
    m_Runs.clear();
    m_Above.clear();
    m_RunLength = 0.0;
    m_RestLength = 0.0;
    m_HasFailed = false;
}

void CFold::SetWindow(CBoundingRect<double> other, TPoint<double> const & shift)
{
    other.maxX += shift.x; // shifts go up and to the right
    other.maxY += shift.y;
    double const room = RoomFor(m_Polygon->GetBoundingRect(), other);
    m_Window = other;
    m_Window.Inflate(0.5 * room);
    m_Reach = other;
    m_Reach.Inflate(room);
}

namespace
{

/// Where to look one by one: the ranges of objects that are kept, apart and ascending.
class CKeptRanges
{
public:
    /// `ranges`: memory for them.
    CKeptRanges(std::size_t count, std::vector<std::pair<std::size_t, std::size_t>> & ranges)
        : m_Count(count), m_Ranges(ranges)
    {
        m_Ranges.clear();
    }

    /// The objects from `before` ones before `index` to `behind` ones behind it, round the outline.
    void Keep(std::size_t index, std::size_t before, std::size_t behind)
    {
        std::size_t const first = index + m_Count - before; // plus the count
        std::size_t const last = index + m_Count + behind + 1;
        Add(std::max(first, m_Count) - m_Count, std::min(last, 2 * m_Count) - m_Count);
        if (first < m_Count)
        {
            Add(first, m_Count);
        }
        if (last > 2 * m_Count)
        {
            Add(0, last - 2 * m_Count);
        }
    }

    std::vector<std::pair<std::size_t, std::size_t>> const & Arrange()
    {
        std::sort(m_Ranges.begin(), m_Ranges.end());
        std::size_t count = 0;
        for (auto const & range : m_Ranges)
        {
            if (count > 0 && range.first <= m_Ranges[count - 1].second)
            {
                m_Ranges[count - 1].second = std::max(m_Ranges[count - 1].second, range.second);
            }
            else
            {
                m_Ranges[count++] = range;
            }
        }
        m_Ranges.resize(count);
        return m_Ranges;
    }

private:
    void Add(std::size_t first, std::size_t last)
    {
        if (!m_Ranges.empty() && m_Ranges.back().first <= first && first <= m_Ranges.back().second)
        {
            m_Ranges.back().second = std::max(m_Ranges.back().second, last);
        }
        else
        {
            m_Ranges.emplace_back(first, last);
        }
    }

    std::size_t m_Count;
    std::vector<std::pair<std::size_t, std::size_t>> & m_Ranges;
};

} // namespace

void CFold::FindRuns()
{
    auto const & outline = m_Polygon->GetOutline();
    COutlineFacts const & facts = CPolygonInternals::FactsOf(*m_Polygon);
    std::size_t const n = outline.size();
    CKeptRanges kept(n, m_Kept);
    auto const mayBeNear = [&](auto const & f)
    { return !IsApart(f.rect, m_Reach) || !f.isSteady || (m_IsShifted && !f.isFirm); };
    facts.Walk(
        0, n, [&](TFactsSum const & sum) { return mayBeNear(sum) || !sum.isApart; },
        [&](std::size_t i, TObjectFacts const & object)
        {
            // what isn't steady may come near when it is moved
            if (mayBeNear(object) && (!IsApart(object.rect, m_Reach) || !object.isSteady || !StaysItself(i)))
            {
                kept.Keep(i, Neighbours, Neighbours);
            }
            if (!object.isApart)
            {
                kept.Keep(i, 0, 1);
            }
            return true;
        });
    std::size_t last = 0;
    for (auto const & range : kept.Arrange())
    {
        if (!KeepRange(range.first, range.second))
        {
            m_Runs.clear();
            return;
        }
        AddRun(last, range.first);
        last = range.second;
    }
    AddRun(last, n);
}

/// False if an object bears a user info.
bool CFold::KeepRange(std::size_t first, std::size_t last)
{
    auto const & outline = m_Polygon->GetOutline();
    bool isPlain = true;
    CPolygonInternals::FactsOf(*m_Polygon)
        .Walk(
            first, last, [](TFactsSum const &) { return true; },
            [&](std::size_t i, TObjectFacts const & facts)
            {
                isPlain = facts.length > 0.0 || !BearsUserInfo(outline[i]);
                m_RestLength += facts.length > 0.0 ? facts.length : outline[i]->CalculateLength();
                return isPlain;
            });
    return isPlain;
}

/// Moved by nothing, an object gets its radius, rectangle and direction anew: the direction must come out the same.
bool CFold::StaysItself(std::size_t index) const
{
    CPathObjectBase const & object = *m_Polygon->GetOutline()[index];
    if (object.CanAppendVertex())
    {
        return true;
    }
    CPathObjectArc moved(static_cast<CPathObjectArc const &>(object));
    moved.Translate(0.0, 0.0);
    return moved.IsCounterClockwise() == static_cast<CPathObjectArc const &>(object).IsCounterClockwise();
}

void CFold::AddRun(std::size_t first, std::size_t last)
{
    if (first == last)
    {
        return;
    }
    COutlineFacts const & facts = CPolygonInternals::FactsOf(*m_Polygon);
    TFactsSum const sum = facts.Sum(first, last);
    TFoldedRun run{first, last, sum.rect, sum.area, sum.length, sum.hasArc};
    if (m_IsShifted && !sum.isFirm)
    {
        run.rect.Reset();
        for (std::size_t i = first; i < last; ++i)
        {
            std::unique_ptr<CPathObjectBase> const moved(m_Polygon->GetOutline()[i]->Clone());
            moved->Translate(0.0, 0.0);
            run.rect.Include(moved->GetBoundingRect());
        }
    }
    m_RunLength += run.length;
    m_Runs.push_back(run);
    auto const isAbove = [&](CBoundingRect<double> const & rect)
    { return rect.minY > m_Window.maxY && rect.minX <= m_Window.maxX && rect.maxX >= m_Window.minX; };
    facts.Walk(
        first, last,
        [&](TFactsSum const & s)
        { return s.rect.maxY > m_Window.maxY && s.rect.minX <= m_Window.maxX && s.rect.maxX >= m_Window.minX; },
        [&](std::size_t i, TObjectFacts const & object)
        {
            if (isAbove(object.rect))
            {
                AddAbove(i);
            }
            return true;
        });
}

void CFold::AddAbove(std::size_t index)
{
    CPathObjectBase const & object = *m_Polygon->GetOutline()[index];
    double const startX = object.GetStartPoint().x;
    double const endX = object.GetEndPoint().x;
    bool const goesOn = !m_Above.empty() && m_Above.back().last == index && m_Above.back().endX == startX;
    if (goesOn)
    {
        m_Above.back().last = index + 1;
        m_Above.back().endX = endX;
    }
    else
    {
        m_Above.push_back({index, index + 1, startX, endX});
    }
}

/// Of the arcs above. Those beside the window count at its borders.
void CFold::NoteAbscissas()
{
    auto const & outline = m_Polygon->GetOutline();
    auto const forEachArc = [&](auto const & visit)
    {
        for (TRangeAbove const & range : m_Above)
        {
            for (std::size_t i = range.first; i < range.last; ++i)
            {
                if (!outline[i]->CanAppendVertex())
                {
                    visit(static_cast<CPathObjectArc const &>(*outline[i]));
                }
            }
        }
    };
    std::size_t count = 0;
    forEachArc([&](CPathObjectArc const &) { ++count; });
    m_Abscissas.Reset(m_Window.minX, m_Window.maxX, count);
    forEachArc([&](CPathObjectArc const & arc) { m_Abscissas.Add(arc); });
}

bool CFold::IsProbeCountOdd(TPoint<double> const & point)
{
    if (!IsInWindow(point))
    {
        Fail();
        return false;
    }
    bool const isNear = m_Abscissas.MayBeNear(point.x);
    bool isOdd = false;
    for (TRangeAbove const & range : m_Above)
    {
        if (!isNear)
        {
            isOdd = isOdd != (IsClearlyLess(point.x, range.startX) != IsClearlyLess(point.x, range.endX));
            continue;
        }
        for (std::size_t i = range.first; i < range.last; ++i)
        {
            isOdd = isOdd != geometry::IsProbeCountOdd(*m_Polygon->GetOutline()[i], point);
        }
    }
    return isOdd;
}

} // namespace geometry
