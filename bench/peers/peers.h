/// \file
/// Other libraries that run the same workloads.
#pragma once

#include "../workloads.h"

#include <functional>
#include <string>
#include <vector>

namespace bench
{

using CRun = std::function<COutcome()>;

/// Another library with a workload brought into its own form. The workload must outlive the runs.
struct CPeer
{
    std::string name;
    CRun (*prepare)(CWorkload const & workload);
    bool hasArcs = false; ///< else it gets chords
};

/// Those that this was built with.
std::vector<CPeer> const & GetPeers();

/// How far the area (or distance, or count) of a peer may be from ours for what the forms of the input differ.
double AllowedDifference(CWorkload const & workload, bool hasArcs);

CRun PrepareGeos(CWorkload const & workload);
CRun PrepareCgal(CWorkload const & workload);
CRun PrepareClipper(CWorkload const & workload);

} // namespace bench
