// Which window gets which skin object.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include <cctype>

#include "commonctrls/list_view_skin.h"
#include "commonctrls/tab_ctrl_skin.h"
#include "commonctrls/tool_bar_skin.h"
#include "controls/animate_skin.h"
#include "controls/button_skin.h"
#include "controls/combo_box_skin.h"
#include "controls/drop_list_skin.h"
#include "controls/edit_skin.h"
#include "controls/group_box_skin.h"
#include "controls/header_skin.h"
#include "controls/list_box_skin.h"
#include "controls/static_skin.h"
#include "controls/trackbar_skin.h"
#include "engine/quiet_skins.h"
#include "engine_objects.h"
#include "frames/dialog_skin.h"
#include "frames/frame_skin.h"
#include "main/object_watch.h"
#include "scroll/skin_scroll_bar.h"
#include "support/common_controls.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

using namespace tavix_test;

namespace {

class ClassTable : public testing::Test {
protected:
    static void SetUpTestSuite() {
        INITCOMMONCONTROLSEX all{sizeof all, 0xFFFF};
        ::InitCommonControlsEx(&all);
    }
    // A window of a class that the platform has.
    HWND Make(const char* className, DWORD style = 0) {
        CLIENTCREATESTRUCT client{};
        HWND window = ::CreateWindowExA(0, className, "", WS_CHILD | style, 0, 0, 60, 30, m_parent, nullptr,
                                        ::GetModuleHandleA(nullptr), &client);
        EXPECT_NE(window, nullptr) << className;
        return window;
    }
    static bool IsNative(HWND window) { return !HeadOf(window); }

