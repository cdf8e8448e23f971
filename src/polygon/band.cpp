#include "polygon/band.h"

#include <algorithm>

#include "polygon/area.h"
#include "polygon/merge.h"
#include "proof/proved.h"

namespace geometry
{

namespace
{

bool UniteParts(PolygonRange const & first, PolygonRange const & others, PolygonVector & result)
{
    std::unique_ptr<Clipper> const clipper(CreateClipper());
    bool const isDone = MergeRangeCompletely(*first.front(), result, others, *clipper) != Clipper::eClipFailed;
    if (result.size() > 1)
    {
        Report(CReport::eReasonUnjoined, first.front()->GetBoundingRect());
    }
    return isDone;
}

} // namespace

std::unique_ptr<CPolygon> UniteBand(CPolygon const & first, PolygonRange const & others)
{
    auto const isInAny = [](std::size_t inFirst, std::size_t inOthers) { return inFirst + inOthers > 0; };
    OwningPolygonVector united;
    RunProved({CReport::eOperationInflatePath, {&first}, others, isInAny}, united, UniteParts);
    auto const largest = std::max_element(united.begin(), united.end(),
                                          [](CPolygon const* a, CPolygon const* b) { return AreaOf(*a) < AreaOf(*b); });
    return largest == united.end() ? nullptr : TakePolygon(united, static_cast<std::size_t>(largest - united.begin()));
}

} // namespace geometry
