// Reads an SVG file: the outlines of each <path> become polygons, and those that lie inside others become holes of
// them. The polygons are built through the public interface: runs of segments become polylines, arcs stay arcs.

#include "svg_reader.h"

#include "path_data.h"

#include <cstring>
#include <pugixml.hpp>

namespace svg
{
namespace
{

using geometry::CPathObjectArc;
using geometry::CPathObjectBase;
using geometry::CPathObjectPolyline;
using geometry::CPolygon;

std::unique_ptr<CPathObjectPolyline> MakePolyline(COutline const & outline, std::size_t & index)
{
    auto polyline = std::make_unique<CPathObjectPolyline>();
    polyline->AddVertex(outline[index].start.x, outline[index].start.y);
    for (; index < outline.size() && outline[index].kind == CPiece::EKind::eSegment; ++index)
    {
        polyline->AddVertex(outline[index].end.x, outline[index].end.y);
    }
    return polyline;
}

std::unique_ptr<CPolygon> MakePolygon(COutline const & outline)
{
    std::vector<std::unique_ptr<CPathObjectBase>> objects;
    for (std::size_t index = 0; index < outline.size();)
    {
        CPiece const & piece = outline[index];
        if (piece.kind == CPiece::EKind::eSegment)
        {
            objects.push_back(MakePolyline(outline, index));
            continue;
        }
        bool const counterClockwise = piece.kind == CPiece::EKind::eArcCounterClockwise;
        objects.push_back(std::make_unique<CPathObjectArc>(piece.start, piece.end, piece.centre, counterClockwise));
        ++index;
    }

    std::vector<CPathObjectBase*> handedOver;
    for (auto const & object : objects)
    {
        handedOver.push_back(object.get());
    }
    auto polygon = std::make_unique<CPolygon>(handedOver.begin(), handedOver.end());
    for (auto & object : objects)
    {
        object.release(); // the polygon owns it now
    }
    return polygon;
}

/// Outlines at an even depth become polygons; each outline at an odd depth becomes a hole of the polygon around it.
void GroupByDepth(CPolygons outlines, CPolygons & polygons)
{
    std::size_t const count = outlines.size();
    std::vector<std::vector<std::size_t>> around(count); // the outlines that contain this one
    for (std::size_t inner = 0; inner < count; ++inner)
    {
        for (std::size_t outer = 0; outer < count; ++outer)
        {
            if (inner != outer && outlines[outer]->PolygonInPolygon(*outlines[inner])) around[inner].push_back(outer);
        }
    }
    for (std::size_t hole = 0; hole < count; ++hole)
    {
        for (std::size_t const owner : around[hole])
        {
            bool const isDirectlyAround = around[owner].size() + 1 == around[hole].size();
            if (around[hole].size() % 2 == 0 || !isDirectlyAround) continue;
            std::vector<CPolygon*> enclosed; // holes that touch each other are united, and may enclose solid area
            outlines[owner]->AddHole(outlines[hole].get(), nullptr, nullptr, enclosed);
            TakeOver(enclosed, polygons);
        }
    }
    for (std::size_t index = 0; index < count; ++index)
    {
        if (around[index].size() % 2 == 0) polygons.push_back(std::move(outlines[index]));
    }
}

class CPathElements : public pugi::xml_tree_walker
{
public:
    CPathElements(std::string const & file, CPolygons & polygons) : m_File(file), m_Polygons(polygons) {}

    bool for_each(pugi::xml_node & node) override
    {
        bool const isPath = std::strcmp(node.name(), "path") == 0;
        if (isPath) ++m_Index;
        std::string const id = node.attribute("id").as_string();
        std::string const place = m_File + ": " + (isPath ? "path " + std::to_string(m_Index) : node.name()) +
                                  (id.empty() ? "" : " '" + id + "'") + ": ";
        if (node.attribute("transform")) throw CSvgError(place + "transform attributes are not taken");
        if (!isPath) return true;

        CPolygons outlines;
        try
        {
            for (COutline const & outline : ReadPathData(node.attribute("d").as_string()))
            {
                outlines.push_back(MakePolygon(outline));
            }
        }
        catch (CPathDataError const & error)
        {
            throw CSvgError(place + error.what());
        }
        GroupByDepth(std::move(outlines), m_Polygons);
        return true;
    }

private:
    std::string const & m_File;
    CPolygons & m_Polygons;
    int m_Index = 0;
};

} // namespace

CPolygons ReadSvg(std::string const & file)
{
    pugi::xml_document document;
    pugi::xml_parse_result const parsed = document.load_file(file.c_str());
    if (!parsed) throw CSvgError(file + ": " + parsed.description());

    CPolygons polygons;
    CPathElements elements(file, polygons);
    document.traverse(elements);
    if (polygons.empty()) throw CSvgError(file + ": no <path> that encloses an area");
    return polygons;
}

} // namespace svg
