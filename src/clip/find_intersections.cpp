// Cutting two closed rings at all their crossings: note the cuts of every pair of objects, cut every object once,
// give each piece a holder, and link the holders that begin at the same crossing. Rings without a crossing and rings
// of the same track are told apart from everything else.
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

#include "arc/arc_geometry.h"
#include "arc/as_arc.h"
#include "clip/candidates.h"
#include "clip/clipper.h"
#include "clip/ring_position.h"
#include "numeric/nearby_pieces.h"
#include "path/polyline_internals.h"
#include "path/segment_kernels.h"
#include "path/split_helpers.h"

namespace geometry
{

namespace
{

constexpr int beginsAtIntersection = 1; // bits of the flags of a piece
constexpr int beginsAtOldVertex = 2;

/// Calls `visit` for each holder of a closed ring, in ring order; holders linked in behind the present one are
/// visited, too.
template <typename Visit>
void ForEachHolder(CPathObjectHolder* ring, Visit visit)
{
    CPathObjectHolder* holder = ring;
    do
    {
        visit(holder);
        holder = holder->m_Next;
    } while (holder != ring);
}

constexpr std::size_t MinPairsForIndex = 256; // of holders; below, the loop over all of them is faster

bool IsPolyline(CPathObjectHolder const* holder)
{
    return holder->GetPathObject()->CanAppendVertex();
}

std::pmr::vector<CPathObjectHolder*> HoldersOf(CPathObjectHolder* ring, std::pmr::memory_resource & memory)
{
    std::pmr::vector<CPathObjectHolder*> holders(&memory);
    holders.reserve(CountHolders(ring));
    ForEachHolder(ring, [&](CPathObjectHolder* holder) { holders.push_back(holder); });
    return holders;
}

/// Over the rectangles of the objects; null where it doesn't pay, or where a rectangle isn't a proper one.
std::unique_ptr<CChainIndex> MakeIndex(std::pmr::vector<CPathObjectHolder*> const & holders, std::size_t pairs)
{
    if (!IsIndexUsed(pairs >= MinPairsForIndex))
    {
        return nullptr;
    }
    std::vector<CBoundingRect<double>> rects;
    rects.reserve(holders.size());
    for (CPathObjectHolder const* holder : holders)
    {
        rects.push_back(holder->GetPathObject()->GetBoundingRect());
        CBoundingRect<double> const & r = rects.back();
        if (!std::isfinite(r.minX + r.minY) || !std::isfinite(r.maxX + r.maxY))
        {
            return nullptr;
        }
    }
    return std::make_unique<CChainIndex>(std::move(rects));
}

} // namespace

namespace
{

/// Looks up what is near the objects of some holders in a row, those of runs left out.
void LookUpBlock(CPathObjectHolder const* first, CNearbyPieces & nearby)
{
    CBoundingRect<double> around;
    std::size_t count = 0;
    CPathObjectHolder const* holder = first;
    do
    {
        CBoundingRect<double> const & r = holder->GetPathObject()->GetBoundingRect();
        if (!std::isfinite(r.minX + r.minY) || !std::isfinite(r.maxX + r.maxY))
        {
            nearby.LookUpNothing(); // numbers that are none overlap everything
            return;
        }
        if (holder->m_Run == nullptr)
        {
            around.Include(r);
            ++count;
        }
        holder = holder->m_Next;
    } while (count < CNearbyPieces::BlockSize && holder != first);
    nearby.LookUp(around);
}

} // namespace

bool NoteCuts(CPathObjectHolder* subject, CPathObjectHolder* clip)
{
    CStackBuffer<512> buffer;
    std::pmr::vector<CPathObjectHolder*> const others = HoldersOf(clip, buffer);
    CSplitEntryFinder const finder;
    std::unique_ptr<CChainIndex> const index = MakeIndex(others, others.size() * CountHolders(subject));
    std::optional<CNearbyPieces> nearby;
    if (index != nullptr)
    {
        nearby.emplace(*index);
    }
    bool const arePassed = IsIndexUsed(true); // pairs that are apart
    std::size_t asked = 0;
    bool hasClipPolylineCuts = false;
    bool allTouched = true;
    ForEachHolder(subject,
                  [&](CPathObjectHolder* a)
                  {
                      if (a->m_Run != nullptr)
                      {
                          allTouched = false; // it meets nothing
                          return;
                      }
                      CPathObjectBase const & object = *a->GetPathObject();
                      bool touched = arePassed && hasClipPolylineCuts && IsPolyline(a);
                      auto const visit = [&](std::size_t i)
                      {
                          CPathObjectHolder* const b = others[i];
                          touched = object.DetermineSplitPositions(*b->GetPathObject(), a->GetSplitPositions(),
                                                                   b->GetSplitPositions()) ==
                                        CPathObjectBase::eSplitPositionsFound ||
                                    touched;
                          hasClipPolylineCuts = hasClipPolylineCuts || (IsPolyline(b) && b->HasSplitPositions());
                      };
                      CBoundingRect<double> const & rect = object.GetBoundingRect();
                      if (nearby)
                      {
                          if (asked++ % CNearbyPieces::BlockSize == 0)
                          {
                              LookUpBlock(a, *nearby);
                          }
                          nearby->Search([&](CBoundingRect<double> const & r) { return rect.Overlaps(r); }, visit);
                      }
                      for (std::size_t i = 0; index == nullptr && i < others.size(); ++i)
                      {
                          if (!arePassed || rect.Overlaps(others[i]->GetPathObject()->GetBoundingRect()))
                          {
                              visit(i);
                          }
                      }
                      allTouched = allTouched && touched;
                  });
    return allTouched;
}

namespace
{

/// The pieces of one object; owns those that no holder has taken over.
struct TPieces
{
    TPieces() = default;
    TPieces(TPieces const &) = delete;
    TPieces & operator=(TPieces const &) = delete;
    ~TPieces() { Clear(); }

