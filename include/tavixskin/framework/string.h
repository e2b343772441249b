/* CString: an owned, zero-terminated narrow string in the ANSI code page. */
#pragma once

#include <windows.h>

#include "tavixskin/export.h"

class TAVIX_API CString {
public:
    CString() noexcept = default;
    CString(const CString& other);
    CString(CString&& other) noexcept;
    /* A null pointer counts as the empty string. */
    CString(const char* text);
    /* The first `length` characters of `text`. */
    CString(const char* text, int length);
    ~CString();

    CString& operator=(const CString& other);
    CString& operator=(CString&& other) noexcept;
    CString& operator=(const char* text);
    CString& operator+=(const char* text);

    /* Length in bytes, without the terminator. */
    int GetLength() const noexcept { return m_length; }
    bool IsEmpty() const noexcept { return m_length == 0; }
    void Empty() noexcept;
    char GetAt(int index) const { return c_str()[index]; }
    const char* c_str() const noexcept { return m_data ? m_data : ""; }
    operator const char*() const noexcept { return c_str(); }

    /* Multi-byte aware, in the ANSI code page; the result as of strcmp. */
    int CompareNoCase(const char* other) const;

    /*
     * A buffer of at least `capacity` characters and a terminator, holding the text. Write to
     * it and call ReleaseBuffer before any other use.
     */
    char* GetBuffer(int capacity);
    /* Sets the length to `length`, or to the place of the terminator if that is -1. */
    void ReleaseBuffer(int length = -1);

private:
    void Assign(const char* text, int length);
    void Reserve(int capacity);

    char* m_data = nullptr;
    int m_length = 0;
    int m_capacity = 0;
};

TAVIX_API bool operator==(const CString& a, const CString& b);
TAVIX_API bool operator==(const CString& a, const char* b);
TAVIX_API CString operator+(const CString& a, const char* b);
