/// \file
/// The one way in which this library asks whether two coordinates are the same number: by their distance in units
/// in the last place. There is no absolute epsilon. Near zero the comparison is as good as exact, and the tolerance
/// grows with the magnitude (at 1e6 it is about 1.2e-8).
#pragma once

#include <cstdint>
#include <cstring>

#include <geometry/export.h>

namespace geometry
{

/// How many units in the last place two doubles may be apart to count as equal, unless a caller says otherwise.
constexpr std::uint32_t StandardUlpLimit = 100;
/// The finer limit of a few named comparisons (slopes, radii and square distances against zero).
constexpr std::uint32_t FineUlpLimit = 4;

/// The bits of a double as an integer that grows with the value: both zeros become 0, and neighbouring doubles are
/// neighbouring integers. The result is two's complement kept in an unsigned type, so that the arithmetic wraps.
inline std::uint64_t ToOrderedInteger(double value)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    constexpr std::uint64_t signBit = 0x8000000000000000ULL;
    return (bits & signBit) != 0 ? signBit - bits : bits;
}

/// True if `a` and `b` are at most `limit` units in the last place apart. Laws: reflexive for every bit pattern,
/// symmetric, NOT transitive. Infinities and NaN have no special case: they are compared by their bits.
inline bool IsAlmostEqual(double a, double b, std::uint32_t limit)
{
    // from -limit to limit: moved up, so that one comparison does
    std::uint64_t const room = limit;
    return ToOrderedInteger(a) - ToOrderedInteger(b) + room <= 2 * room;
}

/// `IsAlmostEqual` with the standard limit.
inline bool IsAlmostEqual(double const & a, double const & b)
{
    return IsAlmostEqual(a, b, StandardUlpLimit);
}

/// `a > b`, or equal within the standard limit. The plain comparison comes first: it settles most cases.
inline bool IsGreaterOrAlmostEqual(double a, double b)
{
    return a > b || IsAlmostEqual(a, b, StandardUlpLimit);
}

/// `a < b`, or equal within the standard limit.
inline bool IsLessOrAlmostEqual(double a, double b)
{
    return a < b || IsAlmostEqual(a, b, StandardUlpLimit);
}

/// `a < b` by more than the standard limit. False if either is NaN.
inline bool IsClearlyLess(double a, double b)
{
    return a < b && ToOrderedInteger(b) - ToOrderedInteger(a) > StandardUlpLimit;
}

/// `a > b` by more than the standard limit. False if either is NaN.
inline bool IsClearlyGreater(double a, double b)
{
    return IsClearlyLess(b, a);
}

} // namespace geometry
