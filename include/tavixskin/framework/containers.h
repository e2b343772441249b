/* Containers of plain values: a growing array and hash maps to pointers. */
#pragma once

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <type_traits>

#include "tavixskin/export.h"
#include "tavixskin/framework/object.h"
#include "tavixskin/framework/string.h"

/* A place in a map's own order; valid until that element is removed. */
struct PositionTag;
using POSITION = PositionTag*;

/*
 * An array that grows at its end. ARG_TYPE is how an element is handed in: the element itself,
 * a reference to it, or TYPE*, which is read through.
 */
template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray : public CObject {
public:
    CArray() = default;
    ~CArray() override { delete[] m_pData; }

    int GetSize() const { return m_nSize; }
    int GetUpperBound() const { return m_nSize - 1; }
    bool IsEmpty() const { return m_nSize == 0; }

    TYPE GetAt(int index) const { return m_pData[index]; }
    TYPE& ElementAt(int index) { return m_pData[index]; }
    TYPE operator[](int index) const { return m_pData[index]; }
    TYPE& operator[](int index) { return m_pData[index]; }
    void SetAt(int index, ARG_TYPE element) { m_pData[index] = Read(element); }

    /* Sets the element; the array grows to hold it, elements in between being empty. */
    void SetAtGrow(int index, ARG_TYPE element) {
        TYPE value = Read(element);
        Reserve(index + 1);
        for (; m_nSize <= index; ++m_nSize) m_pData[m_nSize] = TYPE();
        m_pData[index] = value;
    }

    /* Appends; the result is the new element's index. */
    int Add(ARG_TYPE element) {
        InsertAt(m_nSize, element);
        return m_nSize - 1;
    }

    /* Puts the element before the one at `index`; `index` is at most GetSize(). */
    void InsertAt(int index, ARG_TYPE element) {
        TYPE value = Read(element);
        Reserve(m_nSize + 1);
        for (int i = m_nSize; i > index; --i) m_pData[i] = m_pData[i - 1];
        m_pData[index] = value;
        ++m_nSize;
    }

    /* Removes elements from `index` on, keeping the order of the rest. */
    void RemoveAt(int index, int count = 1) {
        for (int i = index + count; i < m_nSize; ++i) m_pData[i - count] = m_pData[i];
        m_nSize -= count;
    }

    void RemoveAll() {
        delete[] m_pData;
        m_pData = nullptr;
        m_nSize = m_nMaxSize = 0;
    }

private:
    static TYPE Read(ARG_TYPE element) {
        if constexpr (std::is_same_v<ARG_TYPE, TYPE*>)
            return *element;
        else
            return static_cast<TYPE>(element);
    }

    void Reserve(int wanted) {
        if (wanted <= m_nMaxSize) return;
        int capacity = m_nMaxSize + m_nMaxSize / 2 + 4;
        if (capacity < wanted) capacity = wanted;
        TYPE* grown = new TYPE[static_cast<std::size_t>(capacity)]();
        for (int i = 0; i < m_nSize; ++i) grown[i] = m_pData[i];
        delete[] m_pData;
        m_pData = grown;
        m_nMaxSize = capacity;
    }

    TYPE* m_pData = nullptr;
    int m_nSize = 0;
    int m_nMaxSize = 0;
};

/* An array of strings. */
class TAVIX_API CStringArray : public CArray<CString, const char*> {
    DECLARE_DYNAMIC(CStringArray)
};

/*
 * The hash map behind both map classes: keys of one machine word, pointer values. Elements
 * come from blocks of `blockSize`, so that a look-up walks little memory and an insertion
 * seldom allocates. Not locked.
 */
class TAVIX_API CMapToPtrBase : public CObject {
public:
    explicit CMapToPtrBase(int blockSize);
    ~CMapToPtrBase() override;

    int GetCount() const { return m_nCount; }
    bool IsEmpty() const { return m_nCount == 0; }
    void RemoveAll();

    /* The first place in the map's own order, null if it is empty. */
    POSITION GetStartPosition() const;

protected:
    struct Element {
        Element* next;  // in the bucket, or in the free list
        std::uintptr_t key;
        void* value;
    };

    const Element* Find(std::uintptr_t key) const {
        if (!m_pBuckets) return nullptr;
        for (const Element* e = m_pBuckets[Bucket(key)]; e; e = e->next)
            if (e->key == key) return e;
        return nullptr;
    }
    void*& At(std::uintptr_t key);  // inserts a null value if the key is new
    bool Remove(std::uintptr_t key);
    void Next(POSITION& position, std::uintptr_t& key, void*& value) const;

private:
    std::size_t Bucket(std::uintptr_t key) const {
        // Handles and pointers differ in their middle bits, thread ids in their low ones.
        return (key ^ (key >> 4) ^ (key >> 9)) & (m_nBuckets - 1);
    }
    struct Block;
    Element* Allocate();
    void Rehash(std::size_t buckets);

    Element** m_pBuckets = nullptr;
    std::size_t m_nBuckets = 0;  // a power of two, kept above half the number of elements
    Block* m_pBlocks = nullptr;
    Element* m_pFree = nullptr;
    int m_nCount = 0;
    int m_nBlockSize;
};

/* A map from 16-bit keys. */
class TAVIX_API CMapWordToPtr : public CMapToPtrBase {
    DECLARE_DYNAMIC(CMapWordToPtr)
public:
    explicit CMapWordToPtr(int blockSize = 10) : CMapToPtrBase(blockSize) {}
    bool Lookup(WORD key, void*& value) const {
        const Element* found = Find(key);
        if (found) value = found->value;
        return found != nullptr;
    }
    void SetAt(WORD key, void* value) { At(key) = value; }
    bool RemoveKey(WORD key) { return Remove(key); }
    void GetNextAssoc(POSITION& position, WORD& key, void*& value) const {
        std::uintptr_t word = 0;
        Next(position, word, value);
        key = static_cast<WORD>(word);
    }
};

/* A map from pointers or handles. */
class TAVIX_API CMapPtrToPtr : public CMapToPtrBase {
    DECLARE_DYNAMIC(CMapPtrToPtr)
public:
    explicit CMapPtrToPtr(int blockSize = 10) : CMapToPtrBase(blockSize) {}
    bool Lookup(void* key, void*& value) const {
        const Element* found = Find(reinterpret_cast<std::uintptr_t>(key));
        if (found) value = found->value;
        return found != nullptr;
    }
    void SetAt(void* key, void* value) { At(reinterpret_cast<std::uintptr_t>(key)) = value; }
    bool RemoveKey(void* key) { return Remove(reinterpret_cast<std::uintptr_t>(key)); }
    void GetNextAssoc(POSITION& position, void*& key, void*& value) const {
        std::uintptr_t word = 0;
        Next(position, word, value);
        key = reinterpret_cast<void*>(word);
    }
};
