/* Dialogs built in memory, without a resource. */
#pragma once

#include <windows.h>

#include <string_view>
#include <vector>

namespace gallery {

/* A place in a dialog, in dialog units. */
struct Place {
    short x, y, width, height;
};

class DialogTemplate {
public:
    /* The style is the dialog's own; the font, MS Shell Dlg in 8 points, is added here. */
    DialogTemplate(const char* title, DWORD style, short width, short height, DWORD extended_style = 0);

    /* Adds a control after those added before; the controls' order is the order of Tab. WS_CHILD and
       WS_VISIBLE are added to `style`. */
    DialogTemplate& add(const char* window_class, const char* text, int id, DWORD style, Place place);
    /* Where a child dialog goes in its parent. */
    DialogTemplate& move_to(short x, short y);

    /* Makes the dialog, modeless. Null on failure. */
    HWND create(HWND owner, DLGPROC procedure) const;

private:
    DLGTEMPLATE& header() { return *reinterpret_cast<DLGTEMPLATE*>(words_.data()); }
    void append(const void* data, size_t bytes);
    void append_text(std::string_view text);
    void align();

    std::vector<WORD> words_;  // the template as the system reads it
};

/* The procedure of a dialog that only looks nice: OK, Cancel and the close button end it. */
INT_PTR CALLBACK plain_dialog_procedure(HWND dialog, UINT message, WPARAM wparam, LPARAM lparam);

}  // namespace gallery
