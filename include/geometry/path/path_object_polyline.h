/// \file
/// The path object made of straight segments.
#pragma once

#include <geometry/path/path_object_base.h>

namespace geometry
{

/// A chain of straight segments between neighbouring vertices. Closed when its first and its last vertex are equal
/// within tolerance; nothing else marks it so. Vertices are stored as given until `Cleanup` runs.
class GEOMETRY_EXPORT CPathObjectPolyline : public CPathObjectBase
{
public:
    // --- construction and vertices: src/path/polyline.cpp ---

    /// No vertices.
    CPathObjectPolyline() = default;
    /// A single segment; no `Cleanup`.
    CPathObjectPolyline(TPoint<double> const & start, TPoint<double> const & end);
    /// The points of a range in order, then `Cleanup(false)`.
    template <typename Iterator>
    CPathObjectPolyline(Iterator first, Iterator last)
    {
        for (; first != last; ++first)
        {
            AddVertex(first->x, first->y);
        }
        Cleanup(false);
    }
    CPathObjectPolyline(CPathObjectPolyline const & other) = default;
    ~CPathObjectPolyline() override;

    /// Rectangle, vertices and a clone of the user info.
    CPathObjectPolyline & operator=(CPathObjectPolyline const & other);

    /// Appends a vertex.
    void AddVertex(double const & x, double const & y);
    /// Inserts before the vertex at `index`; an index at or beyond the count appends.
    void InsertVertex(unsigned int index, double const & x, double const & y);
    /// Removes the vertex at `index` if there is one, and forms the rectangle anew.
    void RemoveVertex(unsigned int index);
    /// Removes all vertices; the user info stays.
    void clear();

    PointIterator GetPointsBegin() const override;
    PointIterator GetPointsEnd() const override;
    TPoint<double> const & GetStartPoint() const override;
    TPoint<double> const & GetEndPoint() const override;
    /// The middle of a segment near the middle of the path, the longer of two. Of a path without vertices: the origin.
    TPoint<double> GetInbetweenPoint() const override;
    /// First and last vertex equal and fewer than three vertices. True without vertices.
    bool IsDegenerate() const override;
    bool IsSingleSegment() const override;
    double CalculateLength() const override;
    bool Accept(CPathObjectVisitor & visitor) override;

    // --- relations: src/path/polyline_relations.cpp ---

    bool IsPointOnPath(double x, double y) const override;
    /// A vertex in the middle of a path counts once, as the start of the following segment. No rectangle test on the
    /// whole paths, no removal of duplicates.
    bool IntersectWithPath(CPathObjectPolyline const & other, Points & points) const override;
    bool IntersectWithPath(CPathObjectArc const & other, Points & points) const override;
    bool IntersectWithPath(CPathObjectBase const & other, Points & points) const override;
    bool IsCoincidentWith(CPathObjectPolyline const & other) const override;
    bool IsCoincidentWith(CPathObjectArc const & other) const override;
    bool IsCoincidentWith(CPathObjectBase const & other) const override;
    double SquareDistanceToPath(CPathObjectPolyline const & other, TPoint<double> & onThis,
                                TPoint<double> & onOther) const override;
    double SquareDistanceToPath(CPathObjectArc const & other, TPoint<double> & onThis,
                                TPoint<double> & onOther) const override;
    double SquareDistanceToPath(CPathObjectBase const & other, TPoint<double> & onThis,
                                TPoint<double> & onOther) const override;
    double SquareDistanceToPoint(double x, double y, TPoint<double> & closest) const override;

    // --- splitting: src/path/polyline_split.cpp ---

