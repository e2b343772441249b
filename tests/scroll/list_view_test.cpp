// The skin of list views, tree views and views of the shell: edges, scroll bars, frames.
#include <gtest/gtest.h>

#include <windows.h>

#include <commctrl.h>

#include "commonctrls/list_view_skin.h"
#include "host_fixture.h"
#include "support/common_controls.h"
#include "support/skinned_thread.h"
#include "tavixskin/tavix_skin.h"
#include "tavixskin/value_ids.h"

using namespace tavix_test;

namespace {

constexpr COLORREF kTopLeft = 0xC6D6D6;
constexpr COLORREF kBottomRight = 0xBDD6D6;
const CRect kPlace{20, 30, 220, 180};

struct View {
    const char* className;
    ControlsVersion controls;
    Charset charset;
};

std::string NameOfView(const testing::TestParamInfo<View>& info) {
    return std::string(info.param.className) + NameOf(info.param.controls) + NameOf(info.param.charset);
}

bool HasListViewSkin(HWND window) {
    const CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    const auto* head = const_cast<CTavixSkin*>(engine)->GetSkinWndList()->Lookup(window);
    return dynamic_cast<const CSkinListView*>(head) != nullptr;
}

class ListView : public testing::TestWithParam<View> {
protected:
    ListView() : m_world(GetParam().controls) {
        constexpr DWORD kClasses = ICC_LISTVIEW_CLASSES | ICC_TREEVIEW_CLASSES;
        const INITCOMMONCONTROLSEX classes{sizeof classes, kClasses};
        ::InitCommonControlsEx(&classes);
    }

    bool IsTree() const { return ::lstrcmpiA(GetParam().className, "SysTreeView32") == 0; }

    HWND Make(DWORD exStyle, const char* title = "", DWORD style = WS_VISIBLE) {
        style |= IsTree() ? TVS_HASLINES | TVS_HASBUTTONS : LVS_REPORT;
        HWND view = CreateControl(GetParam().charset, m_parent, GetParam().className, title, style, kPlace,
                                  100, exStyle);
        EXPECT_TRUE(HasListViewSkin(view));
        ::UpdateWindow(view);
        return view;
    }

    void Add(HWND view, int count) const {
        for (int i = 0; i < count; ++i) {
            char text[] = "one row";
            if (IsTree()) {
                TVINSERTSTRUCTA row{};
                row.hInsertAfter = TVI_LAST;
                row.item.mask = TVIF_TEXT;
                row.item.pszText = text;
                ::SendMessageA(view, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
            } else {
                if (i == 0) {
                    LVCOLUMNA column{};
                    column.mask = LVCF_WIDTH | LVCF_TEXT;
                    column.cx = 60;
                    column.pszText = text;
                    ::SendMessageA(view, LVM_INSERTCOLUMNA, 0, reinterpret_cast<LPARAM>(&column));
                }
                LVITEMA row{};
                row.mask = LVIF_TEXT;
                row.iItem = i;
                row.pszText = text;
                ::SendMessageA(view, LVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&row));
            }
        }
    }

