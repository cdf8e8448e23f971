/// \file
/// The clipper as its users see it: one boolean operation on the outlines of two polygons.
#pragma once

#include <vector>

#include <geometry/export.h>
#include <geometry/path/path_object_base.h>

namespace geometry
{

class CPolygon;
class CPathObjectHolder;

/// Computes one boolean operation on two outlines; holes are its users' business. One clipper serves many runs, one
/// at a time, on one thread at a time. Used with `T = double` only.
template <typename T>
class GEOMETRY_EXPORT CPolygonClipBase
{
public:
    /// How a run ended.
    enum EClipResult
    {
        eClipResultReady = 0,       ///< done; as many result rings as the operation leaves, possibly none
        eClipSubjectInsideClip = 1, ///< no crossing, the subject lies inside the clip; no result rings
        eClipClipInsideSubject = 2, ///< no crossing, the clip lies inside the subject; no result rings
        eClipSeparate = 3,          ///< the outlines have nothing to do with each other; no result rings
        eClipFailed = 4,            ///< a polygon has no valid path object
        eClipNothingToDo = 5,       ///< never from a clipper: an operation on a range was given an empty one
        eClipRetry = 6              ///< no consistent result; from `RunClip`: all attempts are used up
    };

    /// What to compute.
    enum EClipOperation
    {
        eClipIntersection = 0, ///< subject and clip
        eClipUnion = 1,        ///< subject or clip
        eClipDifference = 2,   ///< subject minus clip
        eClipRelationOnly = 3  ///< nothing: a run ends once it is known how the outlines stand
    };

    /// How the outlines of the last run stand to each other.
    enum EClipStatus
    {
        eStatusClipInsideSubject = 0,
        eStatusSubjectInsideClip = 1,
        eStatusSeparate = 2,
        eStatusCoincident = 3, ///< the same track
        eStatusCrossing = 4,
        eStatusClipEmpty = 5,
        eStatusSubjectEmpty = 6,
        eStatusBothEmptyOrGaveUp = 7 ///< both empty, or all attempts used up, or coincident without an outline
    };

    /// Reads path objects into one ring of the clipper. Made by the clipper for one reading, deleted by its user.
    class CAddPathHelper
    {
    public:
        virtual ~CAddPathHelper() = default;
        /// Refers to `object`, which must outlive the run and not be null.
        virtual void AddPathObject(CPathObjectBase const* object) = 0;
        /// Adds a copy moved by `dx`, `dy`, numerically repaired if `correct`.
        virtual void AddPathObject(CPathObjectBase const* object, double const & dx, double const & dy,
                                   bool correct) = 0;

    protected:
        explicit CAddPathHelper(CPathObjectHolder** head) : m_Head(head) {}
        CAddPathHelper(CAddPathHelper const &) = delete;
        CAddPathHelper & operator=(CAddPathHelper const &) = delete;

        CPathObjectHolder** m_Head; ///< the clipper's field for the ring; not owned
    };

    virtual ~CPolygonClipBase();
    /// Empties `polygons` WITHOUT deleting anything and fills it with one new polygon a result ring, which the caller
    /// owns. Meant after `eClipResultReady`.
    virtual void GetResultPolygons(std::vector<CPolygon*> & polygons) = 0;
    /// The same polygons, but uses the result rings up: path objects without user info are moved instead of cloned.
    virtual void TakeResultPolygons(std::vector<CPolygon*> & polygons) = 0;
    /// Turns the outline of each polygon into a result ring; the polygons stay the caller's.
    virtual void AddResultPolygons(std::vector<CPolygon*> const & polygons) = 0;
    /// Frees rings and result rings. Always allowed, also after an exception.
    virtual void Clear() = 0;
    /// Runs `m_Operation` on the rings that were read. A run uses the rings up: read the polygons anew for the next.
    virtual EClipResult Execute() = 0;
    /// A new helper for the subject ring or the clip ring, owned by the caller. What the ring held is freed.
    virtual CAddPathHelper* CreateSubjectPathHelper() = 0;
    virtual CAddPathHelper* CreateClipPathHelper() = 0;
    /// The answer for two outlines of the same track: all objects of the subject ring, as one result ring, for an
    /// intersection and a union, nothing for a difference.
    virtual EClipResult CopySubjectToResult() = 0;

    /// Reads `first` into the clip ring and `second` into the subject ring and runs the operation set before (a
    /// difference is `second` minus `first`). An inconsistent run is tried again with `first` moved by a tiny amount
    /// (from 1e-11 to 1e-6 of the smaller side of its rectangle), 12 attempts in all, and then as often with both
    /// scaled by a power of two to a size near 2^30. No attempt is made of outlines with arcs that reach beyond 1e15,
    /// where arcs have no precision left. `eClipRetry` is reported (CReport). Both polygons must stay alive and unchanged
    /// until the results are fetched.
    EClipResult RunClip(CPolygon const & first, CPolygon const & second);

    /// What the next run computes.
    void SetOperation(EClipOperation operation) { m_Operation = operation; }
    EClipOperation GetOperation() const { return m_Operation; }
    /// How many entries reports of the calling thread would have been given so far, had they been open all the time
    /// (CReport, which also says what, why and where). Never falls.
    static unsigned long long GetGaveUpCount();
    /// The farthest that `RunClip` has moved a polygon since `ForgetLargestShift`, in coordinate units; 0 if first
    /// attempts always succeeded. Results can have gaps of this width where polygons touched.
    double GetLargestShift() const { return m_LargestShift; }
    void ForgetLargestShift() { m_LargestShift = 0.0; }
    /// How the outlines of the last run stood to each other.
    EClipStatus GetStatus() const { return m_Status; }

protected:
    friend struct CTestAccess;

    CPolygonClipBase() = default;
    CPolygonClipBase(CPolygonClipBase const &) = delete;
    CPolygonClipBase & operator=(CPolygonClipBase const &) = delete;

    int m_SubjectWinding = 2; ///< 2 nothing read yet, 0 negative, 1 otherwise; only compared with `m_ClipWinding`
    int m_ClipWinding = 2;    ///< the same for the clip ring
    EClipStatus m_Status = eStatusBothEmptyOrGaveUp; ///< record of the last run
    EClipOperation m_Operation = eClipUnion;         ///< written by the user before each run
    unsigned int m_Attempts = 0;                     ///< attempts of the last `RunClip`, for tests and measurements
    double m_LargestShift = 0.0;                     ///< of any attempt

private:
    EClipResult RunCoincident(CPolygon const & second);
    EClipResult RunAttempts(CPolygon const & first, CPolygon const & second, CPolygon const & measure);
    EClipResult RunAttemptsInFrame(CPolygon const & first, CPolygon const & second);
    void ReadPolygons(CPolygon const & first, CPolygon const & second, TPoint<double> const & shift, int attempt);
};

extern template class CPolygonClipBase<double>;

/// A new clipper, owned by the caller.
GEOMETRY_EXPORT CPolygonClipBase<double>* CreateClipper();

} // namespace geometry
