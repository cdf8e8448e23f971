/// \file
/// The interface that every piece of an outline has: straight polylines and circular arcs.
#pragma once

#include <cstdint>
#include <list>
#include <memory_resource>
#include <string>
#include <utility>
#include <vector>

#include <geometry/clip/spatial_hash_container.h>
#include <geometry/export.h>
#include <geometry/numeric/bounding_rect.h>
#include <geometry/numeric/lazy_chain_index.h>
#include <geometry/numeric/point.h>

namespace geometry
{

class CPathObjectArc;
class CPathObjectBase;
class CPathObjectPolyline;
class CPolygon;

/// What a caller derives from to learn the kind of a path object (`CPathObjectBase::Accept`). The result of the
/// operation called is the result of `Accept`; its meaning is the caller's.
class GEOMETRY_EXPORT CPathObjectVisitor
{
public:
    virtual bool VisitPolyline(CPathObjectPolyline & polyline) = 0;
    virtual bool VisitArc(CPathObjectArc & arc) = 0;
    /// An object of a kind that the library doesn't know.
    virtual bool VisitBase(CPathObjectBase & object) = 0;
    virtual ~CPathObjectVisitor();
};

/// A piece of an outline that runs from a start point to an end point.
///
/// Two kinds exist, `CPathObjectPolyline` and `CPathObjectArc`. Operations on two objects of any kinds take the
/// overload for `CPathObjectBase const &` and find the implementation by double dispatch: THE OTHER OBJECT'S WORK
/// RUNS, with output arguments swapped back, so that the first output always belongs to the object called.
///
/// Ownership: an object owns its user info. Objects, polygons and results are passed by raw pointer; each declaration
/// says who owns what. Failure: geometry never throws; the standard allocation exceptions pass through, and leave
/// every object destructible. Threads: const operations may run in parallel on one object.
///
/// The order of the virtual operations is part of the exported interface.
class GEOMETRY_EXPORT CPathObjectBase
{
public:
    using Points = std::vector<TPoint<double>>;
    using PointIterator = Points::const_iterator;
    using PathObjectHash = CSpatialHashContainer<CPathObjectBase, CHashCalculator<CPathObjectBase, CBoundingRect<int>>>;

    /// What a caller hangs on a path object. The object owns it.
    class GEOMETRY_EXPORT CUserInfoInterface
    {
    public:
        virtual ~CUserInfoInterface();
        /// A new copy, owned by the caller of `Clone`. Null is allowed: the copied object then has no user info.
        virtual CUserInfoInterface* Clone() const = 0;
        /// A new object for the join of two path objects (`first` runs into `second`), owned by the caller.
        virtual CUserInfoInterface* CloneForMerge(CPathObjectBase const* first,
                                                  CPathObjectBase const* second) const = 0;

    protected:
        CUserInfoInterface() = default;
        CUserInfoInterface(CUserInfoInterface const &) = default;
        CUserInfoInterface & operator=(CUserInfoInterface const &) = default;

    private:
        static std::string const m_CUserInfoInterfaceClassName;
    };

    /// A point at which a path object is to be cut.
    struct SplitPoint : TPoint<double>
    {
        /// True where an arc is only touched: it is cut there, but the point is no intersection.
        bool touchOnly = false;

        SplitPoint() = default;
        SplitPoint(double const & xValue, double const & yValue) : TPoint<double>(xValue, yValue) {}
    };

    enum EPathSplitResult
    {
        /// Something was found for this pair. Two polylines look at the whole lists, earlier entries included; the
        /// pairs with an arc look at what the one call found.
        eSplitPositionsFound = 0,
        eNoSplitPositions = 1
    };

    /// Several points take their memory where their list does.
    using SplitPoints = std::pmr::vector<SplitPoint>;
    /// `first`: start and end vertex of one segment. `second`: the cuts on it by growing distance from its start.
    /// An arc has at most one entry, whose iterators mean nothing.
    using SplitEntry = std::pair<std::pair<PointIterator, PointIterator>, SplitPoints>;
    /// The cuts of one object, in the order of its segments. Valid only until the object changes. Made without a
    /// memory resource, it uses `new` and `delete`; a clip gives its lists one of its own.
    using SplitPositionList = std::pmr::list<SplitEntry>;

    /// `first`: a new object, owned by whoever holds the vector of pieces. `second`: how the piece begins: bit 0, at
    /// an intersection; bit 1, that intersection lies on a vertex that was there before. 0 own start, 1 or 3
    /// intersection, 4 a point where an arc is only touched.
    using SplitPiece = std::pair<CPathObjectBase*, std::int8_t>;

