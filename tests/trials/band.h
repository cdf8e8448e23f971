/// \file
/// Judges what goes by distances: grown and shrunk polygons, bands along paths, distances of polygons.
#pragma once

#include <string>

#include "scene.h"

namespace trials
{

class CBand
{
public:
    /// A polygon grown (`amount` > 0) or shrunk.
    CBand(geometry::CPolygon const & polygon, double amount, CRandom random);
    /// What lies within `distance` of a path.
    CBand(geometry::CPathObjectBase const & path, double distance, CRandom random);

    /// What is wrong with a result; empty if nothing is.
    std::string Check(Polygons const & result) const;
    TFaces const & GetSource() const { return m_Source; }

private:
    enum EPlace
    {
        ePlaceOut = 0,
        ePlaceIn = 1,
        ePlaceUnclear = 2
    };

    EPlace Find(TSpot const & p) const;
    std::vector<TSpot> MakeSpots(TFaces const & result) const;

    bool m_IsPath;
    double m_Amount;
    TFaces m_Source;
    TMembership<double> m_InSource;
    double m_Tolerance;
    mutable CRandom m_Random;
};

std::string DescribePath(geometry::CPathObjectBase const & path, double distance);
/// What is wrong with the distance of two polygons or those to some points; empty if nothing is.
std::string CheckDistances(geometry::CPolygon const & a, geometry::CPolygon const & b, CScene const & scene,
                           CRandom & random);

} // namespace trials
