/// \file
/// An exact judge of boolean results that shares no formula with the library.
#pragma once

#include <vector>

#include <geometry/polygon/polygon.h>

namespace geometry::test
{

/// A result and the rule that says which points belong to it.
struct TClaim
{
    std::vector<CPolygon*> const* result = nullptr; ///< the union of its polygons is meant
    bool (*isMember)(bool inA, bool inB) = nullptr;
};

/// What the judge found out about one claim; all areas in square coordinate units.
struct TVerdict
{
    double area = 0.0;       ///< of what the rule asks for
    double difference = 0.0; ///< of the symmetric difference of the result and what the rule asks for
    double overlap = 0.0;    ///< covered by more than one polygon of the result
};

struct TJudgement
{
    double boundingArea = 0.0;      ///< of the rectangle around all operands: the unit in which areas are judged
    std::vector<TVerdict> verdicts; ///< one a claim
};

/// Measures all claims about `a` and `b` in one sweep.
TJudgement Judge(CPolygon const & a, CPolygon const & b, std::vector<TClaim> const & claims);
/// The same about the unions of the polygons of `a` and of `b`.
TJudgement Judge(std::vector<CPolygon const*> const & a, std::vector<CPolygon const*> const & b,
                 std::vector<TClaim> const & claims);

} // namespace geometry::test
