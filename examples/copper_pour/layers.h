/// \file
/// The copper layers of a board and the ways to name them.
#pragma once

#include "s_expression.h"

namespace copper_pour
{

/// The copper layers from front to back, and the one that is asked for.
class CLayers
{
public:
    /// Reads the table of a board. Throws CBoardError if it has none, or not the layer.
    CLayers(CNode const & board, std::string const & layer);

    /// A layer, a wildcard or one of several in a list stands for the layer asked for.
    bool IsMeant(std::string_view name) const;
    /// The same for an item: by its `(layer ...)` or `(layers ...)`.
    bool HasMeant(CNode const & item) const;
    /// The layer lies between the two that `item` names, these included.
    bool IsSpanned(CNode const & item) const;
    /// The item lies on the edge layer.
    static bool IsOnEdge(CNode const & item);

private:
    static constexpr std::size_t None = static_cast<std::size_t>(-1);

    std::size_t PositionOf(std::string_view name) const;

    struct CLayer
    {
        std::string name;
        std::string secondName;
    };

    std::vector<CLayer> m_Layers; ///< in the order of the file, which is that of the board
    std::size_t m_Meant = None;
};

} // namespace copper_pour
