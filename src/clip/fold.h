// A large outline against a small one: most of its path objects are nowhere near, and come out of a clip as they went
// in. Folded, a run of such objects stands in the ring as one holder, and in the result rings as one element, until the
// objects themselves move into the result. What a clip asks of them all - on which side of the outline a point near the
// small one lies - is answered by those above that place.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include <geometry/polygon/polygon.h>

#include "arc/probe_abscissas.h"

namespace geometry
{

/// Objects of the outline from `first` on up to the one before `last`, all far from the other outline, of which no
/// neighbours are joined, to each other or to what is before and behind.
struct TFoldedRun
{
    std::size_t first = 0;
    std::size_t last = 0;
    CBoundingRect<double> rect;
    double area = 0.0; ///< see `TFactsSum`
    double length = 0.0;
    bool hasArc = false;
};

/// Memory of an outline that is gone, for the one that replaces it.
struct TSpareOutline
{
    CPolygon::PathObjects objects; ///< empty
    std::shared_ptr<COutlineFacts> facts;
};

class CFold
{
public:
    /// The outline of `polygon` folded for a clip with `other`, moved by `shift` or, with a null, as it is; null if
    /// that doesn't pay, or no facts of its outline are kept. `polygon` must outlive it. Facts of the outline of
    /// `polygon` may serve. `spare`: a fold of no use any more, or null; a new one takes its place and its memory.
    static bool MayFold(CPolygon const & polygon);
    static std::unique_ptr<CFold> Make(CPolygon const & polygon, CPolygon const & other, TPoint<double> const* shift,
                                       std::unique_ptr<CFold> & spare);

    CPolygon const & GetPolygon() const { return *m_Polygon; }
    /// The objects of the runs are to be moved by nothing, as the others are.
    bool IsShifted() const { return m_IsShifted; }
    std::vector<TFoldedRun> const & GetRuns() const { return m_Runs; }
    /// The length of all runs, and that of the other objects.
    double GetRunLength() const { return m_RunLength; }
    double GetRestLength() const { return m_RestLength; }

    /// Questions about a point in the window find no object of a run near it.
    bool IsInWindow(TPoint<double> const & point) const
    {
        return point.x >= m_Window.minX && point.x <= m_Window.maxX && point.y >= m_Window.minY &&
               point.y <= m_Window.maxY;
    }
    /// The upward ray from the point reaches the window, or what is near it.
    bool IsBelowWindow(TPoint<double> const & point) const
    {
        return point.x >= m_Window.minX && point.x <= m_Window.maxX && point.y <= m_Window.maxY;
    }
    /// The upward ray from a point in the window crosses the objects of the runs an odd number of times. Elsewhere that
    /// isn't known: the fold has failed.
    bool IsProbeCountOdd(TPoint<double> const & point);

    /// The clip came to where the fold doesn't tell what the whole outline would: all must be done again without it.
    bool HasFailed() const { return m_HasFailed; }
    void Fail() { m_HasFailed = true; }

private:
    /// Consecutive objects above the window that run into each other exactly.
    struct TRangeAbove
    {
        std::size_t first;
        std::size_t last;
        double startX;
        double endX;
    };
    CFold() = default;
    void Begin(CPolygon const & polygon, bool isShifted);
    void SetWindow(CBoundingRect<double> other, TPoint<double> const & shift);
    bool StaysItself(std::size_t index) const;
    void FindRuns();
    bool KeepRange(std::size_t first, std::size_t last);
    void AddRun(std::size_t first, std::size_t last);
    void AddAbove(std::size_t index);
    void NoteAbscissas();

    CPolygon const* m_Polygon = nullptr; ///< not owned
    bool m_IsShifted = false;
    std::vector<TFoldedRun> m_Runs; ///< in path order
    CBoundingRect<double> m_Window; ///< around the other outline
    CBoundingRect<double> m_Reach;  ///< around the window: what overlaps it isn't far
    std::vector<TRangeAbove> m_Above;
    CAbscissaField m_Abscissas;                              ///< of the arcs above
    std::vector<std::pair<std::size_t, std::size_t>> m_Kept; ///< on the way: ranges of objects to be looked at
    double m_RunLength = 0.0;
    double m_RestLength = 0.0;
    bool m_HasFailed = false;
};

} // namespace geometry
