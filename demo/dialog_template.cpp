#include "dialog_template.h"

#include <cstring>

#include "text.h"

namespace gallery {

namespace {

constexpr WORD font_points = 8;
constexpr char font_name[] = "MS Shell Dlg";

}  // namespace

DialogTemplate::DialogTemplate(const char* title, DWORD style, short width, short height,
                               DWORD extended_style) {
    DLGTEMPLATE head = {};
    head.style = style | DS_SETFONT;
    head.dwExtendedStyle = extended_style;
    head.cx = width;
    head.cy = height;
    append(&head, sizeof(head));
    words_.push_back(0);  // no menu
    words_.push_back(0);  // the class of dialogs
    append_text(title);
    words_.push_back(font_points);
    append_text(font_name);
}

DialogTemplate& DialogTemplate::add(const char* window_class, const char* text, int id, DWORD style,
                                    Place place) {
    align();
    DLGITEMTEMPLATE item = {};
    item.style = style | WS_CHILD | WS_VISIBLE;
    item.x = place.x;
    item.y = place.y;
    item.cx = place.width;
    item.cy = place.height;
    item.id = static_cast<WORD>(id);
    append(&item, sizeof(item));
    append_text(window_class);
    append_text(text);
    words_.push_back(0);  // no creation data
    ++header().cdit;
    return *this;
}

DialogTemplate& DialogTemplate::move_to(short x, short y) {
    header().x = x;
    header().y = y;
    return *this;
}

HWND DialogTemplate::create(HWND owner, DLGPROC procedure) const {
    return CreateDialogIndirectParamA(
        GetModuleHandleA(nullptr), reinterpret_cast<const DLGTEMPLATE*>(words_.data()), owner, procedure, 0);
}

void DialogTemplate::append(const void* data, size_t bytes) {
    const size_t end = words_.size();
    words_.resize(end + bytes / sizeof(WORD));
    std::memcpy(words_.data() + end, data, bytes);
}

void DialogTemplate::append_text(std::string_view text) {
    const std::wstring wide = widen(text);
    append(wide.c_str(), (wide.size() + 1) * sizeof(WORD));  // with the final zero
}

/* Each control starts on a boundary of four bytes. */
void DialogTemplate::align() {
    if (words_.size() % 2) words_.push_back(0);
}

INT_PTR CALLBACK plain_dialog_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM) {
    switch (message) {
        case WM_INITDIALOG:
            return TRUE;
        case WM_COMMAND:
            if (LOWORD(wparam) != IDOK && LOWORD(wparam) != IDCANCEL) return FALSE;
            DestroyWindow(dialog);
            return TRUE;
        case WM_CLOSE:
            DestroyWindow(dialog);
            return TRUE;
    }
    return FALSE;
}

}  // namespace gallery