    Skinned m_skinned;
    ProbeWindow m_parent;
};

std::string Upper(std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
}
std::string Lower(std::string text) {
    for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return text;
}
std::string Mixed(std::string text) {
    for (std::size_t i = 0; i < text.size(); i += 2) text[i] = Upper(text)[i];
    for (std::size_t i = 1; i < text.size(); i += 2) text[i] = Lower(text)[i];
    return text;
}

// ---------------------------------------------------------------- a host's own classes

struct PaneRow {
    const char* name;
    const std::type_info* skin;
    bool refreshed;
};

const PaneRow kPaneRows[] = {
    {"Tavix_PaneA", &typeid(CSkinFrame), false},       {"Tavix_PaneB", &typeid(CSkinFrame), false},
    {"Tavix_PaneC", &typeid(CSkinFrame), false},       {"Tavix_PaneD", &typeid(CSkinClientWnd), false},
    {"Tavix_PaneE", &typeid(CSkinFrame), true},        {"Tavix_PaneF", &typeid(CSkinFrame), true},
    {"Tavix_PaneG", &typeid(CSkinFrame), true},        {"Tavix_PaneH", &typeid(CSkinClientWnd), false},
    {"Tavix_PaneI", &typeid(CSkinFrame), false},       {"Tavix_PaneJ", &typeid(CSkinFrame), false},
    {"Tavix_PaneK", &typeid(CSkinClientWnd), false},   {"Tavix_PaneL", &typeid(CSkinClientWnd), false},
    {"Tavix_PaneM", &typeid(CSkinClientWnd), false},   {"Tavix_PaneN", &typeid(CSkinClientWnd), false},
    {"AfxMDIFrame42d", &typeid(CSkinMDIFrame), false},
};

class PaneTable : public testing::TestWithParam<PaneRow> {
protected:
    Skinned m_skinned;
};

TEST_P(PaneTable, GivesTheClassItsSkinInAnyLetterCase) {
    const std::string name = GetParam().name;
    for (const std::string& spelling : {name, Upper(name), Lower(name), Mixed(name)}) {
        HostWindow window(spelling.c_str(), WS_OVERLAPPEDWINDOW);
        const CSkinWndBaseClass* head = HeadOf(window);
        ASSERT_NE(head, nullptr) << spelling;
        EXPECT_EQ(typeid(*head), *GetParam().skin) << spelling << " got " << typeid(*head).name();
        EXPECT_FALSE(window.IsNative());
        EXPECT_EQ(head->GetSafeHwnd(), window.Handle());
    }
}

// Counts the frame changes of the windows of one class.
class FrameWatch {
public:
    explicit FrameWatch(const char* className) {
        s_className = className;
        s_changes = 0;
        m_hook = ::SetWindowsHookExA(WH_CALLWNDPROC, &Procedure, nullptr, ::GetCurrentThreadId());
    }
    ~FrameWatch() { ::UnhookWindowsHookEx(m_hook); }
    int Changes() const { return s_changes; }

private:
    static LRESULT CALLBACK Procedure(int code, WPARAM wParam, LPARAM lParam) {
        const auto& sent = *reinterpret_cast<const CWPSTRUCT*>(lParam);
        char name[64] = {};
        ::GetClassNameA(sent.hwnd, name, sizeof name);
        if (code == HC_ACTION && sent.message == WM_WINDOWPOSCHANGING && s_className == name) {
            // A change of the window's region is a frame change too, but without activation.
            constexpr UINT kRefresh = SWP_NOSIZE | SWP_NOMOVE | SWP_FRAMECHANGED;
            if (reinterpret_cast<const WINDOWPOS*>(sent.lParam)->flags == kRefresh) ++s_changes;
        }
        return ::CallNextHookEx(nullptr, code, wParam, lParam);
    }
    static inline std::string s_className;
    static inline int s_changes;
    HHOOK m_hook;
};

// How often the frame of a window changes while it is created and destroyed.
int FrameChanges(const char* className) {
    FrameWatch watch(className);
    HostWindow window(className, WS_OVERLAPPEDWINDOW);
    EXPECT_TRUE(window.log.Has(WM_CREATE));
    return watch.Changes();
}

TEST_P(PaneTable, RefreshesTheFrameWhereTheTableSaysSo) {
    const int plainFrame = FrameChanges("Tavix_PaneA");
    const int changes = FrameChanges(GetParam().name);
    if (*GetParam().skin == typeid(CSkinFrame))
        EXPECT_EQ(changes - plainFrame, GetParam().refreshed ? 1 : 0);
    else
        EXPECT_EQ(changes, 0);
}

INSTANTIATE_TEST_SUITE_P(Rows, PaneTable, testing::ValuesIn(kPaneRows),
                         [](const testing::TestParamInfo<PaneRow>& row) {
                             return std::string(row.param.name);
                         });

TEST_F(ClassTable, ComparesWholeNames) {
    for (const char* name :
         {"Tavix_Pane", "Tavix_PaneO", "Tavix_PaneAA", "XTavix_PaneA", "Tavix PaneA", "Tavix-PaneA",
          "AfxFrameOrView42d", "AfxFrameOrView4", "AfxMDIFrame42", "AfxMDIFrame42dd", "Frame"}) {
        HostWindow window(name, WS_OVERLAPPEDWINDOW);
        EXPECT_TRUE(window.IsNative()) << name;
        EXPECT_EQ(HeadOf(window), nullptr) << name;
    }
}

TEST_F(ClassTable, LeavesALongNameAlone) {
    const std::string longest = "Tavix_PaneA" + std::string(244, 'x');
    ASSERT_EQ(longest.size(), 255u);
    HostWindow window(longest.c_str(), WS_OVERLAPPEDWINDOW);
    EXPECT_TRUE(window.IsNative());
}

TEST_F(ClassTable, GivesFramesAndViewsOfOneClassTheirOwn) {
    for (DWORD bit : {WS_BORDER, WS_DLGFRAME, WS_SYSMENU, WS_THICKFRAME, WS_MINIMIZEBOX, WS_MAXIMIZEBOX}) {
        HostWindow frame("AfxFrameOrView42", WS_CHILD | bit, m_parent);
        EXPECT_TRUE(HasSkin<CSkinFrame>(frame)) << std::hex << bit;
    }
    {
        HostWindow capitals("AFXFRAMEORVIEW42", WS_CHILD | WS_SYSMENU, m_parent);
        EXPECT_TRUE(HasSkin<CSkinFrame>(capitals));
    }
    HostWindow view("AfxFrameOrView42", WS_CHILD | WS_VSCROLL | WS_CLIPCHILDREN, m_parent);
    EXPECT_TRUE(HasSkin<CSkinListView>(view));
}

TEST_F(ClassTable, GivesListsTreesAndShellViewsOneSkin) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"SysListView32", "syslistview32", "SYSTREEVIEW32", "SysTreeView32"})
            EXPECT_TRUE(HasSkin<CSkinListView>(Make(name))) << name;
    }
    HostWindow shellView("SHELLDLL_DEFVIEW", WS_CHILD, m_parent);
    EXPECT_TRUE(HasSkin<CSkinListView>(shellView));
}

TEST_F(ClassTable, RefreshesAFrameOfTheSharedClass) {
    EXPECT_EQ(FrameChanges("AfxFrameOrView42") - FrameChanges("Tavix_PaneA"), 1);
}

// ---------------------------------------------------------------- the platform's classes

