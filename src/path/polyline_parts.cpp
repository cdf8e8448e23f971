// Breaking a polyline into one object for each segment.
#include <geometry/path/path_object_polyline.h>

#include <memory>

namespace geometry
{

namespace
{

std::unique_ptr<CPathObjectPolyline> MakePart(TPoint<double> const & a, TPoint<double> const & b,
                                              CPathObjectBase::CUserInfoInterface const* userInfo)
{
    auto part = std::make_unique<CPathObjectPolyline>(a, b);
    part->Cleanup(false);
    part->SetUserInfo(userInfo != nullptr ? userInfo->Clone() : nullptr);
    return part;
}

} // namespace

void CPathObjectPolyline::CreatePathParts(std::vector<CPathObjectBase*> & parts,
                                          CBoundingRect<double> const & rect) const
{
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        if (rect.Overlaps(CBoundingRect<double>(m_Points[i - 1], m_Points[i])))
        {
            auto part = MakePart(m_Points[i - 1], m_Points[i], m_UserInfo);
            parts.push_back(part.get());
            part.release();
        }
    }
}

void CPathObjectPolyline::CreatePathParts(PathObjectHash & parts) const
{
    for (std::size_t i = 1; i < m_Points.size(); ++i)
    {
        auto part = MakePart(m_Points[i - 1], m_Points[i], m_UserInfo);
        parts.Add(part.get());
        part.release();
    }
}

} // namespace geometry
