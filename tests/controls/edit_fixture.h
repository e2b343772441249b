/* What the tests of edits share. */
#pragma once

#include "controls/edit_skin.h"
#include "controls/text_fixture.h"

namespace tavix_test {

class EditTest : public TextTest {
protected:
    HWND MakeEdit(DWORD style = 0, const RECT& place = kTextPlace, DWORD exStyle = 0) {
        return MakeEditIn(Parent(), style, place, exStyle);
    }
    HWND MakeEditIn(HWND parent, DWORD style = 0, const RECT& place = kTextPlace, DWORD exStyle = 0) {
        HWND edit = MakeIn(parent, "Edit", style, place, "Text", exStyle);
        EXPECT_NE(SkinOf<CSkinEdit>(edit), nullptr);
        return edit;
    }
    static DWORD StyleOf(HWND window) { return static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)); }
    static DWORD ExStyleOf(HWND window) { return static_cast<DWORD>(::GetWindowLongA(window, GWL_EXSTYLE)); }
    /* What a dialog with that skin holds; it ends with the object. */
    class Dialog {
    public:
        Dialog()
            : m_window(::CreateWindowExA(0, "#32770", "", WS_POPUP | WS_VISIBLE, 100, 100, 400, 300, nullptr,
                                         nullptr, nullptr, nullptr)) {}
        ~Dialog() { ::DestroyWindow(m_window); }
        Dialog(const Dialog&) = delete;
        Dialog& operator=(const Dialog&) = delete;
        operator HWND() const { return m_window; }

    private:
        HWND m_window;
    };
};

}  // namespace tavix_test
