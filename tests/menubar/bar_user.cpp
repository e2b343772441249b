#include "menubar/bar_user.h"

namespace tavix_test {

namespace {

constexpr DWORD kPatience = 4000;
constexpr UINT kTick = 10;

void SendKey(WORD key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(::MapVirtualKeyA(key, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    ::SendInput(1, &input, sizeof input);
}

}  // namespace

void SendKeyDown(WORD key) { SendKey(key, 0); }
void SendKeyUp(WORD key) { SendKey(key, KEYEVENTF_KEYUP); }

void SendMouseButton(bool down) {
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = down ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_LEFTUP;
    ::SendInput(1, &input, sizeof input);
}

int CountPopups() {
    int count = 0;
    for (HWND popup = nullptr; (popup = ::FindWindowExA(nullptr, popup, "#32768", nullptr));)
        if (::IsWindowVisible(popup)) ++count;
    return count;
}

// ---------------------------------------------------------------- User

User* User::s_user = nullptr;

User::~User() { s_user = nullptr; }

User& User::Does(const char* what, std::function<void()> act, Condition done) {
    m_steps.push_back({what, std::move(act), std::move(done)});
    return *this;
}

User& User::Presses(WORD key, Condition done) {
    return Does(("key " + std::to_string(key)).c_str(),
                [key] {
                    SendKeyDown(key);
                    SendKeyUp(key);
                },
                done)
        .Waits(40);
}

User& User::PressesWithAlt(WORD key, Condition done) {
    Does(
        "Alt", [] { SendKeyDown(VK_MENU); }, [] { return ::GetAsyncKeyState(VK_MENU) < 0; });
    Does(
        "a key with Alt",
        [key] {
            SendKeyDown(key);
            SendKeyUp(key);
        },
        done);
    return Does(
               "Alt up", [] { SendKeyUp(VK_MENU); }, [] { return ::GetAsyncKeyState(VK_MENU) >= 0; })
        .Waits(40);
}

User& User::MovesToScreen(POINT screen, Condition done) {
    // The platform may take the pointer back once: it is set until it stays.
    struct Place {
        POINT at;
        ULONGLONG since = 0;
        void Set() {
            ::SetCursorPos(at.x + 1, at.y);
            ::SetCursorPos(at.x, at.y);
            since = ::GetTickCount64();
        }
        ULONGLONG Age() const { return ::GetTickCount64() - since; }
    };
    auto place = std::make_shared<Place>(Place{screen});
    WaitsFor("the mouse to arrive", [place] {
        POINT now;
        ::GetCursorPos(&now);
        if (place->since && now.x == place->at.x && now.y == place->at.y) return place->Age() > 60;
        place->Set();
        return false;
    });
    // A move may be lost on its way, once in a thousand: no hand lies as still as to make none after it.
    constexpr ULONGLONG kStillness = 1000;
    return WaitsFor("the mouse to lead somewhere", [place, done] {
        if (!done || done()) return true;
        if (place->Age() > kStillness) place->Set();
        return false;
    });
}

User& User::MovesTo(POINT inBar, Condition done) {
    ::ClientToScreen(m_bar.m_hWnd, &inBar);
    return MovesToScreen(inBar, std::move(done));
}

User& User::Clicks(Condition done) {
    Does(
        "press", [] { SendMouseButton(true); }, [] { return ::GetAsyncKeyState(VK_LBUTTON) < 0; })
        .Waits(60);
    return Does(
               "release", [] { SendMouseButton(false); }, done)
        .Waits(60);
}

User& User::WaitsFor(const char* what, Condition done) {
    return Does(
        what, [] {}, std::move(done));
}

User& User::Waits(DWORD milliseconds) {
    auto end = std::make_shared<ULONGLONG>(0);
    return WaitsFor("a moment", [end, milliseconds] {
        if (!*end) *end = ::GetTickCount64() + milliseconds;
        return ::GetTickCount64() >= *end;
    });
}

void CALLBACK User::OnTimer(HWND, UINT, UINT_PTR, DWORD) {
    if (s_user) s_user->Advance();
}

void User::Advance() {
    if (m_steps.empty()) return;
    // A copy: the step may run messages, and so the timer.
    if (!m_acted) {
        m_acted = true;
        m_since = ::GetTickCount64();
        const auto act = m_steps.front().act;
        act();
        return;
    }
    if (!m_steps.front().done || m_steps.front().done()) {
        m_steps.pop_front();
        m_acted = false;
    } else if (::GetTickCount64() - m_since > kPatience) {
        ADD_FAILURE() << "nothing came of: " << m_steps.front().what << "; " << m_steps.size()
                      << " steps left";
        m_failed = true;
        m_steps.clear();
        ::EndMenu();
    }
}

bool User::Run() {
    s_user = this;
    const UINT_PTR timer = ::SetTimer(nullptr, 0, kTick, &OnTimer);
    ULONGLONG end = 0;
    for (;;) {
        MSG message;
        while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            if (m_bar.TranslateFrameMessage(&message)) continue;
            passed.Add({message.hwnd, message.message, message.wParam, message.lParam});
            ::TranslateMessage(&message);
            ::DispatchMessageA(&message);
        }
        if (m_steps.empty() && !end) end = ::GetTickCount64() + 60;
        if (end && ::GetTickCount64() >= end) break;
        ::MsgWaitForMultipleObjects(0, nullptr, FALSE, 5, QS_ALLINPUT);
    }
    ::KillTimer(nullptr, timer);
    s_user = nullptr;
    return !m_failed;
}

// ---------------------------------------------------------------- BarUserTest

void BarUserTest::Start(HMENU menu) {
    MakeBar(menu);
    frame.log.Listen({WM_INITMENUPOPUP, WM_MENUSELECT, WM_COMMAND});
    ASSERT_TRUE(BringToFront(frame.m_hWnd));
    PumpMessages(60);
    frame.log.Clear();
    user = std::make_unique<User>(bar, frame.m_hWnd);
    user->passed.Listen({WM_KEYDOWN, WM_SYSKEYDOWN, WM_KEYUP, WM_SYSKEYUP, WM_SYSCHAR, WM_CHAR});
}

void BarUserTest::TearDown() {
    for (const WORD key : {VK_MENU, VK_SHIFT})
        if (::GetAsyncKeyState(key) < 0) SendKeyUp(key);
    if (::GetAsyncKeyState(VK_LBUTTON) < 0) SendMouseButton(false);
    user.reset();
    ParkMouse();
    EXPECT_EQ(CountPopups(), 0);
    EXPECT_EQ(MenuBarTestAccess::ActiveTarget(), nullptr);
    EXPECT_EQ(MenuBarTestAccess::InputHook(), nullptr);
}

User::Condition BarUserTest::Opened(int button) {
    return [this, button] {
        return State() == CSkinMenuBar::TRACKING_POPUP && Access().PopupButton() == button &&
               CountPopups() > 0;
    };
}

User::Condition BarUserTest::OpenedWithItem(int button) {
    return [this, button] {
        if (!Opened(button)()) return false;
        const std::vector<Received>& log = frame.log.Entries();
        for (auto entry = log.rbegin(); entry != log.rend(); ++entry)
            if (entry->message == WM_MENUSELECT)
                return reinterpret_cast<HMENU>(entry->lParam) == Access().OpenPopup() &&
                       Access().OpenPopup() != nullptr;
        return false;
    };
}

User::Condition BarUserTest::Hot(int button) {
    return [this, button] { return State() == CSkinMenuBar::TRACKING_BUTTON && bar.GetHotItem() == button; };
}

User::Condition BarUserTest::Idle() {
    return [this] { return State() == CSkinMenuBar::TRACKING_IDLE && bar.GetHotItem() == -1; };
}

User::Condition BarUserTest::Commanded(UINT id) {
    return [this, id] {
        const std::vector<UINT> all = Commands();
        return !all.empty() && all.back() == id;
    };
}

User::Condition BarUserTest::Selected(HMENU menu, UINT item) {
    return [this, menu, item] {
        const std::vector<Received>& log = frame.log.Entries();
        for (auto entry = log.rbegin(); entry != log.rend(); ++entry)
            if (entry->message == WM_MENUSELECT)
                return reinterpret_cast<HMENU>(entry->lParam) == menu && LOWORD(entry->wParam) == item;
        return false;
    };
}

std::vector<HMENU> BarUserTest::OpenedMenus() {
    std::vector<HMENU> menus;
    for (const Received& r : frame.log.Entries())
        if (r.message == WM_INITMENUPOPUP) menus.push_back(reinterpret_cast<HMENU>(r.wParam));
    return menus;
}

std::vector<UINT> BarUserTest::Commands() {
    std::vector<UINT> commands;
    for (const Received& r : frame.log.Entries())
        if (r.message == WM_COMMAND) commands.push_back(LOWORD(r.wParam));
    return commands;
}

}  // namespace tavix_test
