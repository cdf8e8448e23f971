/// \file
/// Members that const operations fill on first use, safe for any number of concurrent readers and free of locks:
/// readers that meet before the first fill each work the value out, all get the same, and one of them leaves it there.
#pragma once

#include <atomic>
#include <memory>
#include <utility>

namespace geometry
{

/// A small value, read and written whole. Its readers need nothing else that its writer wrote.
template <typename T>
class TLazyValue
{
public:
    TLazyValue(T value) noexcept : m_Value(value) {}
    TLazyValue(TLazyValue const & other) noexcept : TLazyValue(static_cast<T>(other)) {}
    TLazyValue & operator=(TLazyValue const & other) noexcept { return *this = static_cast<T>(other); }
    TLazyValue & operator=(T value) noexcept
    {
        m_Value.store(value, std::memory_order_relaxed);
        return *this;
    }
    operator T() const noexcept { return m_Value.load(std::memory_order_relaxed); }

private:
    std::atomic<T> m_Value;
};

/// An object that stays where it is from its first reader on, until `Clear`. A copy starts without one.
template <typename T>
class TLazyObject
{
public:
    TLazyObject() noexcept = default;
    TLazyObject(TLazyObject const &) noexcept {}
    TLazyObject & operator=(TLazyObject const &) noexcept
    {
        Clear();
        return *this;
    }
    ~TLazyObject() { Clear(); }

    /// The object, or null.
    T const* Get() const noexcept { return m_Object.load(std::memory_order_acquire); }
    /// Leaves `object` for all readers, unless another one stands there already; the one that stands.
    T const & Set(std::unique_ptr<T const> object) const noexcept
    {
        T const* present = nullptr;
        if (!m_Object.compare_exchange_strong(present, object.get(), std::memory_order_acq_rel))
        {
            return *present;
        }
        return *object.release();
    }
    /// For changing operations, which nobody reads beside.
    void Clear() noexcept
    {
        delete m_Object.load(std::memory_order_relaxed);
        m_Object.store(nullptr, std::memory_order_relaxed);
    }

private:
    mutable std::atomic<T const*> m_Object{nullptr};
};

} // namespace geometry
