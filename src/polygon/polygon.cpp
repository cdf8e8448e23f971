// The polygon as a data structure: how path objects enter the outline, how it is closed, copied and emptied. The
// outline stays connected, each object starting where the one before it ends; what doesn't fit is refused.
#include <geometry/polygon/polygon.h>

#include <algorithm>
#include <memory>

#include <geometry/path/path_object_polyline.h>

#include "numeric/chain_index.h"
#include "polygon/outline_index.h"
#include "polygon/polygon_tools.h"

namespace geometry
{

unsigned int CPolygon::m_GroupingAmount = 50;

CPolygon::CPolygon() = default;

CPolygon::CPolygon(CPolygon const & other) : CPolygon()
{
    InitializeWithPolygon(other);
}

CPolygon::CPolygon(CPathObjectBase* object) : CPolygon()
{
    InitializeWithPathObjects(PathObjects(1, object));
}

CPolygon::~CPolygon()
{
    clear(true);
}

void CPolygon::clear(bool alsoHoles)
{
    ClearOutline();
    if (alsoHoles)
    {
        DeleteHoles();
    }
    m_BoundingRect.Reset();
}

void CPolygon::ClearOutline()
{
    for (CPathObjectBase* object : m_Outline)
    {
        delete object;
    }
    m_Outline.clear();
    m_Facts.reset();
    ClearOutlineCache();
    m_WindingDirection = eWindingUnknown;
}

void CPolygon::ClearOutlineCache()
{
    for (CPathObjectBase* piece : m_OutlineCache.GetObjects())
    {
        delete piece;
    }
    m_OutlineCache.Clear();
    m_OutlineIndex.Clear();
    m_OutlineQuestions = 0U;
}

namespace
{

constexpr std::size_t MinIndexedObjects = 24;    // below, a loop over all is as fast
constexpr unsigned int QuestionsBeforeIndex = 4; // building costs about as much as these

} // namespace

/// The index, if there are enough objects for one, and it is there, or worth it, or enough questions came.
COutlineIndex const* CPolygon::FindOutlineIndex(bool isWorthIt) const
{
    if (m_Outline.empty() || !IsIndexUsed(m_Outline.size() >= MinIndexedObjects))
    {
        return nullptr;
    }
    if (COutlineIndex const* present = m_OutlineIndex.Get())
    {
        return present;
    }
    unsigned int const questions = m_OutlineQuestions + 1;
    m_OutlineQuestions = questions; // one lost now and then does no harm
    if (!IsIndexUsed(isWorthIt || questions > QuestionsBeforeIndex))
    {
        return nullptr;
    }
    std::vector<CPathObjectBase const*> const objects(m_Outline.begin(), m_Outline.end());
    return &m_OutlineIndex.Set(std::make_unique<COutlineIndex const>(objects));
}

void CPolygon::DeleteHoles()
{
    for (CPolygon* hole : m_Holes.GetObjects())
    {
        delete hole;
    }
    m_Holes.Clear();
}

void CPolygon::AppendPathObject(CPathObjectBase* object)
{
    ClearOutlineCache();
    if (object == nullptr || !object->IsValid() ||
        (!m_Outline.empty() && !(object->GetStartPoint() == m_Outline.back()->GetEndPoint())))
    {
        return;
    }
    m_Outline.push_back(object);
    m_Facts.reset();
    m_BoundingRect.Include(object->GetBoundingRect());
    m_WindingDirection = eWindingUnknown;
}

bool CPolygon::EnsureValidPolygon(bool closeByExtending)
{
    ClearOutlineCache();
    if (m_Outline.empty())
    {
        return false;
    }
    auto const isClosed = [this] { return m_Outline.back()->GetEndPoint() == m_Outline.front()->GetStartPoint(); };
    // the points are copied: they may lie in the object that grows
    TPoint<double> const end = m_Outline.back()->GetEndPoint();
    TPoint<double> const start = m_Outline.front()->GetStartPoint();
    if (closeByExtending && !isClosed())
    {
        if (m_Outline.back()->CanAppendVertex())
        {
            m_Outline.back()->AppendVertex(start);
        }
        else if (m_Outline.front()->CanPrependVertex())
        {
            m_Outline.front()->PrependVertex(end);
        }
        else
        {
            auto segment = std::make_unique<CPathObjectPolyline>();
            segment->AddVertex(end.x, end.y);
            segment->AddVertex(start.x, start.y);
            m_Outline.push_back(segment.get());
            segment.release();
        }
    }
    if (isClosed())
    {
        return true;
    }
    TPoint<double> const ends[] = {end, start};
    auto segment = std::make_unique<CPathObjectPolyline>(ends, ends + 2);
    m_Outline.push_back(segment.get());
    segment.release();
    return false;
}

void CPolygon::InitializeWithPathObjects(PathObjects const & objects)
{
    ClearOutline();
    DeleteHoles();
    m_BoundingRect.Reset();
    m_Outline.reserve(objects.size() + 1);
    for (CPathObjectBase* object : objects)
    {
        AppendPathObject(object);
    }
    try
    {
        EnsureValidPolygon(false);
    }
    catch (...)
    {
        m_Outline.clear(); // all of them stay with the caller
        m_BoundingRect.Reset();
        throw;
    }
}

void CPolygon::InitializeWithClones(std::vector<CPathObjectBase const*> const & objects)
{
    // the objects may be this polygon's own: they are cloned before anything goes
    std::vector<std::unique_ptr<CPathObjectBase>> clones;
    clones.reserve(objects.size());
    for (CPathObjectBase const* object : objects)
    {
        clones.emplace_back(object != nullptr ? object->Clone() : nullptr);
    }
    PathObjects handedOver;
    handedOver.reserve(clones.size());
    for (auto const & clone : clones)
    {
        handedOver.push_back(clone.get());
    }
    InitializeWithPathObjects(handedOver);
    // the accepted clones stand in the outline in this order; a refused one is freed here
    std::size_t accepted = 0;
    for (auto & clone : clones)
    {
        if (accepted < m_Outline.size() && m_Outline[accepted] == clone.get())
        {
            clone.release();
            ++accepted;
        }
    }
}

void CPolygon::InitializeWithPolygon(CPolygon const & other)
{
    ClearOutline();
    m_Outline.reserve(other.m_Outline.size());
    for (CPathObjectBase const* object : other.m_Outline)
    {
        m_Outline.push_back(object->Clone());
    }
    DeleteHoles();
    for (CPolygon const* hole : other.GetHoles())
    {
        auto copy = std::make_unique<CPolygon>(*hole);
        m_Holes.AddNew(copy.get());
        copy.release();
    }
    m_WindingDirection = other.m_WindingDirection;
    m_BoundingRect = other.m_BoundingRect;
}

bool HasUserInfo(CPolygon const & polygon)
{
    auto const & outline = polygon.GetOutline();
    auto const & holes = polygon.GetHoles();
    return std::any_of(outline.begin(), outline.end(),
                       [](CPathObjectBase const* object) { return object->GetUserInfo() != nullptr; }) ||
           std::any_of(holes.begin(), holes.end(), [](CPolygon const* hole) { return HasUserInfo(*hole); });
}

bool CPolygon::AddPolygonToVectorWhenValid(CPolygon*& polygon, std::vector<CPolygon*> & polygons)
{
    if (polygon == nullptr)
    {
        return false;
    }
    if (polygon->m_Outline.empty())
    {
        delete polygon;
        polygon = nullptr;
        return false;
    }
    polygons.push_back(polygon);
    return true;
}

} // namespace geometry