    void Clear()
    {
        for (CPathObjectBase::SplitPiece const & piece : list)
        {
            delete piece.first;
        }
        list.clear();
    }

    std::vector<CPathObjectBase::SplitPiece> list;
};

/// What cutting one object came to.
enum class ECutOutcome
{
    eNoCrossing,
    eCrossing, ///< a piece begins at one
    eInconsistent
};

/// The pieces of an arc are arcs that leave no doubt about their sense. A cut may leave one so short that rounding
/// decides: it passes for the rest of its circle then, and the pieces are longer by a circle than what they were cut
/// from.
bool AreClearArcs(std::vector<CPathObjectBase::SplitPiece> const & pieces, CPathObjectArc const & arc)
{
    constexpr double shortPart = 1e-6; // of the radius: with ends farther apart there is no doubt
    double const radius = arc.GetRadius();
    bool isAnyShort = false;
    for (CPathObjectBase::SplitPiece const & piece : pieces)
    {
        CPathObjectBase const & object = *piece.first;
        TPoint<double> const & start = object.GetStartPoint();
        TPoint<double> const & end = object.GetEndPoint();
        if (AsArc(object) != nullptr && SquareDistance(start, end) < shortPart * radius * shortPart * radius)
        {
            if (IsOrderDoubtful(start, end, arc.GetCentre(), radius))
            {
                return false;
            }
            isAnyShort = true;
        }
    }
    double length = 0.0;
    for (std::size_t i = 0; isAnyShort && i < pieces.size(); ++i)
    {
        length += pieces[i].first->CalculateLength();
    }
    return !isAnyShort || std::fabs(length - arc.CalculateLength()) < radius; // a circle is six radii
}

/// Cuts the object of `holder` along the noted cuts, which have done their service then, and moves the pieces into
/// holders: the first into `holder` itself, each further one into a new holder behind the one before it. `onPiece` is
/// called with the holder of each piece. `pieces`: memory to be used again.
template <typename OnPiece>
ECutOutcome CutObject(CPathObjectHolder* holder, TPieces & pieces, OnPiece onPiece)
{
    pieces.Clear();
    if (holder->HasSplitPositions())
    {
        CPathObjectBase const & object = *holder->GetPathObject();
        if (IsPolyline(holder))
        {
            CPolylineInternals::DoSplits(static_cast<CPathObjectPolyline const &>(object), holder->GetSplitPositions(),
                                         pieces.list, holder->m_Memory->GetPieces());
        }
        else
        {
            object.DoSplits(holder->GetSplitPositions(), pieces.list);
            CPathObjectArc const* const arc = AsArc(object);
            if (arc != nullptr && !AreClearArcs(pieces.list, *arc))
            {
                return ECutOutcome::eInconsistent;
            }
        }
    }
    holder->ClearSplitPositions();
    bool hasIntersection = false;
    CPathObjectHolder* last = holder;
    for (CPathObjectBase::SplitPiece & piece : pieces.list)
    {
        bool const isIntersection = (piece.second & beginsAtIntersection) != 0;
        bool const isNewVertex = (piece.second & beginsAtOldVertex) == 0;
        if (&piece != &pieces.list.front())
        {
            last = InsertHolder(nullptr, last->m_Next, last, isIntersection);
            last->m_NewVertex = isNewVertex;
        }
        else if (!holder->m_IsIntersection && isIntersection)
        {
            holder->m_IsIntersection = true;
            holder->m_WasIntersection = true;
            holder->m_NewVertex = isNewVertex;
        }
        last->TakeObject(piece.first);
        piece.first = nullptr;
        hasIntersection = hasIntersection || isIntersection;
        onPiece(last);
    }
    return hasIntersection ? ECutOutcome::eCrossing : ECutOutcome::eNoCrossing;
}

/// The holder of the partner's ring whose object covers the track of `holder`, if the rings are the same.
CPathObjectHolder const* Counterpart(CPathObjectHolder const* holder, bool backward)
{
    return backward ? holder->m_Neighbour->m_Previous : holder->m_Neighbour;
}

bool AreRingsCoincident(CPathObjectHolder const* subject)
{
    auto const isPaired = [](CPathObjectHolder const* holder)
    { return holder->m_IsIntersection && holder->m_Neighbour != nullptr; };
    auto const matches = [](CPathObjectHolder const* holder, bool backward)
    { return holder->GetPathObject()->IsCoincidentWith(*Counterpart(holder, backward)->GetPathObject()); };
    if (!isPaired(subject))
    {
        return false;
    }
    bool const backward = !matches(subject, false);
    if (backward && !matches(subject, true))
    {
        return false;
    }
    for (CPathObjectHolder const* holder = subject->m_Next; holder != subject; holder = holder->m_Next)
    {
        if (!isPaired(holder) || !matches(holder, backward))
        {
            return false;
        }
    }
    return true;
}

} // namespace

EIntersectionOutcome FindAndSplitIntersections(CPathObjectHolder* subject, CPathObjectHolder* clip, bool sameWinding)
{
    // all lists must be complete before the first cut: their entries refer to the points of uncut objects
    bool const allTouched = NoteCuts(subject, clip);
    bool hasIntersection = false;
    bool isConsistent = true;
    TPieces pieces;
    CStackBuffer<1024> buffer;
    CCandidates candidates(sameWinding, buffer);
    auto const cut = [&](CPathObjectHolder* holder, auto const & onPiece)
    {
        ECutOutcome const outcome = CutObject(holder, pieces, onPiece);
        hasIntersection = hasIntersection || outcome == ECutOutcome::eCrossing;
        isConsistent = isConsistent && outcome != ECutOutcome::eInconsistent;
    };
    ForEachHolder(subject, [&](CPathObjectHolder* holder)
                  { cut(holder, [&](CPathObjectHolder* placed) { candidates.Add(placed); }); });
    subject->m_Memory->ReleaseCuts();
    ForEachHolder(clip,
                  [&](CPathObjectHolder* holder)
                  {
                      cut(holder,
                          [&](CPathObjectHolder* placed)
                          {
                              if (placed->m_IsIntersection)
                              {
                                  candidates.Pair(placed);
                              }
                          });
                  });
    clip->m_Memory->ReleaseCuts();
    ForEachHolder(subject,
                  [](CPathObjectHolder* holder)
                  {
                      if (holder->m_IsIntersection && holder->m_Neighbour == nullptr)
                      {
                          holder->m_IsIntersection = false;
                      }
                  });

    if (!isConsistent)
    {
        return EIntersectionOutcome::eInconsistent;
    }
    if (!hasIntersection)
    {
        return EIntersectionOutcome::eNoIntersections;
    }
    return allTouched && AreRingsCoincident(subject) ? EIntersectionOutcome::eSameTrack
                                                     : EIntersectionOutcome::eIntersections;
}

CPathObjectHolder* SelectStartHolder(CPathObjectHolder* ring)
{
    CPathObjectHolder* holder = ring;
    do
    {
        if (!holder->m_IsIntersection || !IsOnTrackOf(holder->m_Previous, holder->m_Previous->m_Neighbour))
        {
            return holder;
        }
        holder = holder->m_Next;
    } while (holder != ring);
    return nullptr;
}

} // namespace geometry
