/// \file
/// The operands of an operation, points that leave no doubt, and what results are worth by them.
#pragma once

#include <string>
#include <vector>

#include "faces.h"
#include "membership.h"
#include "random.h"

namespace trials
{

/// The rule that says which points belong to a result.
using Rule = bool (*)(bool inA, bool inB);

/// A point that a result gets wrong.
struct TFault
{
    bool isFound = false;
    TSpot at;              ///< in the coordinates of the operands
    int count = 0;         ///< polygons of the result that cover it
    bool isMember = false; ///< what it should be
    double distance = 0.0; ///< to the operands
};

class CScene
{
public:
    /// Points of `a` belong to some polygon of it; so do those of `b`, which may be empty.
    CScene(Polygons const & a, Polygons const & b, CRandom random);

    /// Looks at the points around the operands and at those around the edges of the result.
    TFault Check(Polygons const & result, Rule rule) const;

    /// Where points are too near to the operands to be judged, in coordinate units.
    double GetTolerance() const { return m_Tolerance; }
    /// What areas may differ by.
    double GetAreaTolerance() const;
    TFaces const & GetFirst() const { return m_A; }
    TFaces const & GetSecond() const { return m_B; }

private:
    struct TSample
    {
        TSpot at;
        bool inA;
        bool inB;
    };

    void AddSample(TSpot const & at, std::vector<TSample> & samples) const;
    void AddRandom(std::vector<TSample> & samples) const;
    void AddBetween(std::vector<TSample> & samples) const;
    void AddEdges(TFaces const & faces, int limit, std::vector<TSample> & samples) const;
    void AddBeside(TEdge const & edge, std::vector<TSample> & samples) const;
    TFault Confirm(Polygons const & result, Rule rule, TSample const & sample) const;

    Polygons m_PolygonsA;
    Polygons m_PolygonsB;
    TFaces m_A;
    TFaces m_B;
    TMembership<double> m_InA;
    TMembership<double> m_InB;
    double m_Tolerance = 0.0;
    double m_Extent = 0.0;
    mutable CRandom m_Random;
    std::vector<TSample> m_Samples;
};

TSpot OriginOf(Polygons const & polygons);

} // namespace trials
