// Writes polygons as path data and counts what they are made of. Numbers come out in the shortest form that reads back
// as the same double.

#include "svg_writer.h"

#include <charconv>
#include <fstream>

namespace svg
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPolygon;
using CPoint = geometry::TPoint<double>;

std::string Number(double value)
{
    char buffer[32];
    return {buffer, std::to_chars(buffer, buffer + sizeof(buffer), value).ptr};
}

std::string Point(CPoint const & point)
{
    return Number(point.x) + " " + Number(point.y);
}

/// Whether the arc sweeps more than a half turn: then its end lies on the far side of the line from centre to start.
bool IsLarge(CPathObjectArc const & arc)
{
    CPoint const & a = arc.GetStartPoint();
    CPoint const & b = arc.GetEndPoint();
    CPoint const & c = arc.GetCentre();
    double const cross = (a.x - c.x) * (b.y - c.y) - (a.y - c.y) * (b.x - c.x);
    return arc.IsCounterClockwise() ? cross < 0.0 : cross > 0.0;
}

std::string ArcTo(CPathObjectArc const & arc, bool large, CPoint const & end)
{
    std::string const radius = Number(arc.GetRadius());
    char const* const flags = arc.IsCounterClockwise() ? " 1 " : " 0 ";
    return " A " + radius + " " + radius + " 0 " + (large ? "1" : "0") + flags + Point(end);
}

void AppendOutline(CPolygon const & polygon, std::string & data)
{
    if (polygon.GetOutline().empty()) return;
    data += (data.empty() ? "M " : " M ") + Point(polygon.GetOutline().front()->GetStartPoint());
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        auto const* const arc = dynamic_cast<CPathObjectArc const*>(object);
        if (arc == nullptr)
        {
            for (auto point = object->GetPointsBegin() + 1; point != object->GetPointsEnd(); ++point)
            {
                data += " L " + Point(*point);
            }
        }
        else if (arc->IsFullCircle())
        {
            data += ArcTo(*arc, false, arc->GetInbetweenPoint()) + ArcTo(*arc, false, arc->GetEndPoint());
        }
        else
        {
            data += ArcTo(*arc, IsLarge(*arc), arc->GetEndPoint());
        }
    }
    data += " Z";
}

std::string PathElement(CPolygons const & polygons, std::string const & style)
{
    std::string data;
    for (auto const & polygon : polygons)
    {
        AppendOutline(*polygon, data);
        for (CPolygon const* hole : polygon->GetHoles())
        {
            AppendOutline(*hole, data);
        }
    }
    return "  <path fill-rule=\"evenodd\" " + style + " d=\"" + data + "\"/>\n";
}

void CountOutline(CPolygon const & polygon, CSummary & summary)
{
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        bool const isArc = dynamic_cast<CPathObjectArc const*>(object) != nullptr;
        if (isArc) ++summary.arcs;
        if (!isArc) summary.segments += static_cast<std::size_t>(object->GetPointsEnd() - object->GetPointsBegin()) - 1;
    }
}

} // namespace

CSummary Summarize(CPolygons const & polygons)
{
    CSummary summary;
    for (auto const & polygon : polygons)
    {
        ++summary.rings;
        summary.area += polygon->GetArea();
        CountOutline(*polygon, summary);
        for (CPolygon const* hole : polygon->GetHoles())
        {
            ++summary.holes;
            CountOutline(*hole, summary);
        }
    }
    return summary;
}

char const* const FirstInput = "fill=\"#4a7ab0\" fill-opacity=\"0.15\" stroke=\"#4a7ab0\"";
char const* const SecondInput = "fill=\"#c05a3c\" fill-opacity=\"0.12\" stroke=\"#c05a3c\"";
char const* const Result = "id=\"result\" fill=\"#2f6f4f\" fill-opacity=\"0.8\" stroke=\"#163\"";

void WriteSvg(std::string const & file, std::vector<CLayer> const & layers)
{
    geometry::CBoundingRect<double> box;
    for (CLayer const & layer : layers)
    {
        for (auto const & polygon : layer.polygons)
        {
            box.Include(polygon->GetBoundingRect());
        }
    }
    double const width = box.maxX - box.minX;
    double const height = box.maxY - box.minY;
    double const margin = 0.04 * (width + height);
    std::string const line = " stroke-width=\"" + Number(0.002 * (width + height)) + "\"";

    std::ofstream out(file);
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"" << Number(box.minX - margin) << ' '
        << Number(box.minY - margin) << ' ' << Number(width + 2.0 * margin) << ' ' << Number(height + 2.0 * margin)
        << "\">\n";
    for (CLayer const & layer : layers)
    {
        out << PathElement(layer.polygons, layer.attributes + line);
    }
    out << "</svg>\n";
    out.close();
    if (!out) throw std::runtime_error(file + ": can't be written");
}

} // namespace svg