TEST_F(ClassTable, GivesDialogsTheirSkin) {
    HWND dialog = ::CreateWindowExA(0, "#32770", "", WS_POPUP | WS_CAPTION, 0, 0, 90, 60, m_parent, nullptr,
                                    nullptr, nullptr);
    EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
    ::DestroyWindow(dialog);
}

TEST_F(ClassTable, GivesEveryButtonButTheGroupBoxTheButtonSkin) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (DWORD type = 0; type <= 0xF; ++type) {
            HWND button = Make("BUTTON", type);
            EXPECT_EQ(HasSkin<CSkinButton>(button), type != BS_GROUPBOX)
                << NameOf(version) << " type " << type;
            EXPECT_EQ(HasSkin<CSkinGroupBox>(button), type == BS_GROUPBOX)
                << NameOf(version) << " type " << type;
            ::DestroyWindow(button);
        }
        // Only the type counts, whatever else the style holds.
        EXPECT_TRUE(
            HasSkin<CSkinButton>(Make("BuTtOn", BS_AUTOCHECKBOX | BS_PUSHLIKE | BS_MULTILINE | WS_DISABLED)));
        EXPECT_TRUE(HasSkin<CSkinGroupBox>(Make("button", BS_GROUPBOX | BS_PUSHLIKE | WS_TABSTOP)));
    }
}

TEST_F(ClassTable, GivesListBoxesTheirSkinWhateverTheirStyle) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"ListBox", "LISTBOX", "listbox"})
            EXPECT_TRUE(HasSkin<CSkinListBox>(Make(name))) << name;
        for (DWORD style : {LBS_MULTIPLESEL, LBS_EXTENDEDSEL, LBS_MULTICOLUMN, LBS_OWNERDRAWFIXED, LBS_SORT})
            EXPECT_TRUE(HasSkin<CSkinListBox>(Make("ListBox", style))) << style;
    }
}

TEST_F(ClassTable, GivesTextsTheirSkins) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"Edit", "EDIT", "edit"}) EXPECT_TRUE(HasSkin<CSkinEdit>(Make(name))) << name;
        for (const char* name : {"Static", "STATIC", "static"})
            EXPECT_TRUE(HasSkin<CSkinStatic>(Make(name))) << name;
        EXPECT_TRUE(HasSkin<CSkinEdit>(Make("Edit", ES_MULTILINE | WS_VSCROLL)));
        EXPECT_TRUE(HasSkin<CSkinStatic>(Make("Static", SS_ICON)));
    }
}

TEST_F(ClassTable, GivesListsAndComboBoxesTheirSkins) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"ListBox", "LISTBOX", "listbox"})
            EXPECT_TRUE(HasSkin<CSkinListBox>(Make(name))) << name;
        for (const char* name : {"ComboBox", "Combobox", "COMBOBOX", "cOmBoBoX"}) {
            HWND combo = Make(name, CBS_DROPDOWN);
            ASSERT_TRUE(HasSkin<CSkinComboBox>(combo)) << name;
            COMBOBOXINFO parts{};
            parts.cbSize = sizeof parts;
            ASSERT_TRUE(::GetComboBoxInfo(combo, &parts));
            EXPECT_TRUE(HasSkin<CSkinDropList>(parts.hwndList));
            EXPECT_TRUE(HasSkin<CSkinEdit>(parts.hwndItem));
            const auto* skin = static_cast<const CSkinComboBox*>(HeadOf(combo));
            EXPECT_EQ(skin->editWnd, parts.hwndItem) << "paired with the edit";
            EXPECT_FALSE(skin->isComboBoxEx);
            ::SendMessageA(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>("One"));
            EXPECT_EQ(::SendMessageA(combo, CB_GETCOUNT, 0, 0), 1) << "and with the list";
            ::DestroyWindow(combo);
        }
        for (const char* name : {"ComboBoxEx32", "COMBOBOXEX32"}) {
            HWND outer = Make(name, CBS_DROPDOWNLIST);
            ASSERT_TRUE(HasSkin<CSkinComboBox>(outer)) << name;
            EXPECT_TRUE(static_cast<const CSkinComboBox*>(HeadOf(outer))->isComboBoxEx);
            HWND inner = ::FindWindowExA(outer, nullptr, "ComboBox", nullptr);
            ASSERT_TRUE(HasSkin<CSkinComboBox>(inner));
            EXPECT_FALSE(static_cast<const CSkinComboBox*>(HeadOf(inner))->isComboBoxEx);
            ::DestroyWindow(outer);
        }
        for (const char* name : {"ComboLBox", "COMBOLBOX"})
            EXPECT_TRUE(HasSkin<CSkinDropList>(Make(name))) << name << " without a combo box";
        // An edit's parent is a combo box only if its skin is one.
        HWND button = Make("Button");
        HWND inside =
            ::CreateWindowExA(0, "Edit", "", WS_CHILD, 0, 0, 9, 9, button, nullptr, nullptr, nullptr);
        EXPECT_TRUE(HasSkin<CSkinEdit>(inside));
    }
}

