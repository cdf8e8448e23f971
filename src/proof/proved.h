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

/// Finds a place where a result is wrong; none if it agrees with what it was made of.
using RegionJudge = std::function<std::optional<TPoint<double>>(PolygonVector const & result)>;
/// Does the same another way, the first one being 0. False if it failed or gave anything up.
using RegionWay = std::function<bool(std::size_t way, PolygonVector & result)>;

/// Proves what was made while `trial` was open, and tries the other ways in turn where that fails. `place`: of the
/// whole, for a report that it was stopped.
void ProveOrRetry(CReportTrial & trial, PolygonVector & made, CBoundingRect<double> const & place,
                  RegionJudge const & judge, std::size_t wayCount, RegionWay const & tryWay);

} // namespace geometry
