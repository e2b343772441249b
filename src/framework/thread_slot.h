/* A value of its own for each thread, made at its first use there and freed with the thread. */
#pragma once

#include <windows.h>

namespace tavix {

/*
 * T is default-constructed. Lives in fiber-local storage: its callback runs at the end of a
 * thread and, for all threads at once, when the library is unloaded, which the language's own
 * thread_local does not promise for a DLL. One static object a value.
 */
template <class T>
class ThreadSlot {
public:
    ThreadSlot() : m_index(::FlsAlloc(&Free)) {}
    ~ThreadSlot() { ::FlsFree(m_index); }
    ThreadSlot(const ThreadSlot&) = delete;
    ThreadSlot& operator=(const ThreadSlot&) = delete;

    T& Get() {
        if (void* value = ::FlsGetValue(m_index)) return *static_cast<T*>(value);
        T* made = new T();
        ::FlsSetValue(m_index, made);
        return *made;
    }

private:
    static void CALLBACK Free(void* value) { delete static_cast<T*>(value); }

    DWORD m_index;
};

}  // namespace tavix
