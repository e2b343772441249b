#include "tavixskin/framework/string.h"

#include <mbstring.h>

#include <cstring>
#include <utility>

CString::CString(const CString& other) { Assign(other.c_str(), other.m_length); }

CString::CString(CString&& other) noexcept
    : m_data(std::exchange(other.m_data, nullptr)),
      m_length(std::exchange(other.m_length, 0)),
      m_capacity(std::exchange(other.m_capacity, 0)) {}

CString::CString(const char* text) {
    if (text) Assign(text, static_cast<int>(std::strlen(text)));
}

CString::CString(const char* text, int length) { Assign(text, length); }

CString::~CString() { delete[] m_data; }

CString& CString::operator=(const CString& other) {
    if (this != &other) Assign(other.c_str(), other.m_length);
    return *this;
}

CString& CString::operator=(CString&& other) noexcept {
    std::swap(m_data, other.m_data);
    std::swap(m_length, other.m_length);
    std::swap(m_capacity, other.m_capacity);
    return *this;
}

CString& CString::operator=(const char* text) {
    // The text may lie inside this very string, so it is copied before anything is freed.
    *this = CString(text);
    return *this;
}

CString& CString::operator+=(const char* text) {
    *this = *this + text;
    return *this;
}

void CString::Empty() noexcept {
    m_length = 0;
    if (m_data) m_data[0] = 0;
}

int CString::CompareNoCase(const char* other) const {
    return _mbsicmp(reinterpret_cast<const unsigned char*>(c_str()),
                    reinterpret_cast<const unsigned char*>(other));
}

char* CString::GetBuffer(int capacity) {
    Reserve(capacity);
    return m_data;
}

void CString::ReleaseBuffer(int length) {
    if (!m_data) return;
    m_length = length >= 0 ? length : static_cast<int>(std::strlen(m_data));
    m_data[m_length] = 0;
}

void CString::Assign(const char* text, int length) {
    if (length == 0) {
        Empty();
        return;
    }
    Reserve(length);
    std::memcpy(m_data, text, static_cast<std::size_t>(length));
    m_length = length;
    m_data[length] = 0;
}

void CString::Reserve(int capacity) {
    if (m_data && capacity <= m_capacity) return;
    char* grown = new char[static_cast<std::size_t>(capacity) + 1];
    if (m_data) std::memcpy(grown, m_data, static_cast<std::size_t>(m_length));
    grown[m_length] = 0;
    delete[] m_data;
    m_data = grown;
    m_capacity = capacity;
}

bool operator==(const CString& a, const CString& b) {
    return a.GetLength() == b.GetLength() && std::memcmp(a, b, static_cast<std::size_t>(a.GetLength())) == 0;
}

bool operator==(const CString& a, const char* b) { return std::strcmp(a, b) == 0; }

CString operator+(const CString& a, const char* b) {
    const int left = a.GetLength();
    const int right = static_cast<int>(std::strlen(b));
    CString sum;
    char* text = sum.GetBuffer(left + right);
    std::memcpy(text, a.c_str(), static_cast<std::size_t>(left));
    std::memcpy(text + left, b, static_cast<std::size_t>(right));
    sum.ReleaseBuffer(left + right);
    return sum;
}
