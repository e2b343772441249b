/* Dialogs from their birth to their end: modal, late, destroyed in the middle of things, many. */
#include <array>
#include <vector>

#include "frames/host_dialog.h"
#include "frames/host_frame.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {
namespace {

/* How many windows of the thread have skin objects. */
int SkinnedWindows() {
    return static_cast<int>(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->GetCount());
}

class DialogLife : public DialogTest {};

TEST_F(DialogLife, CreateAndInitDialogMakeOneSkinObject) {
    const int before = SkinnedWindows();
    HostDialog dialog;
    EXPECT_TRUE(IsSkinned(dialog));
    EXPECT_EQ(SkinnedWindows(), before + 1);
    CSkinWndBaseClass* const skinObject =
        CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(dialog);
    dialog.Send(WM_INITDIALOG);
    EXPECT_EQ(CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(dialog), skinObject);
    ::DestroyWindow(dialog);
    EXPECT_EQ(SkinnedWindows(), before);
}

TEST_F(DialogLife, ASecondInitDialogKeepsTheButtonsThatTheFirstOneFound) {
    HostDialog dialog;
    ASSERT_EQ(dialog.WindowStyle() & kAllDialogButtons, 0u);
    dialog.Send(WM_INITDIALOG);
    for (const LRESULT code : kButtonCodes) EXPECT_FALSE(dialog.Button(code).IsRectEmpty()) << code;
}

class ModalDialog : public DialogTest, public testing::WithParamInterface<Charset> {};
INSTANTIATE_TEST_SUITE_P(Charsets, ModalDialog, testing::Values(Charset::Ansi, Charset::Unicode),
                         [](const auto& info) { return std::string(NameOf(info.param)); });

TEST_P(ModalDialog, IsSkinnedAndReturnsItsResult) {
    bool skinned = false;
    COLORREF corner = 0;
    std::string title(16, '\0');
    const INT_PTR result = HostDialog::RunModal(
        {.style = kDialogStyle | WS_VISIBLE,
         .title = L"Modal",
         .charset = GetParam(),
         .handler = [&](const Received& r) -> std::optional<LRESULT> {
             if (r.message == WM_INITDIALOG) {
                 ::PostMessageA(r.window, WM_APP + 1, 0, 0);
                 return 1;
             }
             if (r.message != WM_APP + 1) return std::nullopt;
             skinned = IsSkinned(r.window);
             title.resize(static_cast<std::size_t>(::GetWindowTextA(r.window, title.data(), 16)));
             ::UpdateWindow(r.window);
             const Picture picture = PictureOfWindow(r.window);
             corner = picture.At(0, picture.height - 1);
             ::EndDialog(r.window, 42);
             return 0;
         }});
    EXPECT_EQ(result, 42);
    EXPECT_TRUE(skinned);
    EXPECT_EQ(title, "Modal");
    EXPECT_EQ(corner, skin.Colour(CLR_FRAME_BOTTOM3_FROM)) << "shown in its skin from the start";
    EXPECT_EQ(SkinnedWindows(), 0);
}

TEST_P(ModalDialog, EndsByItsCloseButton) {
    ProbeWindow owner(WS_OVERLAPPEDWINDOW | WS_VISIBLE);
    LRESULT hit = 0;
    const INT_PTR result = HostDialog::RunModal(
        {.style = kDialogStyle | WS_VISIBLE,
         .parent = owner,
         .charset = GetParam(),
         .handler = [&](const Received& r) -> std::optional<LRESULT> {
             switch (r.message) {
                 case WM_INITDIALOG:
                     ::PostMessageA(r.window, WM_APP + 1, 0, 0);
                     return 1;
                 case WM_APP + 1: {
                     CRect window;
                     ::GetWindowRect(r.window, &window);
                     const POINT close{window.right - 16, window.top + 12};
                     hit = ::SendMessageA(r.window, WM_NCHITTEST, 0, MAKELPARAM(close.x, close.y));
                     ::SendMessageA(r.window, WM_NCLBUTTONDOWN, HTCLOSE, MAKELPARAM(close.x, close.y));
                     POINT inClient = close;
                     ::ScreenToClient(r.window, &inClient);
                     ::SendMessageA(r.window, WM_LBUTTONUP, 0, MAKELPARAM(inClient.x, inClient.y));
                     return 0;
                 }
                 case WM_CLOSE:
                     ::EndDialog(r.window, 7);
                     return 0;
                 default:
                     return std::nullopt;
             }
         }});
    EXPECT_EQ(hit, HTCLOSE);
    EXPECT_EQ(result, 7);
    EXPECT_TRUE(::IsWindowEnabled(owner));
    EXPECT_FALSE(IsSkinned(owner));
}

TEST_P(ModalDialog, MayEndDuringInitDialog) {
    const INT_PTR result = HostDialog::RunModal({.style = kDialogStyle | WS_VISIBLE,
                                                 .charset = GetParam(),
                                                 .handler = [](const Received& r) -> std::optional<LRESULT> {
                                                     if (r.message != WM_INITDIALOG) return std::nullopt;
                                                     ::EndDialog(r.window, 5);
                                                     return 1;
                                                 }});
    EXPECT_EQ(result, 5);
    EXPECT_EQ(SkinnedWindows(), 0);
}

TEST_F(DialogLife, ADialogMayHaveControlsThatAreSkinnedWithIt) {
    HostDialog dialog;
    HWND button = CreateControl(Charset::Ansi, dialog, "Button", "Push", BS_PUSHBUTTON, {10, 10, 90, 40});
    EXPECT_TRUE(IsSkinned(button));
    dialog.log.Clear();
    ::SendMessageA(button, BM_CLICK, 0, 0);
    EXPECT_TRUE(dialog.log.Has(WM_COMMAND));
    HostDialog nested({.style = DS_CONTROL | WS_CHILD, .place = CRect(100, 10, 200, 80), .parent = dialog});
    EXPECT_TRUE(IsSkinned(nested));
    ::DestroyWindow(dialog);
    EXPECT_EQ(SkinnedWindows(), 0);
}

/* A close button that ends the dialog inside the command itself. */
TEST_F(DialogLife, MayEndInsideTheCommandOfItsCloseButton) {
    for (int i = 0; i < 10; ++i) {
        HostDialog dialog;
        dialog.handler = [](const Received& r) -> std::optional<LRESULT> {
            if (r.message != WM_CLOSE) return std::nullopt;
            ::DestroyWindow(r.window);
            return 0;
        };
        const POINT at = Middle(dialog.Button(HTCLOSE));
        dialog.Send(WM_NCLBUTTONDOWN, HTCLOSE, dialog.Packed(at));
        const POINT inClient = dialog.InClient(at);
        EXPECT_EQ(dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(inClient.x, inClient.y)), 0);
        EXPECT_FALSE(::IsWindow(dialog));
        EXPECT_EQ(SkinnedWindows(), 0);
    }
}

