// The clipper. Each outline becomes a ring of holders; the rings are cut at their crossings (find_intersections.cpp),
// touching points and overlaps are given the right parity (resolve_degenerate.cpp), crossings are marked with the
// direction in which a trace goes on (marking.cpp), and the result rings are traced (tracing.cpp). A run that reaches
// no consistent state answers eClipRetry, and the driver moves one outline a little (retry_driver.cpp).
#pragma once

#include <memory>

#include <geometry/clip/polygon_clip_base.h>

#include "clip/clear_samples.h"
#include "clip/fold.h"
#include "clip/holder.h"
#include "clip/ring_index.h"

namespace geometry
{

/// Rings, result rings and all operations but `DoClip`.
template <typename T>
class CPolygonClipGreinerHormannBased : public CPolygonClipBase<T>
{
public:
    using typename CPolygonClipBase<T>::EClipResult;
    using typename CPolygonClipBase<T>::CAddPathHelper;

    ~CPolygonClipGreinerHormannBased() override;
    void GetResultPolygons(std::vector<CPolygon*> & polygons) override;
    void TakeResultPolygons(std::vector<CPolygon*> & polygons) override;
    /// After `RunFoldedClip`: moves objects of `first` to the results, too, and leaves it without an outline.
    void TakeResultPolygons(std::vector<CPolygon*> & polygons, CPolygon & first);
    void AddResultPolygons(std::vector<CPolygon*> const & polygons) override;
    void Clear() override;
    EClipResult Execute() override;
    CAddPathHelper* CreateSubjectPathHelper() override;
    CAddPathHelper* CreateClipPathHelper() override;
    EClipResult CopySubjectToResult() override;

    /// `RunClip`, with the path objects of `second` that are far from `first` folded, if that pays: then
    /// `TakeResultPolygons` moves them to the results, and leaves `second` without an outline.
    EClipResult RunFoldedClip(CPolygon const & first, CPolygon & second);
    /// The same for an intersection, which has nothing of what is far: `second` stays as it is. Folds only an outline
    /// whose facts are complete.
    EClipResult RunFoldedIntersection(CPolygon const & first, CPolygon const & second);
    /// Of the last run; null if nothing is folded.
    CFold const* GetFold() const { return m_Fold.get(); }
    /// Of all result rings, folded objects left out. For a folded run, which keeps the lengths for the facts of its
    /// result.
    double GetResultLength();

protected:
    friend struct CTestAccess;
    class CGreinerHormannAddPathHelper;

    /// The stages in their order. Called only from `Execute`, with both rings closed.
    virtual EClipResult DoClip() = 0;
    EClipResult RunFolded(CPolygon const & first, CPolygon const & second);
    void ReadFolded(CPolygon const & first, TPoint<double> const* shift);
    /// They have done their service, and what they leave serves the results.
    void DeleteRings();
    void ReleaseFold();

    CRingMemory m_SubjectMemory;                ///< of that ring
    CRingMemory m_ClipMemory;                   ///< the same
    CResultMemory m_ResultMemory;               ///< of all result rings
    CLinkedPathObject* m_Results = nullptr;     ///< head of the chain of result rings; owned
    bool m_AreResultsFinished = false;          ///< of the present run
    CPathObjectHolder* m_SubjectRing = nullptr; ///< a holder of the ring; the ring is owned
    CPathObjectHolder* m_ClipRing = nullptr;    ///< a holder of the ring; the ring is owned
    CBoundingRect<double> m_SubjectRect;        ///< around what was read into the subject ring
    CBoundingRect<double> m_ClipRect;           ///< around what was read into the clip ring
    std::unique_ptr<CFold> m_Fold;              ///< of the subject; null in a plain run
    std::unique_ptr<CFold> m_SpareFold;         ///< leaves its memory to the next one; may be null
    CPolygon* m_Source = nullptr;               ///< of the objects of its runs, which the results take; not owned
    CPolygon* m_UsedUpFirst = nullptr;          ///< gives its objects to the results being taken; not owned
    TSpareOutline m_Spare;                      ///< of the outline that was folded last
};

/// The one clipper that there is.
template <typename T>
class CPolygonClipQuorvane final : public CPolygonClipGreinerHormannBased<T>
{
public:
    using typename CPolygonClipBase<T>::EClipResult;

protected:
    EClipResult DoClip() override;

private:
    EClipResult ClipCrossingRings();
    EClipResult ClipSeparateRings();
    EClipResult ClipCoincidentRings();

