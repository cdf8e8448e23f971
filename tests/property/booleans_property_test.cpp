// Booleans against an exact judge, over many random pairs. A pair is run through all operations; the judge measures
// the symmetric difference of each result and the region that the operation stands for. Seeds are fixed; a failing
// pair is printed as text that `ParseShape` reads.
#include <algorithm>
#include <cmath>
#include <functional>
#include <iostream>
#include <sstream>

#include <geometry/arc/path_object_arc.h>
#include <geometry/clip/polygon_clip_base.h>
#include <geometry/numeric/self_destructing_container.h>
#include <gtest/gtest.h>

#include "support/region_oracle.h"
#include "support/shape_generators.h"

namespace geometry::test
{

namespace
{

// Of the rectangle around both operands. Rounding stays near 1e-15. An operation that retries moves an outline, nearly
// always by about 1e-11 of a side and in the last attempts by up to 1e-6; a border has two sides of each direction.
constexpr double AreaTolerance = 4e-6;
constexpr double UsualDifference = 1e-9; // passed by at most one pair in five hundred
constexpr int PairCount = 8000;          // of each family
constexpr int PrintLimit = 5;            // of each family

using Result = SelfDestructingContainer<std::vector<CPolygon*>>;

struct TOperation
{
    char const* name;
    bool (CPolygon::*run)(std::vector<CPolygon*> &, CPolygon const &) const;
    bool isSwapped;
    bool (*isMember)(bool inA, bool inB);
};

constexpr TOperation Operations[] = {
    {" A-B", &CPolygon::SubtractPolygon, false, [](bool a, bool b) { return a && !b; }},
    {" B-A", &CPolygon::SubtractPolygon, true, [](bool a, bool b) { return b && !a; }},
    {" A&B", &CPolygon::IntersectPolygon, false, [](bool a, bool b) { return a && b; }},
    {" B&A", &CPolygon::IntersectPolygon, true, [](bool a, bool b) { return a && b; }},
    {" A^B", &CPolygon::XORPolygon, false, [](bool a, bool b) { return a != b; }},
    {" A|B", &CPolygon::MergePolygon, false, [](bool a, bool b) { return a || b; }},
    {" B|A", &CPolygon::MergePolygon, true, [](bool a, bool b) { return a || b; }},
};

/// Twice the signed area of the ring's chords.
double Shoelace(CPolygon const & polygon)
{
    if (polygon.GetOutline().empty()) return 0.0;
    double sum = 0.0;
    TPoint<double> const origin = *polygon.GetVerticesBegin();
    TPoint<double> from = origin;
    for (auto to = polygon.GetVerticesBegin(); to != polygon.GetVerticesEnd(); ++to)
    {
        sum += (from.x - origin.x) * (to->y - origin.y) - (to->x - origin.x) * (from.y - origin.y);
        from = *to;
    }
    return sum;
}

/// The objects of the ring run into each other, and the ends of arcs lie on their circles.
bool IsSound(CPolygon const & polygon, double limit)
{
    auto distance = [](auto const & p, auto const & q) { return std::hypot(p.x - q.x, p.y - q.y); };
    CPathObjectBase const* before = polygon.GetOutline().empty() ? nullptr : polygon.GetOutline().back();
    bool isSound = before != nullptr;
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        isSound = isSound && distance(before->GetEndPoint(), object->GetStartPoint()) <= limit;
        before = object;
        auto const* arc = dynamic_cast<CPathObjectArc const*>(object);
        if (arc == nullptr) continue;
        double const radius = distance(arc->GetStartPoint(), arc->GetCentre());
        isSound = isSound && std::fabs(radius - arc->GetRadius()) <= limit &&
                  std::fabs(radius - distance(arc->GetEndPoint(), arc->GetCentre())) <= limit;
    }
    return isSound;
}

/// The outline or a hole touches itself or another ring in a point: lobes of any sense may meet there, and a ring may
/// cross itself where a clean-up took the common point.
bool PassesAPointTwice(CPolygon const & polygon)
{
    std::vector<std::pair<double, double>> points;
    auto add = [&](CPolygon const & ring)
    {
        for (CPathObjectBase const* object : ring.GetOutline())
        {
            auto const last = object->CanAppendVertex() ? object->GetPointsEnd() - 1 : object->GetPointsBegin() + 1;
            for (auto v = object->GetPointsBegin(); v != last; ++v)
            {
                points.emplace_back(std::round(v->x * 64), std::round(v->y * 64));
            }
        }
    };
    add(polygon);
    std::sort(points.begin(), points.end());
    return std::adjacent_find(points.begin(), points.end()) != points.end();
}

/// Runs pairs of one family and counts.
class CChecker
{
public:
    /// In general position outlines don't touch, so that no result ring meets itself and `GetArea` has to be right.
    CChecker(char const* family, std::uint64_t seed, bool isGeneral)
        : generator(seed), m_Family(family), m_IsGeneral(isGeneral)
    {
    }

