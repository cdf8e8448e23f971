/// \file
/// The area type of the library: one closed outline of path objects, and holes.
#pragma once

#include <memory>
#include <vector>

#include <geometry/clip/spatial_hash_container.h>
#include <geometry/numeric/bounding_rect.h>
#include <geometry/numeric/lazy_cache.h>
#include <geometry/path/path_object_base.h>

namespace geometry
{

template <typename T>
class CPolygonClipBase;
class COutlineIndex;
class COutlineFacts;

/// A region of the plane: the inside of one closed outline less the inside of its holes, each a polygon of its own.
///
/// Ownership: a polygon owns its path objects and its holes. A vector of `CPolygon*` that an operation fills belongs
/// to the caller, element by element. Failure: geometry never throws; an empty outline is the mark of a polygon that
/// came to nothing. Allocation exceptions pass through and leave everything destructible.
/// Threads: const operations may run in parallel on one polygon; operations on different polygons are independent.
/// Coordinates: doubles in the caller's unit, within the range of a 32-bit integer.
class GEOMETRY_EXPORT CPolygon
{
public:
    class TConstVertexIterator;
    using PathObjects = std::vector<CPathObjectBase*>;
    using PathObjectHash = CPathObjectBase::PathObjectHash;
    using PolygonHash = CSpatialHashContainer<CPolygon, CHashCalculator<CPolygon, CBoundingRect<int>>>;

    /// The sense of an outline, with x to the right and y up.
    enum EPolygonWinding
    {
        eWindingUnknown = 0,  ///< not computed, or the polygon has no outline
        eWindingNegative = 1, ///< negative signed area: clockwise
        eWindingPositive = 2  ///< zero or positive signed area: counter-clockwise
    };

    /// Part of merging, complete within the library only.
    struct COverlapVectorsHelper;

    /// Selects the constructor that clones the path objects instead of taking them over.
    struct TCloneObjects
    {
    };

    /// Above this number of polygons a merge first groups those whose rectangles reach each other, and from it on a
    /// subtraction works in tiles, on several threads. Read without protection: set it before threads use the library.
    static unsigned int m_GroupingAmount;

    // --- construction and content: src/polygon/polygon.cpp ---

    /// Empty outline, no holes.
    CPolygon();
    /// Deep copy with holes. The outline cache starts empty.
    CPolygon(CPolygon const & other);
    CPolygon & operator=(CPolygon const &) = delete;
    /// Takes over `object` and closes the outline with a segment if need be. An object that can't be used (null, or
    /// not valid) is refused: the polygon stays empty and the object stays with the caller.
    explicit CPolygon(CPathObjectBase* object);
    /// Takes over the path objects of a range in order and closes the outline with a segment if need be. An object is
    /// refused, and stays with the caller, if it is null, not valid, or doesn't start where the one before it ends.
    /// If an exception leaves the constructor, all of them stay with the caller.
    template <typename Iterator>
    CPolygon(Iterator first, Iterator last) : CPolygon()
    {
        InitializeWithPathObjects(PathObjects(first, last));
    }
    /// The same with a clone of each object; the given ones stay with the caller.
    template <typename Iterator>
    CPolygon(Iterator first, Iterator last, TCloneObjects) : CPolygon()
    {
        InitializeWithClones(std::vector<CPathObjectBase const*>(first, last));
    }
    virtual ~CPolygon();

    /// Deletes the outline and, with `alsoHoles`, the holes.
    void clear(bool alsoHoles);

    /// The outline in path order; the objects stay the polygon's, which doesn't notice if a caller changes their shape.
    PathObjects const & GetOutline() const { return m_Outline; }
    /// The holes in adding order; they stay the polygon's.
    std::vector<CPolygon*> const & GetHoles() const { return m_Holes.GetObjects(); }
    /// Rectangle around the outline, empty if there is none.
    CBoundingRect<double> const & GetBoundingRect() const { return m_BoundingRect; }

