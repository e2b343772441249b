#include "tavixskin/framework/containers.h"

IMPLEMENT_DYNAMIC(CMapWordToPtr, CObject)
IMPLEMENT_DYNAMIC(CMapPtrToPtr, CObject)

const CRuntimeClass CStringArray::classCStringArray = {"CStringArray", static_cast<int>(sizeof(CStringArray)),
                                                       0xFFFF, RUNTIME_CLASS(CObject)};
const CRuntimeClass* CStringArray::GetRuntimeClass() const { return RUNTIME_CLASS(CStringArray); }

// A block is its header and, right behind it, `m_nBlockSize` elements.
struct CMapToPtrBase::Block {
    Block* next;
    Element* Elements() { return reinterpret_cast<Element*>(this + 1); }
};

CMapToPtrBase::CMapToPtrBase(int blockSize) : m_nBlockSize(blockSize > 0 ? blockSize : 10) {}

CMapToPtrBase::~CMapToPtrBase() { RemoveAll(); }

void CMapToPtrBase::RemoveAll() {
    while (m_pBlocks) {
        Block* block = m_pBlocks;
        m_pBlocks = block->next;
        ::operator delete(block);
    }
    delete[] m_pBuckets;
    m_pBuckets = nullptr;
    m_nBuckets = 0;
    m_pFree = nullptr;
    m_nCount = 0;
}

CMapToPtrBase::Element* CMapToPtrBase::Allocate() {
    if (!m_pFree) {
        const std::size_t count = static_cast<std::size_t>(m_nBlockSize);
        Block* block = static_cast<Block*>(::operator new(sizeof(Block) + count * sizeof(Element)));
        block->next = m_pBlocks;
        m_pBlocks = block;
        for (std::size_t i = 0; i < count; ++i) {
            Element* e = new (block->Elements() + i) Element{m_pFree, 0, nullptr};
            m_pFree = e;
        }
    }
    Element* e = m_pFree;
    m_pFree = e->next;
    return e;
}

void CMapToPtrBase::Rehash(std::size_t buckets) {
    Element** former = m_pBuckets;
    const std::size_t formerCount = m_nBuckets;
    m_pBuckets = new Element*[buckets]();
    m_nBuckets = buckets;
    for (std::size_t i = 0; i < formerCount; ++i) {
        while (Element* e = former[i]) {
            former[i] = e->next;
            e->next = m_pBuckets[Bucket(e->key)];
            m_pBuckets[Bucket(e->key)] = e;
        }
    }
    delete[] former;
}

void*& CMapToPtrBase::At(std::uintptr_t key) {
    if (const Element* found = Find(key)) return const_cast<Element*>(found)->value;
    if (static_cast<std::size_t>(m_nCount) >= 2 * m_nBuckets) Rehash(m_nBuckets ? 4 * m_nBuckets : 16);
    Element* e = Allocate();
    Element*& bucket = m_pBuckets[Bucket(key)];
    *e = {bucket, key, nullptr};
    bucket = e;
    ++m_nCount;
    return e->value;
}

bool CMapToPtrBase::Remove(std::uintptr_t key) {
    if (!m_pBuckets) return false;
    for (Element** link = &m_pBuckets[Bucket(key)]; *link; link = &(*link)->next) {
        Element* e = *link;
        if (e->key != key) continue;
        *link = e->next;
        e->next = m_pFree;
        m_pFree = e;
        --m_nCount;
        return true;
    }
    return false;
}

POSITION CMapToPtrBase::GetStartPosition() const {
    if (!m_pBuckets) return nullptr;
    for (std::size_t i = 0; i < m_nBuckets; ++i)
        if (m_pBuckets[i]) return reinterpret_cast<POSITION>(m_pBuckets[i]);
    return nullptr;
}

void CMapToPtrBase::Next(POSITION& position, std::uintptr_t& key, void*& value) const {
    const Element* e = reinterpret_cast<const Element*>(position);
    key = e->key;
    value = e->value;
    const Element* next = e->next;
    for (std::size_t i = Bucket(e->key) + 1; !next && i < m_nBuckets; ++i) next = m_pBuckets[i];
    position = reinterpret_cast<POSITION>(const_cast<Element*>(next));
}