    virtual ~CPathObjectBase();

    // --- transforms: src/path/path_object_base.cpp ---

    virtual void Translate(double dx, double dy);
    virtual void Scale(double sx, double sy);
    /// About the origin, counter-clockwise with y up, in degrees.
    virtual void RotateDegrees(double angle);
    /// About the origin, counter-clockwise with y up, in radians.
    virtual void RotateRadians(double angle);

    // --- reading ---

    /// The points that stand for the object when it is walked vertex by vertex: a polyline's vertices, an arc's
    /// chord approximation.
    virtual PointIterator GetPointsBegin() const = 0;
    virtual PointIterator GetPointsEnd() const = 0;
    /// Where the path begins, by reference to stored data. Needs at least one point.
    virtual TPoint<double> const & GetStartPoint() const = 0;
    /// Where the path ends, by reference to stored data. Needs at least one point.
    virtual TPoint<double> const & GetEndPoint() const = 0;
    /// A point on the path and on neither end, if that can be helped.
    virtual TPoint<double> GetInbetweenPoint() const = 0;
    /// The object has collapsed to a single point.
    virtual bool IsDegenerate() const = 0;
    /// The object is exactly one straight segment. False for an arc.
    virtual bool IsSingleSegment() const = 0;
    /// Length along the path, in coordinate units.
    virtual double CalculateLength() const = 0;
    /// Calls the operation of the visitor for this kind of object and passes on its result.
    virtual bool Accept(CPathObjectVisitor & visitor);

    // --- relations to points and other paths ---

    /// The point lies on the path within the tolerance of the kind (polyline: units in the last place; arc: square
    /// distance below 0.001 square units).
    virtual bool IsPointOnPath(double x, double y) const = 0;
    /// Clears `points`, fills it with the intersections and tells whether there are any.
    virtual bool IntersectWithPath(CPathObjectPolyline const & other, Points & points) const = 0;
    virtual bool IntersectWithPath(CPathObjectArc const & other, Points & points) const = 0;
    virtual bool IntersectWithPath(CPathObjectBase const & other, Points & points) const = 0;
    /// The two objects cover the same track, in either direction.
    virtual bool IsCoincidentWith(CPathObjectPolyline const & other) const = 0;
    virtual bool IsCoincidentWith(CPathObjectArc const & other) const = 0;
    virtual bool IsCoincidentWith(CPathObjectBase const & other) const = 0;
    /// The smallest square distance (square coordinate units), `+DBL_MAX` if there is none; `onThis` and `onOther`
    /// receive the closest points and stay as they were if there are none.
    virtual double SquareDistanceToPath(CPathObjectPolyline const & other, TPoint<double> & onThis,
                                        TPoint<double> & onOther) const = 0;
    virtual double SquareDistanceToPath(CPathObjectArc const & other, TPoint<double> & onThis,
                                        TPoint<double> & onOther) const = 0;
    virtual double SquareDistanceToPath(CPathObjectBase const & other, TPoint<double> & onThis,
                                        TPoint<double> & onOther) const = 0;
    /// The same against a point; `closest` receives the closest point of this object.
    virtual double SquareDistanceToPoint(double x, double y, TPoint<double> & closest) const = 0;

    // --- splitting: first all pairs of two outlines, then one cut for each object ---

    /// Adds to `mine` and `theirs` where the two objects cut each other. Neither object may change until `DoSplits`.
    virtual EPathSplitResult DetermineSplitPositions(CPathObjectPolyline const & other, SplitPositionList & mine,
                                                     SplitPositionList & theirs) const = 0;
    virtual EPathSplitResult DetermineSplitPositions(CPathObjectArc const & other, SplitPositionList & mine,
                                                     SplitPositionList & theirs) const = 0;
    virtual EPathSplitResult DetermineSplitPositions(CPathObjectBase const & other, SplitPositionList & mine,
                                                     SplitPositionList & theirs) const = 0;
    /// Appends the new pieces into which `positions` cuts this object, in path order; nothing if there is no cut.
    /// The pieces belong to the holder of `pieces`, also when an exception ends the operation midway.
    virtual void DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const = 0;

    // --- state ---

    /// Swaps the direction of travel.
    virtual void Reverse() = 0;
    /// The object has enough points to be used.
    virtual bool IsValid() const = 0;
    /// Removes what is redundant; an arc stays as it is.
    virtual void Cleanup(bool mayRemoveStartPoint) = 0;
    /// An exact copy, user info cloned. Owner: caller.
    virtual CPathObjectBase* Clone() const = 0;

