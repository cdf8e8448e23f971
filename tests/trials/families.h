/// \file
/// Shapes in the positions that are hard on a clipper: made from a seed, in coordinates of a size and a place.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "oracle.h"

namespace trials
{

/// The same numbers on every machine.
class CRandom
{
public:
    explicit CRandom(std::uint64_t seed) : m_State(seed * 0x9E3779B97F4A7C15ULL + 0x1234567ULL) {}
    std::uint64_t Next();
    double Between(double low, double high) { return low + (high - low) * (Next() >> 11) * 0x1p-53; }
    int Below(int count) { return static_cast<int>(Next() % static_cast<std::uint64_t>(count)); }

private:
    std::uint64_t m_State;
};

using Owned = std::unique_ptr<CPolygon>;

/// What a family hands over: operands of two, or many.
struct TInput
{
    std::vector<Owned> first;
    std::vector<Owned> second;
    bool isMany = false; ///< merge all of both, subtract all of the second from the first one
};

std::vector<std::string> const & FamilyNames();
TInput MakeInput(std::string const & family, CRandom & random, double size, double away);

} // namespace trials
