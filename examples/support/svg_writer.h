/// \file
/// A picture of an operation, and the figures that go with it.
#pragma once

#include "svg_reader.h"

namespace svg
{

/// What polygons are made of.
struct CSummary
{
    std::size_t rings = 0; ///< outer outlines
    std::size_t holes = 0;
    std::size_t segments = 0;
    std::size_t arcs = 0;
    double area = 0.0; ///< square coordinate units
};

CSummary Summarize(CPolygons const & polygons);

/// Polygons as one path of a picture; `attributes` are those of the element.
struct CLayer
{
    CPolygons const & polygons;
    std::string attributes;
};

/// The looks that the pictures have in common.
extern char const* const FirstInput;  ///< faint blue
extern char const* const SecondInput; ///< faint red
extern char const* const Result;      ///< filled green; its id is "result"

/// Writes the layers, the first one lowest, with arcs as arcs. Throws std::runtime_error if the file can't be written.
void WriteSvg(std::string const & file, std::vector<CLayer> const & layers);

} // namespace svg
