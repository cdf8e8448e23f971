// Areas by vertical slabs, in extended precision. The rings of all regions become curves that are functions of x:
// segments, and arcs cut at the left and right of their circle. Between neighbouring events (ends of curves, crossings
// of the operands) no two curves cross, so their order in the middle of the slab holds throughout. A walk upward
// toggles the parity of the ring of each curve, and the area between neighbours follows from antiderivatives.
#include "support/region_oracle.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include <geometry/arc/path_object_arc.h>

namespace geometry::test
{

namespace
{

using Real = long double;

/// A segment (`side` 0) or a part of the upper (+1) or lower (-1) half of a circle, from x `left` to `right`.
struct TCurve
{
    Real left, right;
    Real y, slope;   // of a segment: height at `left`; of an arc: that of the centre, nothing
    Real cx, radius; // of an arc
    int side;
    std::size_t polygon = 0;
    std::uint64_t ring = 0; // bit of its polygon
    Real height = 0;        // in the middle of the present slab

    Real HeightAt(Real x) const { return side == 0 ? y + slope * (x - left) : y + side * HalfChord(x - cx); }

    /// Area below the curve from `a` to `b`.
    Real Integral(Real a, Real b) const
    {
        return side == 0 ? (b - a) * HeightAt((a + b) / 2) : (b - a) * y + side * (Cap(b - cx) - Cap(a - cx));
    }

    /// Half the chord of the circle at distance `u` from its centre.
    Real HalfChord(Real u) const { return std::sqrt(std::max<Real>(0, (radius - u) * (radius + u))); }
    Real Cap(Real u) const
    {
        return (u * HalfChord(u) + radius * radius * std::asin(std::clamp<Real>(u / radius, -1, 1))) / 2;
    }
};

/// `rings`: one bit a ring, the lowest for the outline; set where the present point lies in it.
struct TPolygonState
{
    std::size_t region;
    std::uint64_t rings = 0;
};

class CSweep
{
public:
    CSweep(Real magnitude, std::size_t regions) : m_Magnitude(magnitude), m_Covered(regions) {}

    void AddPolygon(CPolygon const & polygon, std::size_t region)
    {
        m_Polygons.push_back({region});
        AddRing(polygon, 1);
        for (std::size_t i = 0; i < polygon.GetHoles().size(); ++i)
        {
            AddRing(*polygon.GetHoles()[i], std::uint64_t{2} << i);
        }
    }

    /// To be called when nothing but the operands is there.
    void AddCrossings()
    {
        for (TCurve const & a : m_Curves)
        {
            for (TCurve const & b : m_Curves)
            {
                if (a.polygon < b.polygon && a.left < b.right && b.left < a.right) AddCrossings(a, b);
            }
        }
    }

    TJudgement Run(std::vector<TClaim> const & claims)
    {
        TJudgement judgement;
        judgement.verdicts.resize(claims.size());
        std::sort(m_Events.begin(), m_Events.end());
        std::sort(m_Curves.begin(), m_Curves.end(), [](auto const & a, auto const & b) { return a.left < b.left; });
        auto next = m_Curves.begin();
        Real left = m_Events.front();
        for (Real const right : m_Events)
        {
            if (right - left <= m_Magnitude * 1e-15L) continue;
            Real const middle = (left + right) / 2;
            std::erase_if(m_Active, [&](TCurve const* curve) { return curve->right <= middle; });
            for (; next != m_Curves.end() && next->left < middle; ++next)
            {
                if (next->right > middle) m_Active.push_back(&*next);
            }
            WalkSlab(left, right, claims, judgement);
            left = right;
        }
        return judgement;
    }

private:
    void AddRing(CPolygon const & polygon, std::uint64_t ring)
    {
        auto add = [&](TCurve curve)
        {
            curve.polygon = m_Polygons.size() - 1;
            curve.ring = ring;
            m_Events.insert(m_Events.end(), {curve.left, curve.right});
            m_Curves.push_back(curve);
        };
        for (CPathObjectBase const* object : polygon.GetOutline())
        {
            auto const* arc = dynamic_cast<CPathObjectArc const*>(object);
            if (arc != nullptr) AddArc(*arc, add);
            for (auto v = object->GetPointsBegin(); arc == nullptr && v + 1 < object->GetPointsEnd(); ++v)
            {
                auto const & p = v->x < v[1].x ? v[0] : v[1];
                auto const & q = v->x < v[1].x ? v[1] : v[0];
                if (p.x < q.x) add({p.x, q.x, p.y, (Real(q.y) - p.y) / (Real(q.x) - p.x), 0, 0, 0});
            }
        }
    }

    /// Ends may be off the circle by rounding: they bound the parts in x, the height is always that of the circle.
    template <typename Add>
    static void AddArc(CPathObjectArc const & arc, Add const & add)
    {
        auto const & from = arc.IsCounterClockwise() ? arc.GetStartPoint() : arc.GetEndPoint();
        auto const & to = arc.IsCounterClockwise() ? arc.GetEndPoint() : arc.GetStartPoint();
        constexpr Real Pi = std::numbers::pi_v<Real>;
        Real const cx = arc.GetCentre().x, cy = arc.GetCentre().y;
        Real const radius = (std::hypot(from.x - cx, from.y - cy) + std::hypot(to.x - cx, to.y - cy)) / 2;
        Real const first = std::atan2(from.y - cy, from.x - cx);
        Real last = arc.IsFullCircle() ? first : std::atan2(to.y - cy, to.x - cx);
        auto const inbetween = arc.GetInbetweenPoint();
        bool const isShort = std::hypot(inbetween.x - from.x, inbetween.y - from.y) < radius * 1e-6L;
        if (last < first && isShort) return; // rounding has swapped the ends
        if (last < first || arc.IsFullCircle()) last += 2 * Pi;
        Real x = from.x;
        for (int half = static_cast<int>(std::floor(first / Pi)); half * Pi < last; ++half)
        {
            int const side = half % 2 == 0 ? 1 : -1; // the upper half runs from the right to the left of the circle
            Real const end = (half + 1) * Pi < last ? cx - side * radius : to.x;
            add({std::min(x, end), std::max(x, end), cy, 0, cx, radius, side});
            x = end;
        }
    }

