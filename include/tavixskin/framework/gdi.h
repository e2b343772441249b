/* Owners of GDI objects and device contexts. Each deletes what it holds when it ends. */
#pragma once

#include <windows.h>

#include "tavixskin/export.h"
#include "tavixskin/framework/geometry.h"
#include "tavixskin/framework/object.h"
#include "tavixskin/framework/string.h"

/* A GDI object that is owned: deleted with the wrapper unless detached before. */
class TAVIX_API CGdiObject : public CObject {
    DECLARE_DYNAMIC(CGdiObject)
public:
    CGdiObject() = default;
    ~CGdiObject() override;

    HGDIOBJ GetSafeHandle() const { return m_hObject; }
    /* Takes ownership; false for a null handle. What was held before is deleted. */
    bool Attach(HGDIOBJ object);
    /* Gives the handle and its ownership away. */
    HGDIOBJ Detach();
    /* Deletes the held object, if any. */
    virtual bool DeleteObject();

    HGDIOBJ m_hObject = nullptr;
};

class TAVIX_API CBitmap : public CGdiObject {
    DECLARE_DYNAMIC(CBitmap)
public:
    operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
    /* Width and height in pixels; 0 by 0 without a handle. */
    CSize GetBitmapSize() const;
};

class TAVIX_API CBrush : public CGdiObject {
    DECLARE_DYNAMIC(CBrush)
public:
    CBrush() = default;
    explicit CBrush(COLORREF colour) { CreateSolidBrush(colour); }
    bool CreateSolidBrush(COLORREF colour) { return Attach(::CreateSolidBrush(colour)); }
    operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};

class TAVIX_API CPen : public CGdiObject {
    DECLARE_DYNAMIC(CPen)
public:
    CPen() = default;
    CPen(int style, int width, COLORREF colour) { Attach(::CreatePen(style, width, colour)); }
    operator HPEN() const { return static_cast<HPEN>(m_hObject); }
};

class TAVIX_API CFont : public CGdiObject {
    DECLARE_DYNAMIC(CFont)
public:
    bool CreateFontIndirect(const LOGFONTA& font) { return Attach(::CreateFontIndirectA(&font)); }
    operator HFONT() const { return static_cast<HFONT>(m_hObject); }
};

class TAVIX_API CRgn : public CGdiObject {
    DECLARE_DYNAMIC(CRgn)
public:
    bool CreateRectRgn(int left, int top, int right, int bottom) {
        return Attach(::CreateRectRgn(left, top, right, bottom));
    }
    bool CreateRectRgn(const RECT& r) { return CreateRectRgn(r.left, r.top, r.right, r.bottom); }
    /* This region becomes `a` combined with `b`; all three need a handle. */
    int CombineRgn(const CRgn& a, const CRgn& b, int mode);
    int OffsetRgn(int dx, int dy);
    operator HRGN() const { return static_cast<HRGN>(m_hObject); }
};

/* A device context that is used but not owned. */
class TAVIX_API CDC : public CObject {
    DECLARE_DYNAMIC(CDC)
public:
    CDC() = default;
    explicit CDC(HDC dc) : m_hDC(dc) {}
    ~CDC() override = default;

    HDC GetSafeHdc() const { return m_hDC; }
    operator HDC() const { return m_hDC; }
    void Attach(HDC dc) { m_hDC = dc; }
    HDC Detach();

    /* Fills with one colour, through the context's background colour. */
    void FillSolidRect(const RECT& rect, COLORREF colour);
    void FillRect(const RECT& rect, const CBrush& brush);
    /* A frame of one pixel inside the rectangle: left and top in one colour, right and bottom in the other.
     */
    void Draw3dRect(const RECT& rect, COLORREF topLeft, COLORREF bottomRight);
    bool BitBlt(int x, int y, int width, int height, const CDC& from, int fromX, int fromY, DWORD rop) {
        return ::BitBlt(m_hDC, x, y, width, height, from.m_hDC, fromX, fromY, rop) != 0;
    }
    int DrawText(const char* text, int length, RECT& rect, UINT format) {
        return ::DrawTextA(m_hDC, text, length, &rect, format);
    }

    HDC m_hDC = nullptr;
};

/* A memory device context, deleted with the object. */
class TAVIX_API CMemoryDC : public CDC {
public:
    /* Compatible with `like`, or with the screen if that is null. m_hDC is null on failure. */
    explicit CMemoryDC(HDC like = nullptr) : CDC(::CreateCompatibleDC(like)) {}
    ~CMemoryDC() override;
};

/* The contexts of a window. m_hDC is null if the platform gives none. */
class TAVIX_API CClientDC : public CDC {
public:
    explicit CClientDC(HWND window) : CDC(::GetDC(window)), m_hWnd(window) {}
    ~CClientDC() override;

private:
    HWND m_hWnd;
};

class TAVIX_API CWindowDC : public CDC {
public:
    explicit CWindowDC(HWND window) : CDC(::GetWindowDC(window)), m_hWnd(window) {}
    ~CWindowDC() override;

private:
    HWND m_hWnd;
};

/* Between BeginPaint and EndPaint. */
class TAVIX_API CPaintDC : public CDC {
public:
    explicit CPaintDC(HWND window);
    ~CPaintDC() override;
    PAINTSTRUCT m_ps;

private:
    HWND m_hWnd;
};

/* Selects an object into a context and puts the former one back on every way out. */
class SelectionGuard {
public:
    SelectionGuard(HDC dc, HGDIOBJ object)
        : m_dc(dc), m_former(object ? ::SelectObject(dc, object) : nullptr) {}
    ~SelectionGuard() {
        if (m_former) ::SelectObject(m_dc, m_former);
    }
    /* False if nothing was selected: a null object, or one that the context refuses. */
    explicit operator bool() const { return m_former != nullptr; }
    SelectionGuard(const SelectionGuard&) = delete;
    SelectionGuard& operator=(const SelectionGuard&) = delete;

private:
    HDC m_dc;
    HGDIOBJ m_former;
};
