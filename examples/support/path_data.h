/// \file
/// The outlines that the `d` attribute of an SVG path describes, as plain values.
#pragma once

#include <geometry/numeric/point.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace svg
{

using CPoint = geometry::TPoint<double>;

/// A straight segment or an arc of a circle. Directions are those of the plain numbers, with y up: a picture, whose y
/// points down, shows them mirrored.
struct CPiece
{
    enum class EKind
    {
        eSegment,
        eArcClockwise,
        eArcCounterClockwise
    };

    EKind kind = EKind::eSegment;
    CPoint start;
    CPoint end;
    CPoint centre; ///< of an arc
};

/// The pieces of one closed subpath; each begins exactly where the one before it ends.
using COutline = std::vector<CPiece>;

/// Something in the data that isn't taken; the text names the command.
struct CPathDataError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Takes M, L, H, V, A and Z, absolute and relative. Every subpath is closed, as filling closes it; one that encloses
/// no area (fewer than three segments, no arc) is left out. Throws CPathDataError.
std::vector<COutline> ReadPathData(std::string_view data);

} // namespace svg