TEST_F(ClassTable, GivesQuietSkinsToUpDownAndMdiClient) {
    EXPECT_TRUE(HasSkin<CSkinClientWnd>(Make("msctls_updown32")));
    EXPECT_TRUE(HasSkin<CSkinClientWnd>(Make("MSCTLS_UPDOWN32")));
    EXPECT_TRUE(HasSkin<CSkinMDIClient>(Make("MDIClient")));
    EXPECT_TRUE(HasSkin<CSkinMDIClient>(Make("MDICLIENT")));
}

// The control becomes the framework's own window: no skin object, and no native procedure.
TEST_F(ClassTable, HandsScrollBarsOverToTheirOwnObject) {
    for (const char* name : {"ScrollBar", "SCROLLBAR", "scrollbar"}) {
        HWND bar = Make(name, SBS_VERT);
        EXPECT_TRUE(IsNative(bar)) << name;
        CWnd* object = CWnd::FromHandlePermanent(bar);
        ASSERT_NE(object, nullptr) << name;
        EXPECT_TRUE(object->IsKindOf(RUNTIME_CLASS(CSkinScrollBar))) << name;
        ::DestroyWindow(bar);
        EXPECT_EQ(CWnd::FromHandlePermanent(bar), nullptr) << name;
    }
}

TEST_F(ClassTable, GivesHeadersAndTrackbarsAndAnimationsTheirSkins) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"SysHeader32", "SYSHEADER32", "sysheader32"})
            EXPECT_TRUE(HasSkin<CSkinHeader>(Make(name))) << name;
        EXPECT_TRUE(HasSkin<CSkinAnimate>(Make("sysanimate32")));
        // Of the two rows for trackbars only the first counts.
        EXPECT_TRUE(HasSkin<CSkinTrackBar>(Make("msctls_trackbar32")));
        EXPECT_TRUE(HasSkin<CSkinTrackBar>(Make("MSCTLS_TRACKBAR32", TBS_VERT)));
    }
}

TEST_F(ClassTable, GivesToolBarsTheirSkinUnlessTheyEraseThemselves) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"ToolbarWindow32", "TOOLBARWINDOW32", "toolbarwindow32"}) {
            EXPECT_TRUE(HasSkin<CSkinToolBar>(Make(name))) << name;
            EXPECT_TRUE(HasSkin<CSkinToolBar>(Make(name, TBSTYLE_FLAT | TBSTYLE_TRANSPARENT | TBSTYLE_LIST)));
            EXPECT_TRUE(IsNative(Make(name, TBSTYLE_CUSTOMERASE))) << name;
            EXPECT_TRUE(IsNative(Make(name, TBSTYLE_CUSTOMERASE | TBSTYLE_FLAT)));
        }
    }
}

TEST_F(ClassTable, GivesTabControlsTheirSkin) {
    for (ControlsVersion version : {ControlsVersion::V5, ControlsVersion::V6}) {
        ControlsWorld world(version);
        for (const char* name : {"SysTabControl32", "SYSTABCONTROL32", "systabcontrol32"})
            EXPECT_TRUE(HasSkin<CSkinTabCtrl>(Make(name))) << NameOf(version) << " " << name;
    }
}

TEST_F(ClassTable, WorksForUnicodeWindows) {
    EXPECT_TRUE(
        HasSkin<CSkinButton>(CreateControl(Charset::Unicode, m_parent, "button", "", 0, {0, 0, 9, 9})));
    HWND dialog =
        ::CreateWindowExW(0, L"#32770", L"", WS_POPUP, 0, 0, 90, 60, m_parent, nullptr, nullptr, nullptr);
    EXPECT_TRUE(HasSkin<CSkinDialog>(dialog));
    ::DestroyWindow(dialog);
}

TEST_F(ClassTable, LeavesOtherControlsOfThePlatformAlone) {
    AllowPlatformLeak(1);  // Wine's "SysIPAddress32" keeps its font
    for (const char* name :
         {"tooltips_class32", "msctls_statusbar32", "msctls_progress32", "msctls_hotkey32",
          "SysDateTimePick32", "SysMonthCal32", "SysIPAddress32", "SysPager", "ReBarWindow32"}) {
        HWND window = Make(name);
        EXPECT_TRUE(IsNative(window)) << name;
        ::DestroyWindow(window);
    }
}

// ---------------------------------------------------------------- the call itself