    CRingIndex m_SubjectIndex; ///< of the present run; the memories of the rings refer to them
    CRingIndex m_ClipIndex;
};

extern template class CPolygonClipGreinerHormannBased<double>;
extern template class CPolygonClipQuorvane<double>;

// --- stages: free functions on rings ---

/// What cutting the rings found.
enum class EIntersectionOutcome
{
    eIntersections = 0,   ///< the rings have intersections
    eNoIntersections = 1, ///< no piece begins at an intersection
    eInconsistent = 2,    ///< the pieces of an arc aren't as long as the arc
    eSameTrack = 3        ///< the rings are the same track
};

/// Notes the cuts of every pair of objects in the lists of their holders. True if every holder of the subject ring was
/// touched; for a polyline that also means: the lists of a pair weren't empty after its turn. Pairs whose rectangles
/// are apart have no cuts and are passed over, but for a polyline they still count as touched once the other's list
/// holds anything.
bool NoteCuts(CPathObjectHolder* subject, CPathObjectHolder* clip);

/// Cuts both closed rings at all their crossings, a holder a piece, and links the two holders of each crossing.
/// `sameWinding`: the rings run in the same sense, and so meet several crossings at one point in the same order. Each
/// ring has a memory of its own, and gives back what its cuts took.
EIntersectionOutcome FindAndSplitIntersections(CPathObjectHolder* subject, CPathObjectHolder* clip, bool sameWinding);

/// The first holder from `ring` on that doesn't stand within an overlap; null if there is none.
CPathObjectHolder* SelectStartHolder(CPathObjectHolder* ring);

/// What making the pattern of intersections right came to.
enum class EResolveOutcome
{
    eGoOn = 0,
    eNoIntersectionLeft = 1,
    eInconsistent = 2
};

/// Gives touching points and overlaps of the subject ring, walked from `start`, a pattern of intersections that is
/// odd where the ring changes sides and even where it doesn't.
EResolveOutcome ResolveDegenerateIntersections(CPathObjectHolder* start, bool sameWinding);

enum class EMarkOutcome
{
    eMarked = 0,
    eInconsistent = 2
};

/// Gives each intersection of `ring` its direction. The result keeps the parts outside `other`, with `invert` those
/// inside. `rect`: the rectangle of the other ring.
EMarkOutcome MarkRing(CPathObjectHolder* ring, CPathObjectHolder const* other, bool invert,
                      CBoundingRect<double> const & rect);

/// Traces the marked rings and adds the result rings, made in `memory` and finished, to the front of `results`. False
/// if a walk found no way on, or not all of them are closed.
bool TraceResultRings(CPathObjectHolder* subjectRing, CPathObjectHolder* clipRing, CLinkedPathObject*& results,
                      CResultMemory & memory, CRegionProof & proof);

/// A clone of `object` (reversed if told) at the head of `ring`, joined with the old head if they make one object.
/// Objects without extent are dropped. `ring` may be null. After the last one: `SettleHead`.
void AppendToResultRing(CPathObjectBase const* object, std::unique_ptr<CLinkedPathObject> & ring, bool reverse,
                        CResultMemory & memory);

/// Brings the object at the head of a ring into its direction. Null does nothing.
void SettleHead(CLinkedPathObject* ring);

/// Joins last and first object of a ring, if they make one object.
void CloseResultRing(CLinkedPathObject* ring);

/// Counts a result ring for `proof` and cleans it, while it is at hand. False if it doesn't end where it starts.
bool FinishResultRing(CLinkedPathObject* ring, CRegionProof & proof);

/// Every folded run of the subject stands once in the result rings, if `isSubjectKept`, or none does; and none begins
/// or ends a ring.
bool AreRunsInPlace(CLinkedPathObject const* results, CFold const & fold, bool isSubjectKept);

/// Cleans every object of every ring of the chain.
void CleanupResultRings(CLinkedPathObject* results);

/// How two rings without a crossing stand to each other.
enum class ESeparateOutcome
{
    eSubjectInsideClip = 1,
    eClipInsideSubject = 2,
    eSeparate = 3,
    eOnEachOther = 4 ///< all that was looked at lies on the other ring; taken for separate where nothing else is known
};

ESeparateOutcome ClassifySeparateRings(CPathObjectHolder const* subjectRing, CPathObjectHolder const* clipRing);

} // namespace geometry
