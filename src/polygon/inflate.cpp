// Growing and shrinking a polygon. No offset curves: each path object of the outline and of the holes gives the band
// around its track, and these bands are merged with the polygon or subtracted from it.
#include <array>
#include <cmath>
#include <memory>

#include "clip/frame.h"
#include "polygon/merge.h"
#include "proof/inflation_judge.h"
#include "proof/proved.h"

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

void Inflate(CPolygon const & polygon, double amount, PolygonVector & result)
{
    OwningPolygonVector bands;
    AppendBands(polygon, std::fabs(amount), bands);
    for (CPolygon const* hole : polygon.GetHoles())
    {
        AppendBands(*hole, std::fabs(amount), bands);
    }
    if (amount < 0.0)
    {
        SubtractUsedUpPolygons(polygon, result, bands);
    }
    else
    {
        std::unique_ptr<Clipper> const clipper(CreateClipper());
        MergeRangeCompletely(polygon, result, PolygonRange(bands.begin(), bands.end()), *clipper);
    }
}

/// Another way to the same: in a frame, or by a little more.
struct TInflatingWay
{
    bool isFramed;
    double excess; ///< as a part of the amount
};

constexpr std::array<TInflatingWay, 6> otherWays{
    {{true, 0.0}, {false, 1e-10}, {true, 3e-9}, {false, 1e-7}, {true, 1e-6}, {false, 1e-5}}};

void InflateOtherWay(CPolygon const & polygon, double amount, TInflatingWay const & way, PolygonVector & result)
{
    CFrame const frame = way.isFramed ? CFrame({&polygon}) : CFrame();
    std::unique_ptr<CPolygon> const framed = frame.Enter(polygon, {});
    OwningPolygonVector made;
    Inflate(*framed, amount * (1.0 + way.excess) * frame.GetScale(), made);
    for (CPolygon const* piece : made)
    {
        PushPolygon(result, frame.Leave(*piece));
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
    CRunningOperation const running(CReport::eOperationInflate);
    OwningPolygonVector made;
    CReportTrial trial;
    Inflate(*this, amount, made);
    if (running.IsOuter() && std::isfinite(amount))
    {
        CInflationJudge const judge(*this, amount);
        ProveOrRetry(
            trial, made, GetBoundingRect(),
            [&](PolygonVector const & polygons) { return judge.FindContradiction(polygons); }, otherWays.size(),
            [&](std::size_t way, PolygonVector & other)
            {
                InflateOtherWay(*this, amount, otherWays[way], other);
                return true;
            });
    }
    else
    {
        trial.PassOn();
    }
    CPolygonInternals::ForgetFacts(made);
    result.swap(made); // what it held goes with `made`
}

} // namespace geometry
