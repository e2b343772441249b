/* ComPtr: an owned reference to a COM interface, released when it ends. */
#pragma once

#include <utility>

namespace tavix {

template <class Interface>
class ComPtr {
public:
    ComPtr() = default;
    ComPtr(ComPtr&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    ComPtr& operator=(ComPtr&& other) noexcept {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~ComPtr() { Reset(); }

    Interface* Get() const { return m_object; }
    Interface* operator->() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }

    void Reset() {
        if (Interface* object = std::exchange(m_object, nullptr)) object->Release();
    }
    /* For a call that hands out a reference; what was held before is released. */
    Interface** Put() {
        Reset();
        return &m_object;
    }

private:
    Interface* m_object = nullptr;
};

}  // namespace tavix
