/// \file
/// Random numbers that are the same everywhere: a seed gives the same trial with every compiler.
#pragma once

#include <cmath>
#include <cstdint>
#include <initializer_list>

namespace trials
{

class CRandom
{
public:
    explicit CRandom(std::uint64_t seed) : m_State(seed) {}

    std::uint64_t Next()
    {
        m_State += 0x9E3779B97F4A7C15U;
        std::uint64_t z = m_State;
        z = (z ^ (z >> 30U)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27U)) * 0x94D049BB133111EBU;
        return z ^ (z >> 31U);
    }
    double Real(double low, double high) { return low + (high - low) * (static_cast<double>(Next() >> 11U) * 0x1p-53); }
    /// Both ends are possible.
    int Int(int low, int high) { return low + static_cast<int>(Next() % static_cast<std::uint64_t>(high - low + 1)); }
    bool Chance(double probability) { return Real(0.0, 1.0) < probability; }
    double Sign() { return Chance(0.5) ? 1.0 : -1.0; }
    double Angle() { return Real(0.0, 2.0 * 3.14159265358979323846); }
    /// Evenly spread in its logarithm; both ends greater than 0.
    double Scale(double low, double high) { return low * std::pow(high / low, Real(0.0, 1.0)); }
    template <typename T>
    T Pick(std::initializer_list<T> values)
    {
        return values.begin()[Int(0, static_cast<int>(values.size()) - 1)];
    }

private:
    std::uint64_t m_State;
};

} // namespace trials
