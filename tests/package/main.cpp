#include <geometry/geometry.h>

#include <cstdio>

int main()
{
    geometry::CPolygon const disc(new geometry::CPathObjectArc({0.0, 0.0}, 5.0)); // the polygon owns the arc
    geometry::CPolygon const bite(new geometry::CPathObjectArc({6.0, 0.0}, 4.0));
    SelfDestructingContainer<std::vector<geometry::CPolygon*>> pieces; // the results are ours: this deletes them
    if (!disc.SubtractPolygon(pieces, bite)) return 1;
    for (geometry::CPolygon const* piece : pieces)
        std::printf("area %.6f\n", piece->GetArea()); // exact on arcs: 64.740356
}
