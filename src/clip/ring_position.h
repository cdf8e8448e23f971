// Where a point, and where a whole path object, stands to the other ring.
#pragma once

#include "clip/holder.h"

namespace geometry
{

enum class EPointPosition
{
    eOnRing = 0,
    eInside = 1,
    eOutside = 2
};

enum class EObjectPosition : signed char
{
    eNotApplicable = -1, ///< no other ring, or no intersection at either end of the object
    eOnRing = 0,
    eInside = 1,
    eOutside = 2
};

/// The point against the whole ring of `ring`. The boundary counts first.
EPointPosition LocatePointInRing(TPoint<double> const & point, CPathObjectHolder const* ring);

/// The number of probe crossings over the whole ring is odd.
bool CrossingParity(TPoint<double> const & point, CPathObjectHolder const* ring);

/// The same, without the walk for points clearly outside `rect`, the rectangle of that ring.
EPointPosition LocatePointOrRect(TPoint<double> const & point, CPathObjectHolder const* ring,
                                 CBoundingRect<double> const & rect);

/// The object of `holder` against the ring of `other`, which may be null: by its points, less those at its
/// intersections, and by the midpoints between them.
EObjectPosition ClassifyPathObject(CPathObjectHolder const* holder, CPathObjectHolder const* other);

/// The object of `holder` is the same track as the object of `partner` or as the one before it. `partner` may be null.
bool IsOnTrackOf(CPathObjectHolder const* holder, CPathObjectHolder const* partner);

} // namespace geometry
