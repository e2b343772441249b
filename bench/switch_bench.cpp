/* The change of skin with many windows open, and what skinned windows hold. */
#include <memory>
#include <vector>

#include "bench_window.h"
#include "benches.h"
#include "main/gui_objects.h"
#include "tavixskin.h"
#include "tavixskin/skin_face.h"

namespace bench {

namespace {

constexpr int kWindows = 300;

struct Desktop {
    Window frame{SkinnedFrameClass(), kFrameStyle, CRect(0, 0, 1000, 800)};
    std::vector<std::unique_ptr<Window>> buttons;

    // Buttons side by side on one frame, so that all of them show: 299 of them and the frame.
    Desktop() {
        for (int i = 0; i < kWindows - 1; ++i) {
            const CRect at(CPoint(5 + i % 20 * 48, 5 + i / 20 * 48), CSize(44, 40));
            buttons.push_back(std::make_unique<Window>("Button", kButtonStyle, at, frame));
        }
        Pump();
    }

    void RepaintAll() {
        for (const auto& button : buttons) ::InvalidateRect(*button, nullptr, FALSE);
        ::InvalidateRect(frame, nullptr, FALSE);
        ::SendMessageA(frame, WM_NCPAINT, 0, 0);
        for (const auto& button : buttons) ::SendMessageA(*button, WM_NCPAINT, 0, 0);
        Pump();
        ::GdiFlush();
    }
};

/* What one window of a kind holds: the growth over many of them, divided by their number. */
template <class Make>
void MeasureHeld(Report& report, const std::string& what, Make make) {
    constexpr int kCount = 100;
    { const auto warm = make(0); }
    Pump();
    const int objects = tavix_test::CountGdiObjects();
    const double bytes = CommittedBytes();
    std::vector<decltype(make(0))> windows;
    for (int i = 0; i < kCount; ++i) windows.push_back(make(i));
    Pump();
    const double heldObjects = static_cast<double>(tavix_test::CountGdiObjects() - objects) / kCount;
    const double heldBytes = (CommittedBytes() - bytes) / kCount;
    report.Amount("GDI objects that one skinned " + what + " holds", heldObjects, 0, "objects", "told only",
                  true);
    report.Amount("memory that one skinned " + what + " holds, its window included", heldBytes / 1024, 0,
                  "KiB", "told only", true);
}

template <class Paint>
void MeasureFlat(Report& report, const std::string& what, Paint paint) {
    constexpr int kPaints = 10'000;
    for (int i = 0; i < 200; ++i) paint();
    const int objects = tavix_test::CountGdiObjects();
    const double bytes = CommittedBytes();
    for (int i = 0; i < kPaints; ++i) paint();
    const int moreObjects = tavix_test::CountGdiObjects() - objects;
    const double moreBytes = CommittedBytes() - bytes;
    report.Amount("GDI objects more after 10,000 paintings of a " + what, moreObjects, 0, "objects", "<= 1",
                  moreObjects <= 1);
    report.Amount("memory more after 10,000 paintings of a " + what, moreBytes / 1024, 0, "KiB", "<= 64",
                  moreBytes <= 64 * 1024);
}

}  // namespace

void MeasureSwitch(Report& report, const std::string& skin) {
    Desktop desktop;
    const auto change = [&] {
        SetSkinFromFile(skin.c_str());
        Pump();
        ::GdiFlush();
    };
    // The same work without the change: one load, and one repaint of every window.
    const auto loadAndRepaint = [&] {
        {
            auto face = std::make_unique<CTavixSkinFace>();
            face->LoadSkin(skin.c_str());
        }
        desktop.RepaintAll();
    };
    report.AtMost("change of skin with 300 windows; one load and one repaint of all",
                  MeasureInTurns(change, 1, loadAndRepaint, 1, 11), 2);
}

void MeasureMemory(Report& report) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(0, 0, 400, 300));
    const auto button = [&](int) {
        return std::make_unique<Window>("Button", kButtonStyle, CRect(10, 10, 100, 36), parent);
    };
    const auto frame = [&](int i) {
        return std::make_unique<Window>(SkinnedFrameClass(), kFrameStyle, CRect(i, i, 300 + i, 200 + i));
    };
    const auto dialog = [&](int i) {
        return std::make_unique<Window>(MakeDialog(CRect(i, i, 300 + i, 200 + i)));
    };
    MeasureHeld(report, "button", button);
    MeasureHeld(report, "frame", frame);
    MeasureHeld(report, "dialog", dialog);

    const auto oneButton = button(0);
    MeasureFlat(report, "button", [&] { RepaintClient(*oneButton); });
    const auto oneFrame = frame(0);
    MeasureFlat(report, "frame", [&] { RepaintFrame(*oneFrame); });
    const auto oneDialog = dialog(0);
    MeasureFlat(report, "dialog", [&] {
        RepaintFrame(*oneDialog);
        RepaintClient(*oneDialog);
    });
}

}  // namespace bench
