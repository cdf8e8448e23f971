/// \file
/// What is measured: each workload for any size, as data, so that the benchmarks, the table of `tools/bench` and the
/// libraries that truearc is compared with all get the same input.
#pragma once

#include <geometry/geometry.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace bench
{

using CPoint = geometry::TPoint<double>;
using CPolygons = std::vector<std::unique_ptr<geometry::CPolygon>>;

enum class EOperation
{
    eDifference,
    eIntersection,
    eUnion,       ///< of two polygons
    eMergeAll,    ///< of all of `first`
    eSubtractAll, ///< one polygon less all of `second`
    eInflate,
    ePoints,
    eDistance
};

/// The input of one operation. Where it takes one polygon or two, `first` and `second` hold one each.
struct CWorkload
{
    EOperation operation = EOperation::eDifference;
    CPolygons first = {};
    CPolygons second = {};
    std::vector<CPoint> points = {};
    double amount = 0.0;
    unsigned int workers = 1;
};

/// What a run took, by `CStopwatch`, and what came out: an area, a distance, or how many points lie inside.
struct COutcome
{
    double milliseconds = 0.0;
    double value = 0.0;
    std::size_t pieces = 0;
};

/// Measures the processor time of this process, which other work on the machine disturbs least; with several workers,
/// the time on the clock.
class CStopwatch
{
public:
    explicit CStopwatch(CWorkload const & workload);
    double Milliseconds() const;

private:
    bool m_IsOnTheClock;
    double m_Began;
};

/// Runs the operation once on polygons that keep nothing from runs before, so that the building of indexes counts. The
/// copying, and the deletion of what came out, don't.
COutcome Run(CWorkload const & workload);

/// Another library to compare with, and the share of its time that the largest size is to stay below; 0 if none is set.
struct CRival
{
    std::string name;
    double ratio = 0.0;
};

/// One workload at growing sizes.
struct CSeries
{
    std::string name;  ///< as a benchmark
    std::string title; ///< in the table; empty if it isn't in there
    std::function<CWorkload(int)> make;
    std::vector<int> sizes;
    std::vector<CRival> rivals;
    double growth = 0.0; ///< the exponent from the size before that the largest is to stay below; 0 if none is set
};

std::vector<CSeries> const & GetSeries();

} // namespace bench
