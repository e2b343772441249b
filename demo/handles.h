/* Owners of the platform's handles: each gives back what it holds when it ends. */
#pragma once

#include <windows.h>

#include <memory>

namespace gallery {

struct GdiObjectDeleter {
    void operator()(void* object) const { DeleteObject(object); }
};
template <class Handle>
using OwnedGdi = std::unique_ptr<std::remove_pointer_t<Handle>, GdiObjectDeleter>;
using OwnedBitmap = OwnedGdi<HBITMAP>;
using OwnedBrush = OwnedGdi<HBRUSH>;
using OwnedFont = OwnedGdi<HFONT>;
using OwnedPen = OwnedGdi<HPEN>;

struct MemoryDcDeleter {
    void operator()(HDC dc) const { DeleteDC(dc); }
};
using OwnedMemoryDc = std::unique_ptr<std::remove_pointer_t<HDC>, MemoryDcDeleter>;

struct MenuDeleter {
    void operator()(HMENU menu) const { DestroyMenu(menu); }
};
using OwnedMenu = std::unique_ptr<std::remove_pointer_t<HMENU>, MenuDeleter>;

/* For a window that may also end on its own, by the user's hand. */
struct WindowDeleter {
    void operator()(HWND window) const {
        if (IsWindow(window)) DestroyWindow(window);
    }
};
using OwnedWindow = std::unique_ptr<std::remove_pointer_t<HWND>, WindowDeleter>;

struct ModuleDeleter {
    void operator()(HMODULE module) const { FreeLibrary(module); }
};
using OwnedModule = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleDeleter>;

struct FileDeleter {
    using pointer = HANDLE;
    void operator()(HANDLE file) const {
        if (file != INVALID_HANDLE_VALUE) CloseHandle(file);
    }
};
using OwnedFile = std::unique_ptr<HANDLE, FileDeleter>;

/* The screen's device context. */
class ScreenDc {
public:
    ScreenDc() : dc_(GetDC(nullptr)) {}
    ~ScreenDc() {
        if (dc_) ReleaseDC(nullptr, dc_);
    }
    ScreenDc(const ScreenDc&) = delete;
    ScreenDc& operator=(const ScreenDc&) = delete;
    operator HDC() const { return dc_; }

private:
    HDC dc_;
};

/* Between BeginPaint and EndPaint. */
class PaintDc {
public:
    explicit PaintDc(HWND window) : window_(window) { BeginPaint(window, &paint_); }
    ~PaintDc() { EndPaint(window_, &paint_); }
    PaintDc(const PaintDc&) = delete;
    PaintDc& operator=(const PaintDc&) = delete;
    operator HDC() const { return paint_.hdc; }

private:
    HWND window_;
    PAINTSTRUCT paint_;
};

/* Selects an object into a device context and puts the former one back on every way out. */
class Selection {
public:
    Selection(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
    ~Selection() {
        if (former_) SelectObject(dc_, former_);
    }
    Selection(const Selection&) = delete;
    Selection& operator=(const Selection&) = delete;

private:
    HDC dc_;
    HGDIOBJ former_;
};

}  // namespace gallery
