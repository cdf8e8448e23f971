// Which path objects are arcs.
#pragma once

#include <typeinfo>

#include <geometry/arc/path_object_arc.h>

namespace geometry
{

/// The object as an arc, or null: `dynamic_cast`, but quick for the kinds that there are.
inline CPathObjectArc const* AsArc(CPathObjectBase const & object)
{
    if (object.CanAppendVertex())
    {
        return nullptr;
    }
    return typeid(object) == typeid(CPathObjectArc) ? static_cast<CPathObjectArc const*>(&object)
                                                    : dynamic_cast<CPathObjectArc const*>(&object);
}

} // namespace geometry
