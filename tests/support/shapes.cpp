// Shapes as strings. Text is read word by word into rings of edges, in which an edge knows only its end; a ring turns
// into path objects by collecting segments until an edge begins a new object. Coordinates are printed with 17 digits,
// so that a failing test can be repeated bit by bit.
#include "support/shapes.h"

#include <algorithm>
#include <sstream>

#include <geometry/arc/path_object_arc.h>
#include <geometry/path/path_object_polyline.h>

namespace geometry::test
{

namespace
{

TPoint<double> ReadPoint(std::istream & words)
{
    TPoint<double> point;
    words >> point.x;
    words.ignore(); // the comma
    words >> point.y;
    return point;
}

std::ostream & operator<<(std::ostream & text, TPoint<double> const & point)
{
    return text << ' ' << point.x << ',' << point.y;
}

std::unique_ptr<CPolygon> MakeOutline(Ring const & ring)
{
    std::vector<CPathObjectBase*> objects;
    TPoint<double> from = ring.back().end;
    for (TEdge const & edge : ring)
    {
        if (edge.isArc)
            objects.push_back(new CPathObjectArc(from, edge.end, edge.centre, edge.isCounterClockwise));
        else if (objects.empty() || edge.beginsObject || !objects.back()->CanAppendVertex())
            objects.push_back(new CPathObjectPolyline(from, edge.end));
        else
            objects.back()->AppendVertex(edge.end);
        from = edge.end;
    }
    return std::make_unique<CPolygon>(objects.begin(), objects.end());
}

Ring RingOf(CPolygon const & polygon)
{
    Ring ring;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        auto const* arc = dynamic_cast<CPathObjectArc const*>(object);
        if (arc != nullptr)
            ring.push_back({arc->GetEndPoint(), true, arc->IsCounterClockwise(), arc->GetCentre(), true});
        auto const first = object->GetPointsBegin() + 1;
        for (auto vertex = first; arc == nullptr && vertex != object->GetPointsEnd(); ++vertex)
        {
            ring.push_back({*vertex, false, false, {}, vertex == first});
        }
    }
    return ring;
}

} // namespace

Shape ParseShape(std::string const & text)
{
    std::istringstream words(text);
    Shape shape;
    TPoint<double> start;
    for (std::string word; words >> word;)
    {
        if (word == "M")
        {
            start = ReadPoint(words);
            shape.emplace_back();
            continue;
        }
        Ring & ring = shape.back();
        TEdge edge;
        edge.isArc = word == "A";
        edge.beginsObject = edge.isArc || word == "L";
        if (edge.isArc)
        {
            words >> word;
            edge.isCounterClockwise = word == "ccw";
            edge.centre = ReadPoint(words);
        }
        else if (!edge.beginsObject && word != "Z") // a further point of a polyline
            words.seekg(-static_cast<std::streamoff>(word.size()), std::ios::cur);
        edge.end = word == "Z" ? start : ReadPoint(words);
        if (word != "Z" || ring.back().end.x != start.x || ring.back().end.y != start.y) ring.push_back(edge);
    }
    return shape;
}

std::string PrintShape(Shape const & shape)
{
    std::ostringstream text;
    text.precision(17);
    for (Ring const & ring : shape)
    {
        text << (&ring == &shape.front() ? "M" : " M") << ring.back().end;
        for (std::size_t i = 0; i < ring.size(); ++i)
        {
            TEdge const & edge = ring[i];
            if (edge.isArc)
                text << (edge.isCounterClockwise ? " A ccw" : " A cw") << edge.centre;
            else if (i == 0 || edge.beginsObject || ring[i - 1].isArc)
                text << " L";
            text << edge.end;
        }
        text << " Z";
    }
    return text.str();
}

std::unique_ptr<CPolygon> MakePolygon(Shape const & shape)
{
    std::unique_ptr<CPolygon> polygon = MakeOutline(shape.front());
    for (std::size_t i = 1; i < shape.size(); ++i)
    {
        std::vector<CPolygon*> extra; // stays empty: holes don't touch each other
        polygon->AddHole(MakeOutline(shape[i]).get(), nullptr, nullptr, extra);
    }
    return polygon;
}

Shape ShapeOf(CPolygon const & polygon)
{
    Shape shape{RingOf(polygon)};
    for (CPolygon const* hole : polygon.GetHoles())
    {
        shape.push_back(RingOf(*hole));
    }
    return shape;
}

Shape Mapped(Shape shape, double a, double b, double dx, double dy)
{
    auto const map = [&](TPoint<double> & p) { p = {a * p.x - b * p.y + dx, b * p.x + a * p.y + dy}; };
    for (Ring & ring : shape)
    {
        for (TEdge & edge : ring)
        {
            map(edge.end);
            map(edge.centre);
        }
    }
    return shape;
}

Shape Reversed(Shape shape)
{
    for (Ring & ring : shape)
    {
        Ring const forward = ring;
        std::reverse(ring.begin(), ring.end());
        for (std::size_t i = 0, n = ring.size(); i < n; ++i)
        {
            ring[i].end = forward[(2 * n - 2 - i) % n].end;
            ring[i].isCounterClockwise = !ring[i].isCounterClockwise;
            ring[i].beginsObject = forward[(n - i) % n].beginsObject;
        }
    }
    return shape;
}

Shape StartedLater(Shape shape, int steps)
{
    for (Ring & ring : shape)
    {
        std::rotate(ring.begin(), ring.begin() + steps % static_cast<int>(ring.size()), ring.end());
    }
    return shape;
}

} // namespace geometry::test
