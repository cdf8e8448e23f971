#include "polygon/folding.h"

#include <cmath>

#include "clip/clipper.h"
#include "polygon/area.h"

namespace geometry
{

namespace
{

using FoldingClipper = CPolygonClipGreinerHormannBased<double>;

CFold const* FoldOf(Clipper const & clipper)
{
    auto const* folding = dynamic_cast<FoldingClipper const*>(&clipper);
    return folding != nullptr ? folding->GetFold() : nullptr;
}

} // namespace

EClipResult RunFoldedClip(Clipper & clipper, CPolygon const & first, CPolygon & second)
{
    auto* const folding = dynamic_cast<FoldingClipper*>(&clipper);
    return folding != nullptr ? folding->RunFoldedClip(first, second) : clipper.RunClip(first, second);
}

EClipResult RunFoldedIntersection(Clipper & clipper, CPolygon const & first, CPolygon const & second)
{
    if (auto* const folding = dynamic_cast<FoldingClipper*>(&clipper))
    {
        return folding->RunFoldedIntersection(first, second);
    }
    clipper.SetOperation(Clipper::eClipIntersection);
    return clipper.RunClip(first, second);
}

bool IsFolded(Clipper const & clipper)
{
    return FoldOf(clipper) != nullptr;
}

void TakeResultPolygons(Clipper & clipper, PolygonVector & polygons, CPolygon & first)
{
    if (auto* const folding = dynamic_cast<FoldingClipper*>(&clipper))
    {
        folding->TakeResultPolygons(polygons, first);
        return;
    }
    clipper.TakeResultPolygons(polygons);
}

bool IsClearOfPointContact(Clipper & clipper, CPolygon const & first)
{
    CFold const & fold = *FoldOf(clipper);
    double const before = fold.GetRestLength() + LengthOf(first);
    double const behind = dynamic_cast<FoldingClipper &>(clipper).GetResultLength();
    return std::fabs(behind - before) > 1e-9 * (before + fold.GetRunLength());
}

} // namespace geometry
