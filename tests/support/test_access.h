// What the tests read that callers can't: one friend of the classes under test.
#pragma once

#include <vector>

#include <geometry/arc/path_object_arc.h>
#include <geometry/polygon/polygon.h>

#include "clip/clipper.h"

namespace geometry
{

struct CTestAccess
{
    static EArcDirection GetDirection(CPathObjectArc const & arc) { return arc.GetDirection(); }
    static std::vector<TPoint<double>> const & GetArcPoints(CPathObjectArc const & arc) { return arc.GetArcPoints(); }

    static void AppendPathObject(CPolygon & polygon, CPathObjectBase* object) { polygon.AppendPathObject(object); }
    static bool EnsureValidPolygon(CPolygon & polygon, bool closeByExtending)
    {
        return polygon.EnsureValidPolygon(closeByExtending);
    }
    static CPolygon::EPolygonWinding GetWinding(CPolygon const & polygon) { return polygon.GetWindingDirection(); }
    static void ReverseWinding(CPolygon & polygon) { polygon.ReverseWindingDirection(); }
    static unsigned int GetAttempts(CPolygonClipBase<double> const & clipper) { return clipper.m_Attempts; }
};

} // namespace geometry
