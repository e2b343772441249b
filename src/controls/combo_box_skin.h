/* CSkinComboBox: the skin of "ComboBox" and "ComboBoxEx32" windows. */
#pragma once

#include "engine/skin_wnd_base.h"
#include "engine/window_call.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/string.h"

class CSkinDropList;

namespace tavix {
/* Private messages from the list to its combo box: a choice (the index in wParam), and a spare one. */
constexpr UINT kListChoice = 0x701, kListSpare = 0x702;
}  // namespace tavix

/*
 * Paints the combo box and runs its mouse, keyboard, text and selection. The native control stays
 * the owner of its list and edit windows, and opens and closes the list. The selection is the
 * current item of the list's skin, the strings are in the list window.
 *
 * Hosts hear of what happens in the middle of it, and may destroy the combo box.
 */
class CSkinComboBox : public CSkinWndBaseClass {
    DECLARE_DYNAMIC(CSkinComboBox)
public:
    CSkinComboBox();
    ~CSkinComboBox() override;

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

    /* For the factory and the list. */
    void TakeList(CSkinDropList* list, HWND window);
    void ForgetList(const CSkinDropList* list);
    bool IsOwnerDrawn() const { return ownerDrawn != FALSE; }

    HWND editWnd = nullptr;     // set by the factory; null for a combo box without an edit
    BOOL isComboBoxEx = FALSE;  // set by the factory: only the window's shape is the skin's

private:
    LRESULT OnCreate(WPARAM wParam, LPARAM lParam);
    LRESULT OnSize(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetFocus();
    LRESULT OnEnable(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetText(const char* newText);
    LRESULT OnGetText(WPARAM size, char* buffer) const;
    LRESULT OnPaint();
    LRESULT OnDrawItem(WPARAM wParam, LPARAM lParam);
    LRESULT OnNcPaint();
    LRESULT OnKeyDown(WPARAM key);
    LRESULT OnTimer(WPARAM wParam, LPARAM lParam);
    LRESULT OnDoubleClick(WPARAM wParam, LPARAM lParam);
    LRESULT OnDeleteString(WPARAM wParam, LPARAM lParam);
    LRESULT OnResetContent(WPARAM wParam, LPARAM lParam);
    LRESULT OnShowDropDown(WPARAM wParam, LPARAM lParam);
    LRESULT OnSetTopIndex(WPARAM top);

    void TrackArrow(const POINT& point);
    void OnHoverTimer();
    void OnClick(const POINT& point);
    void OnFrameClick(const POINT& point);
    void ShapeWindow();
    void FitEdit();
    void CutShape();
    void ExcludeParts(HDC dc) const;
    int SelectItem(int item);
    int SelectPrefix(int start, const char* prefix);
    void AfterDelete();
    void OnListChoice(int item);

    bool IsOpen() const { return tavix::CallWindow(m_hWnd, CB_GETDROPPEDSTATE) != 0; }
    void ShowList(bool open) const { ::SendMessageA(m_hWnd, CB_SHOWDROPDOWN, open, 0); }
    void FocusContent() const;
    void OpenList() const;
    void CloseUnderPress() const;
    void NotifyParent(WORD code) const;
    HWND Edit() const;
    HWND ListWindow() const;
    CString EditText() const;
    int Count() const;
    int CurrentItem() const;
    CRect Client() const;
    bool IsAlive() const { return m_hWnd && ::IsWindow(m_hWnd); }

    DWORD style = 0;       // as the window had it at WM_CREATE
    DWORD exStyle = 0;     // the same; only kept
    UINT_PTR timerId = 0;  // of the hover timer
    int arrowWidth;        // of the arrow's hit area
    BOOL hot = FALSE;      // the pointer is over the arrow; the timer runs
    BOOL ownerDrawn = FALSE;
    CString text;                       // shown without an edit
    CSkinDropList* dropList = nullptr;  // not owned; the list's skin
    HWND dropListWnd = nullptr;
    int shaping = 0;  // depth of ShapeWindow, which moves the edit and so may cause sizing
};
