// Points against one outline, by plain arithmetic of its own: what it says of a result doesn't rest on the comparisons
// that made the result.
//
// The outline is a chain of pieces, segments and parts of the upper or lower half of a circle. Blocks of pieces have
// rectangles, blocks of blocks, too. A block above a point counts by the abscissas of its two ends alone, so that a
// question costs the few blocks that come near the point or the ray from it.
#pragma once

#include <cstddef>
#include <vector>

#include <geometry/polygon/polygon.h>

namespace geometry
{

class COutlineProbe
{
public:
    /// What the outline says of a point.
    struct TAnswer
    {
        bool isInside = false; ///< the outline goes around it an odd number of times
        bool isNear = false;   ///< the outline is nearer than the clearance
    };

    /// Reads the outline of another polygon, which must not change until the next one. Holes aren't looked at.
    void Read(CPolygon const & polygon);
    TAnswer Locate(TPoint<double> const & point, double clearance) const;

private:
    /// Where a piece begins; it ends where the next one begins.
    struct TNode
    {
        double x = 0.0;
        double y = 0.0;
        CPathObjectArc const* arc = nullptr; ///< null: a segment
        bool isUpper = false;                ///< half of the circle
    };
    /// Around some pieces in a row.
    struct TBlock
    {
        double minX;
        double minY;
        double maxX;
        double maxY;
        double startX;
        double endX;
    };
    using Blocks = std::vector<TBlock>;

    static constexpr std::size_t BlockSize = 8;

    void ReadArc(CPathObjectArc const & arc);
    void AddNode(TPoint<double> const & point) { m_Nodes.push_back({point.x, point.y}); }
    void MakeBlocks();
    TBlock BlockOfPieces(std::size_t first, std::size_t last) const;
    static TBlock BlockOf(Blocks const & below, std::size_t first, std::size_t last);
    void PassPiece(std::size_t index, TPoint<double> const & point, double clearance, TAnswer & answer) const;
    void PassBlocks(std::size_t level, std::size_t first, std::size_t last, TPoint<double> const & point,
                    double clearance, TAnswer & answer) const;

    std::vector<TNode> m_Nodes;   ///< the last one stands where the first one does
    std::vector<Blocks> m_Levels; ///< the first one of pieces
    std::size_t m_LevelCount = 0;
};

} // namespace geometry
