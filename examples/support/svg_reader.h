/// \file
/// The polygons of an SVG file.
#pragma once

#include "polygons.h"

#include <stdexcept>
#include <string>

namespace svg
{

/// A file, or something in it, that isn't taken; the text names the file, the path and the command.
struct CSvgError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Reads the outlines of all `<path>` elements. The subpaths of one element are sorted by nesting depth: an even depth
/// makes a polygon, an odd one a hole in the polygon around it. Coordinates are kept as they are. Throws CSvgError.
CPolygons ReadSvg(std::string const & file);

} // namespace svg
