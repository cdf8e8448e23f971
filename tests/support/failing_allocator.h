// Makes the n-th allocation of the present thread fail. One source of the test program replaces the global operators.
#pragma once

namespace geometry::test
{

/// Until it goes, the allocations of this thread are counted, and the one after `allowed` others fails, and all that
/// follow it.
class CAllocationLimit
{
public:
    explicit CAllocationLimit(long allowed);
    CAllocationLimit(CAllocationLimit const &) = delete;
    CAllocationLimit & operator=(CAllocationLimit const &) = delete;
    ~CAllocationLimit();
};

} // namespace geometry::test
