/// \file
/// A sparse uniform grid that finds, for a rectangle, the objects whose rectangles overlap it. It owns its objects
/// and keeps them in adding order as well, so it serves as the plain list of them at the same time: the holes of a
/// polygon, the cached pieces of its outline.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include <geometry/export.h>
#include <geometry/numeric/bounding_rect.h>

namespace geometry
{

class CScatterIndex;
class GEOMETRY_EXPORT CPathObjectBase;
class GEOMETRY_EXPORT CPolygon;

/// One pass over a range of grid cells, along rows, column fastest. Lives on the stack for one operation of the
/// container. `T` is the kind of object, `R` the rectangle type, `CBoundingRect<int>`.
///
/// The cell number of a coordinate is the coordinate, truncated toward zero to 32 bits, divided by the cell size,
/// truncated toward zero again. So column 0 reaches from -size to +size, both excluded, and is twice as wide as the
/// others. With the container's cell size all cell numbers lie within +-1073.
template <typename T, typename R>
class CHashCalculator
{
public:
    /// What GetNextCellId answers when the range is used up. No cell has this id: bit 16 of an id is always 0.
    static constexpr std::uint32_t EndOfCells = 0xFFFFFFFF;

    /// The cells that the rectangle of `object` covers.
    CHashCalculator(T const* object, int cellSize);

    /// The cells that `rect` (coordinate units) covers.
    CHashCalculator(R const & rect, int cellSize) noexcept;

    /// The cells that `rect` (coordinate units) covers, cut down to `cellRange` (cell numbers). None at all if the
    /// two don't overlap.
    CHashCalculator(R const & rect, int cellSize, R const & cellRange) noexcept;

    /// The id of the next cell of the pass, EndOfCells after the last one: the column shifted left by 17 bits, or-ed
    /// with the row, both as unsigned 16-bit values. A key only: the order of ids has no geometric meaning.
    std::uint32_t GetNextCellId() noexcept;

    /// The range of the pass in cell numbers, both ends included; null when there is no cell to visit.
    R const* GetCells() const noexcept { return m_Cells ? &*m_Cells : nullptr; }

    /// The rectangle in coordinates, truncated.
    R const & GetRect() const noexcept { return m_Rect; }

    /// The product of the two differences of `cells` (maxX - minX, maxY - minY; 0 if not positive): 0 for a strip
    /// that is one cell wide, however long it is.
    static std::int64_t GetExtentProduct(R const & cells) noexcept;

private:
    std::optional<R> m_Cells;
    R m_Rect;
    std::int16_t m_Column = 0; // of the next cell
    std::int16_t m_Row = 0;    // of the next cell
};

/// The grid. `Calculator` is `CHashCalculator<T, CBoundingRect<int>>`.
///
/// Owner: the container owns its objects from Add on; the destructor deletes them. Remove and Clear hand them back
/// without deleting.
/// Threads: queries change nothing and may run at the same time; everything else needs exclusive use.
/// The rectangle of an object must not change while the object is in the container.
template <typename T, typename Calculator>
class CSpatialHashContainer
{
public:
    /// An empty container.
    CSpatialHashContainer();

    /// Deletes every object.
    virtual ~CSpatialHashContainer();

    CSpatialHashContainer(CSpatialHashContainer const &) = delete;
    CSpatialHashContainer & operator=(CSpatialHashContainer const &) = delete;

    /// Takes the object over. One that is already present is ignored, and so is null.
    /// Fails: an allocation exception; then the container is unchanged and the caller still owns the object.
    void Add(T* object);

    /// `Add` for an object that is known to be new and not null: costs next to nothing before the first query.
    void AddNew(T* object);

    /// Takes the object out; the caller owns it then. The others keep their order. The range of occupied cells keeps
    /// its extent until RecalculateCellRange.
    /// Fails: null, if the object isn't present; it isn't looked into then. An allocation exception of the first query
    /// or removal since the container was filled passes through and changes nothing.
    T* Remove(T* object);

    /// Forms the range of occupied cells anew; to be called after Remove.
    void RecalculateCellRange() noexcept;

    /// Back to the empty state. Deletes no object: they are the caller's from now on.
    void Clear() noexcept;

    /// Appends the objects whose rectangles overlap `rect` (coordinate units). Both are truncated toward zero to
    /// integers before, so that objects less than a unit away may be reported: the answer is a list of candidates for
    /// an exact test. An object of several cells that `out` holds on entry may be left out.
    /// Order: cell by cell, then the large objects; or, where no cells are walked, in adding order. It depends on
    /// the rectangles and the order of adding alone, and callers must not read a meaning into it.
    /// Owner: the container keeps the objects.
    void GetObjectsInRect(CBoundingRect<double> const & rect, std::vector<T*> & out) const;

    /// Every object in adding order. Owner: the container.
    std::vector<T*> const & GetObjects() const noexcept { return m_Objects; }

    /// Whether there is no object.
    bool IsEmpty() const noexcept { return m_Objects.empty(); }

    /// The union of the ranges of all objects, in cell numbers; empty in a new container.
    CBoundingRect<int> const & GetCellRange() const { return GetGrid().cellRange; }

private:
    /// An object with its rectangle in coordinates, truncated, so that a query passes over it without looking at it.
    struct TEntry
    {
        CBoundingRect<int> rect;
        T* object;
    };
    struct TCell
    {
        std::vector<TEntry> entries;
        std::shared_ptr<CScatterIndex const> index; // of many entries; void with every change; may be null
    };
    using CellMap = std::unordered_map<std::uint32_t, TCell>;

    struct TGrid
    {
        CellMap multiCellObjects;         // per cell: the objects that cover this cell and at least one other
        CellMap singleCellObjects;        // per cell: the objects that lie in this cell alone
        std::vector<TEntry> largeObjects; // cover too many cells to be entered in the maps
        std::unordered_map<T*, CBoundingRect<int>>
            objectCells; // every object with its range; the order of keys never shows
        CBoundingRect<int> cellRange;
    };

    TGrid & GetGrid() const;
    void Enter(TGrid & grid, T* object) const;
    static void IndexCrowdedCells(CellMap & cells);
    static void EnterInCells(TGrid & grid, T* object, Calculator & pass);
    bool EraseFromCells(TGrid & grid, T* object, CBoundingRect<int> const & cells) const noexcept;
    template <typename IsNew>
    static void WalkCells(TGrid const & grid, Calculator & pass, CBoundingRect<int> const & query,
                          std::vector<T*> & out, IsNew isNew);

    std::vector<T*> m_Objects;                    // every object in adding order; owned
    mutable std::atomic<TGrid*> m_Grid = nullptr; // of all objects; made by the first who needs it; owned
    int m_CellSize = 2000000;                     // width and height of a cell in coordinate units
};

/// Pieces of an outline, findable by rectangle.
using CPathObjectHash = CSpatialHashContainer<CPathObjectBase, CHashCalculator<CPathObjectBase, CBoundingRect<int>>>;

/// Polygons, findable by rectangle.
using CPolygonHash = CSpatialHashContainer<CPolygon, CHashCalculator<CPolygon, CBoundingRect<int>>>;

extern template class CHashCalculator<CPathObjectBase, CBoundingRect<int>>;
extern template class CHashCalculator<CPolygon, CBoundingRect<int>>;
extern template class GEOMETRY_EXPORT
    CSpatialHashContainer<CPathObjectBase, CHashCalculator<CPathObjectBase, CBoundingRect<int>>>;
extern template class GEOMETRY_EXPORT CSpatialHashContainer<CPolygon, CHashCalculator<CPolygon, CBoundingRect<int>>>;

} // namespace geometry
