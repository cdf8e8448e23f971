/// \file
/// Walks the vertices of all path objects of an outline as one sequence.
#pragma once

#include <iterator>

#include <geometry/polygon/polygon.h>

namespace geometry
{

/// A bidirectional walk over the points of every path object, join points twice. Objects with no points are passed
/// over. It refers to the outline and is void after a change of it. The postfix operators return the iterator itself,
/// AFTER the step. A step back from the first vertex stays there; the end has no point.
class GEOMETRY_EXPORT CPolygon::TConstVertexIterator
{
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = TPoint<double>;
    using difference_type = int;
    using pointer = TPoint<double> const*;
    using reference = TPoint<double> const &;

    /// Begin or end of the walk over `pathObjects`, which stays the caller's; null makes a finished iterator.
    TConstVertexIterator(std::vector<CPathObjectBase*> const* const pathObjects, bool atEnd);
    TConstVertexIterator(TConstVertexIterator const & other) = default;

    virtual ~TConstVertexIterator();
    virtual TConstVertexIterator & operator++(int);
    virtual TConstVertexIterator & operator++();
    virtual TConstVertexIterator & operator--(int);
    virtual TConstVertexIterator & operator--();

private:
    virtual bool IsEqual(TConstVertexIterator const & other) const;

public:
    virtual bool IsNotEqual(TConstVertexIterator const & other) const;
    virtual TConstVertexIterator & operator=(TConstVertexIterator const & other);
    virtual reference operator*() const;
    virtual pointer operator->() const;

    bool operator==(TConstVertexIterator const & other) const { return IsEqual(other); }
    bool operator!=(TConstVertexIterator const & other) const { return IsNotEqual(other); }

private:
    void Increment();
    void Decrement();
    bool IsAtEnd() const { return m_CurrentObject == m_PathObjects->end(); }

    std::vector<CPathObjectBase*> const* m_PathObjects; ///< null in an iterator that walks nothing
    std::vector<CPathObjectBase*>::const_iterator m_CurrentObject;
    CPathObjectBase::PointIterator m_CurrentVertex;
};

inline CPolygon::TConstVertexIterator CPolygon::GetVerticesBegin() const
{
    return TConstVertexIterator(&m_Outline, false);
}

inline CPolygon::TConstVertexIterator CPolygon::GetVerticesEnd() const
{
    return TConstVertexIterator(&m_Outline, true);
}

} // namespace geometry
