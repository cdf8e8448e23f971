// Entry and exit marking: one point of the ring that isn't on the other ring tells the side, and from there on the
// side changes at each intersection. Each object behind an intersection is checked against its mark.
#include <array>

#include "clip/clear_samples.h"
#include "clip/clipper.h"
#include "clip/ring_index.h"
#include "clip/ring_position.h"

namespace geometry
{

namespace
{

/// A holder, and the side of the other ring on which its ring lies just before it.
struct TSide
{
    CPathObjectHolder* holder;
    bool isInside;
};

/// The object before `holder` can be tested: it has an extent and isn't known to lie on the other ring.
bool IsUsableForSide(CPathObjectHolder const* holder)
{
    CPathObjectHolder const* const p = holder->m_Previous;
    return !p->GetPathObject()->IsDegenerate() &&
           (!holder->HasIntersectionHistory() || !IsOnTrackOf(p, p->m_Neighbour));
}

/// From `ring` on, the first holder whose side can be told; a null holder if all test points lie on the other ring.
TSide FindSide(CPathObjectHolder* ring, CPathObjectHolder const* other, CBoundingRect<double> const & rect)
{
    CPathObjectHolder* h = ring;
    do
    {
        if (h->HasIntersectionHistory())
        {
            while (!IsUsableForSide(h) && h->m_Next != ring)
            {
                h = h->m_Next;
            }
        }
        EPointPosition position;
        EPointPosition meansInside = EPointPosition::eInside;
        if (!h->HasIntersectionHistory())
        {
            position = LocatePointOrRect(h->GetStartPoint(), other, rect);
        }
        else if (!h->m_Previous->GetPathObject()->IsDegenerate())
        {
            position = LocatePointOrRect(h->m_Previous->GetPathObject()->GetInbetweenPoint(), other, rect);
        }
        else
        {
            // this point lies behind the intersection, so the side before it is the opposite one
            position = LocatePointOrRect(h->GetPathObject()->GetInbetweenPoint(), other, rect);
            meansInside = EPointPosition::eOutside;
        }
        if (position != EPointPosition::eOnRing)
        {
            return TSide{h, position == meansInside};
        }
        h = h->m_Next;
    } while (h != ring);
    return TSide{nullptr, false};
}

/// A point of an object lies on the other side than the mark of the object says.
bool Contradicts(EPointPosition position, bool isMarkedInside)
{
    return position != EPointPosition::eOnRing && isMarkedInside != (position == EPointPosition::eInside);
}

/// Has the questions about the next few objects of a walk along a ring surveyed by the index of the other ring.
class CSurveyor
{
public:
    CSurveyor(CPathObjectHolder const* other, CBoundingRect<double> const & otherRect)
        : m_Other(other), m_OtherRect(otherRect)
    {
    }

    /// The questions about `holder` are asked next.
    void StepTo(CPathObjectHolder const* holder)
    {
        if (m_Step % ObjectsInFocus == 0)
        {
            std::size_t const focus = m_Step / ObjectsInFocus % FociInSurvey;
            if (focus == 0)
            {
                Survey(holder);
            }
            CRingIndex::Focus(m_Other, m_Foci[focus]);
        }
        ++m_Step;
    }

private:
    static constexpr std::size_t ObjectsInFocus = 4;
    static constexpr std::size_t FociInSurvey = 6;

    /// Around the objects from `holder` on that may be asked about.
    void Survey(CPathObjectHolder const* holder)
    {
        CBoundingRect<double> around;
        CPathObjectHolder const* const first = holder;
        bool isRound = false; // the whole ring
        for (CBoundingRect<double> & focus : m_Foci)
        {
            focus.Reset();
            for (std::size_t i = 0; i < ObjectsInFocus && !isRound; ++i)
            {
                CBoundingRect<double> const & rect = holder->GetPathObject()->GetBoundingRect();
                if (holder->m_Run == nullptr && m_OtherRect.Overlaps(rect))
                {
                    focus.Include(rect);
                }
                holder = holder->m_Next;
                isRound = holder == first;
            }
            around.Include(focus);
        }
        CRingIndex::Survey(m_Other, around);
    }

    CPathObjectHolder const* m_Other;
    CBoundingRect<double> const & m_OtherRect;
    std::size_t m_Step = 0;
    std::array<CBoundingRect<double>, FociInSurvey> m_Foci;
};

} // namespace

EMarkOutcome MarkRing(CPathObjectHolder* ring, CPathObjectHolder const* other, bool invert,
                      CBoundingRect<double> const & rect)
{
    CRingIndex::ExpectQuestions(other);
    TSide const side = FindSide(ring, other, rect);
    if (side.holder == nullptr)
    {
        return EMarkOutcome::eInconsistent;
    }
    // from now on: the walk is on a part of the ring that the result leaves out
    bool isLeftOut = side.isInside != invert;
    EMarkOutcome outcome = EMarkOutcome::eMarked;
    CPathObjectHolder* g = side.holder;
    CSurveyor surveyor(other, rect);
    do
    {
        surveyor.StepTo(g);
        bool const isLeft = g->m_IsIntersection;
        if (isLeft)
        {
            g->m_Direction = isLeftOut ? eWalkForward : eWalkBackward;
            isLeftOut = !isLeftOut;
        }
        EPointPosition const expected = isLeftOut != invert ? EPointPosition::eInside : EPointPosition::eOutside;
        bool isMiddleSeen = false;
        if (isLeft)
        {
            TPoint<double> const middle = g->GetPathObject()->GetInbetweenPoint();
            EPointPosition const position = LocatePointOrRect(middle, other, rect);
            outcome = Contradicts(position, isLeftOut != invert) ? EMarkOutcome::eInconsistent : outcome;
            isMiddleSeen = position == expected && rect.ContainsPoint(middle.x, middle.y);
        }
        outcome = AgreesWithSamples(g, other, rect, expected, isMiddleSeen) ? outcome : EMarkOutcome::eInconsistent;
        g = g->m_Next;
    } while (g != side.holder);
    return outcome;
}

} // namespace geometry