    EPathSplitResult DetermineSplitPositions(CPathObjectPolyline const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    EPathSplitResult DetermineSplitPositions(CPathObjectArc const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    EPathSplitResult DetermineSplitPositions(CPathObjectBase const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    void DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const override;

    // --- state and joins: src/path/polyline.cpp, clean-up: src/path/polyline_cleanup.cpp ---

    void Reverse() override;
    /// More than one vertex.
    bool IsValid() const override;
    /// Removes duplicates, spikes and collinear vertices. The start vertex of a closed polyline goes only with
    /// `mayRemoveStartPoint`; the ends of an open one never go as collinear.
    void Cleanup(bool mayRemoveStartPoint) override;
    CPathObjectPolyline* Clone() const override;
    CPathObjectBase* MergeWith(CPathObjectBase const* other) const override;
    CPathObjectPolyline* MergeWithPolyline(CPathObjectPolyline const* const other) const override;
    CPathObjectBase* Append(CPathObjectBase const* other) const override;
    CPathObjectPolyline* AppendPolyline(CPathObjectPolyline const* const other) const override;
    CPathObjectBase* Prepend(CPathObjectBase const* other) const override;
    CPathObjectPolyline* PrependPolyline(CPathObjectPolyline const* const other) const override;

    unsigned int IntersectWithVerticalProbeLine(TPoint<double> const & point) const override;
    /// `IntersectWithVerticalProbeLine` is odd: the same, faster on long polylines.
    bool IsProbeCountOdd(TPoint<double> const & point) const;
    unsigned int WindAroundPoint(TPoint<double> const & point) const override;
    void AppendValidWindingPoints(Points & points) const override;

    bool CanAppendVertex() const override;
    void AppendVertex(TPoint<double> const & point) override;
    bool CanPrependVertex() const override;
    void PrependVertex(TPoint<double> const & point) override;

    // --- parts: src/path/polyline_parts.cpp ---

    /// One polyline for each segment that doesn't lie clearly outside `rect`.
    void CreatePathParts(std::vector<CPathObjectBase*> & parts, CBoundingRect<double> const & rect) const override;
    void CreatePathParts(PathObjectHash & parts) const override;

    // --- inflating: src/path/polyline_inflate.cpp ---

    /// The points within `distance` (coordinate units) of the track, and up to half a percent beyond: rounded
    /// rectangles around the segments, united. Where the track encloses something, the result has holes.
    /// Owner: caller. Null: `distance` isn't greater than 0, fewer than two vertices, or the union fails.
    /// Threads: touches nothing shared.
    CPolygon* GetInflatePolygon(double const & distance) const override;

    // --- rounded rectangles: src/path/round_rect.cpp ---

    /// The outline of `rect` with its corners rounded by `radius`, counter-clockwise and closed, turned by `angle`
    /// (radians, counter-clockwise) about the middle of `rect`. Straight pieces are single segments, the corners arcs;
    /// a radius of half a side joins two corners in a half circle, one of half of both sides makes a full circle, and
    /// one of zero a closed polyline of five vertices. A radius beyond half a side isn't refused: its segments run
    /// backward.
    /// `objects` forgets what it holds WITHOUT deleting anything, and is filled with new objects that the caller owns.
    /// After an allocation exception it is empty.
    static void RoundRectAsPathObjects(CBoundingRect<double> const & rect, double const & radius, double const & angle,
                                       std::vector<CPathObjectBase*> & objects);
    /// The same as a polygon. Owner: caller; never null.
    static CPolygon* RoundRectAsPolygon(CBoundingRect<double> const & rect, double const & radius,
                                        double const & angle);

    // --- numeric state ---

    void TryToCorrectProblems() override;
    void RecalculateBoundingRect() override;

private:
    friend struct CTestAccess;
    friend struct CPolylineInternals;
    friend class CPathObjectArc;

    CChainIndex const* FindSegmentIndex(bool isWorthIt) const;
    void AppendVertexRange(PointIterator first, PointIterator last);
    template <typename Make>
    void CutInto(SplitPositionList const & positions, std::vector<SplitPiece> & pieces, Make const & make) const;
    void ContinueWith(CPathObjectPolyline const & other, bool reverse);
    bool IsClosed() const;
    bool RemoveDuplicatesAndSpikes();
    bool RemoveCollinearVertices(bool mayRemoveStartPoint);
};

} // namespace geometry
