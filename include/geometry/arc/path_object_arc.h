/// \file
/// The path object that runs along a circle.
#pragma once

#include <geometry/numeric/lazy_cache.h>
#include <geometry/path/path_object_base.h>

namespace geometry
{

/// Which way an arc runs, with x to the right and y up.
enum EArcDirection : std::int32_t
{
    eDirectionUnknown = 0,         ///< not derived yet: read through `CPathObjectArc::GetDirection` only
    eDirectionClockwise = 1,       ///< falling angle
    eDirectionCounterClockwise = 2 ///< growing angle
};

/// An arc of a circle from a start point to an end point in a stated direction; a start equal to the end makes a full
/// circle. Its geometry stands in four points: start, end, centre, and a mid-point of the arc.
///
/// Below the level of this class every kernel takes an arc as a counter-clockwise sweep from `A` to `B`: start and end
/// of a counter-clockwise arc, end and start of a clockwise one.
///
/// Threads: const operations may run in parallel on one arc.
class GEOMETRY_EXPORT CPathObjectArc : public CPathObjectBase
{
public:
    // --- construction: src/arc/arc.cpp ---

    /// No points, radius -1.
    CPathObjectArc();
    CPathObjectArc(CPathObjectArc const & other);
    /// A clockwise full circle that begins and ends at its leftmost point.
    CPathObjectArc(TPoint<double> const & centre, double radius);
    /// The radius becomes the mean distance of the centre and the ends.
    CPathObjectArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                   bool counterClockwise);
    CPathObjectArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                   bool counterClockwise, double radius);
    ~CPathObjectArc() override;

    CPathObjectArc const & operator=(CPathObjectArc const & other);

    /// Sets all four points. A `radius` of zero or less stands for the mean distance of the centre and the ends; any
    /// other is stored as given. The direction stays if it is known, else it is derived from the points.
    void SetArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                TPoint<double> const & midPoint, double radius);
    /// The same with the mid-point worked out from the direction.
    void SetArc(TPoint<double> const & start, TPoint<double> const & end, TPoint<double> const & centre,
                bool counterClockwise, double radius);
    /// The radius whose chord approximation of 64 chords stays outside the circle of the given one:
    /// `radius / cos(pi / 32)`.
    static double CalculateMinRadius(double radius);

    /// Centre of the circle; the origin before the arc is set.
    TPoint<double> const & GetCentre() const;
    /// The stored radius, in coordinate units; -1 before the arc is set.
    double GetRadius() const { return m_Radius; }
    /// The arc runs counter-clockwise (derives the direction on first use).
    bool IsCounterClockwise() const { return GetDirection() == eDirectionCounterClockwise; }
    /// Start and end agree, and neither the centre nor the mid-point lies there.
    bool IsFullCircle() const;

    // --- reading: src/arc/arc.cpp, chord approximation: src/arc/arc_chords.cpp ---

    PointIterator GetPointsBegin() const override;
    PointIterator GetPointsEnd() const override;
    TPoint<double> const & GetStartPoint() const override;
    TPoint<double> const & GetEndPoint() const override;
    TPoint<double> GetInbetweenPoint() const override;
    bool IsDegenerate() const override;
    bool IsSingleSegment() const override;
    double CalculateLength() const override;
    bool Accept(CPathObjectVisitor & visitor) override;

    // --- relations: src/arc/arc_relations.cpp, distances: src/arc/arc_distance.cpp ---

    bool IsPointOnPath(double x, double y) const override;
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

    // --- splitting: src/arc/arc_split.cpp ---

    EPathSplitResult DetermineSplitPositions(CPathObjectPolyline const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    EPathSplitResult DetermineSplitPositions(CPathObjectArc const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    EPathSplitResult DetermineSplitPositions(CPathObjectBase const & other, SplitPositionList & mine,
                                             SplitPositionList & theirs) const override;
    void DoSplits(SplitPositionList const & positions, std::vector<SplitPiece> & pieces) const override;

    // --- state: src/arc/arc.cpp, joins and parts: src/arc/arc_joins.cpp ---

    /// Swaps start and end and flips the direction; the rectangle stays as it is.
    void Reverse() override;
    /// Exactly four points are stored.
    bool IsValid() const override;
    void Cleanup(bool mayRemoveStartPoint) override;
    CPathObjectArc* Clone() const override;
    CPathObjectBase* MergeWith(CPathObjectBase const* other) const override;
    CPathObjectArc* MergeWithArc(CPathObjectArc const* const other) const override;
    CPathObjectBase* Append(CPathObjectBase const* other) const override;
    CPathObjectArc* AppendArc(CPathObjectArc const* const other) const override;
    CPathObjectBase* Prepend(CPathObjectBase const* other) const override;
    CPathObjectArc* PrependArc(CPathObjectArc const* const other) const override;

    unsigned int IntersectWithVerticalProbeLine(TPoint<double> const & point) const override;
    unsigned int WindAroundPoint(TPoint<double> const & point) const override;
    void AppendValidWindingPoints(Points & points) const override;

    bool CanAppendVertex() const override;
    void AppendVertex(TPoint<double> const & point) override;
    bool CanPrependVertex() const override;
    void PrependVertex(TPoint<double> const & point) override;

    /// A clone of the whole arc if the rectangles overlap: an arc is never broken into parts.
    void CreatePathParts(std::vector<CPathObjectBase*> & parts, CBoundingRect<double> const & rect) const override;
    void CreatePathParts(PathObjectHash & parts) const override;

    // --- inflating: src/arc/arc_inflate.cpp ---

    /// The points within `distance` (coordinate units) of the track: a ring sector with round ends, made of arcs. A
    /// full circle gives a ring, and a disc if `distance` reaches its centre. An arc and its reverse give the same.
    /// Owner: caller. Null: `distance` isn't greater than 0, the arc isn't set, or a union or subtraction fails.
    /// Threads: touches nothing shared.
    CPolygon* GetInflatePolygon(double const & distance) const override;

    // --- numeric state ---

    /// Moving and turning leave the direction as it is, whatever rounding does to the points; mirroring turns it round,
    /// but for a full circle.
    void Scale(double sx, double sy) override;
    void TryToCorrectProblems() override;
    void RecalculateBoundingRect() override;

protected:
    void DoPostTransformActions() override;

private:
    friend struct CTestAccess;
    friend struct CArcInternals;

    EArcDirection GetDirection() const;
    Points const & GetArcPoints() const;

    double m_Radius = -1.0;
    TLazyObject<Points> m_ArcPoints; ///< chord approximation from start to end; none until asked for
    mutable TLazyValue<EArcDirection> m_Direction = eDirectionUnknown;
    mutable TLazyValue<std::int32_t> m_Steadiness = 0; ///< whether points, radius and rectangle agree; an enumerator
};

} // namespace geometry
