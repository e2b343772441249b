/* A slim lock for data that many threads read and few change. */
#pragma once

#include <windows.h>

namespace tavix {

/*
 * Guards plain data only: whoever holds it sends no message, calls nothing that may wait for the
 * loader, and takes no other lock.
 */
class SrwLock {
public:
    SrwLock() = default;
    SrwLock(const SrwLock&) = delete;
    SrwLock& operator=(const SrwLock&) = delete;

    /* Reads, beside other readers. */
    class Shared {
    public:
        explicit Shared(SrwLock& lock) : m_lock(lock) { ::AcquireSRWLockShared(&m_lock.m_lock); }
        ~Shared() { ::ReleaseSRWLockShared(&m_lock.m_lock); }
        Shared(const Shared&) = delete;
        Shared& operator=(const Shared&) = delete;

    private:
        SrwLock& m_lock;
    };

    /* Changes, alone. */
    class Exclusive {
    public:
        explicit Exclusive(SrwLock& lock) : m_lock(lock) { ::AcquireSRWLockExclusive(&m_lock.m_lock); }
        ~Exclusive() { ::ReleaseSRWLockExclusive(&m_lock.m_lock); }
        Exclusive(const Exclusive&) = delete;
        Exclusive& operator=(const Exclusive&) = delete;

    private:
        SrwLock& m_lock;
    };

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

}  // namespace tavix
