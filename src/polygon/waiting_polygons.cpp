#include "polygon/waiting_polygons.h"

#include <algorithm>

#include "numeric/overlap.h"

namespace geometry
{

namespace
{

constexpr std::size_t MinUnindexed = 64; // a loop over fewer is as fast

} // namespace

void CWaitingPolygons::Add(std::unique_ptr<CPolygon> polygon)
{
    PushPolygon(m_Places, std::move(polygon));
    ++m_Count;
}

void CWaitingPolygons::AddAll(PolygonVector & polygons)
{
    std::size_t const count = polygons.size();
    AppendPolygons(m_Places, polygons);
    m_Count += count;
}

void CWaitingPolygons::AddAll(CWaitingPolygons & polygons)
{
    polygons.CloseGaps();
    AddAll(polygons.m_Places);
    polygons.m_Count = 0;
}

std::unique_ptr<CPolygon> CWaitingPolygons::Take(std::size_t place)
{
    std::unique_ptr<CPolygon> polygon(m_Places[place]);
    m_Places[place] = nullptr;
    --m_Count;
    return polygon;
}

void CWaitingPolygons::TakeAll(PolygonVector & target)
{
    CloseGaps();
    AppendPolygons(target, m_Places);
    m_Count = 0;
}

void CWaitingPolygons::Tidy()
{
    if (m_Count < m_Places.size() / 2)
    {
        CloseGaps();
    }
}

void CWaitingPolygons::CloseGaps()
{
    m_Places.erase(std::remove(m_Places.begin(), m_Places.end(), nullptr), m_Places.end());
    m_Index.reset();
    m_IndexedPlaces.clear();
    m_IndexedEnd = 0;
}

void CWaitingPolygons::BringIndexUpToDate()
{
    std::size_t const behind = m_Places.size() - m_IndexedEnd;
    bool const isThin = m_IndexedPlaces.size() > 2 * (m_Count + MinUnindexed);
    if ((behind == 0 && !isThin) || !IsIndexUsed(behind > MinUnindexed + m_IndexedPlaces.size() / 4 || isThin))
    {
        return;
    }
    std::vector<CBoundingRect<double>> rects;
    m_IndexedPlaces.clear();
    for (std::size_t place = 0; place < m_Places.size(); ++place)
    {
        if (m_Places[place] != nullptr)
        {
            rects.push_back(m_Places[place]->GetBoundingRect());
            m_IndexedPlaces.push_back(place);
        }
    }
    m_Index = rects.empty() ? nullptr : std::make_unique<CScatterIndex>(rects);
    m_IndexedEnd = m_Places.size();
}

std::vector<std::size_t> CWaitingPolygons::FindOverlapping(CBoundingRect<double> const & box, std::size_t start)
{
    std::vector<std::size_t> found;
    auto const addIfOverlapping = [&](std::size_t place)
    {
        if (place >= start && m_Places[place] != nullptr && box.Overlaps(m_Places[place]->GetBoundingRect()))
        {
            found.push_back(place);
        }
    };
    BringIndexUpToDate();
    if (m_Index != nullptr)
    {
        for (std::uint32_t const number : m_Index->Find(WithToleranceRoom(box)))
        {
            addIfOverlapping(m_IndexedPlaces[number]);
        }
    }
    for (std::size_t place = std::max(m_IndexedEnd, start); place < m_Places.size(); ++place)
    {
        addIfOverlapping(place);
    }
    return found;
}

} // namespace geometry
