#include "tavixskin/framework/gdi.h"

#include <utility>

IMPLEMENT_DYNAMIC(CGdiObject, CObject)
IMPLEMENT_DYNAMIC(CBitmap, CGdiObject)
IMPLEMENT_DYNAMIC(CBrush, CGdiObject)
IMPLEMENT_DYNAMIC(CPen, CGdiObject)
IMPLEMENT_DYNAMIC(CFont, CGdiObject)
IMPLEMENT_DYNAMIC(CRgn, CGdiObject)
IMPLEMENT_DYNAMIC(CDC, CObject)

CGdiObject::~CGdiObject() {
    if (m_hObject) ::DeleteObject(m_hObject);
}

bool CGdiObject::Attach(HGDIOBJ object) {
    if (object != m_hObject) DeleteObject();
    m_hObject = object;
    return object != nullptr;
}

HGDIOBJ CGdiObject::Detach() { return std::exchange(m_hObject, nullptr); }

bool CGdiObject::DeleteObject() {
    HGDIOBJ object = Detach();
    return object && ::DeleteObject(object);
}

CSize CBitmap::GetBitmapSize() const {
    BITMAP facts{};
    if (!m_hObject || !::GetObjectA(m_hObject, sizeof facts, &facts)) return {};
    return {facts.bmWidth, facts.bmHeight};
}

int CRgn::CombineRgn(const CRgn& a, const CRgn& b, int mode) { return ::CombineRgn(*this, a, b, mode); }

int CRgn::OffsetRgn(int dx, int dy) { return ::OffsetRgn(*this, dx, dy); }

HDC CDC::Detach() { return std::exchange(m_hDC, nullptr); }

void CDC::FillSolidRect(const RECT& rect, COLORREF colour) {
    const COLORREF former = ::SetBkColor(m_hDC, colour);
    ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
    ::SetBkColor(m_hDC, former);
}

void CDC::FillRect(const RECT& rect, const CBrush& brush) { ::FillRect(m_hDC, &rect, brush); }

void CDC::Draw3dRect(const RECT& rect, COLORREF topLeft, COLORREF bottomRight) {
    FillSolidRect({rect.left, rect.top, rect.right - 1, rect.top + 1}, topLeft);
    FillSolidRect({rect.left, rect.top, rect.left + 1, rect.bottom - 1}, topLeft);
    FillSolidRect({rect.right - 1, rect.top, rect.right, rect.bottom}, bottomRight);
    FillSolidRect({rect.left, rect.bottom - 1, rect.right, rect.bottom}, bottomRight);
}

CMemoryDC::~CMemoryDC() {
    if (m_hDC) ::DeleteDC(m_hDC);
}

CClientDC::~CClientDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, m_hDC);
}

CWindowDC::~CWindowDC() {
    if (m_hDC) ::ReleaseDC(m_hWnd, m_hDC);
}

CPaintDC::CPaintDC(HWND window) : m_ps{}, m_hWnd(window) { m_hDC = ::BeginPaint(window, &m_ps); }

CPaintDC::~CPaintDC() {
    if (m_hDC) ::EndPaint(m_hWnd, &m_ps);
}
