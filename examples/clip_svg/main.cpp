// clip_svg A.svg B.svg --op difference|intersection|xor|union -o OUT.svg
//
// Reads the polygons of two pictures, runs one boolean operation on them, writes a picture of it and prints what came
// out. A picture may hold several polygons. They count as one area, and are taken not to overlap each other:
//   difference    each polygon of A less every polygon of B
//   intersection  each polygon of A with each polygon of B
//   xor           A less B, and B less A
//   union         all of A and B together
// Exit status: 0 done, 1 the operation or the writing failed, 2 the input or the command line isn't taken.

#include "support/program.h"
#include "support/svg_reader.h"
#include "support/svg_writer.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using geometry::CPolygon;
using svg::CPolygons;

using COperation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;

/// Appends the result of one operation on two polygons.
void Run(COperation operation, CPolygon const & first, CPolygon const & second, CPolygons & result)
{
    SelfDestructingContainer<std::vector<CPolygon*>> pieces;
    if (!(first.*operation)(pieces, second)) throw std::runtime_error("the operation failed");
    svg::TakeOver(pieces, result);
}

void AppendDifference(CPolygons const & from, CPolygons const & others, CPolygons & result)
{
    for (auto const & polygon : from)
    {
        CPolygons left;
        left.push_back(std::make_unique<CPolygon>(*polygon));
        for (auto const & other : others)
        {
            CPolygons next;
            for (auto const & piece : left)
            {
                Run(&CPolygon::SubtractPolygon, *piece, *other, next);
            }
            left = std::move(next);
        }
        for (auto & piece : left)
        {
            result.push_back(std::move(piece));
        }
    }
}

void AppendUnion(CPolygons const & first, CPolygons const & second, CPolygons & result)
{
    std::vector<CPolygon const*> polygons;
    for (CPolygons const* input : {&first, &second})
    {
        for (auto const & polygon : *input)
        {
            polygons.push_back(polygon.get());
        }
    }
    SelfDestructingContainer<std::vector<CPolygon*>> united;
    if (!CPolygon::MergePolygons(united, polygons)) throw std::runtime_error("the operation failed");
    svg::TakeOver(united, result);
}

CPolygons Clip(std::string const & operation, CPolygons const & first, CPolygons const & second)
{
    CPolygons result;
    if (operation == "difference")
    {
        AppendDifference(first, second, result);
    }
    else if (operation == "xor" && first.size() == 1 && second.size() == 1)
    {
        Run(&CPolygon::XORPolygon, *first.front(), *second.front(), result);
    }
    else if (operation == "xor")
    {
        AppendDifference(first, second, result);
        AppendDifference(second, first, result);
    }
    else if (operation == "union")
    {
        AppendUnion(first, second, result);
    }
    else
    {
        for (auto const & a : first)
        {
            for (auto const & b : second)
            {
                Run(&CPolygon::IntersectPolygon, *a, *b, result);
            }
        }
    }
    return result;
}

svg::EExitStatus Main(int count, char** values)
{
    svg::CArguments const arguments = svg::ReadArguments(count, values, {"--op", "-o"});
    std::string const output = arguments.Get("-o");
    if (arguments.inputs.size() != 2 || output.empty())
    {
        std::fputs("usage: clip_svg A.svg B.svg --op difference|intersection|xor|union -o OUT.svg\n", stderr);
        return svg::eNotTaken;
    }
    std::string const operation = arguments.Get("--op");
    char const* const operations[] = {"difference", "intersection", "xor", "union"};
    if (std::find(std::begin(operations), std::end(operations), operation) == std::end(operations))
    {
        throw svg::CSvgError("no such operation: '" + operation + "'");
    }
    CPolygons const first = svg::ReadSvg(arguments.inputs[0]);
    CPolygons const second = svg::ReadSvg(arguments.inputs[1]);
    CPolygons const result = Clip(operation, first, second);
    svg::WriteSvg(output, {{first, svg::FirstInput}, {second, svg::SecondInput}, {result, svg::Result}});
    svg::CSummary const summary = svg::Summarize(result);
    std::printf("rings %zu  holes %zu  segments %zu  arcs %zu  area %.15g\n", summary.rings, summary.holes,
                summary.segments, summary.arcs, summary.area);
    return svg::eDone;
}

} // namespace

int main(int count, char** values)
{
    return svg::Guarded("clip_svg", Main, count, values);
}
