// Checked access to numbers: what isn't there, isn't a number or lies out of range is refused with its line.

#include "item_values.h"

#include "arc_geometry.h"

#include <charconv>

namespace copper_pour
{

CPoint CPlace::Apply(CPoint const & point) const
{
    CPoint const turned = Turned(point, CPoint(0.0, 0.0), -degrees);
    return {position.x + Round(turned.x), position.y + Round(turned.y)};
}

void Refuse(CNode const & item, std::string const & reason)
{
    throw CBoardError("line " + std::to_string(item.line) + ": " + std::string(item.Name()) + ": " + reason);
}

double NumberAt(CNode const & item, std::size_t index)
{
    std::string_view const word = item.Word(index);
    double value = 0.0;
    auto const [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (word.empty()) Refuse(item, "a number is missing");
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value))
    {
        Refuse(item, "'" + std::string(word) + "' is no number");
    }
    return value;
}

double LengthAt(CNode const & item, std::size_t index)
{
    double const millimetres = NumberAt(item, index);
    if (std::fabs(millimetres) > 1000.0) Refuse(item, "'" + std::string(item.Word(index)) + "' is beyond 1 m");
    return Round(millimetres * NanometresPerMillimetre);
}

CNode const & Need(CNode const & item, std::string_view name)
{
    CNode const* const found = item.Find(name);
    if (found == nullptr) Refuse(item, "'" + std::string(name) + "' is missing");
    return *found;
}

CPoint PointOf(CNode const & item, std::string_view name)
{
    CNode const & list = Need(item, name);
    return {LengthAt(list, 1), LengthAt(list, 2)};
}

CPlace PlaceOf(CNode const & item)
{
    CNode const & at = Need(item, "at");
    std::string_view const third = at.Word(3);
    bool const isTurned = !third.empty() && third != "unlocked";
    return {PointOf(item, "at"), isTurned ? NumberAt(at, 3) : 0.0};
}

} // namespace copper_pour
