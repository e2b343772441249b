/* HeapBlock: an owned block of the process heap. */
#pragma once

#include <windows.h>

#include <utility>

namespace tavix {

class HeapBlock {
public:
    HeapBlock() = default;
    HeapBlock(const HeapBlock&) = delete;
    HeapBlock& operator=(const HeapBlock&) = delete;
    ~HeapBlock() { Reset(); }

    void* Get() const { return m_block; }
    void Reset() {
        if (void* block = std::exchange(m_block, nullptr)) ::HeapFree(::GetProcessHeap(), 0, block);
    }
    /* Gives the block and its ownership away. */
    void* Release() { return std::exchange(m_block, nullptr); }
    /* For a call that hands out a block; what was held before is freed. */
    void** Put() {
        Reset();
        return &m_block;
    }

private:
    void* m_block = nullptr;
};

}  // namespace tavix
