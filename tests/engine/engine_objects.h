/* Skin objects and host windows for tests of the engine. */
#pragma once

#include <windows.h>

#include <functional>
#include <optional>
#include <string>
#include <typeinfo>
#include <vector>

#include "engine/skin_wnd_base.h"
#include "support/test_skin.h"
#include "support/window_probe.h"

namespace tavix_test {

/* A skin object whose code is the test's. Counts its repaints and tells when it is deleted. */
class ProbeSkin : public CSkinWndBaseClass {
public:
    explicit ProbeSkin(bool* deleted = nullptr) : m_deleted(deleted) {}
    ~ProbeSkin() override {
        if (m_deleted) *m_deleted = true;
    }

    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
        log.Add({m_hWnd, message, wParam, lParam});
        return handler ? handler(message, wParam, lParam) : Default(message, wParam, lParam);
    }
    int RepaintSkin() override {
        ++repaints;
        return repaint ? repaint() : 1;
    }
    LRESULT Base(UINT message, WPARAM wParam, LPARAM lParam) {
        return CSkinWndBaseClass::WindowProc(message, wParam, lParam);
    }
    int BaseRepaint() { return CSkinWndBaseClass::RepaintSkin(); }
    CSkinWndBaseClass* Next() const { return m_pNextSkin; }

    MessageLog log;
    int repaints = 0;
    std::function<LRESULT(UINT, WPARAM, LPARAM)> handler;
    std::function<int()> repaint;

private:
    bool* m_deleted;
};

/*
 * A host's window of a class of any name, as a skin's table may list it. Records what its own
 * procedure receives and asks `handler` first. Not shown unless the style says so.
 */
class HostWindow {
public:
    explicit HostWindow(const char* className, DWORD style = WS_POPUP, HWND parent = nullptr,
                        UINT classStyle = 0);
    ~HostWindow();
    HostWindow(const HostWindow&) = delete;
    HostWindow& operator=(const HostWindow&) = delete;

    HWND Handle() const { return m_window; }
    operator HWND() const { return m_window; }
    void Destroy();
    /* True if the window's procedure is the one that it was registered with. */
    bool IsNative() const;

    MessageLog log;
    std::function<std::optional<LRESULT>(const Received&)> handler;

private:
    static LRESULT CALLBACK Procedure(HWND, UINT, WPARAM, LPARAM);
    std::string m_className;
    HWND m_window = nullptr;
};

/* The head skin object of a window, null without one. */
CSkinWndBaseClass* HeadOf(HWND window);
/* True if the window's head skin object is of just that class. */
template <class Skin>
bool HasSkin(HWND window) {
    const CSkinWndBaseClass* head = HeadOf(window);
    return head && typeid(*head) == typeid(Skin);
}
WNDPROC ProcedureOf(HWND window);

/* A skin file that has everything, written once; nobody changes it. */
const TestSkin& SharedSkin();

/* A skinned thread for the length of a scope, by the C interface. */
class Skinned {
public:
    explicit Skinned(const char* path = SharedSkin().Path());
    ~Skinned();
    Skinned(const Skinned&) = delete;
    Skinned& operator=(const Skinned&) = delete;
};

/* How many of a skin's 255 bitmaps there are. */
int BitmapCount();

/* Runs the work in a thread of its own and waits for its end. */
void InAnotherThread(const std::function<void()>& work);

/* A file with the given contents, deleted with the object. */
class FileWith {
public:
    explicit FileWith(const std::string& bytes);
    const char* Path() const { return m_file.Path(); }
    std::string Contents() const;

private:
    TempFile m_file;
};

}  // namespace tavix_test
