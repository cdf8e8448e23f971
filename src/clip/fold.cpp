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

constexpr std::size_t MinFoldedCount = 32; // path objects; below, reading them one by one is as fast
constexpr std::size_t Neighbours = 2;      // how far from a place the clipper looks along the ring

/// Above all distances at which a clip takes notice of an object: 0.1 for arcs, 1e-7 of the size of an object, 100 units
/// in the last place.
double RoomFor(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    double const size = (a.maxX - a.minX) + (a.maxY - a.minY) + (b.maxX - b.minX) + (b.maxY - b.minY);
    double const largest = std::max({std::fabs(a.minX), std::fabs(a.minY), std::fabs(a.maxX), std::fabs(a.maxY)});
    return 0.25 + 2.5e-7 * size + 1e-11 * largest;
}

bool IsApart(CBoundingRect<double> const & a, CBoundingRect<double> const & b)
{
    return a.maxX < b.minX || a.minX > b.maxX || a.maxY < b.minY || a.minY > b.maxY;
}

/// Beyond, arcs aren't clipped.
bool IsInReach(CBoundingRect<double> const & rect)
{
    constexpr double largest = 1e15;
    return rect.minX > -largest && rect.minY > -largest && rect.maxX < largest && rect.maxY < largest;
}

bool BearsUserInfo(CPathObjectBase const* object)
{
    return object->GetUserInfo() != nullptr;
}

} // namespace

std::unique_ptr<CFold> CFold::Make(CPolygon const & polygon, CPolygon const & other, TPoint<double> const* shift)
{
    auto const & outline = polygon.GetOutline();
    auto const & otherOutline = other.GetOutline();
    if (!CPolygonInternals::HasFacts(polygon) || !IsIndexUsed(outline.size() >= MinFoldedCount) ||
        outline.size() <= 2 * Neighbours || !IsInReach(polygon.GetBoundingRect()) ||
        !IsInReach(other.GetBoundingRect()) || std::any_of(otherOutline.begin(), otherOutline.end(), BearsUserInfo))
    {
        return nullptr;
    }
    std::unique_ptr<CFold> fold(new CFold(polygon, shift != nullptr));
    fold->SetWindow(other.GetBoundingRect(), shift != nullptr ? *shift : TPoint<double>());
    fold->FindRuns();
    fold->m_Abscissas.Prepare();
    std::size_t count = 0;
    for (TFoldedRun const & run : fold->m_Runs)
    {
        count += run.last - run.first;
    }
    // the cancellation of infinities isn't thought through: such outlines go the plain way
    bool const isWorthIt = count > 0 && IsIndexUsed(count >= MinFoldedCount / 2) && std::isfinite(fold->m_RunLength);
    return isWorthIt ? std::move(fold) : nullptr;
}

void CFold::SetWindow(CBoundingRect<double> other, TPoint<double> const & shift)
{
    other.maxX += shift.x; // shifts go up and to the right
    other.maxY += shift.y;
    double const room = RoomFor(m_Polygon.GetBoundingRect(), other);
    m_Window = other;
    m_Window.Inflate(0.5 * room);
    m_Reach = other;
    m_Reach.Inflate(room);
}

void CFold::FindRuns()
{
    auto const & outline = m_Polygon.GetOutline();
    auto const & facts = CPolygonInternals::FactsOf(m_Polygon).objects;
    std::size_t const n = outline.size();
    std::vector<char> isKept(n, 0);
    for (std::size_t i = 0; i < n; ++i)
    {
        // what isn't steady may come near when it is moved
        if (!IsApart(facts[i].rect, m_Reach) || !facts[i].isSteady ||
            (m_IsShifted && !facts[i].isFirm && !StaysItself(i)))
        {
            for (std::size_t k = 0; k <= 2 * Neighbours; ++k)
            {
                isKept[(i + n - Neighbours + k) % n] = 1;
            }
        }
        if (!facts[i].isApart)
        {
            isKept[i] = 1;
            isKept[i + 1 < n ? i + 1 : 0] = 1;
        }
    }
    for (std::size_t i = 0; i < n; ++i)
    {
        if (isKept[i] != 0)
        {
            m_RestLength += outline[i]->CalculateLength();
            if (BearsUserInfo(outline[i]))
            {
                m_Runs.clear();
                return;
            }
            continue;
        }
        if (i == 0 || isKept[i - 1] != 0)
        {
            m_Runs.emplace_back().first = i;
        }
        AddToRun(i);
    }
}

/// Moved by nothing, an object gets its radius, rectangle and direction anew: the direction must come out the same.
bool CFold::StaysItself(std::size_t index) const
{
    CPathObjectBase const & object = *m_Polygon.GetOutline()[index];
    if (object.CanAppendVertex())
    {
        return true;
    }
    CPathObjectArc moved(static_cast<CPathObjectArc const &>(object));
    moved.Translate(0.0, 0.0);
    return moved.IsCounterClockwise() == static_cast<CPathObjectArc const &>(object).IsCounterClockwise();
}

void CFold::AddToRun(std::size_t index)
{
    TObjectFacts const & facts = CPolygonInternals::FactsOf(m_Polygon).objects[index];
    TFoldedRun & run = m_Runs.back();
    run.last = index + 1;
    if (m_IsShifted && !facts.isFirm)
    {
        std::unique_ptr<CPathObjectBase> const moved(m_Polygon.GetOutline()[index]->Clone());
        moved->Translate(0.0, 0.0);
        run.rect.Include(moved->GetBoundingRect());
    }
    else
    {
        run.rect.Include(facts.rect);
    }
    run.area += facts.area;
    run.length += facts.length;
    run.hasArc = run.hasArc || facts.isArc;
    m_RunLength += facts.length;
    if (facts.rect.minY > m_Window.maxY && facts.rect.minX <= m_Window.maxX && facts.rect.maxX >= m_Window.minX)
    {
        AddAbove(index);
    }
}

void CFold::AddAbove(std::size_t index)
{
    CPathObjectBase const & object = *m_Polygon.GetOutline()[index];
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
    if (!object.CanAppendVertex())
    {
        m_Abscissas.Add(static_cast<CPathObjectArc const &>(object));
    }
}

bool CFold::IsProbeCountOdd(TPoint<double> const & point)
{
    if (!IsInWindow(point))
    {
        Fail();
        return false;
    }
    bool const isNear = m_Abscissas.IsNear(point.x);
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
            isOdd = isOdd != geometry::IsProbeCountOdd(*m_Polygon.GetOutline()[i], point);
        }
    }
    return isOdd;
}

} // namespace geometry
