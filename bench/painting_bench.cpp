/* Skinned windows' painting beside that of native ones. */
#include "bench_window.h"
#include "benches.h"
#include "tavixskin/framework/gdi.h"

namespace bench {

namespace {

void MeasureFrame(Report& report, const NativeWindows& native) {
    const CRect at(0, 0, 1024, 768);
    Window skinned(SkinnedFrameClass(), kFrameStyle, at);
    // Each is painted while it is in front: what another window covers costs nothing.
    const auto inFront = [](HWND window) {
        ::SetWindowPos(window, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        Pump();
    };
    const auto round = [&](HWND window) {
        return [&inFront, window] {
            inFront(window);
            return TimeOf([window] { RepaintFrame(window); }, 20);
        };
    };
    report.AtMost("frame 1024x768, all around the client; the native frame",
                  MeasureRounds(round(skinned), round(native.frame)), 1.0);

    CWindowDC dc(skinned);
    CMemoryDC memory(dc);
    CBitmap bitmap;
    bitmap.Attach(::CreateCompatibleBitmap(dc, at.right, at.bottom));
    SelectionGuard selected(memory, bitmap.GetSafeHandle());
    inFront(skinned);
    const auto blit = [&] {
        dc.BitBlt(0, 0, at.right, at.bottom, memory, 0, 0, SRCCOPY);
        ::GdiFlush();
    };
    report.AtMost("frame 1024x768, all around the client; BitBlt of that size",
                  MeasureInTurns([&] { RepaintFrame(skinned); }, 20, blit, 20), 4);
}

void MeasureButton(Report& report, const NativeWindows& native) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(400, 0, 700, 80));
    Window skinned("Button", kButtonStyle, CRect(10, 10, 100, 36), parent);
    ::SetWindowPos(native.buttonParent, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
    Pump();
    const Pair pair =
        MeasureInTurns([&] { RepaintClient(skinned); }, 20, [&] { RepaintClient(native.button); }, 20);
    report.AtMost("one push button's painting; the native button's", pair, 1.0);
}

}  // namespace

void MeasurePainting(Report& report, const NativeWindows& native) {
    MeasureFrame(report, native);
    MeasureButton(report, native);
}

}  // namespace bench
