// What is known of each path object of an outline, so that an operation can pass over it without looking at it. Kept with
// a polygon that grows or shrinks step by step, and handed on from each step to the next for the objects that it leaves
// as they are.
#pragma once

#include <vector>

#include <geometry/path/path_object_base.h>

namespace geometry
{

struct TObjectFacts
{
    CBoundingRect<double> rect;
    double area = 0.0;    ///< between the object and the origin of the facts, signed, in square coordinate units
    double length = 0.0;  ///< in coordinate units
    bool isKnown = false; ///< all but `isFirm` and `isApart` are filled in
    bool isArc = false;
    bool isSteady = false; ///< a clip that doesn't come near takes it over unchanged, whichever way round
    bool isFirm = false;   ///< moved by nothing, as later attempts of a clip do, it stays the same bit for bit
    bool isApart = false;  ///< the next object of the outline, or the first after the last, begins where this one
                           ///< ends, and isn't joined with it to a single one
};

/// One entry a path object, in path order.
struct COutlineFacts
{
    TPoint<double> origin; ///< of the areas
    std::vector<TObjectFacts> objects;
    std::vector<std::size_t> incomplete; ///< which of them are, ascending

    /// Fills in what isn't known of the objects of `outline`, of which there are as many.
    void Complete(std::vector<CPathObjectBase*> const & outline);
};

} // namespace geometry
