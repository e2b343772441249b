/* The painting of a skinned tool bar and of a skinned tab control beside that of native ones. */
#include <windows.h>

#include <commctrl.h>

#include "bench_window.h"
#include "benches.h"
#include "tavixskin/framework/gdi.h"
#include "tavixskin/framework/image_list.h"

namespace bench {

namespace {

constexpr int kButtons = 40, kTabs = 12;
constexpr int kImage = 16;

const CRect kToolBar{10, 10, 990, 48};
const CRect kTabControl{10, 60, 610, 300};

/* Images of a disc each, for all tool bars of the program. */
HIMAGELIST DiscImages() {
    static const HIMAGELIST images = [] {
        CMemoryDC dc;
        CBitmap bitmap;
        {
            const CRect area(0, 0, kImage * kButtons, kImage);
            const HDC screen = ::GetDC(nullptr);
            bitmap.Attach(::CreateCompatibleBitmap(screen, area.right, area.bottom));
            ::ReleaseDC(nullptr, screen);
            const SelectionGuard selected(dc, bitmap.GetSafeHandle());
            dc.FillSolidRect(area, RGB(255, 0, 255));
            for (int i = 0; i < kButtons; ++i) ::Ellipse(dc, i * kImage + 2, 2, i * kImage + 14, 14);
        }
        CImageList made;
        made.Create(kImage, kImage, ILC_COLOR24 | ILC_MASK, kButtons, 1);
        made.AddMasked(bitmap, RGB(255, 0, 255));
        return made.Detach();
    }();
    return images;
}

}  // namespace

HWND MakeToolBar(HWND parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_BAR_CLASSES};
    ::InitCommonControlsEx(&classes);
    HWND bar = ::CreateWindowExA(
        0, TOOLBARCLASSNAMEA, "", WS_CHILD | WS_VISIBLE | CCS_NODIVIDER | CCS_NORESIZE | CCS_NOPARENTALIGN,
        kToolBar.left, kToolBar.top, kToolBar.Width(), kToolBar.Height(), parent, nullptr, nullptr, nullptr);
    ::SendMessageA(bar, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    ::SendMessageA(bar, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(DiscImages()));
    ::SendMessageA(bar, TB_SETBUTTONSIZE, 0, MAKELPARAM(24, 24));
    // A few of them can't be used, and a few are checked.
    for (int i = 0; i < kButtons; ++i) {
        TBBUTTON button{};
        button.iBitmap = i;
        button.idCommand = 100 + i;
        button.fsState = i % 8 == 3 ? 0 : TBSTATE_ENABLED;
        button.fsStyle = i % 8 == 5 ? BTNS_CHECK : BTNS_BUTTON;
        if (button.fsStyle == BTNS_CHECK) button.fsState |= TBSTATE_CHECKED;
        button.iString = -1;
        ::SendMessageA(bar, TB_ADDBUTTONSA, 1, reinterpret_cast<LPARAM>(&button));
    }
    return bar;
}

HWND MakeTabControl(HWND parent) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_TAB_CLASSES};
    ::InitCommonControlsEx(&classes);
    HWND tabs =
        ::CreateWindowExA(0, WC_TABCONTROLA, "", WS_CHILD | WS_VISIBLE, kTabControl.left, kTabControl.top,
                          kTabControl.Width(), kTabControl.Height(), parent, nullptr, nullptr, nullptr);
    char text[] = "A tab";
    TCITEMA tab{};
    tab.mask = TCIF_TEXT;
    tab.pszText = text;
    for (int i = 0; i < kTabs; ++i)
        ::SendMessageA(tabs, TCM_INSERTITEMA, kTabs, reinterpret_cast<LPARAM>(&tab));
    return tabs;
}

void MeasureCommonControls(Report& report, const NativeWindows& native) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(0, 0, 1000, 310));
    HWND bar = MakeToolBar(parent), tabs = MakeTabControl(parent);
    ::SetWindowPos(native.commonParent, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Pump();
    const auto measure = [&](const char* name, HWND ours, HWND theirs) {
        report.AtMost(
            name, MeasureInTurns([=] { RepaintClient(ours); }, 10, [=] { RepaintClient(theirs); }, 10), 1.0);
    };
    measure("a tool bar of 40 buttons, painted whole; the native bar", bar, native.toolBar);
    measure("a tab control of 12 tabs, painted whole; the native control", tabs, native.tabControl);
}

}  // namespace bench