    // --- joins: a new object owned by the caller, or null when the two don't meet or are of different kinds ---

    /// `Append`, and if that gives null, `Prepend`.
    virtual CPathObjectBase* MergeWith(CPathObjectBase const* other) const = 0;
    virtual CPathObjectArc* MergeWithArc(CPathObjectArc const* const other) const;
    virtual CPathObjectPolyline* MergeWithPolyline(CPathObjectPolyline const* const other) const;
    /// This object first, `other` second.
    virtual CPathObjectBase* Append(CPathObjectBase const* other) const = 0;
    virtual CPathObjectArc* AppendArc(CPathObjectArc const* const other) const;
    virtual CPathObjectPolyline* AppendPolyline(CPathObjectPolyline const* const other) const;
    /// `other` first, this object second.
    virtual CPathObjectBase* Prepend(CPathObjectBase const* other) const = 0;
    virtual CPathObjectArc* PrependArc(CPathObjectArc const* const other) const;
    virtual CPathObjectPolyline* PrependPolyline(CPathObjectPolyline const* const other) const;

    // --- containment ---

    /// How often the path crosses the vertical ray upward from the point. Half-open: a piece owns its end of smaller
    /// x and not its end of greater x, so that parity needs no special case at vertices.
    virtual unsigned int IntersectWithVerticalProbeLine(TPoint<double> const & point) const = 0;
    /// Signed crossings of the ray to the right of the point, as an unsigned count that wraps around.
    virtual unsigned int WindAroundPoint(TPoint<double> const & point) const = 0;
    /// Appends points whose polygon has the same winding as the object's track.
    virtual void AppendValidWindingPoints(Points & points) const = 0;

    // --- closing gaps ---

    /// True for a polyline, false for an arc, on which the vertex operations do nothing.
    virtual bool CanAppendVertex() const = 0;
    virtual void AppendVertex(TPoint<double> const & point);
    virtual bool CanPrependVertex() const = 0;
    virtual void PrependVertex(TPoint<double> const & point);

    // --- parts and inflating ---

    /// Appends single-segment pieces that meet `rect`, each with a clone of the user info. The caller owns them. A
    /// segment without extent gives a piece of one vertex, which is not valid.
    virtual void CreatePathParts(std::vector<CPathObjectBase*> & parts, CBoundingRect<double> const & rect) const = 0;
    /// The same into a spatial hash, which owns the pieces then.
    virtual void CreatePathParts(PathObjectHash & parts) const = 0;
    /// The points within `distance` (coordinate units) of the track as a polygon, new and owned by the caller, or
    /// null when there is none.
    virtual CPolygon* GetInflatePolygon(double const & distance) const = 0;

    // --- numeric state ---

    /// Repairs the numeric state after a change. A polyline has nothing to do; an arc makes its centre fit its ends.
    virtual void TryToCorrectProblems() = 0;
    /// Forms the bounding rectangle anew from the geometry.
    virtual void RecalculateBoundingRect() = 0;

protected:
    /// Called after every transform.
    virtual void DoPostTransformActions();

public:
    /// Copies rectangle and points and replaces the user info by a clone of the other's.
    CPathObjectBase const & operator=(CPathObjectBase const & other);

    /// Takes over `userInfo` (may be null) and deletes the present one, unless it is the same object.
    void SetUserInfo(CUserInfoInterface* userInfo)
    {
        if (userInfo != m_UserInfo)
        {
            delete m_UserInfo;
            m_UserInfo = userInfo;
        }
    }

    /// The attached object or null; it stays this object's.
    CUserInfoInterface* GetUserInfo() const { return m_UserInfo; }

    /// Rectangle around the object, empty if it has no points.
    CBoundingRect<double> const & GetBoundingRect() const { return m_BoundingRect; }

protected:
    CPathObjectBase() = default;
    CPathObjectBase(CPathObjectBase const & other);

    /// A clone of the user info, owned by the caller; null if there is none.
    CUserInfoInterface* CloneUserInfo() const { return m_UserInfo != nullptr ? m_UserInfo->Clone() : nullptr; }

    CBoundingRect<double> m_BoundingRect;     ///< around the object; every change of the points brings it up to date
    Points m_Points;                          ///< a polyline's vertices; start, end, centre, mid-point of an arc
    CUserInfoInterface* m_UserInfo = nullptr; ///< owned; null when there is none
    CLazyChainIndex m_SegmentIndex;           ///< over the segments of a long polyline; void with every change
};

} // namespace geometry
