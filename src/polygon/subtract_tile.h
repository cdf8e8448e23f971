// One tile of a large subtraction.
#pragma once

#include <geometry/report/report.h>

#include "polygon/booleans.h"

namespace geometry
{

/// What is to be subtracted.
struct TCutters
{
    CPolygon::PolygonHash const & hash;
    bool areUsedUp; ///< a tile that is alone with one may take its outline
};

/// One unit of work. Whoever has taken it from the queue is alone with it until all have ended.
class CSubtractTile
{
public:
    explicit CSubtractTile(CBoundingRect<double> cell);

    void Process(CPolygon const & subject, TCutters const & cutters, Clipper & clipper);

    std::unique_ptr<CPolygon> m_CutRect;    ///< then: what the result replaces in the subject; null if given up
    OwningPolygonVector m_Pieces;           ///< the result
    OwningPolygonVector m_Islands;          ///< those of the result that lie in a hole of another
    OwningPolygonVector m_BorderIslands;    ///< islands that reach into a neighbour, which may know them as its pieces
    std::vector<CReport::TEntry> m_Reports; ///< what couldn't be done

private:
    bool Subtract(CPolygon const & subject, TCutters const & cutters, Clipper & clipper);
    bool IsAloneWith(CPolygon const & cutter) const;

    CBoundingRect<double> m_Core;           ///< the part of the cell that no neighbour treats
    std::unique_ptr<CPolygon> m_WorkRect;   ///< the part of the subject that is treated
    std::unique_ptr<CPolygon> m_SearchRect; ///< where polygons to subtract are looked for, and to which they are cut
};

} // namespace geometry
