// Growing and shrinking a polygon. No offset curves: each path object of the outline and of the holes gives the band
// around its track, and these bands are merged with the polygon or subtracted from it.
#include <cmath>
#include <memory>

#include "polygon/merge.h"

namespace geometry
{

namespace
{

void AppendBands(CPolygon const & ring, double distance, PolygonVector & bands)
{
    for (CPathObjectBase const* object : ring.GetOutline())
    {
        std::unique_ptr<CPolygon> band(object->GetInflatePolygon(distance));
        if (band != nullptr && !band->GetOutline().empty())
        {
            PushPolygon(bands, std::move(band));
        }
    }
}

} // namespace

void CPolygon::GetInflatedPolygon(std::vector<CPolygon*> & result, double amount) const
{
    if (amount == 0.0)
    {
        PushPolygon(result, std::make_unique<CPolygon>(*this));
        return;
    }
    OwningPolygonVector bands;
    AppendBands(*this, std::fabs(amount), bands);
    for (CPolygon const* hole : GetHoles())
    {
        AppendBands(*hole, std::fabs(amount), bands);
    }
    if (amount < 0.0)
    {
        SubtractUsedUpPolygons(*this, result, bands);
    }
    else
    {
        std::unique_ptr<Clipper> const clipper(CreateClipper());
        MergeRangeCompletely(*this, result, PolygonRange(bands.begin(), bands.end()), *clipper);
    }
    CPolygonInternals::ForgetFacts(result);
}

} // namespace geometry