    ~CChecker()
    {
        EXPECT_LE(m_Unusual * 500, m_Pairs) << m_Family << ": too many differences above " << UsualDifference;
        EXPECT_EQ(m_Failures, 0) << m_Family;
        EXPECT_LE(m_Undecided * 200, m_Pairs) << m_Family << ": too many operations gave up";
        testing::Test::RecordProperty("pairs", m_Pairs);
        std::cout << m_Family << ": " << m_Pairs << " pairs, " << m_Failures << " failed, " << m_Undecided
                  << " operations undecided, " << m_Unusual << " pairs beyond " << UsualDifference
                  << ", greatest difference of the others " << m_Greatest << '\n';
    }

    void Check(Shape const & first, Shape const & second)
    {
        ++m_Pairs;
        std::string const faults = Faults(first, second);
        if (faults.empty() || ++m_Failures > PrintLimit) return;
        ADD_FAILURE() << m_Family << ", pair " << m_Pairs << ":" << faults << "\n  A " << PrintShape(first) << "\n  B "
                      << PrintShape(second);
    }

    /// The pair, and now and then the same moved by a power of two, or in disguise.
    void CheckAll(Shape const & first, Shape const & second)
    {
        Check(first, second);
        if (m_Pairs % 8 == 0) Check(Mapped(first, 1, 0, 65536, -32768), Mapped(second, 1, 0, 65536, -32768));
        if (m_Pairs % 8 == 4) Check(generator.Disguised(first), generator.Disguised(second));
    }

    bool IsDone() const { return m_Pairs >= PairCount; }

    CShapeGenerator generator;

private:
    std::string Faults(Shape const & first, Shape const & second)
    {
        auto const a = MakePolygon(first);
        auto const b = MakePolygon(second);
        std::string const before = PrintShape(ShapeOf(*a)) + PrintShape(ShapeOf(*b));
        std::ostringstream faults;
        Result results[std::size(Operations)];
        std::vector<TClaim> claims;
        bool isDecided[std::size(Operations)];
        for (TOperation const & operation : Operations)
        {
            CPolygon const & subject = operation.isSwapped ? *b : *a;
            Result & result = results[claims.size()];
            auto const gaveUp = CPolygonClipBase<double>::GetGaveUpCount();
            if (!(subject.*operation.run)(result, operation.isSwapped ? *a : *b)) faults << operation.name << " fails;";
            isDecided[claims.size()] = gaveUp == CPolygonClipBase<double>::GetGaveUpCount();
            m_Undecided += !isDecided[claims.size()];
            claims.push_back({&result, operation.isMember});
        }
        if (before != PrintShape(ShapeOf(*a)) + PrintShape(ShapeOf(*b))) faults << " an operand changed;";
        TJudgement const judgement = Judge(*a, *b, claims);
        double const limit = AreaTolerance * judgement.boundingArea;
        double difference = 0.0;
        for (std::size_t i = 0; i < claims.size(); ++i)
        {
            if (!isDecided[i]) continue;
            TVerdict const & verdict = judgement.verdicts[i];
            difference = std::max(difference, verdict.difference / judgement.boundingArea);
            if (!(verdict.difference <= limit))
                faults << Operations[i].name << " is off by " << verdict.difference << ';';
            if (!(verdict.overlap <= limit)) faults << Operations[i].name << " overlaps by " << verdict.overlap << ';';
            double area = 0.0;
            for (CPolygon const* polygon : results[i])
            {
                area += polygon->GetArea();
                if (!PassesAPointTwice(*polygon))
                    AddRingFaults(*polygon, std::sqrt(judgement.boundingArea) * 1e-9, Operations[i].name, faults);
            }
            if (m_IsGeneral && !(std::fabs(area - verdict.area) <= limit))
                faults << Operations[i].name << " has area " << area << ", not " << verdict.area << ';';
        }
        m_Unusual += difference > UsualDifference && difference <= AreaTolerance;
        if (difference <= UsualDifference) m_Greatest = std::max(m_Greatest, difference);
        if (m_Pairs % 4 == 0 && difference <= AreaTolerance) AddSampleFaults(*a, *b, results, isDecided, faults);
        return faults.str();
    }

