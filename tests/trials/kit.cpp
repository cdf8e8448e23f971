// Shapes are drawn counter-clockwise, with joints where their users want them.
#include "kit.h"

#include <algorithm>
#include <cmath>

namespace trials
{

namespace
{

constexpr double Pi = 3.14159265358979323846;

geometry::TPoint<double> PointOf(TSpot const & p)
{
    return {p.x, p.y};
}

} // namespace

CPen & CPen::Line(TSpot const & to, bool beginsObject)
{
    m_Ring.push_back({PointOf(to), false, false, {}, beginsObject});
    return *this;
}

CPen & CPen::Arc(bool isCounterClockwise, TSpot const & centre, TSpot const & to)
{
    m_Ring.push_back({PointOf(to), true, isCounterClockwise, PointOf(centre), true});
    return *this;
}

Ring CPen::Close()
{
    bool const isClosed = m_Ring.back().end.x == m_Start.x && m_Ring.back().end.y == m_Start.y;
    if (!isClosed) Line(m_Start);
    return m_Ring;
}

Ring Rect(TSpot const & low, TSpot const & high)
{
    return CPen(low).Line({high.x, low.y}).Line(high).Line({low.x, high.y}).Close();
}

Ring Disc(TSpot const & centre, double radius, double joint, int parts, bool isCounterClockwise)
{
    TSpot const start = centre + Polar(radius, joint);
    CPen pen(start);
    for (int i = 1; i <= parts; ++i)
    {
        double const angle = joint + (isCounterClockwise ? 2.0 : -2.0) * Pi * i / parts;
        pen.Arc(isCounterClockwise, centre, i == parts ? start : centre + Polar(radius, angle));
    }
    return pen.Close();
}

Ring Stadium(TSpot const & a, TSpot const & b, double radius)
{
    double const length = Length(b - a);
    TSpot const n = {(a.y - b.y) / length * radius, (b.x - a.x) / length * radius};
    return CPen(a - n).Line(b - n).Arc(true, b, b + n).Line(a + n).Arc(true, a, a - n).Close();
}

Ring RoundRect(TSpot const & low, TSpot const & high, double radius)
{
    double const r = radius;
    return CPen({low.x + r, low.y})
        .Line({high.x - r, low.y})
        .Arc(true, {high.x - r, low.y + r}, {high.x, low.y + r})
        .Line({high.x, high.y - r})
        .Arc(true, {high.x - r, high.y - r}, {high.x - r, high.y})
        .Line({low.x + r, high.y})
        .Arc(true, {low.x + r, high.y - r}, {low.x, high.y - r})
        .Line({low.x, low.y + r})
        .Arc(true, {low.x + r, low.y + r}, {low.x + r, low.y})
        .Close();
}

/// An arc edge bulges by at most the share of its length that keeps it in its own sector.
Ring Star(CRandom & random, TSpot const & centre, double inner, double outer, int corners, double arcShare)
{
    std::vector<TSpot> points;
    double const turn = random.Angle();
    for (int i = 0; i < corners; ++i)
    {
        double const angle = turn + 2.0 * Pi * (i + random.Real(0.0, 0.7)) / corners;
        points.push_back(centre + Polar(random.Real(inner, outer), angle));
    }
    CPen pen(points.front());
    for (int i = 0; i < corners; ++i)
    {
        TSpot const & a = points[i];
        TSpot const & b = points[(i + 1) % corners];
        TSpot const chord = b - a;
        TSpot const left = {-chord.y, chord.x}; // inward
        double const bulge = random.Sign() * random.Scale(0.02, 0.12) * (corners < 4 ? 0.5 : 1.0);
        // the sagitta is `bulge` times the chord: radius and centre by similar triangles
        double const along = 1.0 / (8.0 * bulge) - 0.5 * bulge;
        if (random.Chance(arcShare))
            pen.Arc(bulge > 0.0, a + 0.5 * chord + along * left, b);
        else
            pen.Line(b);
    }
    return pen.Close();
}

Ring Gear(TSpot const & centre, double inner, double outer, int teeth, double turn, double toothShare)
{
    double const step = 2.0 * Pi / teeth;
    TSpot const start = centre + Polar(inner, turn);
    CPen pen(start);
    for (int i = 0; i < teeth; ++i)
    {
        double const angle = turn + i * step;
        pen.Arc(true, centre, centre + Polar(inner, angle + 0.4 * step));
        pen.Line(centre + Polar(outer, angle + (0.7 - 0.5 * toothShare) * step));
        pen.Arc(true, centre, centre + Polar(outer, angle + (0.7 + 0.5 * toothShare) * step));
        pen.Line(i + 1 == teeth ? start : centre + Polar(inner, angle + step));
    }
    return pen.Close();
}

Ring Sector(TSpot const & centre, double radius, double from, double to)
{
    return CPen(centre).Line(centre + Polar(radius, from)).Arc(true, centre, centre + Polar(radius, to)).Close();
}

Ring RingSector(TSpot const & centre, double inner, double outer, double from, double to)
{
    return CPen(centre + Polar(inner, from))
        .Line(centre + Polar(outer, from))
        .Arc(true, centre, centre + Polar(outer, to))
        .Line(centre + Polar(inner, to))
        .Arc(false, centre, centre + Polar(inner, from))
        .Close();
}

Ring Segment(TSpot const & centre, double radius, double from, double to)
{
    return CPen(centre + Polar(radius, from)).Arc(true, centre, centre + Polar(radius, to)).Close();
}

Ring Lens(TSpot const & c, double r, TSpot const & d, double s)
{
    TSpot const way = d - c;
    double const distance = Length(way);
    if (distance >= r + s || distance <= std::abs(r - s)) return {};
    double const along = (distance * distance + r * r - s * s) / (2.0 * distance);
    double const across = std::sqrt(std::max(0.0, r * r - along * along));
    TSpot const u = (1.0 / distance) * way;
    TSpot const foot = c + along * u;
    TSpot const p = {foot.x + across * u.y, foot.y - across * u.x};
    TSpot const q = {foot.x - across * u.y, foot.y + across * u.x};
    return CPen(p).Arc(true, c, q).Arc(true, d, p).Close();
}

Ring Turned(Ring const & ring, double angle, TSpot const & about)
{
    double const c = std::cos(angle);
    double const s = std::sin(angle);
    Shape shape = geometry::test::Mapped({ring}, 1.0, 0.0, -about.x, -about.y);
    shape = geometry::test::Mapped(shape, c, s, about.x, about.y);
    return shape.front();
}

Ring Moved(Ring const & ring, TSpot const & by)
{
    return geometry::test::Mapped({ring}, 1.0, 0.0, by.x, by.y).front();
}

Ring AnyStraight(CRandom & random, TSpot const & centre, double size)
{
    TSpot const half = {0.5 * size * random.Real(0.1, 1.0), 0.5 * size * random.Real(0.1, 1.0)};
    switch (random.Int(0, 3))
    {
    case 0:
        return Rect(centre - half, centre + half);
    case 1:
        return Turned(Rect(centre - half, centre + half), random.Angle(), centre);
    default:
        return Star(random, centre, random.Real(0.1, 0.4) * size, 0.5 * size, random.Int(3, 12), 0.0);
    }
}

Ring AnyRing(CRandom & random, TSpot const & centre, double size)
{
    TSpot const half = {0.5 * size * random.Real(0.2, 1.0), 0.5 * size * random.Real(0.2, 1.0)};
    double const angle = random.Angle();
    double const least = std::min(half.x, half.y);
    switch (random.Int(0, 9))
    {
    case 0:
        return Disc(centre, 0.5 * size * random.Real(0.2, 1.0), angle, random.Int(1, 4), random.Chance(0.5));
    case 1:
        return Stadium(centre - Polar(half.x, angle), centre + Polar(half.x, angle), least * random.Real(0.1, 1.0));
    case 2:
        return RoundRect(centre - half, centre + half, least * random.Real(0.1, 0.9));
    case 3:
        return Turned(RoundRect(centre - half, centre + half, least * random.Real(0.1, 0.9)), angle, centre);
    case 4:
        return Gear(centre, random.Real(0.3, 0.8) * 0.5 * size, 0.5 * size, random.Int(3, 16), angle,
                    random.Real(0.1, 0.5));
    case 5:
        return Star(random, centre, random.Real(0.1, 0.4) * size, 0.5 * size, random.Int(3, 12), 0.5);
    case 6:
        return Sector(centre, 0.5 * size, angle, angle + random.Real(0.3, 5.5));
    case 7:
        return RingSector(centre, 0.3 * size, 0.5 * size, angle, angle + random.Real(0.3, 5.5));
    default:
        return AnyStraight(random, centre, size);
    }
}

} // namespace trials
