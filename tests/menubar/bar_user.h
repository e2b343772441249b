/* A user at a menu bar: real keys and a real mouse, also while a popup runs messages of its own. */
#pragma once

#include <deque>
#include <functional>
#include <string>

#include "menubar/bar_fixture.h"

namespace tavix_test {

/*
 * A row of steps, each of which does something and waits until what it is to lead to has come.
 * Steps run from a timer, so that an open popup's own loop of messages runs them too; none may
 * pump messages itself. Run is a host's message loop, with the bar asked first.
 */
class User {
public:
    using Condition = std::function<bool()>;
    User(CSkinMenuBar& bar, HWND frame) : m_bar(bar), m_frame(frame) {}
    ~User();
    User(const User&) = delete;
    User& operator=(const User&) = delete;

    User& Does(const char* what, std::function<void()> act, Condition done = nullptr);
    User& Presses(WORD key, Condition done = nullptr);
    /* The key while Alt is held. */
    User& PressesWithAlt(WORD key, Condition done = nullptr);
    /* Onto a point of the bar's client area. */
    User& MovesTo(POINT inBar, Condition done = nullptr);
    User& MovesToScreen(POINT screen, Condition done = nullptr);
    User& Clicks(Condition done = nullptr);
    User& WaitsFor(const char* what, Condition done);
    /* Until the input is in and nothing has happened for a moment. */
    User& Waits(DWORD milliseconds = 120);

    /* All steps; then until no popup is open. False, and a failed test, if one doesn't lead anywhere. */
    bool Run();
    /* Messages that the bar did not use up. */
    MessageLog passed;

private:
    struct Step {
        std::string what;
        std::function<void()> act;
        Condition done;
    };
    static void CALLBACK OnTimer(HWND, UINT, UINT_PTR, DWORD);
    void Advance();

    CSkinMenuBar& m_bar;
    HWND m_frame;
    std::deque<Step> m_steps;
    bool m_acted = false;
    bool m_failed = false;
    ULONGLONG m_since = 0;
    static User* s_user;
};

/* Input without waiting for it. */
void SendKeyDown(WORD key);
void SendKeyUp(WORD key);
void SendMouseButton(bool down);

/* The popup windows that show, in no order. */
int CountPopups();

/* A bar with a user, and what they can wait for. */
class BarUserTest : public BarTest {
protected:
    void Start(HMENU menu = MakeUsualMenu());
    void TearDown() override;

    User::Condition Opened(int button);
    /* The popup of a button with its first item selected, and the arrows told so. */
    User::Condition OpenedWithItem(int button);
    User::Condition Hot(int button);
    User::Condition Idle();
    User::Condition Commanded(UINT id);
    User::Condition Selected(HMENU menu, UINT item);
    /* What opened, in order, and the commands that came. */
    std::vector<HMENU> OpenedMenus();
    std::vector<UINT> Commands();
    HMENU Popup(int position) { return ::GetSubMenu(bar.GetMenu(), position); }

    std::unique_ptr<User> user;
};

}  // namespace tavix_test
