/* A stream that says of itself what a test wants. */
#pragma once

#include <windows.h>

#include <objidl.h>

#include <algorithm>
#include <cstring>
#include <string>

namespace tavix_test {

class FakeStream : public IStream {
public:
    // What the operations answer.
    HRESULT statResult = S_OK, readResult = S_OK, seekResult = S_OK, sizeResult = S_OK, writeResult = S_OK;
    ULONGLONG size = 0;    // as Stat tells it
    ULONG readable = ~0u;  // Read gives no more than this
    // What happened.
    ULONG asked = 0;  // by the last Read
    int reads = 0;
    std::string calls;  // a letter each: s Stat, r Read, k Seek, z SetSize, w Write

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE Read(void* target, ULONG count, ULONG* got) override {
        calls += 'r';
        ++reads;
        asked = count;
        const ULONG given = std::min(count, readable);
        if (SUCCEEDED(readResult)) std::memset(target, 0xEE, given);
        if (got) *got = given;
        return readResult;
    }
    HRESULT STDMETHODCALLTYPE Write(const void*, ULONG, ULONG*) override { return calls += 'w', writeResult; }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override {
        return calls += 'k', seekResult;
    }
    HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return calls += 'z', sizeResult; }
    HRESULT STDMETHODCALLTYPE Stat(STATSTG* facts, DWORD) override {
        calls += 's';
        *facts = {};
        facts->cbSize.QuadPart = size;
        return statResult;
    }
    HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }
};

}  // namespace tavix_test