    static void AddRingFaults(CPolygon const & polygon, double limit, char const* name, std::ostream & faults)
    {
        if (!IsSound(polygon, limit)) faults << name << " has a broken outline;";
        for (CPolygon const* hole : polygon.GetHoles())
        {
            if (!IsSound(*hole, limit)) faults << name << " has a broken hole;";
            bool const isSliver = hole->GetArea() <= 1e5 * limit; // has no sense but that of its rounding
            if (!isSliver && Shoelace(*hole) * Shoelace(polygon) >= 0)
                faults << name << " has a hole that winds along;";
        }
    }

    /// `PointInPolygon` agrees with the operation away from the borders.
    void AddSampleFaults(CPolygon const & a, CPolygon const & b, Result const* results, bool const* isDecided,
                         std::ostream & faults)
    {
        CBoundingRect<double> rect = a.GetBoundingRect();
        rect.Include(b.GetBoundingRect());
        for (int sample = 0; sample < 8; ++sample)
        {
            TPoint<double> const p(generator.Real(rect.minX, rect.maxX), generator.Real(rect.minY, rect.maxY));
            TPoint<double> closest;
            auto contains = [&](CPolygon const* polygon) { return polygon->PointInPolygon(p.x, p.y); };
            auto isNear = [&](auto const* object) { return object->SquareDistanceToPoint(p.x, p.y, closest) < 1.0; };
            if (std::any_of(a.GetOutline().begin(), a.GetOutline().end(), isNear)) continue;
            if (std::any_of(b.GetOutline().begin(), b.GetOutline().end(), isNear)) continue;
            for (std::size_t i = 0; i < std::size(Operations); ++i)
            {
                if (!isDecided[i]) continue;
                bool const isIn = std::any_of(results[i].begin(), results[i].end(), contains);
                if (isIn == Operations[i].isMember(contains(&a), contains(&b))) continue;
                faults << Operations[i].name << " is wrong at " << p.x << ',' << p.y << ';';
            }
        }
    }

    char const* m_Family;
    bool m_IsGeneral;
    int m_Pairs = 0;
    int m_Failures = 0;
    int m_Undecided = 0; ///< operations in which a clip used up its attempts: counted, not judged
    int m_Unusual = 0;
    double m_Greatest = 0.0;
};

using Generator = CShapeGenerator;

void CheckFamily(char const* family, std::uint64_t seed, Shape (Generator::*first)(), Shape (Generator::*second)(),
                 bool isGeneral = false)
{
    CChecker checker(family, seed, isGeneral);
    while (!checker.IsDone())
    {
        Shape const a = (checker.generator.*first)();
        checker.CheckAll(a, (checker.generator.*second)());
    }
}

} // namespace

TEST(BooleansProperty, PolylinesInGeneralPositionGiveTheExactRegion)
{
    CheckFamily("general polylines", 101, &Generator::General, &Generator::General, true);
}

TEST(BooleansProperty, LatticeShapesThatTouchAndOverlapGiveTheExactRegion)
{
    CheckFamily("lattice shapes", 202, &Generator::Lattice, &Generator::Lattice);
}

TEST(BooleansProperty, ArcsOnALatticeGiveTheExactRegion)
{
    CheckFamily("arcs on a lattice", 303, &Generator::Round, &Generator::Round);
    CheckFamily("arcs and segments on a lattice", 304, &Generator::Round, &Generator::Lattice);
}

TEST(BooleansProperty, ArcsAnywhereGiveTheExactRegion)
{
    CheckFamily("arcs anywhere", 404, &Generator::Curved, &Generator::Any);
}

TEST(BooleansProperty, HolesGiveTheExactRegion)
{
    CheckFamily("holes", 505, &Generator::Holed, &Generator::Holed);
}

TEST(BooleansProperty, RelatedShapesGiveTheExactRegion)
{
    CChecker checker("related shapes", 606, false);
    Generator & generator = checker.generator;
    while (!checker.IsDone())
    {
        Shape const shape = generator.Int(0, 2) == 0 ? generator.Holed() : generator.Any();
        checker.Check(shape, shape);
        checker.Check(shape, generator.Disguised(shape));
        checker.Check(shape, Mapped(shape, 1, 0, generator.Int(-2, 2) * Generator::Unit, Generator::Unit));
        // what a cut leaves has borders in common with both operands
        Shape const other = generator.Any();
        Result pieces;
        MakePolygon(shape)->SubtractPolygon(pieces, *MakePolygon(other));
        if (pieces.empty() || PassesAPointTwice(*pieces.back()) || PassesAPointTwice(*pieces.front())) continue;
        checker.Check(ShapeOf(*pieces.back()), other);
        checker.Check(shape, ShapeOf(*pieces.front()));
    }
}

} // namespace geometry::test