char* Hint(const char* text) { return const_cast<char*>(text); }

// Windows that were there before the thread was skinned, so that no skin object has met them.
class AddControl : public testing::Test {
protected:
    void SetUp() override {
        m_dialog =
            ::CreateWindowExA(0, "#32770", "", WS_POPUP, 0, 0, 90, 60, nullptr, nullptr, nullptr, nullptr);
        m_button = CreateControl(Charset::Ansi, m_parent, "BUTTON", "", 0, {0, 0, 60, 20});
        ASSERT_EQ(::InstallTavixSkin(SharedSkin().Path()), 1);
        engine = CTavixSkin::GetCurrentThreadSkin();
        ASSERT_TRUE(IsNative(m_dialog));
        ASSERT_TRUE(IsNative(m_button));
    }
    void TearDown() override {
        ::DestroyWindow(m_dialog);
        ::DestroyWindow(m_button);
        ::UnInstallTavixSkin();
    }
    static bool IsNative(HWND window) { return !HeadOf(window); }

    ProbeWindow m_parent;
    HWND m_dialog = nullptr;
    HWND m_button = nullptr;
    CTavixSkin* engine = nullptr;
};

TEST_F(AddControl, WithoutAHintWalksTheTable) {
    EXPECT_EQ(engine->AddControl(m_button, nullptr), 1);
    EXPECT_TRUE(HasSkin<CSkinButton>(m_button));
    EXPECT_EQ(engine->AddControl(m_dialog, nullptr), 1);
    EXPECT_TRUE(HasSkin<CSkinDialog>(m_dialog));
}

TEST_F(AddControl, RefusesAWindowThatHasASkinObject) {
    EXPECT_EQ(engine->AddControl(m_dialog, nullptr), 1);
    CSkinWndBaseClass* head = HeadOf(m_dialog);
    EXPECT_EQ(engine->AddControl(m_dialog, nullptr), 0);
    EXPECT_EQ(engine->AddControl(m_dialog, Hint("DIALOG")), 0);
    EXPECT_EQ(engine->AddControl(m_dialog, Hint("other")), 0);
    EXPECT_EQ(HeadOf(m_dialog), head);
}

TEST_F(AddControl, OfAnUnknownClassAnswersOne) {
    EXPECT_EQ(engine->AddControl(m_parent, nullptr), 1);
    EXPECT_TRUE(IsNative(m_parent));
    EXPECT_EQ(engine->AddControl(nullptr, nullptr), 1);
    EXPECT_EQ(engine->AddControl(reinterpret_cast<HWND>(0x7FFFFFF0), nullptr), 1);
}

class DialogHint : public AddControl, public testing::WithParamInterface<const char*> {};

TEST_P(DialogHint, IsTakenInAnyLetterCase) {
    EXPECT_EQ(engine->AddControl(m_dialog, Hint(GetParam())), 1);
    EXPECT_TRUE(HasSkin<CSkinDialog>(m_dialog));
}

INSTANTIATE_TEST_SUITE_P(Spellings, DialogHint, testing::Values("Dialog", "DIALOG", "dialog", "dIALOg"));

TEST_F(AddControl, WithTheDialogHintAttachesToDialogsOnly) {
    EXPECT_EQ(engine->AddControl(m_button, Hint("DIALOG")), 1);
    EXPECT_EQ(engine->AddControl(m_button, Hint("Dialog")), 1);
    EXPECT_TRUE(IsNative(m_button));
}

TEST_F(AddControl, WithAnotherHintAttachesNothing) {
    for (const char* hint : {"", "Dialo", "Dialogs", "#32770", "Button"}) {
        EXPECT_EQ(engine->AddControl(m_dialog, Hint(hint)), 1) << hint;
        EXPECT_EQ(engine->AddControl(m_button, Hint(hint)), 1) << hint;
    }
    EXPECT_TRUE(IsNative(m_dialog));
    EXPECT_TRUE(IsNative(m_button));
}

TEST_F(AddControl, SecondFormTellsAndCreatesNothing) {
    EXPECT_EQ(engine->AddControl_1(m_dialog, nullptr), 1);
    EXPECT_EQ(engine->AddControl_1(m_dialog, Hint("DIALOG")), 1);
    EXPECT_EQ(engine->AddControl_1(nullptr, nullptr), 1);
    EXPECT_TRUE(IsNative(m_dialog));
    engine->AddControl(m_dialog, nullptr);
    EXPECT_EQ(engine->AddControl_1(m_dialog, nullptr), 0);
    EXPECT_EQ(engine->AddControl_1(m_dialog, Hint("anything")), 0);
}

}  // namespace
