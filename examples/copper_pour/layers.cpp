// Layers are known by position: the names of copper layers are the user's to change, their order isn't.

#include "layers.h"

#include <algorithm>
#include <array>

namespace copper_pour
{
namespace
{

bool IsCopper(CNode const & layer)
{
    static constexpr std::array<std::string_view, 4> types = {"signal", "power", "mixed", "jumper"};
    return std::find(types.begin(), types.end(), layer.Word(2)) != types.end();
}

CNode const* LayerList(CNode const & item)
{
    CNode const* const several = item.Find("layers");
    return several != nullptr ? several : item.Find("layer");
}

} // namespace

CLayers::CLayers(CNode const & board, std::string const & layer)
{
    CNode const* const table = board.Find("layers");
    if (table == nullptr) throw CBoardError("line " + std::to_string(board.line) + ": the board has no layers");
    for (CNode const & entry : table->items)
    {
        if (entry.isList && IsCopper(entry))
        {
            m_Layers.push_back({std::string(entry.Word(1)), std::string(entry.Word(3))});
        }
    }
    m_Meant = PositionOf(layer);
    if (m_Meant == None)
    {
        std::string names;
        for (CLayer const & known : m_Layers)
        {
            names += " '" + known.name + "'";
        }
        throw CBoardError("line " + std::to_string(table->line) + ": no copper layer '" + layer + "'; there are" +
                          (names.empty() ? " none" : names));
    }
}

std::size_t CLayers::PositionOf(std::string_view name) const
{
    auto const isIt = [&](CLayer const & layer) { return layer.name == name || layer.secondName == name; };
    auto const found = name.empty() ? m_Layers.end() : std::find_if(m_Layers.begin(), m_Layers.end(), isIt);
    if (found != m_Layers.end()) return static_cast<std::size_t>(found - m_Layers.begin());
    if (name == "F.Cu" && !m_Layers.empty()) return 0;
    if (name == "B.Cu" && !m_Layers.empty()) return m_Layers.size() - 1;
    for (std::size_t i = 1; i + 1 < m_Layers.size(); ++i)
    {
        if (name == "In" + std::to_string(i) + ".Cu") return i;
    }
    return None;
}

bool CLayers::IsMeant(std::string_view name) const
{
    if (name == "*.Cu") return true;
    if (name == "F&B.Cu") return m_Meant == 0 || m_Meant + 1 == m_Layers.size();
    return PositionOf(name) == m_Meant;
}

bool CLayers::HasMeant(CNode const & item) const
{
    CNode const* const list = LayerList(item);
    for (std::size_t i = 1; list != nullptr && i < list->items.size(); ++i)
    {
        if (IsMeant(list->Word(i))) return true;
    }
    return false;
}

bool CLayers::IsSpanned(CNode const & item) const
{
    CNode const* const list = LayerList(item);
    if (list == nullptr) return true;
    std::size_t const first = PositionOf(list->Word(1));
    std::size_t const last = PositionOf(list->Word(2));
    if (first == None || last == None) return HasMeant(item);
    return std::min(first, last) <= m_Meant && m_Meant <= std::max(first, last);
}

bool CLayers::IsOnEdge(CNode const & item)
{
    CNode const* const list = LayerList(item);
    return list != nullptr && std::any_of(list->items.begin(), list->items.end(),
                                          [](CNode const & name) { return name.text == "Edge.Cuts"; });
}

} // namespace copper_pour
