/* Windows under damaged skins: whatever the file holds, they come up, paint in no time, and leave nothing
 * behind. */
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <vector>

#include "frames/host_dialog.h"
#include "frames/host_frame.h"
#include "main/gui_objects.h"
#include "support/skin_mutations.h"
#include "tavixskin.h"

namespace tavix_test {
namespace {

constexpr std::uint32_t kSeeds = 200;
constexpr ULONGLONG kPatience = 2000;  // milliseconds for one file, windows and all

/* A skin with just the records that the windows here are painted from, so that damage meets them. */
class SmallSkin : public TestSkin {
public:
    SmallSkin() {
        for (int kind = 0; kind < TAVIX_RECORD_COUNT; ++kind)
            if (kind != skinDialog && kind != skinFrame && kind != skinButton)
                RemoveBitmaps(static_cast<TSkinType>(kind));
    }
};

std::vector<std::byte> BytesOf(const char* path) {
    std::ifstream file(path, std::ios::binary);
    const std::vector<char> chars{std::istreambuf_iterator<char>(file), {}};
    const auto* first = reinterpret_cast<const std::byte*>(chars.data());
    return {first, first + chars.size()};
}

void WriteBytes(const char* path, const std::vector<std::byte>& bytes) {
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.good()) << path;
}

/* Every kind of window that these records are for: created, painted, resized, touched, ended. */
void UseWindows() {
    HostFrame frame(kFullStyle, kFramePlace, "Title");
    frame.Send(WM_NCPAINT, 1);
    frame.Send(WM_NCHITTEST, 0, frame.Packed({200, 12}));
    MINMAXINFO limits{};
    frame.Send(WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&limits));

    HostDialog dialog({.title = L"Title"});
    HostDialog child({.style = WS_CHILD | DS_CONTROL, .place = CRect(150, 20, 250, 90), .parent = dialog});
    constexpr DWORD kTypes[] = {BS_PUSHBUTTON, BS_AUTOCHECKBOX, BS_AUTORADIOBUTTON};
    int top = 5;
    for (const DWORD type : kTypes) {
        HWND button = CreateControl(Charset::Ansi, dialog, "Button", "Label", type, {5, top, 105, top + 25});
        ::UpdateWindow(button);
        ::SendMessageA(button, BM_SETCHECK, BST_CHECKED, 0);
        RepaintedClient(button);
        top += 30;
    }
    dialog.Send(WM_NCPAINT, 1);
    for (const LRESULT code : kButtonCodes) {
        dialog.Send(WM_NCMOUSEMOVE, HTCAPTION, dialog.Packed(Middle(dialog.Button(code))));
        dialog.Send(WM_NCLBUTTONDOWN, static_cast<WPARAM>(code), 0);
        dialog.Send(WM_LBUTTONUP, 0, MAKELPARAM(0x7FFF, 0x7FFF));
    }
    for (HWND window : {frame.window, dialog.window}) {
        EXPECT_TRUE(::IsWindow(window));
        ::SetWindowPos(window, nullptr, 0, 0, 233, 171, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
        ::RedrawWindow(window, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    }
}

TEST(DamagedSkin, WindowsLiveUnderIt) {
    ParkMouse();
    SmallSkin good;
    const SkinMutations mutations(BytesOf(good.Write()));
    ASSERT_TRUE(mutations);
    const auto tryFile = [](const char* path) {
        ASSERT_EQ(::InstallTavixSkin(path), 1);
        UseWindows();
        ::UnInstallTavixSkin();
    };
    for (int warm = 0; warm < 3; ++warm) tryFile(good.Path());
    const int gdi = CountGdiObjects();
    const int user = CountUserObjects();
    ASSERT_GT(gdi, 0);

    const TempFile damaged;
    for (std::uint32_t seed = 0; seed < kSeeds; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << SkinMutations::Describe(seed));
        WriteBytes(damaged.Path(), mutations.Make(seed));
        const ULONGLONG start = ::GetTickCount64();
        tryFile(damaged.Path());
        EXPECT_LT(::GetTickCount64() - start, kPatience);
    }

    tryFile(good.Path());
    EXPECT_LE(CountGdiObjects() - gdi, 2);
    EXPECT_LE(CountUserObjects() - user, 1);
}

// The same by a change of skin under windows that stay open.
TEST(DamagedSkin, WindowsLiveThroughAChangeToIt) {
    SmallSkin good;
    const SkinMutations mutations(BytesOf(good.Write()));
    ASSERT_TRUE(mutations);
    SkinnedThread thread(good);
    HostFrame frame(kFullStyle, kFramePlace, "Title");
    HostDialog dialog({.title = L"Title"});
    const TempFile damaged;
    for (std::uint32_t seed = kSeeds; seed < kSeeds + 50; ++seed) {
        SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << SkinMutations::Describe(seed));
        WriteBytes(damaged.Path(), mutations.Make(seed));
        const ULONGLONG start = ::GetTickCount64();
        EXPECT_EQ(::SetSkinFromFile(damaged.Path()), 1) << "the file exists, and more is not asked";
        frame.Send(WM_NCPAINT, 1);
        RepaintedClient(dialog);
        ::SetWindowPos(dialog, nullptr, 0, 0, 300 + static_cast<int>(seed % 2), 200,
                       SWP_NOMOVE | SWP_NOZORDER);
        EXPECT_LT(::GetTickCount64() - start, kPatience);
    }
    // And back: nothing of the damage stays.
    ASSERT_EQ(::SetSkinFromFile(good.Path()), 1);
    ::SetWindowPos(dialog, nullptr, 0, 0, 400, 240, SWP_NOMOVE | SWP_NOZORDER);
    EXPECT_EQ(dialog.Client(), CRect(4, 24, 395, 234));
}

}  // namespace
}  // namespace tavix_test
