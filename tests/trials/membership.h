/// \file
/// Which polygons cover a point: crossings of a ray, counted with `Real`, in a turned picture if need be.
#pragma once

#include "faces.h"

namespace trials
{

/// `Real` is double (quick) or long double (to confirm).
template <typename Real>
class TMembership
{
public:
    /// The picture is turned by `angle`, so that other rays are asked.
    explicit TMembership(TFaces const & faces, double angle = 0.0);

    /// How many polygons cover the point.
    int Count(TSpot const & p) const;

private:
    /// A piece of a ring that rises or falls all along; of an arc, the half of the circle it lies on.
    struct TPiece
    {
        Real low; ///< owned: the crossing rule is half-open
        Real high;
        Real ax, ay; ///< lower end of a segment, centre of an arc
        Real bx, by; ///< from the lower to the upper end of a segment
        Real squareRadius;
        int half; ///< 0 a segment, 1 right half, -1 left half
    };
    struct TRingPieces
    {
        std::vector<TPiece> pieces;
        Real lowX, lowY, highX, highY;
        int face;
        bool isOutline;
    };

    void AddRing(TRing const & ring, int face, bool isOutline);
    void AddSegment(TRingPieces & ring, TEdge const & edge);
    void AddArc(TRingPieces & ring, TEdge const & edge);
    bool IsOdd(TRingPieces const & ring, Real x, Real y) const;

    Real m_Cos;
    Real m_Sin;
    double m_Angle;
    std::vector<TRingPieces> m_Rings;
};

} // namespace trials
