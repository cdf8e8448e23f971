/// \file
/// One trial: shapes made from a seed, operations on them, and what they came to.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <geometry/numeric/self_destructing_container.h>
#include <geometry/path/path_object_base.h>

#include "scene.h"
#include "support/shapes.h"

namespace trials
{

using geometry::CPolygon;
using geometry::test::Ring;
using geometry::test::Shape;
using Owned = std::unique_ptr<CPolygon>;
using Results = SelfDestructingContainer<std::vector<CPolygon*>>;

enum EOutcome
{
    eTried = 0,
    eWrong = 1,    ///< a region is wrong and nobody learns of it
    eArea = 2,     ///< an area is wrong and nobody learns of it
    eReported = 3, ///< a report says so
    eAlarm = 4,    ///< among the reported: the region is right
    eCrashed = 5,
    eOutcomeCount = 6
};

struct TOptions
{
    double size = 0.0;  ///< 0: by the seed
    double away = -1.0; ///< below 0: by the seed
    bool isDumping = false;
    bool isVerbose = false;
};

class CWatch;

/// How an operation went.
struct TFinding
{
    char const* name = "";
    bool isDone = true;     ///< what the operation answered
    std::string text;       ///< what is wrong; empty if nothing is
    EOutcome kind = eWrong; ///< of what is wrong
    int edgeCount = 0;      ///< of the operands
    Polygons result;
    std::string input; ///< said in the line of a failure, where the operands aren't polygons
};

class CTrial
{
public:
    CTrial(std::string family, std::uint64_t seed, TOptions const & options, unsigned long long* counts);

    CRandom random;
    double size;

    /// The shape, moved to the place of the trial.
    Owned Make(Shape const & shape) const;
    Owned Make(Ring const & ring) const { return Make(Shape{ring}); }
    TSpot GetPlace() const { return m_Place; }

    // Each tells whether all was right and nothing reported.

    /// Both differences, intersection, symmetric difference, union, and how their areas go together.
    bool Booleans(CPolygon const & a, CPolygon const & b);
    /// One of these (0 a - b, 1 a and b, 2 a xor b, 3 a or b, 4 b - a), whose polygons are left in `result`.
    bool Boolean(int kind, CPolygon const & a, CPolygon const & b, Results & result);
    bool MergeMany(Polygons const & polygons, Results & result);
    bool SubtractMany(CPolygon const & board, Polygons const & polygons, unsigned grouping, unsigned workers,
                      Results & result);
    /// Grown or shrunk, at most half a percent too far where the band of a segment reaches.
    bool Grow(CPolygon const & polygon, double amount, Results & result);
    bool InflatePath(geometry::CPathObjectBase const & path, double distance);
    bool Tile(CPolygon const & polygon);
    /// The holes lie in the polygon; they may overlap each other.
    bool AddHoles(CPolygon const & polygon, Polygons const & holes);
    bool Distances(CPolygon const & a, CPolygon const & b);
    /// The area of outlines that don't touch themselves.
    bool Area(CPolygon const & polygon);

private:
    using Operation = std::function<bool(Results &)>;

    bool Judge(char const* name, CScene const & scene, Rule rule, Operation const & operation, Polygons const & a,
               Polygons const & b, Results & result);
    bool RunBoolean(CScene const & scene, int kind, CPolygon const & a, CPolygon const & b, Results & result);
    bool CheckAreas(CScene const & scene, CPolygon const & a, CPolygon const & b, double const (&areas)[5]);
    /// Counts and prints what isn't as it should be.
    bool Note(TFinding const & finding, CWatch const & watch, Polygons const & a, Polygons const & b);
    void Count(EOutcome outcome) { ++m_Counts[outcome]; }
    CRandom Fork() { return CRandom(random.Next()); }

    std::string m_Family;
    std::uint64_t m_Seed;
    TOptions m_Options;
    unsigned long long* m_Counts;
    TSpot m_Place;
};

Polygons Listed(std::vector<Owned> const & polygons);
Polygons Listed(std::vector<CPolygon*> const & polygons);

} // namespace trials
