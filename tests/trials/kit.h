/// \file
/// Outlines that the families are made of, all simple, about places of their own.
#pragma once

#include "random.h"
#include "trial.h"

namespace trials
{

/// Draws a ring: begin, segments, arcs.
class CPen
{
public:
    explicit CPen(TSpot const & start) : m_Start(start) {}
    CPen & Line(TSpot const & to, bool beginsObject = false);
    CPen & Arc(bool isCounterClockwise, TSpot const & centre, TSpot const & to);
    /// Ends where it began.
    Ring Close();

private:
    TSpot m_Start;
    Ring m_Ring;
};

inline TSpot Polar(double radius, double angle)
{
    return {radius * std::cos(angle), radius * std::sin(angle)};
}

Ring Rect(TSpot const & low, TSpot const & high);
/// `parts` arcs, the first of which begins at `joint` (radians).
Ring Disc(TSpot const & centre, double radius, double joint = 0.0, int parts = 1, bool isCounterClockwise = true);
Ring Stadium(TSpot const & a, TSpot const & b, double radius);
Ring RoundRect(TSpot const & low, TSpot const & high, double radius);
/// Star-shaped about the centre; a share of its edges are arcs.
Ring Star(CRandom & random, TSpot const & centre, double inner, double outer, int corners, double arcShare);
/// Teeth with arcs on top and between, straight flanks.
Ring Gear(TSpot const & centre, double inner, double outer, int teeth, double turn, double toothShare = 0.25);
/// Two radii and an arc.
Ring Sector(TSpot const & centre, double radius, double from, double to);
/// Between two radii and two concentric arcs.
Ring RingSector(TSpot const & centre, double inner, double outer, double from, double to);
/// What an arc of a circle and its chord enclose.
Ring Segment(TSpot const & centre, double radius, double from, double to);
/// What two circles share; empty if they don't cross.
Ring Lens(TSpot const & c, double r, TSpot const & d, double s);

Ring Turned(Ring const & ring, double angle, TSpot const & about);
Ring Moved(Ring const & ring, TSpot const & by);

/// Any of the above around the place, about `size` large.
Ring AnyRing(CRandom & random, TSpot const & centre, double size);
/// One without arcs.
Ring AnyStraight(CRandom & random, TSpot const & centre, double size);

} // namespace trials
