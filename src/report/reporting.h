// How operations report: which operation runs, an entry, an attempt whose entries count only if it is kept.
#pragma once

#include <geometry/report/report.h>

namespace geometry
{

/// Names the operation that entries belong to, as long as it lives; within another one it changes nothing, since the
/// caller knows the outer one only.
class CRunningOperation
{
public:
    explicit CRunningOperation(CReport::EOperation operation) noexcept;
    ~CRunningOperation();
    CRunningOperation(CRunningOperation const &) = delete;
    CRunningOperation & operator=(CRunningOperation const &) = delete;

    /// The caller of the library called this one.
    bool IsOuter() const noexcept { return m_IsOuter; }

private:
    bool m_IsOuter;
};

/// Adds an entry for the running operation to the open reports of this thread.
void Report(CReport::EReason reason, CBoundingRect<double> const & place) noexcept;
/// Adds entries as they are, such as those of a worker.
void Report(std::vector<CReport::TEntry> const & entries) noexcept;
/// How many entries were added on this thread so far.
unsigned long long GetReportCount() noexcept;

/// Holds back the entries of what is tried while it lives: they are forgotten with it unless they are passed on.
class CReportTrial
{
public:
    CReportTrial() noexcept;

    bool IsComplete() const noexcept { return m_Report.IsComplete(); }
    std::vector<CReport::TEntry> const & GetEntries() const noexcept { return m_Report.GetEntries(); }
    /// Forgets what was held back so far.
    void Forget() noexcept;
    /// What was held back counts from now on. The trial goes on, empty.
    void PassOn() noexcept;

private:
    CReport m_Report;
};

} // namespace geometry