    /// Area in square coordinate units: that of the outline less those of the holes, by the shoelace sum over its
    /// chords plus the circular segment of each arc, so exact on arcs. Orientation doesn't matter, and an outline may
    /// pass a point several times: its loops count by themselves. Where an
    /// outline crosses itself the lobes count with their sense. 0 for an empty outline.
    double GetArea() const;

    /// Appends `polygon` to `polygons` (which then owns it) and answers true; a null one gives false, and one with an
    /// empty outline is deleted, set to null, and gives false.
    static bool AddPolygonToVectorWhenValid(CPolygon*& polygon, std::vector<CPolygon*> & polygons);

    // --- walking: src/polygon/vertex_iterator.cpp ---

    /// The vertices of all path objects as one sequence; at each join the walk sees the same place twice.
    TConstVertexIterator GetVerticesBegin() const;
    TConstVertexIterator GetVerticesEnd() const;

    // --- containment and comparison: src/polygon/containment.cpp ---

    /// The point lies in the outline and in no hole. On the boundary: points on left and lower sides are inside,
    /// those on right and upper sides outside.
    bool PointInPolygon(double const & x, double const & y) const;
    /// The point lies in the outline, whatever the holes.
    bool PointInOutline(double const & x, double const & y) const;
    /// `other` lies within this outline, judged by one point of it: meant for outlines that don't cross. Holes of
    /// neither are looked at.
    bool PolygonInPolygon(CPolygon const & other) const;
    /// The two outlines consist of the same path objects in cyclic order, in either direction. Holes aren't compared.
    bool IsCoincidentWith(CPolygon const & other) const;
    /// The first vertex of `other` that shares the x or y of as few vertices of this polygon as can be.
    /// `(+DBL_MAX, +DBL_MAX)` if `other` has no vertices.
    TPoint<double> GetUnlikelyEdgePoint(CPolygon const & other) const;

    // --- booleans: src/polygon/booleans.cpp ---
    // All empty `result` first, DELETING the polygons it holds, and fill it with new polygons that the caller owns.
    // True means that the operation didn't fail, not that there is a result: the intersection of two polygons that
    // lie apart is true and empty. False leaves `result` empty. `this` and `other` don't change.
    // A pair that can't be clipped (CPolygonClipBase::GetGaveUpCount) stays uncut in a subtraction and drops out of an
    // intersection. Subtractions poll the cancellation of the calling `thread`, also those that an intersection makes
    // for holes: a caller that is cancelled must not rely on the result.

    /// This polygon minus `other`. False and empty if the calling `thread` is already asked to stop.
    bool SubtractPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const;
    /// The region that both share.
    bool IntersectPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const;
    /// The region that belongs to one of the two only: the pieces of this polygon first, then those of `other`.
    bool XORPolygon(std::vector<CPolygon*> & result, CPolygon const & other) const;

    // --- merge: src/polygon/merge_range.cpp ---

    /// The region that belongs to one of the two or both: one polygon if they meet in more than single points, else
    /// copies of both, that of this polygon first. What the union encloses without covering it is a hole. Rules of the
    /// booleans above.
    bool MergePolygon(std::vector<CPolygon*> & result, CPolygon const & other) const;
    /// Unites all of `polygons` (not owned; null and empty ones are passed over) into the fewest polygons, whatever
    /// their order; a polygon in a hole of another, or that meets others in single points only, stays by itself. Rules
    /// of the booleans above; a pair that can't be clipped stays unmerged. Gaps that only a retry of the clipper opened
    /// are closed.
    static bool MergePolygons(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons);

    // --- inflating: src/polygon/inflate.cpp ---