TEST_F(DialogLife, MayEndInsideAnyMessageThatTheSkinHandles) {
    for (const UINT message :
         {WM_INITDIALOG, WM_SIZE, WM_NCHITTEST, WM_NCMOUSEMOVE, WM_NCLBUTTONDOWN, WM_NCLBUTTONUP, WM_TIMER,
          WM_INITMENUPOPUP, WM_SETTEXT, WM_SETICON, WM_GETICON, WM_CAPTURECHANGED}) {
        SCOPED_TRACE(testing::Message() << "message " << message);
        HostDialog dialog({.title = L"Title"});
        bool ended = false;  // the end itself brings such messages again
        dialog.handler = [message, &ended](const Received& r) -> std::optional<LRESULT> {
            if (r.message != message || ended) return std::nullopt;
            ended = true;
            ::DestroyWindow(r.window);
            return 1;
        };
        const LPARAM at = dialog.Packed({100, 12});
        if (message == WM_GETICON) {
            dialog.Send(WM_NCPAINT, 1);
        } else if (message == WM_CAPTURECHANGED) {
            dialog.Send(WM_NCLBUTTONDOWN, HTCLOSE, at);
            dialog.Send(WM_LBUTTONUP, 0, 0);
        } else {
            dialog.Send(message, HTCAPTION, message == WM_SETTEXT ? reinterpret_cast<LPARAM>("Text") : at);
        }
        EXPECT_FALSE(::IsWindow(dialog));
        EXPECT_EQ(SkinnedWindows(), 0);
    }
}

