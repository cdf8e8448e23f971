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

/// What another library gets for the arcs of the input.
enum class EArcs
{
    eKept,
    eChords,    ///< at most 1e-4 of the size of their polygon away
    eFineChords ///< at most 1e-4 of the size of their circle away
};

/// Another library with a workload brought into its own form. The workload must outlive the runs.
struct CPeer
{
    std::string name;
    CRun (*prepare)(CWorkload const & workload, EArcs arcs);
    EArcs arcs = EArcs::eChords;
};

/// Those that this was built with.
std::vector<CPeer> const & GetPeers();

/// How far the area (or distance, or count) of a peer may be from ours for what the forms of the input differ.
double AllowedDifference(CWorkload const & workload, EArcs arcs);

CRun PrepareGeos(CWorkload const & workload, EArcs arcs);
CRun PrepareCgal(CWorkload const & workload, EArcs arcs);
CRun PrepareBoost(CWorkload const & workload, EArcs arcs);
CRun PrepareClipper(CWorkload const & workload, EArcs arcs);

} // namespace bench
