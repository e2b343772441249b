/* Opening a context menu, until it is painted. */
#include <string>

#include "bench_window.h"
#include "benches.h"

namespace bench {

namespace {

constexpr int kItems = 30;
constexpr int kOpenings = 10;  // in a round

/* What the owner of an open menu does: notes the time once all is painted, and ends the menu. */
struct Opening {
    LARGE_INTEGER begun{};
    LONGLONG ticks = 0;
    bool isPainted = false;
};

BOOL CALLBACK PaintPopup(HWND window, LPARAM) {
    ::UpdateWindow(window);
    return TRUE;
}

LRESULT CALLBACK OwnerProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* opening = reinterpret_cast<Opening*>(::GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message != WM_ENTERIDLE || !opening) return ::DefWindowProcA(window, message, wParam, lParam);
    if (!opening->isPainted) {
        ::EnumThreadWindows(::GetCurrentThreadId(), &PaintPopup, 0);
        ::GdiFlush();
        LARGE_INTEGER now;
        ::QueryPerformanceCounter(&now);
        opening->ticks += now.QuadPart - opening->begun.QuadPart;
        opening->isPainted = true;
    }
    ::EndMenu();
    return 0;
}

/* Microseconds that an opening takes in this thread, skinned or not. */
double TimeOfOpening() {
    WNDCLASSA description{};
    description.lpfnWndProc = &OwnerProcedure;
    description.hInstance = ::GetModuleHandleA(nullptr);
    description.lpszClassName = "Tavix_PaneN";  // one that the library knows
    ::RegisterClassA(&description);             // fails from the second time on, which changes nothing
    Window owner(description.lpszClassName, WS_POPUP | WS_VISIBLE, CRect(400, 0, 720, 220));
    Opening opening;
    ::SetWindowLongPtrA(owner, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(&opening));
    HMENU menu = ::CreatePopupMenu();
    for (UINT i = 0; i < kItems; ++i)
        ::AppendMenuA(menu, i % 6 == 5 ? MF_CHECKED : MF_STRING, i + 1,
                      ("Item number " + std::to_string(i) + "\tCtrl+F" + std::to_string(i)).c_str());
    for (int i = 0; i < kOpenings; ++i) {
        opening.isPainted = false;
        ::QueryPerformanceCounter(&opening.begun);
        ::TrackPopupMenu(menu, TPM_RETURNCMD, 420, 10, 0, owner, nullptr);
    }
    ::DestroyMenu(menu);
    Pump();
    LARGE_INTEGER frequency;
    ::QueryPerformanceFrequency(&frequency);
    return static_cast<double>(opening.ticks) * 1e6 / static_cast<double>(frequency.QuadPart) / kOpenings;
}

DWORD WINAPI OpenNatively(void* result) {
    *static_cast<double*>(result) = TimeOfOpening();
    return 0;
}

/* In a thread of its own, which is not skinned. */
double TimeOfNativeOpening() {
    double time = 0;
    HANDLE thread = ::CreateThread(nullptr, 0, &OpenNatively, &time, 0, nullptr);
    if (!thread) return 0;
    while (::MsgWaitForMultipleObjects(1, &thread, FALSE, INFINITE, QS_ALLINPUT) != WAIT_OBJECT_0) Pump();
    ::CloseHandle(thread);
    return time;
}

}  // namespace

void MeasureMenus(Report& report) {
    report.AtMost("opening a context menu of 30 items, until it is painted; the native menu",
                  MeasureRounds(&TimeOfOpening, &TimeOfNativeOpening, 9), 1.3);
}

}  // namespace bench
