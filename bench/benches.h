/* What is measured, a function a room of the library. */
#pragma once

#include <windows.h>

#include <string>

#include "control_set.h"
#include "harness.h"

namespace bench {

void MeasureDrawing(Report& report);
/* Before the thread is skinned. */
void MeasureLoading(Report& report, const std::string& skin);
void MeasureInterception(Report& report);

/*
 * Native windows to measure beside. They are made before the thread is skinned and so stay
 * native for life.
 */
class NativeWindows {
public:
    NativeWindows();
    ~NativeWindows();
    NativeWindows(const NativeWindows&) = delete;
    NativeWindows& operator=(const NativeWindows&) = delete;

    HWND frame;
    HWND buttonParent;
    HWND button;
    HWND scrollBarParent;
    HWND levelScrollBar;
    HWND uprightScrollBar;
    HWND listParent;
    HWND reportList;
    HWND listBoxParent;
    HWND listBox;
    HWND commonParent;
    HWND toolBar;
    HWND tabControl;
    HWND comboBoxParent;
    HWND comboBox;
    ControlSet controls;
};

/* While the thread is skinned with the file `skin`. */
void MeasurePainting(Report& report, const NativeWindows& native);
void MeasureScrollBars(Report& report, const NativeWindows& native);
void MeasureListViews(Report& report, const NativeWindows& native);
void MeasureListBoxes(Report& report, const NativeWindows& native);
void MeasureControls(Report& report, const NativeWindows& native);
void MeasureCommonControls(Report& report, const NativeWindows& native);
void MeasureComboBoxes(Report& report, const NativeWindows& native);
void MeasureMenus(Report& report);
void MeasureMessages(Report& report);
void MeasureInterceptedCalls(Report& report);
void MeasureSwitch(Report& report, const std::string& skin);
void MeasureMemory(Report& report);

}  // namespace bench