INT_PTR CALLBACK DestroyedAtOnce(HWND window, UINT message, WPARAM, LPARAM) {
    if (message == WM_INITDIALOG) ::DestroyWindow(window);
    return FALSE;
}

TEST_F(DialogLife, MayEndDuringItsOwnCreation) {
    // What the test's host expects of a dialog does not hold here: made by hand.
    struct {
        DLGTEMPLATE header;
        WORD menu, windowClass, title;
    } dialog{{kDialogStyle, 0, 0, 0, 0, 100, 60}, 0, 0, 0};
    for (int i = 0; i < 20; ++i) {
        HWND window = ::CreateDialogIndirectParamA(::GetModuleHandleA(nullptr), &dialog.header, nullptr,
                                                   &DestroyedAtOnce, 0);
        EXPECT_FALSE(::IsWindow(window));
        EXPECT_EQ(SkinnedWindows(), 0);
    }
}

/* Dialogs that the thread had before it was skinned. */
class EarlierDialog : public testing::Test {
protected:
    ~EarlierDialog() override {
        if (::IsSkinnedThread(::GetCurrentThreadId())) ::UnInstallTavixSkin();
    }
    TestSkin skin;
};

TEST_F(EarlierDialog, StaysNativeForItself) {
    HostDialog dialog;
    const CRect client = dialog.Client();
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
    EXPECT_FALSE(IsSkinned(dialog));
    dialog.Send(WM_SIZE);
    dialog.Send(WM_NCPAINT, 1);
    EXPECT_FALSE(IsSkinned(dialog));
    EXPECT_EQ(dialog.Client(), client);
    EXPECT_EQ(dialog.WindowStyle() & kAllDialogButtons, kAllDialogButtons);
}

TEST_F(EarlierDialog, ALateInitDialogSkinsIt) {
    for (const Charset charset : {Charset::Ansi, Charset::Unicode}) {
        HostDialog dialog({.charset = charset});
        ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
        dialog.handler = Answering(WM_INITDIALOG, 1);
        dialog.log.Clear();
        EXPECT_EQ(dialog.Send(WM_INITDIALOG), 1);
        EXPECT_EQ(dialog.log.Count(WM_INITDIALOG), 1);
        ASSERT_TRUE(IsSkinned(dialog));
        EXPECT_EQ(dialog.Skin().Style() & kDialogStyle, kDialogStyle) << "noted without any WM_CREATE";
        EXPECT_EQ(dialog.WindowStyle() & kAllDialogButtons, 0u);
        EXPECT_EQ(dialog.Button(HTCLOSE), CRect(376, 4, 392, 20));
        EXPECT_EQ(dialog.Client(), CRect(4, 24, 395, 234));
        EXPECT_EQ(PaintedDifference(skin, dialog, LookOf(dialog)), "");
        ::DestroyWindow(dialog);
        ::UnInstallTavixSkin();
    }
}

TEST_F(EarlierDialog, TheHintWorksInAnyCaseOnDialogsOnly) {
    HostDialog dialog;
    ProbeWindow other;
    ASSERT_EQ(::InstallTavixSkin(skin.Write()), 1);
    CTavixSkin* engine = CTavixSkin::GetCurrentThreadSkin();
    char wrong[] = "DIALOGUE";
    EXPECT_EQ(engine->AddControl(dialog, wrong), 1);
    EXPECT_FALSE(IsSkinned(dialog));
    char hint[] = "diaLOG";
    EXPECT_EQ(engine->AddControl(other, hint), 1);
    EXPECT_FALSE(IsSkinned(other));
    EXPECT_EQ(engine->AddControl(dialog, hint), 1);
    EXPECT_TRUE(IsSkinned(dialog));
    EXPECT_EQ(engine->AddControl(dialog, hint), 0);
    ::DestroyWindow(dialog);
}

