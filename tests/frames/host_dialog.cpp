#include "frames/host_dialog.h"

#include <algorithm>
#include <vector>

#include "tavixskin.h"
#include "tavixskin/tavix_skin.h"

namespace tavix_test {

namespace {

HostDialog* g_creating = nullptr;

/* A template in memory, without controls: header, no menu, the ordinary class, the title. */
class Template {
public:
    Template(DWORD style, const wchar_t* title) {
        // A template with DS_SETFONT would have to name a font.
        DLGTEMPLATE header{};
        header.style = style & ~static_cast<DWORD>(DS_SETFONT);
        header.cx = 100;
        header.cy = 60;
        const auto* words = reinterpret_cast<const WORD*>(&header);
        m_words.assign(words, words + sizeof header / sizeof(WORD));
        m_words.insert(m_words.end(), {0, 0});
        do m_words.push_back(static_cast<WORD>(*title));
        while (*title++);
    }
    const DLGTEMPLATE* Get() const { return reinterpret_cast<const DLGTEMPLATE*>(m_words.data()); }

private:
    std::vector<WORD> m_words;
};

}  // namespace

DialogSkin::DialogSkin() {
    for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind)
        if (kind != skinDialog) RemoveBitmaps(static_cast<TSkinType>(kind));
}

DialogTest::DialogTest() {
    static DialogSkin unchanged;
    static const char* const path = unchanged.Write();
    EXPECT_EQ(::InstallTavixSkin(path), 1);
}

DialogTest::~DialogTest() {
    ::ReleaseCapture();
    ::UnInstallTavixSkin();
}

void DialogTest::UseChangedSkin() { ASSERT_EQ(::SetSkinFromFile(skin.Write()), 1); }

HostDialog::HostDialog(const DialogSetup& setup) : handler(setup.handler) {
    const Template dialog(setup.style & ~static_cast<DWORD>(WS_VISIBLE), setup.title);
    HINSTANCE instance = ::GetModuleHandleA(nullptr);
    g_creating = this;
    const auto create =
        setup.charset == Charset::Ansi ? &::CreateDialogIndirectParamA : &::CreateDialogIndirectParamW;
    HWND made = create(instance, dialog.Get(), setup.parent, &Procedure, 0);
    g_creating = nullptr;
    EXPECT_TRUE(made);
    EXPECT_EQ(made, window);
    const CRect& at = setup.place;
    ::SetWindowPos(window, nullptr, at.left, at.top, at.Width(), at.Height(), SWP_NOZORDER | SWP_NOACTIVATE);
    if (setup.show) ::ShowWindow(window, SW_SHOW);
    ::UpdateWindow(window);
}

HostDialog::~HostDialog() {
    if (::IsWindow(window)) ::DestroyWindow(window);
}

INT_PTR HostDialog::RunModal(const DialogSetup& setup) {
    const Template dialog(setup.style, setup.title);
    HostDialog host{Unmade{}};
    host.handler = setup.handler;
    g_creating = &host;
    HINSTANCE instance = ::GetModuleHandleA(nullptr);
    const auto run = setup.charset == Charset::Ansi ? &::DialogBoxIndirectParamA : &::DialogBoxIndirectParamW;
    const INT_PTR result = run(instance, dialog.Get(), setup.parent, &Procedure, 0);
    g_creating = nullptr;
    return result;
}

INT_PTR CALLBACK HostDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    // The parent may hear of its new child first; it is known already.
    if (g_creating && !g_creating->window && !::GetWindowLongPtrA(window, GWLP_USERDATA)) {
        g_creating->window = window;
        ::SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(g_creating));
    }
    auto* self = reinterpret_cast<HostDialog*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (!self) return FALSE;
    const Received received{window, message, wParam, lParam};
    self->log.Add(received);
    const std::optional<LRESULT> answer = self->handler ? self->handler(received) : std::nullopt;
    if (!answer) return FALSE;
    // These answer by the dialog procedure's own result.
    if (message == WM_INITDIALOG || (message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC))
        return *answer;
    ::SetWindowLongPtrA(window, DWLP_MSGRESULT, *answer);
    return TRUE;
}

DialogSkinTestAccess HostDialog::Skin() const {
    CSkinWndBaseClass* head = CTavixSkin::GetCurrentThreadSkin()->GetSkinWndList()->Lookup(window);
    return {*dynamic_cast<CSkinDialog*>(head)};
}

CRect HostDialog::Rect() const {
    CRect rect;
    ::GetWindowRect(window, &rect);
    return rect;
}

CRect HostDialog::Client() const {
    const CRect rect = Rect();
    CRect client;
    ::GetClientRect(window, &client);
    ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
    client.OffsetRect(-rect.left, -rect.top);
    return client;
}

LPARAM HostDialog::Packed(POINT inWindow) const {
    const CRect rect = Rect();
    return MAKELPARAM(rect.left + inWindow.x, rect.top + inWindow.y);
}

POINT HostDialog::InClient(POINT inWindow) const {
    const CRect client = Client();
    return {inWindow.x - client.left, inWindow.y - client.top};
}

CRect HostDialog::Button(LRESULT hitCode) const {
    const DialogSkinTestAccess access = Skin();
    switch (hitCode) {
        case HTCLOSE:
            return access.Close();
        case HTMAXBUTTON:
            return access.Max();
        case HTMINBUTTON:
            return access.Min();
        case HTHELP:
            return access.Help();
        default:
            return {};
    }
}

int HostDialog::States() const {
    const DialogSkinTestAccess access = Skin();
    return access.CloseState() * 1000 + access.MaxState() * 100 + access.MinState() * 10 + access.HelpState();
}

DialogLook LookOf(const HostDialog& dialog) {
    const DialogSkinTestAccess access = dialog.Skin();
    DialogLook look{};
    look.style = access.Style();
    look.closeState = access.CloseState();
    look.maxState = access.MaxState();
    look.minState = access.MinState();
    look.helpState = access.HelpState();
    return look;
}

std::string PaintedDifference(const TestSkin& skin, const HostDialog& dialog, const DialogLook& look) {
    dialog.Send(WM_NCPAINT, 1);
    const CRect rect = dialog.Rect();
    return DifferenceOutside(ExpectedDialog(skin, rect.Width(), rect.Height(), look), PictureOfWindow(dialog),
                             dialog.Client());
}

Picture PieceOf(const Picture& whole, const RECT& area) {
    Picture piece;
    piece.width = area.right - area.left;
    piece.height = area.bottom - area.top;
    for (LONG y = area.top; y < area.bottom; ++y)
        for (LONG x = area.left; x < area.right; ++x) piece.pixels.push_back(whole.At(x, y));
    return piece;
}

FlatIcon::FlatIcon(COLORREF colour, SIZE size) {
    const auto picture = MakeBitmap(size.cx, size.cy, colour);
    // A mask of zeros: every pixel of the icon is opaque.
    const std::vector<BYTE> zeros(static_cast<std::size_t>((size.cx + 15) / 16 * 2 * size.cy), 0);
    HBITMAP mask = ::CreateBitmap(size.cx, size.cy, 1, 1, zeros.data());
    ICONINFO info{TRUE, 0, 0, mask, *picture};
    m_icon = ::CreateIconIndirect(&info);
    ::DeleteObject(mask);
    EXPECT_TRUE(m_icon);
}

}  // namespace tavix_test