    ControlsWorld m_world;
    HostSkin m_skin;
    ProbeWindow m_parent;
};

TEST_P(ListView, LosesItsNativeEdgeAndKeepsAPixelOfRoom) {
    for (DWORD edge : {WS_EX_CLIENTEDGE, WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE}) {
        HWND view = Make(edge);
        const DWORD exStyle = static_cast<DWORD>(::GetWindowLongA(view, GWL_EXSTYLE));
        EXPECT_EQ(exStyle & (WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE), 0u) << edge;
        CRect inside = kPlace;
        ::InflateRect(&inside, -1, -1);
        EXPECT_EQ(ClientPlaceOf(view), inside) << edge;
        ::DestroyWindow(view);
    }
}

// The system gives a window edge to a child with a sizing frame, and takes it from one without any.
TEST_P(ListView, KeepsAPixelOfRoomForAWindowEdgeAlone) {
    HWND plain =
        CreateControl(GetParam().charset, m_parent, "Static", "", WS_VISIBLE | WS_THICKFRAME, kPlace);
    ASSERT_EQ(::GetWindowLongA(plain, GWL_EXSTYLE) & (WS_EX_CLIENTEDGE | WS_EX_WINDOWEDGE), WS_EX_WINDOWEDGE);
    CRect inside = ClientPlaceOf(plain);
    ASSERT_LT(inside.Width(), kPlace.Width());
    ::InflateRect(&inside, -1, -1);
    EXPECT_EQ(ClientPlaceOf(Make(0, "", WS_VISIBLE | WS_THICKFRAME)), inside);
}

TEST_P(ListView, WithoutAnEdgeHasNoMargin) {
    EXPECT_EQ(ClientPlaceOf(Make(0)), kPlace);
    EXPECT_EQ(ClientPlaceOf(Make(WS_EX_STATICEDGE)).Size().cx, kPlace.Width() - 2) << "that edge stays";
}

TEST_P(ListView, OfAnyOtherTitleIsNotFramed) {
    for (const char* title : {"", "Tavix_PaneOO", "Tavix_Pane"}) {
        HWND view = Make(WS_EX_CLIENTEDGE, title);
        ::RedrawWindow(view, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
        const Picture picture = PictureOfWindow(view);
        EXPECT_EQ(picture.CountOf(kTopLeft), 0) << title;
        EXPECT_EQ(picture.CountOf(kBottomRight), 0) << title;
        ::DestroyWindow(view);
    }
}

TEST_P(ListView, OfTheHostsTitleIsFramedInItsMargin) {
    for (const char* title : {"Tavix_PaneO", "TAVIX_pANEo"}) {
        HWND view = Make(WS_EX_CLIENTEDGE, title);
        ::RedrawWindow(view, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
        const Picture picture = PictureOfWindow(view);
        const int right = picture.width - 1;
        const int bottom = picture.height - 1;
        for (int x = 0; x < right; ++x) ASSERT_EQ(picture.At(x, 0), kTopLeft) << x;
        for (int y = 0; y < bottom; ++y) ASSERT_EQ(picture.At(0, y), kTopLeft) << y;
        for (int x = 0; x <= right; ++x) ASSERT_EQ(picture.At(x, bottom), kBottomRight) << x;
        for (int y = 0; y <= bottom; ++y) ASSERT_EQ(picture.At(right, y), kBottomRight) << y;
        EXPECT_EQ(picture.CountOf(kTopLeft), right + bottom - 1);
        ::DestroyWindow(view);
    }
}

TEST_P(ListView, OfTheHostsTitleWithoutAnEdgeIsFramedOverItsClientArea) {
    HWND view = Make(0, "Tavix_PaneO");
    EXPECT_EQ(ClientPlaceOf(view), kPlace);
    ::SendMessageA(view, WM_NCPAINT, 1, 0);
    EXPECT_EQ(PictureOfClient(view).At(0, 0), kTopLeft);
    EXPECT_EQ(PictureOfClient(view).At(kPlace.Width() - 1, kPlace.Height() - 1), kBottomRight);
}

TEST_P(ListView, IsAScrollHostAndShowsItsBarsBesideItsClientArea) {
    HWND view = Make(WS_EX_CLIENTEDGE);
    ASSERT_TRUE(IsHost(view));
    const SCROLLHOST empty = RecordOf(view);
    EXPECT_FALSE(IsShown(empty.m_pVertBar->GetSafeHwnd()));

    Add(view, 40);
    const SCROLLHOST host = RecordOf(view);
    EXPECT_EQ(host.m_bVertShown, 1);
    HWND bar = host.m_pVertBar->GetSafeHwnd();
    EXPECT_TRUE(IsShown(bar));
    const CRect client = ClientPlaceOf(view);
    const int width = ::GetSystemMetrics(SM_CXVSCROLL);
    EXPECT_EQ(PlaceOf(bar), CRect(client.right, client.top, client.right + width, client.bottom));
    const SCROLLINFO native = NativeInfoOf(view, SB_VERT);
    EXPECT_EQ(host.m_pVertBar->m_nMax, native.nMax);
    EXPECT_EQ(host.m_pVertBar->m_nPage, static_cast<int>(native.nPage));
}

TEST_P(ListView, TakesItsBarsAlongWhenItIsHiddenAndShown) {
    HWND view = Make(0);
    Add(view, 40);
    const SCROLLHOST host = RecordOf(view);
    HWND vertical = host.m_pVertBar->GetSafeHwnd();
    HWND horizontal = host.m_pHorzBar->GetSafeHwnd();
    const bool hadHorizontal = IsShown(horizontal);
    ASSERT_TRUE(IsShown(vertical));

    ::ShowWindow(view, SW_HIDE);
    EXPECT_FALSE(IsShown(vertical));
    EXPECT_FALSE(IsShown(horizontal));
    ::ShowWindow(view, SW_SHOWNOACTIVATE);
    EXPECT_TRUE(IsShown(vertical));
    EXPECT_EQ(IsShown(horizontal), hadHorizontal) << "a bar that did not show stays away";

    // Any word but 1 hides: the second one finds nothing visible, and remembers that.
    ::SendMessageA(view, WM_SHOWWINDOW, 2, 0);
    EXPECT_FALSE(IsShown(vertical));
    ::SendMessageA(view, WM_SHOWWINDOW, 0, 0);
    ::SendMessageA(view, WM_SHOWWINDOW, 1, 0);
    EXPECT_FALSE(IsShown(vertical));
}

TEST_P(ListView, BarsEndWithTheWindowAtTheNextCallThatNamesIt) {
    HWND view = Make(0);
    Add(view, 40);
    HWND bar = RecordOf(view).m_pVertBar->GetSafeHwnd();
    ::DestroyWindow(view);
    EXPECT_EQ(::FindScrollHost(view, SB_VERT), -1);
    EXPECT_FALSE(::IsWindow(bar));
}

TEST_P(ListView, ScrollsByItsSkinBar) {
    HWND view = Make(0);
    Add(view, 40);
    const SCROLLHOST host = RecordOf(view);
    HWND bar = host.m_pVertBar->GetSafeHwnd();
    CRect client;
    ::GetClientRect(bar, &client);
    ClickMouse(bar, {client.right / 2, client.bottom - 5});
    EXPECT_TRUE(PumpUntil([&] { return NativeInfoOf(view, SB_VERT).nPos > 0; }));
    EXPECT_EQ(host.m_pVertBar->m_nPos, NativeInfoOf(view, SB_VERT).nPos);
    ParkMouse();
}

TEST_P(ListView, WithoutAParentKeepsItsNativeBars) {
    HWND view = ::CreateWindowExA(WS_EX_CLIENTEDGE, GetParam().className, "", WS_POPUP | LVS_REPORT, 0, 0,
                                  100, 60, nullptr, nullptr, nullptr, nullptr);
    ASSERT_TRUE(HasListViewSkin(view));
    EXPECT_FALSE(IsHost(view));
    Add(view, 40);
    ::ShowWindow(view, SW_SHOWNOACTIVATE);
    ::ShowWindow(view, SW_HIDE);
    EXPECT_TRUE(::GetWindowLongA(view, GWL_STYLE) & WS_VSCROLL);
    ::DestroyWindow(view);
}

INSTANTIATE_TEST_SUITE_P(Worlds, ListView,
                         testing::Values(View{"SysListView32", ControlsVersion::V5, Charset::Ansi},
                                         View{"SysListView32", ControlsVersion::V6, Charset::Unicode},
                                         View{"SysTreeView32", ControlsVersion::V5, Charset::Unicode},
                                         View{"SysTreeView32", ControlsVersion::V6, Charset::Ansi}),
                         NameOfView);

// ---------------------------------------------------------------- views that are the host's or the shell's

class ForeignView : public testing::TestWithParam<const char*> {
protected:
    HostSkin m_skin;
    ProbeWindow m_parent;
};

TEST_P(ForeignView, IsAHostAndAlwaysFramed) {
    Pane view(m_parent, GetParam());
    EXPECT_TRUE(HasListViewSkin(view));
    EXPECT_TRUE(IsHost(view));
    ::SendMessageA(view, WM_NCPAINT, 1, 0);
    const Picture picture = PictureOfWindow(view);
    EXPECT_EQ(picture.At(0, 0), kTopLeft);
    EXPECT_EQ(picture.At(picture.width - 1, picture.height - 1), kBottomRight);
}

// Both bars are wanted from then on.
SCROLLHOST GiveBothBars(HWND view) {
    const SCROLLINFO info = MakeInfo(SIF_ALL, 0, 100, 10, 5);
    for (int bar : {SB_HORZ, SB_VERT}) Client().SetScrollInfo(view, bar, &info, TRUE);
    return RecordOf(view);
}

// It is made a host twice: before it gets its skin, and by the skin.
TEST_P(ForeignView, HasItsBarsAboveIt) {
    Pane view(m_parent, GetParam());
    const SCROLLHOST host = GiveBothBars(view);
    std::vector<HWND> order;
    for (HWND w = ::GetTopWindow(m_parent); w; w = ::GetWindow(w, GW_HWNDNEXT)) order.push_back(w);
    EXPECT_EQ(order, (std::vector<HWND>{host.m_pStub->m_hWnd, host.m_pHorzBar->m_hWnd,
                                        host.m_pVertBar->m_hWnd, HWND{view}}));
    // So what shows there is the skin's bar, not the native one.
    for (const CSkinScrollBar* bar : {host.m_pHorzBar, host.m_pVertBar}) {
        ::RedrawWindow(view, nullptr, nullptr, RDW_INVALIDATE | RDW_FRAME | RDW_UPDATENOW);
        const CPoint inside = PlaceOf(bar->m_hWnd).TopLeft();
        EXPECT_EQ(::ChildWindowFromPoint(m_parent, inside), bar->m_hWnd);
        EXPECT_GT(PictureOfClient(bar->m_hWnd).CountOf(TestSkin::ColourOfBitmap(BMP_SB_ARROW_NORMAL)), 0);
    }
}

TEST_P(ForeignView, AnswersAsTheSkinDoes) {
    Pane view(m_parent, GetParam());
    view.handler = [](const Received& sent) -> std::optional<LRESULT> {
        // What the window answers is dropped for the first two, and handed on for the third.
        if (sent.message == WM_NCCALCSIZE || sent.message == WM_NCPAINT || sent.message == WM_SHOWWINDOW)
            return 77;
        return std::nullopt;
    };
    RECT area{0, 0, 50, 50};
    EXPECT_EQ(::SendMessageA(view, WM_NCCALCSIZE, FALSE, reinterpret_cast<LPARAM>(&area)), 0);
    EXPECT_EQ(::SendMessageA(view, WM_NCPAINT, 1, 0), 0);
    EXPECT_EQ(::SendMessageA(view, WM_SHOWWINDOW, 1, 0), 77);
}

TEST_P(ForeignView, IsCreatedWhateverItAnswers) {
    Pane view(m_parent, GetParam(), {20, 30, 220, 180}, WS_CHILD | WS_VISIBLE,
              [](const Received& sent) -> std::optional<LRESULT> {
                  if (sent.message == WM_CREATE) return -1;
                  return std::nullopt;
              });
    EXPECT_TRUE(::IsWindow(view));
    EXPECT_TRUE(IsHost(view));
}

TEST_P(ForeignView, HearsThatItIsShownAfterItsBarsHaveFollowed) {
    Pane view(m_parent, GetParam());
    const SCROLLHOST host = GiveBothBars(view);
    std::vector<bool> heard;
    view.handler = [&](const Received& sent) -> std::optional<LRESULT> {
        if (sent.message == WM_SHOWWINDOW)
            for (const CSkinScrollBar* bar : {host.m_pHorzBar, host.m_pVertBar})
                heard.push_back(IsShown(bar->m_hWnd));
        return std::nullopt;
    };
    ::ShowWindow(view, SW_HIDE);
    EXPECT_EQ(heard, (std::vector<bool>{false, false}));
    ::ShowWindow(view, SW_SHOW);
    EXPECT_EQ(heard, (std::vector<bool>{false, false, true, true}));
}

INSTANTIATE_TEST_SUITE_P(Classes, ForeignView, testing::Values("ShellDLL_DefView", "AfxFrameOrView42"));

}  // namespace