class DialogObjects : public DialogTest {
protected:
    /* Runs it often after warming up; what it leaves behind is at most the platform's own odd object. */
    template <class Action>
    static void ExpectFlat(int warm, int rounds, Action action) {
        for (int i = 0; i < warm; ++i) action();
        PumpMessages(1);
        const int gdi = CountGdiObjects();
        const int user = CountUserObjects();
        ASSERT_GT(gdi, 0);
        for (int i = 0; i < rounds; ++i) action();
        PumpMessages(1);
        EXPECT_LE(CountGdiObjects() - gdi, 1);
        EXPECT_LE(CountUserObjects() - user, 1);
    }
};

TEST_F(DialogObjects, ThousandsOfPaintingsHoldNothing) {
    HostDialog dialog({.title = L"Title"});
    ExpectFlat(100, 3000, [&] { dialog.Send(WM_NCPAINT, 1); });
}

TEST_F(DialogObjects, ThousandsOfBackgroundsHoldNothing) {
    HostDialog dialog;
    HostDialog child({.style = WS_CHILD, .place = CRect(20, 20, 120, 90), .parent = dialog});
    HostDialog page({.style = WS_CHILD | DS_CONTROL, .place = CRect(150, 20, 250, 90), .parent = dialog});
    const Canvas canvas(400, 240, 0);
    const auto dc = reinterpret_cast<WPARAM>(canvas.Dc());
    ExpectFlat(50, 1000, [&] {
        for (const HostDialog* each : {&dialog, &child, &page}) {
            each->Send(WM_ERASEBKGND, dc);
            each->Send(WM_ERASEBKGND, 0);
        }
    });
}

TEST_F(DialogObjects, LayoutsAndMouseMovesHoldNothing) {
    HostDialog dialog;
    int width = 0;
    ExpectFlat(20, 150, [&] {
        width = (width + 7) % 100;
        ::SetWindowPos(dialog, nullptr, 0, 0, 300 + width, 200, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        dialog.Send(WM_NCMOUSEMOVE, HTCAPTION, dialog.Packed(Middle(dialog.Button(HTCLOSE))));
        dialog.Send(WM_NCLBUTTONDOWN, HTHELP, 0);
        dialog.Send(WM_LBUTTONUP, 0, 0);
    });
}

TEST_F(DialogObjects, HundredsOfDialogsComeAndGoWithoutATrace) {
    Charset charset = Charset::Ansi;
    ExpectFlat(20, 300, [&] {
        charset = charset == Charset::Ansi ? Charset::Unicode : Charset::Ansi;
        HostDialog dialog({.title = L"Title", .charset = charset, .show = false});
    });
}

TEST_F(DialogObjects, HundredsOfChildrenComeAndGoWithoutATrace) {
    HostDialog dialog;
    ExpectFlat(20, 200, [&] {
        HostDialog child({.style = WS_CHILD | DS_CONTROL,
                          .place = CRect(20, 20, 120, 90),
                          .parent = dialog,
                          .show = false});
    });
}

TEST_F(DialogObjects, ShownDialogsComeAndGoWithoutATrace) {
    ExpectFlat(5, 30, [] {
        HostDialog dialog({.title = L"Title"});
        HostDialog child({.style = WS_CHILD | DS_CONTROL, .place = CRect(20, 20, 120, 90), .parent = dialog});
    });
}

TEST_F(DialogObjects, ModalDialogsComeAndGoWithoutATrace) {
    ExpectFlat(5, 30, [] {
        HostDialog::RunModal(
            {.style = kDialogStyle | WS_VISIBLE, .handler = [](const Received& r) -> std::optional<LRESULT> {
                 if (r.message == WM_INITDIALOG) ::PostMessageA(r.window, WM_APP, 0, 0);
                 if (r.message == WM_APP) ::EndDialog(r.window, 1);
                 return std::nullopt;
             }});
    });
}

}  // namespace
}  // namespace tavix_test
