// An outline becomes nodes: at each vertex, at each end of an arc, and where an arc passes an extreme abscissa of its
// circle. Gaps between objects are pieces, too, so that it is a closed curve whatever the rounding of its joints.
#include "proof/outline_probe.h"

#include <algorithm>
#include <cmath>

#include "arc/arc_geometry.h"
#include "arc/as_arc.h"

namespace geometry
{

void COutlineProbe::Read(CPolygon const & polygon)
{
    m_Nodes.clear();
    for (CPathObjectBase const* object : polygon.GetOutline())
    {
        if (!object->IsValid())
        {
            continue;
        }
        if (CPathObjectArc const* const arc = AsArc(*object))
        {
            ReadArc(*arc);
            continue;
        }
        auto point = object->GetPointsBegin();
        std::size_t const first = m_Nodes.size();
        m_Nodes.resize(first + static_cast<std::size_t>(object->GetPointsEnd() - point));
        for (auto node = m_Nodes.begin() + static_cast<std::ptrdiff_t>(first); node != m_Nodes.end(); ++node, ++point)
        {
            node->x = point->x;
            node->y = point->y;
        }
    }
    if (!m_Nodes.empty())
    {
        AddNode({m_Nodes.front().x, m_Nodes.front().y});
    }
    MakeBlocks();
}

/// Counter-clockwise, the upper half of a circle is passed to the left and the lower one to the right.
void COutlineProbe::ReadArc(CPathObjectArc const & arc)
{
    TPoint<double> const* const points = CArcInternals::GetPoints(arc);
    TPoint<double> const & start = points[0];
    TPoint<double> const & end = points[1];
    TPoint<double> const & centre = points[2];
    double const radius = arc.GetRadius();
    bool const isForward = arc.IsCounterClockwise();
    if (start == end && arc.IsFullCircle())
    {
        m_Nodes.push_back({centre.x - radius, centre.y, &arc, true});
        m_Nodes.push_back({centre.x + radius, centre.y, &arc, false});
        AddNode({centre.x - radius, centre.y});
        return;
    }
    auto const isOnUpper = [&](TPoint<double> const & p, bool isAtRightEnd)
    { return p.y > centre.y || (p.y == centre.y && (p.x > centre.x) == isAtRightEnd); };
    bool isUpper = isOnUpper(start, isForward);
    bool const endsUpper = isOnUpper(end, !isForward);
    bool const runsLeft = isUpper == isForward;
    bool const isAhead = runsLeft ? end.x <= start.x : end.x >= start.x;
    m_Nodes.push_back({start.x, start.y, &arc, isUpper});
    for (int extremes = isUpper != endsUpper ? 1 : isAhead ? 0 : 2; extremes > 0; --extremes)
    {
        double const extreme = isUpper == isForward ? centre.x - radius : centre.x + radius;
        isUpper = !isUpper;
        m_Nodes.push_back({extreme, centre.y, &arc, isUpper});
    }
    AddNode(end);
}

COutlineProbe::TBlock COutlineProbe::BlockOfPieces(std::size_t first, std::size_t last) const
{
    TNode const & start = m_Nodes[first];
    TBlock block{start.x, start.y, start.x, start.y, start.x, m_Nodes[last].x};
    for (std::size_t i = first; i <= last; ++i)
    {
        TNode const & node = m_Nodes[i];
        block.minX = std::min(block.minX, node.x);
        block.minY = std::min(block.minY, node.y);
        block.maxX = std::max(block.maxX, node.x);
        block.maxY = std::max(block.maxY, node.y);
        if (node.arc != nullptr && i < last)
        {
            // the whole half of the circle, up or down: a piece of it may pass the top
            double const y = node.arc->GetCentre().y + (node.isUpper ? node.arc->GetRadius() : -node.arc->GetRadius());
            block.minY = std::min(block.minY, y);
            block.maxY = std::max(block.maxY, y);
        }
    }
    return block;
}

COutlineProbe::TBlock COutlineProbe::BlockOf(Blocks const & below, std::size_t first, std::size_t last)
{
    TBlock block = below[first];
    for (std::size_t i = first + 1; i < last; ++i)
    {
        block.minX = std::min(block.minX, below[i].minX);
        block.minY = std::min(block.minY, below[i].minY);
        block.maxX = std::max(block.maxX, below[i].maxX);
        block.maxY = std::max(block.maxY, below[i].maxY);
    }
    block.endX = below[last - 1].endX;
    return block;
}

void COutlineProbe::MakeBlocks()
{
    m_LevelCount = 0;
    std::size_t count = m_Nodes.empty() ? 0 : m_Nodes.size() - 1;
    while (count > BlockSize)
    {
        if (m_Levels.size() == m_LevelCount)
        {
            m_Levels.emplace_back();
        }
        Blocks & level = m_Levels[m_LevelCount];
        level.clear();
        level.reserve(count / BlockSize + 1);
        for (std::size_t first = 0; first < count; first += BlockSize)
        {
            std::size_t const last = std::min(first + BlockSize, count);
            level.push_back(m_LevelCount == 0 ? BlockOfPieces(first, last)
                                              : BlockOf(m_Levels[m_LevelCount - 1], first, last));
        }
        count = level.size();
        ++m_LevelCount;
    }
}

/// Adds what a piece says: whether the ray upwards from the point crosses it, and whether the point is near it.
void COutlineProbe::PassPiece(std::size_t index, TPoint<double> const & point, double clearance, TAnswer & answer) const
{
    TNode const & a = m_Nodes[index];
    TNode const & b = m_Nodes[index + 1];
    if (point.x < std::min(a.x, b.x) - clearance || point.x > std::max(a.x, b.x) + clearance)
    {
        return;
    }
    bool const isCrossed = (a.x <= point.x) != (b.x <= point.x);
    if (a.arc != nullptr)
    {
        TPoint<double> const & centre = a.arc->GetCentre();
        double const dx = point.x - centre.x;
        double const dy = point.y - centre.y;
        double const radius = a.arc->GetRadius();
        if (dy > (a.isUpper ? radius : 0.0) + clearance)
        {
            return;
        }
        if (dy < (a.isUpper ? 0.0 : -radius) - clearance)
        {
            answer.isInside = answer.isInside != isCrossed;
            return;
        }
        double const distance = std::sqrt(dx * dx + dy * dy);
        bool const isBelow = a.isUpper ? dy < 0.0 || distance < radius : dy < 0.0 && distance > radius;
        bool const isAtHalf = a.isUpper ? dy >= -clearance : dy <= clearance;
        answer.isInside = answer.isInside != (isCrossed && isBelow);
        answer.isNear = answer.isNear || (isAtHalf && std::fabs(distance - radius) <= clearance);
        return;
    }
    auto const [low, high] = std::minmax(a.y, b.y);
    if (point.y > high + clearance)
    {
        return;
    }
    if (point.y < low - clearance)
    {
        answer.isInside = answer.isInside != isCrossed;
        return;
    }
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const cross = dx * (point.y - a.y) - dy * (point.x - a.x); // the distance from the line, times the length
    answer.isInside = answer.isInside != (isCrossed && (dx > 0.0) == (cross < 0.0));
    double const square = dx * dx + dy * dy;
    if (cross * cross > clearance * clearance * square)
    {
        return;
    }
    double const along = dx * (point.x - a.x) + dy * (point.y - a.y);
    double const share = square > 0.0 ? std::clamp(along / square, 0.0, 1.0) : 0.0;
    double const ex = point.x - (a.x + share * dx);
    double const ey = point.y - (a.y + share * dy);
    answer.isNear = answer.isNear || ex * ex + ey * ey <= clearance * clearance;
}

/// The blocks of a level, or, at level 0, the pieces.
void COutlineProbe::PassBlocks(std::size_t level, std::size_t first, std::size_t last, TPoint<double> const & point,
                               double clearance, TAnswer & answer) const
{
    for (std::size_t i = first; i < last; ++i)
    {
        if (level == 0)
        {
            PassPiece(i, point, clearance, answer);
            continue;
        }
        TBlock const & block = m_Levels[level - 1][i];
        if (point.x < block.minX - clearance || point.x > block.maxX + clearance || point.y > block.maxY + clearance)
        {
            continue;
        }
        if (point.y < block.minY - clearance)
        {
            answer.isInside = answer.isInside != ((block.startX <= point.x) != (block.endX <= point.x));
            continue;
        }
        std::size_t const end = level == 1 ? m_Nodes.size() - 1 : m_Levels[level - 2].size();
        PassBlocks(level - 1, i * BlockSize, std::min((i + 1) * BlockSize, end), point, clearance, answer);
    }
}

COutlineProbe::TAnswer COutlineProbe::Locate(TPoint<double> const & point, double clearance) const
{
    TAnswer answer;
    if (!m_Nodes.empty())
    {
        std::size_t const end = m_LevelCount == 0 ? m_Nodes.size() - 1 : m_Levels[m_LevelCount - 1].size();
        PassBlocks(m_LevelCount, 0, end, point, clearance, answer);
    }
    return answer;
}

} // namespace geometry
