/// \file
/// What an operation couldn't do: collected for whoever wants to know.
#pragma once

#include <vector>

#include <geometry/export.h>
#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

/// Collects, from its construction to its destruction, what the operations of the calling thread, and of the workers
/// that they start, couldn't do. An operation answers with the region it stands for or leaves an entry here; its own
/// answer (true, polygons) stays the best that could be had.
///
///     geometry::CReport report;
///     board.SubtractPolygons(copper, obstacles);
///     if (!report.IsComplete()) ... // report.GetEntries() says what, why and where
///
/// Lives on the stack. Reports nest: an entry goes to every report of the thread that is open. Without one, nothing is
/// kept but a count (CPolygonClipBase::GetGaveUpCount). Threads: each thread has its own; one report is used by the
/// thread that made it only.
class GEOMETRY_EXPORT CReport
{
public:
    /// The operation that a caller of the library called.
    enum EOperation
    {
        eOperationClip = 0, ///< a run of a clipper of the caller's own
        eOperationSubtract = 1,
        eOperationIntersect = 2,
        eOperationXOR = 3,
        eOperationMerge = 4,        ///< of two
        eOperationMergeMany = 5,    ///< of any number
        eOperationSubtractMany = 6, ///< of any number from one
        eOperationAddHole = 7,
        eOperationInflate = 8,     ///< a polygon grown or shrunk
        eOperationInflatePath = 9, ///< the band around a path object
        eOperationTile = 10,
        eOperationArea = 11,
        eOperationDistance = 12,
        eOperationSort = 13 ///< loose path objects, or polygons, put in order
    };

    /// Why the answer isn't what was asked for.
    enum EReason
    {
        eReasonUndecided = 0, ///< no attempt to clip two outlines agreed with them: they stand as if they were apart
        eReasonContradicted =
            1,                 ///< the result covers a point that it shouldn't, or leaves out one that it should cover
        eReasonLostHole = 2,   ///< a hole that lies in no piece of the result
        eReasonStopped = 3,    ///< the calling thread is asked to stop
        eReasonOutOfRange = 4, ///< coordinates too large, too fine or not finite
        eReasonUnjoined = 5,   ///< pieces that should be one
        eReasonRefused = 6     ///< an object that fits nowhere, or can't be used
    };

    /// One thing that couldn't be done.
    struct TEntry
    {
        EOperation operation;
        EReason reason;
        CBoundingRect<double> place; ///< around what is concerned, in coordinate units; empty where nothing is known
    };

    CReport() noexcept;
    ~CReport();
    CReport(CReport const &) = delete;
    CReport & operator=(CReport const &) = delete;

    /// Everything that was asked for since the construction was done, and rightly.
    bool IsComplete() const noexcept { return m_IsComplete; }
    /// In the order in which they happened; that of workers doesn't depend on their number. One may be missing if
    /// there was no memory for it; `IsComplete` is false then, too.
    std::vector<TEntry> const & GetEntries() const noexcept { return m_Entries; }

    /// A word for messages, such as "subtract". Never null.
    static char const* GetName(EOperation operation) noexcept;
    /// A few words for messages, such as "no attempt to clip agreed with its outlines". Never null.
    static char const* GetText(EReason reason) noexcept;

private:
    friend struct CReportInternals;

    void Add(TEntry const & entry) noexcept;

    std::vector<TEntry> m_Entries;
    CReport* m_Outer;       ///< the report that was open before, null for none; not owned
    bool m_IsTrial = false; ///< entries stay here until they are passed on
    bool m_IsComplete = true;
};

} // namespace geometry
