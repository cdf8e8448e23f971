// The grid is kept sparse: only occupied cells have an entry. An object stands in one of three places: in its single
// cell, in each of its several cells, or in the list of large objects that every query scans. The split lets a query
// skip the test for duplicates where there can't be any, and keeps an object from filling thousands of cells.
// A query walks the cells of its rectangle, cut down to the occupied range; where that would touch more cells than
// objects could fill, it goes through the objects instead.

#include <geometry/clip/spatial_hash_container.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <set>

#include <geometry/path/path_object_base.h>
#include <geometry/polygon/polygon.h>

#include "numeric/scatter_index.h"
#include "polygon/merge.h"

namespace geometry
{

namespace
{

constexpr std::int64_t LargeExtentProduct = 10000; // above it, an object is large and a pass too long to walk
constexpr std::int64_t WideQueryCellCount = 1000;  // from here on, a query finds duplicates with a set
constexpr std::size_t FewEntries = 4;              // of a cell, for a start
constexpr std::size_t CrowdedEntryCount = 64;      // from here on, a cell has an index
constexpr std::size_t FewObjectCount = 11;         // below it, a wide query walks no cells

template <typename T>
CBoundingRect<int> RectOf(T const & object)
{
    return ToIntegerRect(object.GetBoundingRect());
}

/// The cells that a rectangle in coordinates covers.
template <typename R>
R CellsOf(R const & rect, int cellSize)
{
    auto const [minX, maxX] = std::minmax({rect.minX / cellSize, rect.maxX / cellSize});
    auto const [minY, maxY] = std::minmax({rect.minY / cellSize, rect.maxY / cellSize});
    return R(minX, minY, maxX, maxY);
}

CBoundingRect<double> ReadAsDoubles(CBoundingRect<int> const & rect)
{
    return CBoundingRect<double>(rect.minX, rect.minY, rect.maxX, rect.maxY);
}

/// Integers of 32 bits are so far apart as doubles that a tolerant comparison is a plain one.
bool Overlap(CBoundingRect<int> const & a, CBoundingRect<int> const & b)
{
    return a.maxX >= b.minX && a.minX <= b.maxX && a.maxY >= b.minY && a.minY <= b.maxY;
}

std::int64_t Extent(int from, int to)
{
    return std::max<std::int64_t>(std::int64_t{to} - from, 0);
}

/// How many cells a query asks for, before it is cut down to the occupied range.
std::int64_t CountCells(CBoundingRect<int> const & rect, int cellSize)
{
    return (Extent(rect.minY, rect.maxY) / cellSize + 1) * (Extent(rect.minX, rect.maxX) / cellSize + 1);
}

bool IsSingleCell(CBoundingRect<int> const & cells)
{
    return cells.minX == cells.maxX && cells.minY == cells.maxY;
}

/// `objectOf` tells the object of an element.
template <typename Element, typename T, typename ObjectOf>
bool EraseFrom(std::vector<Element> & elements, T const* object, ObjectOf objectOf)
{
    auto const found = std::find_if(elements.begin(), elements.end(),
                                    [&](Element const & element) { return objectOf(element) == object; });
    if (found == elements.end())
    {
        return false;
    }
    elements.erase(found);
    return true;
}

constexpr auto ObjectOfEntry = [](auto const & entry) { return entry.object; };
constexpr auto ObjectItself = [](auto* object) { return object; };

/// Takes an object out of one cell; an emptied cell loses its entry.
template <typename CellMap, typename T>
bool EraseFromCell(CellMap & cells, std::uint32_t id, T const* object)
{
    auto const cell = cells.find(id);
    if (cell == cells.end())
    {
        return false;
    }
    bool const wasThere = EraseFrom(cell->second.entries, object, ObjectOfEntry);
    cell->second.index.reset();
    if (cell->second.entries.empty())
    {
        cells.erase(cell);
    }
    return wasThere;
}

} // namespace

// --- one pass over a range of cells ---

template <typename T, typename R>
CHashCalculator<T, R>::CHashCalculator(T const* object, int cellSize) : CHashCalculator(RectOf(*object), cellSize)
{
}

template <typename T, typename R>
CHashCalculator<T, R>::CHashCalculator(R const & rect, int cellSize) noexcept
    : m_Cells(CellsOf(rect, cellSize)), m_Rect(rect), m_Column(static_cast<std::int16_t>(m_Cells->minX)),
      m_Row(static_cast<std::int16_t>(m_Cells->minY))
{
}

template <typename T, typename R>
CHashCalculator<T, R>::CHashCalculator(R const & rect, int cellSize, R const & cellRange) noexcept : m_Rect(rect)
{
    R const cells = CellsOf(rect, cellSize);
    if (!cells.Overlaps(cellRange))
    {
        return;
    }
    m_Cells = R(std::max(cells.minX, cellRange.minX), std::max(cells.minY, cellRange.minY),
                std::min(cells.maxX, cellRange.maxX), std::min(cells.maxY, cellRange.maxY));
    m_Column = static_cast<std::int16_t>(m_Cells->minX);
    m_Row = static_cast<std::int16_t>(m_Cells->minY);
}

template <typename T, typename R>
std::uint32_t CHashCalculator<T, R>::GetNextCellId() noexcept
{
    if (!m_Cells || m_Row > m_Cells->maxY)
    {
        return EndOfCells;
    }
    std::uint32_t const column = static_cast<std::uint16_t>(m_Column);
    std::uint32_t const id = (column << 17) | static_cast<std::uint16_t>(m_Row);
    if (m_Column >= m_Cells->maxX)
    {
        m_Column = static_cast<std::int16_t>(m_Cells->minX);
        ++m_Row;
    }
    else
    {
        ++m_Column;
    }
    return id;
}

template <typename T, typename R>
std::int64_t CHashCalculator<T, R>::GetExtentProduct(R const & cells) noexcept
{
    return Extent(cells.minX, cells.maxX) * Extent(cells.minY, cells.maxY);
}

// --- the container ---

template <typename T, typename Calculator>
CSpatialHashContainer<T, Calculator>::CSpatialHashContainer() = default;

template <typename T, typename Calculator>
CSpatialHashContainer<T, Calculator>::~CSpatialHashContainer()
{
    delete m_Grid.load(std::memory_order_relaxed);
    for (T* object : m_Objects)
    {
        delete object;
    }
}

/// The grid, made if there is none. Readers may meet here: the first one to be done leaves its grid to all.
template <typename T, typename Calculator>
typename CSpatialHashContainer<T, Calculator>::TGrid & CSpatialHashContainer<T, Calculator>::GetGrid() const
{
    if (TGrid* const present = m_Grid.load(std::memory_order_acquire))
    {
        return *present;
    }
    auto grid = std::make_unique<TGrid>();
    for (T* object : m_Objects)
    {
        Enter(*grid, object);
    }
    IndexCrowdedCells(grid->multiCellObjects);
    IndexCrowdedCells(grid->singleCellObjects);
    TGrid* present = nullptr;
    if (m_Grid.compare_exchange_strong(present, grid.get(), std::memory_order_acq_rel))
    {
        present = grid.release();
    }
    return *present;
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::IndexCrowdedCells(CellMap & cells)
{
    for (auto & [id, cell] : cells)
    {
        if (IsIndexUsed(cell.entries.size() >= CrowdedEntryCount))
        {
            std::vector<CBoundingRect<double>> rects;
            std::transform(cell.entries.begin(), cell.entries.end(), std::back_inserter(rects),
                           [](TEntry const & entry) { return ReadAsDoubles(entry.rect); });
            cell.index = std::make_shared<CScatterIndex const>(rects);
        }
    }
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::Add(T* object)
{
    if (object == nullptr)
    {
        return;
    }
    TGrid & grid = GetGrid();
    if (grid.objectCells.find(object) == grid.objectCells.end())
    {
        AddNew(object);
    }
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::AddNew(T* object)
{
    m_Objects.push_back(object);
    if (TGrid* const grid = m_Grid.load(std::memory_order_relaxed))
    {
        try
        {
            Enter(*grid, object);
        }
        catch (...)
        {
            m_Objects.pop_back();
            throw;
        }
    }
}

/// An allocation exception leaves the grid as it was.
template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::Enter(TGrid & grid, T* object) const
{
    Calculator pass(object, m_CellSize);
    CBoundingRect<int> const cells = *pass.GetCells();
    auto const entry = grid.objectCells.emplace(object, cells).first;
    try
    {
        EnterInCells(grid, object, pass);
    }
    catch (...)
    {
        EraseFromCells(grid, object, cells);
        grid.objectCells.erase(entry);
        throw;
    }
    grid.cellRange.Include(cells);
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::EnterInCells(TGrid & grid, T* object, Calculator & pass)
{
    CBoundingRect<int> const & cells = *pass.GetCells();
    if (Calculator::GetExtentProduct(cells) > LargeExtentProduct)
    {
        grid.largeObjects.push_back({pass.GetRect(), object});
        return;
    }
    // A pass names no cell twice and the object is new, so that no cell can hold it already.
    CellMap & map = IsSingleCell(cells) ? grid.singleCellObjects : grid.multiCellObjects;
    for (auto id = pass.GetNextCellId(); id != Calculator::EndOfCells; id = pass.GetNextCellId())
    {
        TCell & cell = map[id];
        if (cell.entries.empty())
        {
            cell.entries.reserve(FewEntries);
        }
        cell.entries.push_back({pass.GetRect(), object});
        cell.index.reset();
    }
}

/// Takes an object out of the place that its range belongs to; true if it was there. Copes with an object that was
/// entered in some of its cells only, and with empty cells.
template <typename T, typename Calculator>
bool CSpatialHashContainer<T, Calculator>::EraseFromCells(TGrid & grid, T* object,
                                                          CBoundingRect<int> const & cells) const noexcept
{
    if (Calculator::GetExtentProduct(cells) > LargeExtentProduct)
    {
        return EraseFrom(grid.largeObjects, object, ObjectOfEntry);
    }
    CellMap & map = IsSingleCell(cells) ? grid.singleCellObjects : grid.multiCellObjects;
    // The corners of the cells give back the same range: the products stay within 32 bits since the quotients did.
    Calculator pass(CBoundingRect<int>(cells.minX * m_CellSize, cells.minY * m_CellSize, cells.maxX * m_CellSize,
                                       cells.maxY * m_CellSize),
                    m_CellSize);
    bool wasThere = false;
    for (auto id = pass.GetNextCellId(); id != Calculator::EndOfCells; id = pass.GetNextCellId())
    {
        wasThere = EraseFromCell(map, id, object) || wasThere;
    }
    return wasThere;
}

template <typename T, typename Calculator>
T* CSpatialHashContainer<T, Calculator>::Remove(T* object)
{
    TGrid & grid = GetGrid();
    auto const entry = grid.objectCells.find(object);
    if (entry == grid.objectCells.end())
    {
        return nullptr;
    }
    CBoundingRect<int> const cells = entry->second;
    grid.objectCells.erase(entry);
    EraseFrom(m_Objects, object, ObjectItself);
    return EraseFromCells(grid, object, cells) ? object : nullptr;
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::RecalculateCellRange() noexcept
{
    if (TGrid* const grid = m_Grid.load(std::memory_order_relaxed))
    {
        grid->cellRange.Reset();
        for (auto const & entry : grid->objectCells)
        {
            grid->cellRange.Include(entry.second);
        }
    }
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::Clear() noexcept
{
    delete m_Grid.load(std::memory_order_relaxed);
    m_Grid.store(nullptr, std::memory_order_relaxed);
    m_Objects.clear();
}

/// Appends what overlaps the query, cell by cell and then the large objects. `isNew` says of an object of several
/// cells whether this is its first appearance.
template <typename T, typename Calculator>
template <typename IsNew>
void CSpatialHashContainer<T, Calculator>::WalkCells(TGrid const & grid, Calculator & pass,
                                                     CBoundingRect<int> const & query, std::vector<T*> & out,
                                                     IsNew isNew)
{
    auto const append = [&](std::vector<TEntry> const & entries, auto const & isWanted)
    {
        for (TEntry const & entry : entries)
        {
            if (Overlap(query, entry.rect) && isWanted(entry.object))
            {
                out.push_back(entry.object);
            }
        }
    };
    auto const appendCell = [&](TCell const & cell, auto const & isWanted)
    {
        if (cell.index == nullptr)
        {
            append(cell.entries, isWanted);
            return;
        }
        for (std::uint32_t const i : cell.index->Find(ReadAsDoubles(query)))
        {
            if (isWanted(cell.entries[i].object))
            {
                out.push_back(cell.entries[i].object);
            }
        }
    };
    auto const all = [](T*) { return true; };
    for (auto id = pass.GetNextCellId(); id != Calculator::EndOfCells; id = pass.GetNextCellId())
    {
        if (auto const cell = grid.multiCellObjects.find(id); cell != grid.multiCellObjects.end())
        {
            appendCell(cell->second, isNew);
        }
        if (auto const cell = grid.singleCellObjects.find(id); cell != grid.singleCellObjects.end())
        {
            appendCell(cell->second, all);
        }
    }
    append(grid.largeObjects, all);
}

template <typename T, typename Calculator>
void CSpatialHashContainer<T, Calculator>::GetObjectsInRect(CBoundingRect<double> const & rect,
                                                            std::vector<T*> & out) const
{
    if (IsEmpty())
    {
        return;
    }
    TGrid const & grid = GetGrid();
    CBoundingRect<int> const q = ToIntegerRect(rect);
    Calculator pass(q, m_CellSize, grid.cellRange);
    if (CountCells(q, m_CellSize) < WideQueryCellCount)
    {
        // Sees what `out` held on entry, too.
        WalkCells(grid, pass, q, out,
                  [&out](T* object) { return std::find(out.begin(), out.end(), object) == out.end(); });
        return;
    }
    bool const isPassLong =
        pass.GetCells() != nullptr && Calculator::GetExtentProduct(*pass.GetCells()) > LargeExtentProduct;
    if (m_Objects.size() < FewObjectCount || isPassLong)
    {
        // In adding order, which depends on the input alone, unlike the addresses.
        std::copy_if(m_Objects.begin(), m_Objects.end(), std::back_inserter(out),
                     [&q](T const* object) { return Overlap(q, RectOf(*object)); });
        return;
    }
    std::set<T*> seen;
    WalkCells(grid, pass, q, out, [&seen](T* object) { return seen.insert(object).second; });
}

template class CHashCalculator<CPathObjectBase, CBoundingRect<int>>;
template class CHashCalculator<CPolygon, CBoundingRect<int>>;
template class CHashCalculator<CPolygon::COverlapVectorsHelper, CBoundingRect<int>>;
template class CSpatialHashContainer<CPathObjectBase, CHashCalculator<CPathObjectBase, CBoundingRect<int>>>;
template class CSpatialHashContainer<CPolygon, CHashCalculator<CPolygon, CBoundingRect<int>>>;
template class CSpatialHashContainer<CPolygon::COverlapVectorsHelper,
                                     CHashCalculator<CPolygon::COverlapVectorsHelper, CBoundingRect<int>>>;

} // namespace geometry