    /// Crossings of the whole lines and circles: an event too many does no harm.
    void AddCrossings(TCurve const & a, TCurve const & b)
    {
        if (a.side == 0 && b.side != 0) return AddCrossings(b, a);
        if (a.side == 0) return AddEvent(a.left + (b.HeightAt(a.left) - a.y) / (a.slope - b.slope), a, b);
        // the foot of the centre of `a` on the line, or on the chord that both circles share, and half that chord
        Real const nx = b.side == 0 ? -b.slope : b.cx - a.cx;
        Real const ny = b.side == 0 ? 1 : b.y - a.y;
        Real const length = std::hypot(nx, ny);
        Real const foot = b.side == 0 ? (b.HeightAt(a.cx) - a.y) / length
                                      : (length + (a.radius - b.radius) * (a.radius + b.radius) / length) / 2;
        AddEvent(a.cx + (foot * nx - a.HalfChord(foot) * ny) / length, a, b);
        AddEvent(a.cx + (foot * nx + a.HalfChord(foot) * ny) / length, a, b);
    }

    /// Parallel lines and circles with one centre give no number here.
    void AddEvent(Real x, TCurve const & a, TCurve const & b)
    {
        if (x > std::max(a.left, b.left) && x < std::min(a.right, b.right)) m_Events.push_back(x);
    }

    void WalkSlab(Real left, Real right, std::vector<TClaim> const & claims, TJudgement & judgement)
    {
        // a ring whose joins are a rounding apart is open in the slab between: it must not spoil the next one
        std::fill(m_Covered.begin(), m_Covered.end(), 0);
        for (TPolygonState & polygon : m_Polygons)
        {
            polygon.rings = 0;
        }
        for (TCurve* curve : m_Active)
        {
            curve->height = curve->HeightAt((left + right) / 2);
        }
        std::sort(m_Active.begin(), m_Active.end(), [](auto a, auto b) { return a->height < b->height; });
        Real below = 0;
        for (TCurve const* curve : m_Active)
        {
            Real const upTo = curve->Integral(left, right);
            AddGap(static_cast<double>(std::fabs(upTo - below)), claims, judgement);
            TPolygonState & polygon = m_Polygons[curve->polygon];
            m_Covered[polygon.region] -= polygon.rings == 1;
            polygon.rings ^= curve->ring;
            m_Covered[polygon.region] += polygon.rings == 1;
            below = upTo;
        }
    }

    void AddGap(double area, std::vector<TClaim> const & claims, TJudgement & judgement) const
    {
        bool const inA = m_Covered[0] > 0;
        bool const inB = m_Covered[1] > 0;
        for (std::size_t i = 0; i < claims.size(); ++i)
        {
            TVerdict & verdict = judgement.verdicts[i];
            bool const isMember = claims[i].isMember(inA, inB);
            verdict.area += isMember ? area : 0.0;
            verdict.difference += isMember != (m_Covered[i + 2] > 0) ? area : 0.0;
            verdict.overlap += m_Covered[i + 2] > 1 ? area : 0.0;
        }
    }

    Real m_Magnitude; ///< of the coordinates: slabs of its rounding are left out
    std::vector<TCurve> m_Curves;
    std::vector<Real> m_Events;
    std::vector<TPolygonState> m_Polygons;
    std::vector<int> m_Covered; ///< how many polygons of each region contain the present point
    std::vector<TCurve*> m_Active;
};

} // namespace

TJudgement Judge(CPolygon const & a, CPolygon const & b, std::vector<TClaim> const & claims)
{
    return Judge(std::vector{&a}, std::vector{&b}, claims);
}

TJudgement Judge(std::vector<CPolygon const*> const & a, std::vector<CPolygon const*> const & b,
                 std::vector<TClaim> const & claims)
{
    CBoundingRect<double> rect;
    for (auto const* operand : {&a, &b})
    {
        for (CPolygon const* polygon : *operand)
        {
            rect.Include(polygon->GetBoundingRect());
        }
    }
    CSweep sweep(std::max(std::fabs(rect.minX), std::fabs(rect.maxX)), claims.size() + 2);
    std::size_t region = 0;
    auto const add = [&](auto const & polygons)
    {
        for (CPolygon const* polygon : polygons)
        {
            sweep.AddPolygon(*polygon, region);
        }
        ++region;
    };
    add(a);
    add(b);
    sweep.AddCrossings();
    for (TClaim const & claim : claims)
    {
        add(*claim.result);
    }
    TJudgement judgement = sweep.Run(claims);
    judgement.boundingArea = (rect.maxX - rect.minX) * (rect.maxY - rect.minY);
    return judgement;
}

} // namespace geometry::test
