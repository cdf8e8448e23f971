// The open reports of a thread form a chain, innermost first. An entry goes outwards through all of them, up to a trial,
// which holds it back. What passes every trial is counted.
#include <geometry/report/report.h>

#include "report/reporting.h"

namespace geometry
{

namespace
{

thread_local CReport* innermost = nullptr;
thread_local unsigned long long reportCount = 0;
thread_local bool isRunning = false;
thread_local CReport::EOperation running = CReport::eOperationClip;

} // namespace

/// What the functions of reporting.h may do with a report.
struct CReportInternals
{
    static void Record(CReport* from, CReport::TEntry const & entry) noexcept
    {
        for (CReport* report = from; report != nullptr; report = report->m_Outer)
        {
            report->Add(entry);
            if (report->m_IsTrial) return;
        }
        ++reportCount;
    }

    static void MakeTrial(CReport & report) noexcept { report.m_IsTrial = true; }

    static void Forget(CReport & report) noexcept
    {
        report.m_Entries.clear();
        report.m_IsComplete = true;
    }

    static void PassOn(CReport & report) noexcept
    {
        for (CReport::TEntry const & entry : report.m_Entries)
            Record(report.m_Outer, entry);
        // An entry that there was no memory for must not make the outer report look complete.
        if (!report.m_IsComplete && report.m_Entries.empty())
            Record(report.m_Outer, {running, CReport::eReasonUndecided, {}});
        Forget(report);
    }
};

CReport::CReport() noexcept : m_Outer(innermost)
{
    innermost = this;
}

CReport::~CReport()
{
    innermost = m_Outer;
}

void CReport::Add(TEntry const & entry) noexcept
{
    m_IsComplete = false;
    try
    {
        m_Entries.push_back(entry);
    }
    catch (...)
    {
        // no memory: the flag tells
    }
}

char const* CReport::GetName(EOperation operation) noexcept
{
    switch (operation)
    {
    case eOperationClip:
        return "clip";
    case eOperationSubtract:
        return "subtract";
    case eOperationIntersect:
        return "intersect";
    case eOperationXOR:
        return "xor";
    case eOperationMerge:
        return "merge";
    case eOperationMergeMany:
        return "merge many";
    case eOperationSubtractMany:
        return "subtract many";
    case eOperationAddHole:
        return "add hole";
    case eOperationInflate:
        return "inflate";
    case eOperationInflatePath:
        return "inflate path";
    case eOperationTile:
        return "tile";
    case eOperationArea:
        return "area";
    case eOperationDistance:
        return "distance";
    case eOperationSort:
        return "sort";
    }
    return "unknown";
}

char const* CReport::GetText(EReason reason) noexcept
{
    switch (reason)
    {
    case eReasonUndecided:
        return "no attempt to clip agreed with its outlines";
    case eReasonContradicted:
        return "the result disagrees with what went in";
    case eReasonLostHole:
        return "a hole lies in no piece of the result";
    case eReasonStopped:
        return "asked to stop";
    case eReasonOutOfRange:
        return "coordinates out of range";
    case eReasonUnjoined:
        return "pieces that should be one stayed apart";
    case eReasonRefused:
        return "an object fits nowhere";
    }
    return "unknown";
}

CRunningOperation::CRunningOperation(CReport::EOperation operation) noexcept : m_IsOuter(!isRunning)
{
    if (!m_IsOuter) return;
    isRunning = true;
    running = operation;
}

CRunningOperation::~CRunningOperation()
{
    if (!m_IsOuter) return;
    isRunning = false;
    running = CReport::eOperationClip;
}

void Report(CReport::EReason reason, CBoundingRect<double> const & place) noexcept
{
    CReportInternals::Record(innermost, {running, reason, place});
}

void Report(std::vector<CReport::TEntry> const & entries) noexcept
{
    for (CReport::TEntry const & entry : entries)
        CReportInternals::Record(innermost, entry);
}

unsigned long long GetReportCount() noexcept
{
    return reportCount;
}

CReportTrial::CReportTrial() noexcept
{
    CReportInternals::MakeTrial(m_Report);
}

void CReportTrial::Forget() noexcept
{
    CReportInternals::Forget(m_Report);
}

void CReportTrial::PassOn() noexcept
{
    CReportInternals::PassOn(m_Report);
}

} // namespace geometry
