// What the clipper does with the polylines that it makes.
#pragma once

#include <cstddef>
#include <memory>
#include <memory_resource>
#include <vector>

#include <geometry/path/path_object_polyline.h>

namespace geometry
{

/// A polyline in memory that goes as a whole, after it was deleted, which destroys it only. The vertices are its own.
class CBorrowingPolyline final : public CPathObjectPolyline
{
public:
    using CPathObjectPolyline::CPathObjectPolyline;
    static void* operator new(std::size_t size, std::pmr::memory_resource & memory) { return memory.allocate(size); }
    static void operator delete(void*, std::pmr::memory_resource &) {}
    static void operator delete(void*) {}
};

struct CPolylineInternals
{
    using SplitPositionList = CPathObjectBase::SplitPositionList;
    using SplitPiece = CPathObjectBase::SplitPiece;

    /// Appends the vertices of `other`, from its end to its start with `reverse`. The first of these takes the place of
    /// the last vertex, so that both must have one.
    static void ContinueWith(CPathObjectPolyline & polyline, CPathObjectPolyline const & other, bool reverse)
    {
        polyline.ContinueWith(other, reverse);
    }

    /// `DoSplits` whose pieces lie in `memory`, and must be deleted before it goes.
    static void DoSplits(CPathObjectPolyline const & polyline, SplitPositionList const & positions,
                         std::vector<SplitPiece> & pieces, std::pmr::memory_resource & memory);
    /// A polyline of its own with the vertices of one without user info, which loses them.
    static std::unique_ptr<CPathObjectPolyline> TakeOver(CPathObjectPolyline & polyline);
};

} // namespace geometry
