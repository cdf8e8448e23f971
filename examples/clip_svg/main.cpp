// clip_svg A.svg B.svg --op difference|intersection|xor -o OUT.svg
//
// Reads the polygons of two pictures, runs one boolean operation on them, writes a picture of it and prints what came
// out. A picture may hold several polygons. They count as one area, and are taken not to overlap each other:
//   difference    each polygon of A less every polygon of B
//   intersection  each polygon of A with each polygon of B
//   xor           A less B, and B less A
// Exit status: 0 done, 1 the operation or the writing failed, 2 the input or the command line isn't taken.

#include "svg_reader.h"
#include "svg_writer.h"

#include <cstdio>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using clip_svg::CPolygons;
using geometry::CPolygon;

enum EExitStatus
{
    eDone = 0,
    eFailed = 1,
    eNotTaken = 2
};

struct CArguments
{
    std::vector<std::string> inputs;
    std::string operation;
    std::string output;
};

using COperation = bool (CPolygon::*)(std::vector<CPolygon*> &, CPolygon const &) const;

/// Appends the result of one operation on two polygons.
void Run(COperation operation, CPolygon const & first, CPolygon const & second, CPolygons & result)
{
    SelfDestructingContainer<std::vector<CPolygon*>> pieces;
    if (!(first.*operation)(pieces, second)) throw std::runtime_error("the operation failed");
    clip_svg::TakeOver(pieces, result);
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

bool ReadArguments(int count, char** values, CArguments & arguments)
{
    for (int index = 1; index < count; ++index)
    {
        std::string const value = values[index];
        bool const isOption = value == "--op" || value == "-o";
        if (isOption && index + 1 == count) return false;
        if (value == "--op")
        {
            arguments.operation = values[++index];
        }
        else if (value == "-o")
        {
            arguments.output = values[++index];
        }
        else
        {
            arguments.inputs.push_back(value);
        }
    }
    return arguments.inputs.size() == 2 && !arguments.output.empty();
}

EExitStatus Main(CArguments const & arguments)
{
    if (arguments.operation == "union")
    {
        std::fputs("union comes with a later release\n", stderr);
        return eNotTaken;
    }
    if (arguments.operation != "difference" && arguments.operation != "intersection" && arguments.operation != "xor")
    {
        std::fprintf(stderr, "no such operation: '%s'\n", arguments.operation.c_str());
        return eNotTaken;
    }
    CPolygons const first = clip_svg::ReadSvg(arguments.inputs[0]);
    CPolygons const second = clip_svg::ReadSvg(arguments.inputs[1]);
    CPolygons const result = Clip(arguments.operation, first, second);
    if (!clip_svg::WriteSvg(arguments.output, first, second, result))
    {
        std::fprintf(stderr, "%s: can't be written\n", arguments.output.c_str());
        return eFailed;
    }
    clip_svg::CSummary const summary = clip_svg::Summarize(result);
    std::printf("rings %zu  holes %zu  segments %zu  arcs %zu  area %.15g\n", summary.rings, summary.holes,
                summary.segments, summary.arcs, summary.area);
    return eDone;
}

} // namespace

int main(int count, char** values)
{
    try
    {
        CArguments arguments;
        if (ReadArguments(count, values, arguments)) return Main(arguments);
        std::fputs("usage: clip_svg A.svg B.svg --op difference|intersection|xor -o OUT.svg\n", stderr);
        return eNotTaken;
    }
    catch (clip_svg::CSvgError const & error)
    {
        std::fprintf(stderr, "%s\n", error.what());
        return eNotTaken;
    }
    catch (std::exception const & error)
    {
        std::fprintf(stderr, "clip_svg: %s\n", error.what());
        return eFailed;
    }
}
