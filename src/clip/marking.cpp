// Entry and exit marking: one point of the ring that isn't on the other ring tells the side, and from there on the
// side changes at each intersection. Each object behind an intersection is checked against its mark.
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

constexpr int ObjectsInFocus = 4;
constexpr int FociInSurvey = 6;

/// Around `count` objects from `holder` on that may be asked about.
CBoundingRect<double> RectAround(CPathObjectHolder const* holder, int count, CBoundingRect<double> const & otherRect)
{
    CBoundingRect<double> around;
    for (int i = 0; i < count; ++i, holder = holder->m_Next)
    {
        CBoundingRect<double> const & rect = holder->GetPathObject()->GetBoundingRect();
        if (holder->m_Run == nullptr && otherRect.Overlaps(rect))
        {
            around.Include(rect);
        }
    }
    return around;
}

/// The questions about some objects from `holder` on are asked next; `step`: how many holders of the walk come before.
void FocusOn(CPathObjectHolder const* holder, int step, CPathObjectHolder const* other,
             CBoundingRect<double> const & otherRect)
{
    constexpr int objectsInSurvey = ObjectsInFocus * FociInSurvey;
    if (step % objectsInSurvey == 0)
    {
        CRingIndex::Survey(other, RectAround(holder, objectsInSurvey, otherRect));
    }
    if (step % ObjectsInFocus == 0)
    {
        CRingIndex::Focus(other, RectAround(holder, ObjectsInFocus, otherRect));
    }
}

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
    int step = 0;
    do
    {
        FocusOn(g, step++, other, rect);
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
