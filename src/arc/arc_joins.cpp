// Arcs joined to arcs, and handed out in parts.
//
// Two arcs of one circle that run the same way join where one ends and the other starts. An arc is never broken into
// parts: its only part is a copy of itself. Every new arc stays in a unique_ptr until its new holder has it.
#include <memory>

#include <geometry/arc/path_object_arc.h>

#include "arc/arc_geometry.h"

namespace geometry
{

namespace
{

/// The two lie about one centre and run the same way, and together come either to a full circle or to clearly less.
bool AreJoinable(CPathObjectArc const & a, CPathObjectArc const & b, TPoint<double> const & start,
                 TPoint<double> const & end)
{
    return !IsOrderDoubtful(start, end, a.GetCentre(), a.GetRadius()) && a.IsValid() && b.IsValid() &&
           a.GetCentre() == b.GetCentre() && a.IsCounterClockwise() == b.IsCounterClockwise();
}

/// `first` runs into `second`; centre, direction, radius and user info come from `model`, which is one of the two.
std::unique_ptr<CPathObjectArc> Join(CPathObjectArc const & first, CPathObjectArc const & second,
                                     CPathObjectArc const & model)
{
    auto joined = std::make_unique<CPathObjectArc>(first.GetStartPoint(), second.GetEndPoint(), model.GetCentre(),
                                                   model.IsCounterClockwise(), model.GetRadius());
    if (model.GetUserInfo() != nullptr)
    {
        joined->SetUserInfo(model.GetUserInfo()->CloneForMerge(&first, &second));
    }
    return joined;
}

} // namespace

CPathObjectBase* CPathObjectArc::MergeWith(CPathObjectBase const* other) const
{
    return other != nullptr ? other->MergeWithArc(this) : nullptr;
}

CPathObjectArc* CPathObjectArc::MergeWithArc(CPathObjectArc const* const other) const
{
    CPathObjectArc* const appended = AppendArc(other);
    return appended != nullptr ? appended : PrependArc(other);
}

CPathObjectBase* CPathObjectArc::Append(CPathObjectBase const* other) const
{
    return other != nullptr ? other->PrependArc(this) : nullptr;
}

CPathObjectArc* CPathObjectArc::AppendArc(CPathObjectArc const* const other) const
{
    if (other == nullptr || !AreJoinable(*this, *other, GetStartPoint(), other->GetEndPoint()) ||
        GetEndPoint() != other->GetStartPoint())
    {
        return nullptr;
    }
    return Join(*this, *other, *this).release();
}

CPathObjectBase* CPathObjectArc::Prepend(CPathObjectBase const* other) const
{
    return other != nullptr ? other->AppendArc(this) : nullptr;
}

CPathObjectArc* CPathObjectArc::PrependArc(CPathObjectArc const* const other) const
{
    if (other == nullptr || !AreJoinable(*this, *other, other->GetStartPoint(), GetEndPoint()) ||
        GetStartPoint() != other->GetEndPoint())
    {
        return nullptr;
    }
    return Join(*other, *this, *this).release();
}

void CPathObjectArc::CreatePathParts(std::vector<CPathObjectBase*> & parts, CBoundingRect<double> const & rect) const
{
    if (IsValid() && rect.Overlaps(m_BoundingRect))
    {
        std::unique_ptr<CPathObjectBase> part(Clone());
        parts.push_back(part.get());
        part.release();
    }
}

void CPathObjectArc::CreatePathParts(PathObjectHash & parts) const
{
    if (IsValid())
    {
        std::unique_ptr<CPathObjectBase> part(Clone());
        parts.Add(part.get());
        part.release();
    }
}

} // namespace geometry
