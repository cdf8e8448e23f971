/// \file
/// A circuit board as the pour needs it: the loose pieces of its outline, and the copper that the pour keeps away from.
/// All coordinates are nanometres, with y as in the files and in pictures: down.
#pragma once

#include <geometry/geometry.h>

#include <map>
#include <string>
#include <vector>

namespace copper_pour
{

using CPoint = geometry::TPoint<double>;

constexpr double NanometresPerMillimetre = 1e6;

/// A piece of the board's edge, in no order and in either direction.
struct COutlinePiece
{
    enum class EKind
    {
        eSegment,
        eArc,
        eCircle ///< a ring by itself; `start` lies on it
    };

    EKind kind = EKind::eSegment;
    CPoint start;
    CPoint end;
    CPoint centre;                   ///< of an arc or a circle; of an arc it may be off by rounding
    bool isCounterClockwise = false; ///< of an arc, taking the numbers as if y pointed up
    std::size_t line = 0;            ///< in the file, for messages
};

/// The copper of a track, a pad or a via, or a bore.
struct CObstacle
{
    enum class EKind
    {
        eStadium,  ///< all within `radius` of the segment from `start` to `end`: also a disc
        eArcTrack, ///< all within `radius` of an arc
        eRoundRect ///< of the size `width` by `height` about `centre`, corners of `radius`, turned by `angle`
    };

    EKind kind = EKind::eStadium;
    CPoint start;
    CPoint end;
    CPoint centre;
    bool isCounterClockwise = false; ///< of an arc
    double radius = 0.0;
    double width = 0.0;
    double height = 0.0;
    double angle = 0.0;  ///< radians, counter-clockwise taking the numbers as if y pointed up
    bool isHole = false; ///< a bore without copper, from which the pour keeps away all the same
};

struct CBoard
{
    std::string name;
    std::vector<COutlinePiece> outline;
    std::vector<CObstacle> obstacles;
    std::map<std::string, std::size_t> skipped; ///< what isn't taken, by name, and how often it occurs
};

} // namespace copper_pour
