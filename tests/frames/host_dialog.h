/* A host's dialog under test: skinned by its class, and recording what its dialog procedure gets. */
#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <functional>
#include <optional>

#include "frames/dialog_skin.h"
#include "frames/paint_model.h"
#include "support/skinned_thread.h"
#include "support/window_probe.h"

/* Looks into a dialog's skin object. */
struct DialogSkinTestAccess {
    CSkinDialog& skin;

    int CloseState() const { return skin.m_nCloseState; }
    int MaxState() const { return skin.m_nMaxState; }
    int MinState() const { return skin.m_nMinState; }
    int HelpState() const { return skin.m_nHelpState; }
    CRect Close() const { return skin.m_rcClose; }
    CRect Max() const { return skin.m_rcMax; }
    CRect Min() const { return skin.m_rcMin; }
    CRect Help() const { return skin.m_rcHelp; }
    int Pressed() const { return skin.m_nPressed; }
    DWORD Style() const { return skin.m_dwStyle; }
    DWORD ExStyle() const { return skin.m_dwExStyle; }
    int OnTabPage() const { return skin.m_bOnTabPage; }
    UINT Timer() const { return skin.m_nTimer; }
    void SetStates(int close, int max, int min, int help) {
        skin.m_nCloseState = close;
        skin.m_nMaxState = max;
        skin.m_nMinState = min;
        skin.m_nHelpState = help;
    }
};

namespace tavix_test {

constexpr DWORD kAllDialogButtons = WS_SYSMENU | WS_MINIMIZEBOX | WS_MAXIMIZEBOX | DS_CONTEXTHELP;
constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | kAllDialogButtons;
constexpr RECT kDialogPlace{140, 110, 540, 350};
/* The four codes of a dialog's caption buttons, from the right. */
constexpr LRESULT kButtonCodes[] = {HTCLOSE, HTMAXBUTTON, HTMINBUTTON, HTHELP};

/* The test skin with no other bitmaps than a dialog's: quickly written and loaded. */
class DialogSkin : public TestSkin {
public:
    DialogSkin();
};

/*
 * A thread with the test skin for each test. The file is written once for all of them; a test that
 * wants another skin changes its own `skin` and puts it in force.
 */
class DialogTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ParkMouse(); }
    DialogTest();
    ~DialogTest() override;

    void UseChangedSkin();

    DialogSkin skin;
};

/* What a dialog is made of. Its place is in pixels, in screen or in the parent's client co-ordinates. */
struct DialogSetup {
    DWORD style = kDialogStyle;
    CRect place = CRect(kDialogPlace);
    const wchar_t* title = L"";
    HWND parent = nullptr;
    Charset charset = Charset::Ansi;
    bool show = true;
    /* Answers before WM_INITDIALOG already. */
    std::function<std::optional<LRESULT>(const Received&)> handler = {};
};

/* A modeless dialog, or a modal one through RunModal; ends with the object. */
class HostDialog {
public:
    explicit HostDialog(const DialogSetup& setup = {});
    ~HostDialog();
    HostDialog(const HostDialog&) = delete;
    HostDialog& operator=(const HostDialog&) = delete;

    /* Runs a modal dialog to its end and returns what EndDialog was given. */
    static INT_PTR RunModal(const DialogSetup& setup);

    operator HWND() const { return window; }
    DialogSkinTestAccess Skin() const;
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageA(window, message, wParam, lParam);
    }
    CRect Rect() const;
    CRect Client() const;  // in window co-ordinates
    /* A point of the window in screen co-ordinates, packed; and in client co-ordinates. */
    LPARAM Packed(POINT inWindow) const;
    POINT InClient(POINT inWindow) const;
    /* The place of a button by its hit code. */
    CRect Button(LRESULT hitCode) const;
    /* Close, maximise, minimise and help in one: 1000, 100, 10 and 1 times the state. */
    int States() const;
    DWORD WindowStyle() const { return static_cast<DWORD>(::GetWindowLongA(window, GWL_STYLE)); }

    HWND window = nullptr;
    MessageLog log;  // what reached the dialog procedure
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    struct Unmade {};
    explicit HostDialog(Unmade) {}
    static INT_PTR CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
};

/* A handler that answers one message, whatever it brings. */
inline auto Answering(UINT message, LRESULT answer) {
    return [=](const Received& r) -> std::optional<LRESULT> {
        if (r.message == message) return answer;
        return std::nullopt;
    };
}

/* What a dialog should look like by its style, its states and the packed geometry of the test skin. */
DialogLook LookOf(const HostDialog& dialog);

/* Repaints what surrounds the client area and compares it with the model; empty if they agree. */
std::string PaintedDifference(const TestSkin& skin, const HostDialog& dialog, const DialogLook& look);

/* The part of a picture. */
Picture PieceOf(const Picture& whole, const RECT& area);

/* A small icon in one colour, destroyed with the object. */
class FlatIcon {
public:
    explicit FlatIcon(COLORREF colour,
                      SIZE size = {::GetSystemMetrics(SM_CXSMICON), ::GetSystemMetrics(SM_CYSMICON)});
    ~FlatIcon() { ::DestroyIcon(m_icon); }
    FlatIcon(const FlatIcon&) = delete;
    FlatIcon& operator=(const FlatIcon&) = delete;
    operator LPARAM() const { return reinterpret_cast<LPARAM>(m_icon); }

private:
    HICON m_icon;
};

}  // namespace tavix_test
