// inflate_svg IN.svg --by D -o OUT.svg
//
// Grows (D > 0) or shrinks (D < 0) the polygons of a picture by a distance, writes a picture of the result with the
// original over it, and prints what both are made of. Polygons that meet when they grow become one.
// Exit status: 0 done, also if nothing is left; 1 the operation or the writing failed; 2 the input or the command line
// isn't taken.

#include "support/program.h"
#include "support/svg_reader.h"
#include "support/svg_writer.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using geometry::CPolygon;
using svg::CPolygons;

double ReadDistance(std::string const & text)
{
    double value = 0.0;
    bool const hasPlus = text.starts_with('+') && !text.starts_with("+-");
    char const* const begin = text.data() + (hasPlus ? 1 : 0);
    char const* const end = text.data() + text.size();
    auto const read = std::from_chars(begin, end, value);
    if (read.ec != std::errc() || read.ptr != end || !std::isfinite(value))
    {
        throw svg::CSvgError("--by: '" + text + "' is no distance");
    }
    return value;
}

CPolygons Inflate(CPolygons const & polygons, double distance)
{
    SelfDestructingContainer<std::vector<CPolygon*>> result;
    std::vector<CPolygon const*> all;
    CPolygons inflated;
    for (auto const & polygon : polygons)
    {
        polygon->GetInflatedPolygon(result, distance);
        if (result.empty() && distance > 0.0) throw std::runtime_error("the operation failed");
        svg::TakeOver(result, inflated);
    }
    if (distance <= 0.0) return inflated; // what is apart stays apart
    for (auto const & polygon : inflated)
    {
        all.push_back(polygon.get());
    }
    if (!CPolygon::MergePolygons(result, all)) throw std::runtime_error("the operation failed");
    CPolygons united;
    svg::TakeOver(result, united);
    return united;
}

void PrintRow(char const* name, svg::CSummary const & summary)
{
    std::printf("%-6s %6zu %6zu %9zu %6zu %18.15g\n", name, summary.rings, summary.holes, summary.segments,
                summary.arcs, summary.area);
}

svg::EExitStatus Main(int count, char** values)
{
    svg::CArguments const arguments = svg::ReadArguments(count, values, {"--by", "-o"});
    std::string const output = arguments.Get("-o");
    if (arguments.inputs.size() != 1 || output.empty() || arguments.Get("--by").empty())
    {
        std::fputs("usage: inflate_svg IN.svg --by D -o OUT.svg\n", stderr);
        return svg::eNotTaken;
    }
    double const distance = ReadDistance(arguments.Get("--by"));
    CPolygons const before = svg::ReadSvg(arguments.inputs[0]);
    CPolygons const after = Inflate(before, distance);
    svg::WriteSvg(output, {{after, svg::Result}, {before, svg::SecondInput}});
    std::printf("%-6s %6s %6s %9s %6s %18s\n", "", "rings", "holes", "segments", "arcs", "area");
    PrintRow("before", svg::Summarize(before));
    PrintRow("after", svg::Summarize(after));
    return svg::eDone;
}

} // namespace

int main(int count, char** values)
{
    return svg::Guarded("inflate_svg", Main, count, values);
}
