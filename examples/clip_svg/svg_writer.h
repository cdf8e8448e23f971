/// \file
/// A picture of an operation, and the figures that go with it.
#pragma once

#include "svg_reader.h"

namespace clip_svg
{

/// What an operation has made.
struct CSummary
{
    std::size_t rings = 0; ///< outer outlines
    std::size_t holes = 0;
    std::size_t segments = 0;
    std::size_t arcs = 0;
    double area = 0.0; ///< square coordinate units
};

CSummary Summarize(CPolygons const & polygons);

/// Writes both inputs faintly and the result filled, with arcs as arcs. False if the file can't be written.
bool WriteSvg(std::string const & file, CPolygons const & first, CPolygons const & second, CPolygons const & result);

} // namespace clip_svg
