/// \file
/// Random shapes from a fixed seed. Every ring is simple, and the holes of a shape touch neither each other nor the
/// outline. Shapes are thousands of units large: arcs know an absolute limit of 0.03 units.
#pragma once

#include <random>

#include "support/shapes.h"

namespace geometry::test
{

class CShapeGenerator
{
public:
    static constexpr double Unit = 1024.0; ///< the step of the lattice: a power of two, so nothing is rounded

    explicit CShapeGenerator(std::uint64_t seed) : m_Random(seed) {}

    int Int(int low, int high) { return std::uniform_int_distribution<int>(low, high)(m_Random); }
    double Real(double low, double high) { return std::uniform_real_distribution<double>(low, high)(m_Random); }

    /// Star-shaped and slanted polylines anywhere.
    Shape General();
    /// L, T, U, combs and random polygons with vertices on the lattice.
    Shape Lattice();
    /// Discs, their parts, stadiums, rounded and notched plates: centres, radii and most ends are on the lattice.
    Shape Round();
    /// Gears, slanted `Round` ones, polygons with arcs for edges.
    Shape Curved();
    Shape Any();
    /// Any shape, twice as large, with one or two holes if there is room.
    Shape Holed();
    /// The same region: other start, direction and division into path objects, a vertex added in the middle of an edge.
    Shape Disguised(Shape shape);

private:
    Shape Polygon(bool isStar, bool withArcs);
    Shape Gear();
    Shape Slanted(Shape const & shape);
    Shape Placed(char const* text);
    void Divide(Ring & ring);

    std::mt19937_64 m_Random;
};

} // namespace geometry::test