    /// Grows (`amount` > 0) or shrinks (`amount` < 0) the region by a distance in coordinate units, with rounded
    /// corners made of arcs. Bands along segments are up to half a percent wider than `amount`, never narrower; those
    /// along arcs are exact. New polygons that the caller owns go to `result`, whose polygons are deleted first; with
    /// `amount` 0 a copy is ADDED to what it holds. No result is an empty one: shrunk to nothing, or failed.
    /// A NaN gives a copy. Shrinking polls the cancellation of the calling `thread`.
    void GetInflatedPolygon(std::vector<CPolygon*> & result, double amount) const;

    // --- distances: src/polygon/distance.cpp ---
    // Squares of distances, in square coordinate units; `+DBL_MAX`, and points left as they were, if there is nothing
    // to measure. Solid: what lies in the area has distance 0. Open: only the outline and those of the holes count.
    // A point in a hole is outside in both ways.

    /// From a point to this polygon, and the point of the polygon closest to it.
    double SquareDistanceToPoint(double x, double y, bool solid, TPoint<double> & closest) const;
    /// Between this polygon and `other`, and the closest points on both.
    double SquareDistanceToPolygon(CPolygon const & other, bool thisSolid, bool otherSolid, TPoint<double> & onThis,
                                   TPoint<double> & onOther) const;

    // --- subtracting many: src/polygon/subtract_tiles.cpp ---

    /// This polygon minus all of `polygons` (not owned; null and empty ones are passed over), as new polygons that the
    /// caller owns: what `result` held is deleted. Nothing to subtract gives a copy.
    /// From `m_GroupingAmount` polygons on the plane is cut into tiles, which `workers` threads of the library treat, 0
    /// meaning one a processor; 1 does all on the calling thread. The result is the same, bit for bit, with any number
    /// of them. All polygons, this one too, are read by the workers at the same time: they must not change meanwhile,
    /// and `Clone` and `CloneForMerge` of their user info must allow calls from several threads at once.
    /// Cancellation: a request to stop the calling `thread` stops the workers, and all have ended when this returns.
    /// The request stays pending then, also if cancellation is disabled.
    /// False leaves `result` empty: asked to stop, or the polygons reach so far that their tiles can't be told apart.
    /// Exceptions: of allocations, also on a worker, `thread_resource_error` and `mutex_resource_error`; no worker runs
    /// any more then, and `result` is as it was.
    bool SubtractPolygons(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons,
                          unsigned int workers = 0) const;

    // --- sorting: src/polygon/sorting.cpp ---

    /// Brings loose path objects into the order of one outline: the chain begins with the last of them, and each goes
    /// on where the one before ends, reversed if need be. At a branch the one that stands first is taken. True if all
    /// of them form one chain; whether it closes is asked only of a single object. Else, and with a null among them,
    /// ALL are deleted, `objects` is empty and the answer is false.
    static bool SortPathObjectsForProperPolygonCreation(std::vector<CPathObjectBase*> & objects);
    /// Tells which of a heap of polygons that don't cross each other are outlines and which lie in one as its holes;
    /// what lies in a hole is an outline, however deep. Larger ones come first. `outlines` and `holes` are emptied
    /// first WITHOUT deleting anything, and then own all of `polygons`, which is left empty (null ones are passed
    /// over). The holes that the polygons have aren't looked at, and none is attached to anything.
    static void SplitPolygonsInOutlinesAndHoles(std::vector<CPolygon*> & polygons, std::vector<CPolygon*> & outlines,
                                                std::vector<CPolygon*> & holes);

    // --- tiling: src/polygon/tiling.cpp ---

    /// Cuts the polygon along a grid of squares with the side `n` * 2000000 coordinate units, which begins at the
    /// lower left corner of its rectangle. New polygons that the caller owns go to `result`, which is emptied first
    /// WITHOUT deleting anything: column by column from the left, each from the bottom. The area of a tile that can't
    /// be cut is missing. No result is an empty one: without an outline, with an `n` of 0 or above 2147, and where the
    /// grid has more than 2148 columns or rows, or squares too small for the coordinates to tell apart.
    void TilePolygon(unsigned int n, std::vector<CPolygon*> & result) const;

