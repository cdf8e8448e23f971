// Proof of a run by points that leave no doubt: the rules for touches and overlaps judge an object by few points, and
// where these happen to lie on the other ring (the middle of a segment that touches an arc) they can take a crossing
// for an overlap. A sample well away from the other ring that contradicts the outcome makes the run a retry instead
// of a wrong region. A right outcome is never contradicted.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "clip/fold.h"
#include "clip/ring_position.h"

namespace geometry
{

/// The place on a straight segment that is sampled.
TPoint<double> SampleOfSegment(TPoint<double> const & a, TPoint<double> const & b);

/// No sample of the holder's object that is well away from the ring of `other` contradicts its lying on `side`. All
/// objects within `otherRect`, the rectangle of that ring, are sampled, also those that begin and end where the rings
/// don't meet: outlines that run along each other but for rounding (a straight track that goes on as an arc) may cross
/// without the crossing being found. An object without extent agrees with everything. `isMiddleSeen`: the point between
/// its ends has already been located on `side` by a question to the ring; a clear sample could only say the same.
bool AgreesWithSamples(CPathObjectHolder const* holder, CPathObjectHolder const* other,
                       CBoundingRect<double> const & otherRect, EPointPosition side, bool isMiddleSeen);

/// No clear sample of the ring of `ring` contradicts its lying wholly inside (or outside) the ring of `other`.
bool IsWhollyOnSide(CPathObjectHolder const* ring, CPathObjectHolder const* other,
                    CBoundingRect<double> const & otherRect, EPointPosition side);

/// How the regions of two rings that don't cross stand to each other, as far as points beside their objects tell that are
/// well away from both.
struct TRelation
{
    bool isAnyInBoth = false;
    bool isAnyInSubjectOnly = false;
    bool isAnyInClipOnly = false;

    /// The two regions are the same.
    bool IsSame() const { return isAnyInBoth && !isAnyInSubjectOnly && !isAnyInClipOnly; }
};
TRelation FindRelation(CPathObjectHolder const* subject, CPathObjectHolder const* clip);

/// What the regions of the two rings say of a few points, to be compared with the result, which is traced from the
/// rings and may use them up. Catches what no sample of an outline can: outlines that agree nearly everywhere, where
/// the inside and the outside of everything may be taken for each other.
class CRegionProof
{
public:
    /// Points spread over the rectangles of the subject and the clip, and beside pieces of their rings that begin at a
    /// crossing. `fold`: of the subject, or null.
    CRegionProof(std::array<CBoundingRect<double>, 2> const & rects,
                 std::array<CPathObjectHolder const*, 2> const & rings, CFold* fold);

    /// Asks first the one ring for the points, then the other one.
    void ReadClip(CPathObjectHolder const* clip);
    void ReadSubject(CPathObjectHolder const* subject, bool (*isMember)(bool inSubject, bool inClip));
    /// An element of a ring of the result; rings count even-odd.
    void Count(CLinkedPathObject const & element);
    /// The result agrees with `isMember(inSubject, inClip)` at those points that are well away from both rings. Where
    /// the fold doesn't tell, it fails.
    bool Holds() const;

private:
    static constexpr std::size_t PointCount = 16;
    static constexpr unsigned int LastCell = 63;

    enum class EExpected
    {
        eAny,         ///< the point is near a ring
        eInResult,    ///< an odd number of times, folded runs left out
        eNotInResult, ///< an even number of times
        eNeither      ///< the fold tells nothing right
    };

    EExpected ExpectWithin(std::size_t i, CPathObjectHolder const* subject,
                           bool (*isMember)(bool inSubject, bool inClip)) const;
    EExpected ExpectAway(std::size_t i, CPathObjectHolder const* subject, bool isSubjectKept) const;

    void AddPointsBeside(CPathObjectHolder const* ring, std::size_t first, std::size_t last);
    void CountObject(CPathObjectBase const & object);
    /// Never falls where `x` grows.
    unsigned int CellOf(double x) const
    {
        double const cell = (x - m_LowestX) * m_CellsPerUnit;
        return cell > 0.0 ? cell < LastCell ? static_cast<unsigned int>(cell) : LastCell : 0;
    }
    /// A point may have an abscissa from `low` to `high`.
    bool MayHavePoint(double low, double high) const
    {
        return !(low <= high) || (m_Cells >> CellOf(low)) << (LastCell - CellOf(high) + CellOf(low)) != 0;
    }

    CFold* m_Fold; ///< not owned
    std::array<TPoint<double>, PointCount> m_Points;
    std::array<double, PointCount> m_X{}; ///< theirs
    std::uint64_t m_Cells = 0;            ///< a bit each, set where such an abscissa is
    double m_LowestX = 0.0;
    double m_CellsPerUnit = 0.0;
    CBoundingRect<double> m_AroundRest;      ///< the objects of the subject that aren't folded
    std::array<bool, PointCount> m_IsAway{}; ///< from the clip, so that the fold doesn't answer for the subject
    std::array<EPointPosition, PointCount> m_InClip{};
    std::array<EExpected, PointCount> m_Expected{};
    std::array<bool, PointCount> m_IsInResult{}; ///< in an odd number of rings, folded runs left out
};

} // namespace geometry
