// Region operations whose results are proved: what contradicts its inputs is done another way, and what no way does is
// reported.
#pragma once

#include <functional>

#include "proof/region_proof.h"
#include "report/reporting.h"

namespace geometry
{

/// What an operation is asked for.
struct TRegionTask
{
    CReport::EOperation operation;
    PolygonRange first;                ///< inputs that stay in their place
    PolygonRange second;               ///< inputs that another way may move by less than what is tolerated
    CRegionJudge::Membership isMember; ///< of points in so many of the first and of the second
};

/// Fills `result`, which it empties first, from inputs that stand for those of the task. False: a failure, and an empty
/// result.
using RegionRun = std::function<bool(PolygonRange const & first, PolygonRange const & second, PolygonVector & result)>;

/// Runs the task the plain way, and proves the result. Where the operation is part of another one, that is all there is
/// to it. Otherwise what the proof contradicts, or a clip gave up, is done again: in a frame of another size and place,
/// then with the second inputs moved by tiny steps of their own. What remains is reported with the plain result.
bool RunProved(TRegionTask const & task, PolygonVector & result, RegionRun const & run);

} // namespace geometry