    // --- holes: src/polygon/holes.cpp ---

    /// Adds a copy of the outline of `hole` (not kept; null is allowed and does nothing) to the holes. Holes that it
    /// touches are united with it; what the union encloses becomes solid area again and comes back in `extra`, which
    /// is emptied first WITHOUT deleting anything, and whose polygons the caller owns.
    /// That the hole lies inside the outline is the caller's promise.
    /// `clipper`: the clipper to use, stays the caller's; null makes one when needed.
    /// `clipped`: null always compares the hole with the existing ones; else they are compared only if the rectangles
    /// of `clipped` and `hole` overlap.
    /// Failure isn't reported: a hole that can't be united with a present one stays beside it, and solid area whose
    /// holes can't be cut out is dropped. After an allocation exception swallowed holes are gone.
    void AddHole(CPolygon const* const hole, CPolygonClipBase<double>* clipper, CPolygon const* const clipped,
                 std::vector<CPolygon*> & extra);

private:
    friend struct CTestAccess;
    friend struct CPolygonInternals;

    void AppendPathObject(CPathObjectBase* object);
    bool EnsureValidPolygon(bool closeByExtending);
    void InitializeWithPolygon(CPolygon const & other);
    void InitializeWithPathObjects(PathObjects const & objects);
    void InitializeWithClones(std::vector<CPathObjectBase const*> const & objects);
    void ClearOutline();
    void ClearOutlineCache();
    COutlineIndex const* FindOutlineIndex(bool isWorthIt) const;
    void DeleteHoles();

    EPolygonWinding GetWindingDirection() const;
    EPolygonWinding FindWindingByArea() const;
    EPolygonWinding FindWindingByPoints() const;
    EPolygonWinding ReverseWindingDirection();
    void SetCorrectHoleWinding(CPolygon & hole) const;
    void BuildPolygonOutlineCache(PathObjectHash & container) const;

    bool HandleSubtractResultPolygons(std::vector<CPolygon*> & result, std::vector<CPolygon*> const & pieces,
                                      CPolygon const & clip, CPolygonClipBase<double>* clipper) const;
    bool SubtractPolygonsCore(std::vector<CPolygon*> & result, std::vector<CPolygon const*> const & polygons,
                              unsigned int workers = 0) const;

    bool IsProbeCountOdd(TPoint<double> const & point) const;
    bool FindNearestObject(CPathObjectBase const & path, std::size_t & found) const;
    double SquareDistanceToPathSolid(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                     TPoint<double> & onPath) const;
    double SquareDistanceToPathOpen(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                    TPoint<double> & onPath) const;
    double SquareDistanceToOutline(CPathObjectBase const & path, TPoint<double> & onPolygon,
                                   TPoint<double> & onPath) const;
    double SquareDistanceToPolygon(CPolygon const & other, bool thisSolid, bool otherSolid, TPoint<double> & onThis,
                                   TPoint<double> & onOther, bool firstCall) const;

    PathObjects m_Outline; ///< in path order; owned
    PolygonHash m_Holes;   ///< owned; they lie inside, so not in the rectangle
    mutable TLazyValue<EPolygonWinding> m_WindingDirection =
        eWindingUnknown;                                      ///< 0 or the true one: `GetWindingDirection`
    CBoundingRect<double> m_BoundingRect;                     ///< union of the rectangles of the outline's objects
    PathObjectHash m_OutlineCache;                            ///< empty or pieces of the present outline; owned
    TLazyObject<COutlineIndex> m_OutlineIndex;                ///< of the present outline: `FindOutlineIndex`
    mutable TLazyValue<unsigned int> m_OutlineQuestions = 0U; ///< since the last change, as long as there is no index
    std::shared_ptr<COutlineFacts> m_Facts; ///< of a polygon under work only, and void with every change; may be null
};

} // namespace geometry

#include <geometry/polygon/vertex_iterator.h>
