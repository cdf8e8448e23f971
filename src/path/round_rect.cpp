// Rectangles with rounded corners: segments and quarter arcs counter-clockwise, then turned about the middle of the
// rectangle. Where the radius leaves no straight sides, two corners become one half circle, and all four a full circle.
#include <geometry/path/path_object_polyline.h>

#include <geometry/arc/path_object_arc.h>

#include "polygon/outline_builder.h"

namespace geometry
{

namespace
{

//        l       r
//    T   .-------.        The corners' centres are (l, b), (r, b), (r, t), (l, t): the rectangle less the radius on
//  t   (  +     +  )      each side. A radius beyond half a side makes l > r or b > t, and segments that run backward.
//  b   (  +     +  )
//    B   '-------'
//      L           R
class CRoundRect
{
public:
    CRoundRect(CBoundingRect<double> const & rect, double radius)
        : L(rect.minX), B(rect.minY), R(rect.maxX), T(rect.maxY), l(L + radius), b(B + radius), r(R - radius),
          t(T - radius), m_Radius(radius)
    {
    }

    OwnedPathObjects Make()
    {
        bool const hasSides = t != b;
        bool const hasEnds = l != r;
        if (hasSides && hasEnds)
        {
            AddAllCorners();
        }
        else if (hasSides)
        {
            AddSegment({L, t}, {L, b});
            AddArc({L, b}, {R, b}, {l, b});
            AddSegment({R, b}, {R, t});
            AddArc({R, t}, {L, t}, {r, t});
        }
        else if (hasEnds)
        {
            AddSegment({l, B}, {r, B});
            AddArc({r, B}, {r, T}, {r, b});
            AddSegment({r, T}, {l, T});
            AddArc({l, T}, {l, B}, {l, b});
        }
        else
        {
            m_Objects.push_back(std::make_unique<CPathObjectArc>(TPoint<double>(l, b), m_Radius));
        }
        return std::move(m_Objects);
    }

private:
    void AddAllCorners()
    {
        AddSegment({L, t}, {L, b});
        AddArc({L, b}, {l, B}, {l, b});
        AddSegment({l, B}, {r, B});
        AddArc({r, B}, {R, b}, {r, b});
        AddSegment({R, b}, {R, t});
        AddArc({R, t}, {r, T}, {r, t});
        AddSegment({r, T}, {l, T});
        AddArc({l, T}, {L, t}, {l, t});
    }

    void AddSegment(TPoint<double> const & from, TPoint<double> const & to)
    {
        m_Objects.push_back(std::make_unique<CPathObjectPolyline>(from, to));
    }

    void AddArc(TPoint<double> const & from, TPoint<double> const & to, TPoint<double> const & centre)
    {
        m_Objects.push_back(std::make_unique<CPathObjectArc>(from, to, centre, true, m_Radius));
    }

    double L, B, R, T;
    double l, b, r, t;
    double m_Radius;
    OwnedPathObjects m_Objects;
};

OwnedPathObjects MakeRectangle(CBoundingRect<double> const & rect)
{
    OwnedPathObjects objects;
    objects.push_back(MakeRectangleOutline(rect));
    return objects;
}

OwnedPathObjects MakeRoundRect(CBoundingRect<double> const & rect, double radius, double angle)
{
    OwnedPathObjects objects =
        IsAlmostEqual(radius, 0.0, FineUlpLimit) ? MakeRectangle(rect) : CRoundRect(rect, radius).Make();
    if (!IsAlmostEqual(angle, 0.0))
    {
        for (auto const & object : objects)
        {
            object->Translate((rect.maxX + rect.minX) * -0.5, (rect.minY + rect.maxY) * -0.5);
            object->RotateRadians(angle);
            object->Translate((rect.maxX + rect.minX) * 0.5, (rect.minY + rect.maxY) * 0.5);
        }
    }
    return objects;
}

} // namespace

void CPathObjectPolyline::RoundRectAsPathObjects(CBoundingRect<double> const & rect, double const & radius,
                                                 double const & angle, std::vector<CPathObjectBase*> & objects)
{
    objects.clear();
    OwnedPathObjects made = MakeRoundRect(rect, radius, angle);
    objects.reserve(made.size());
    for (auto & object : made)
    {
        objects.push_back(object.release());
    }
}

CPolygon* CPathObjectPolyline::RoundRectAsPolygon(CBoundingRect<double> const & rect, double const & radius,
                                                  double const & angle)
{
    return MakePolygonFrom(MakeRoundRect(rect, radius, angle)).release();
}

} // namespace geometry
