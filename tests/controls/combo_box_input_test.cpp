/* Combo boxes under real input, against a model, and in the hands of hosts that destroy them. */
#include "combo_fixture.h"
#include "support/compound_image.h"

namespace tavix_test {
namespace {

using tavix::test::Xorshift;

class ComboBoxInput : public ComboTest {
protected:
    void Press(POINT at) { Send(WM_LBUTTONDOWN, MK_LBUTTON, At(at)); }
};

TEST_P(ComboBoxInput, OnlyTheArrowOpensTheList) {
    MakeListOnly(3);
    Press(BodyPoint());
    EXPECT_FALSE(IsOpen());
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, At(BodyPoint()));
    EXPECT_FALSE(IsOpen());
    Press(ArrowPoint());
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(::GetCapture(), list);
    Send(CB_SHOWDROPDOWN, FALSE);
    Send(WM_LBUTTONDBLCLK, MK_LBUTTON, At(ArrowPoint()));
    EXPECT_TRUE(IsOpen()) << "a double click is a press";
}

TEST_P(ComboBoxInput, PressWhileOpenClosesAndKeepsTheMouse) {
    MakeListOnly(3);
    for (const POINT at : {POINT{BodyPoint()}, POINT{ArrowPoint()}, POINT{-20, -20}}) {
        Open();
        Press(at);
        EXPECT_FALSE(IsOpen());
        EXPECT_EQ(::GetCapture(), combo);
        Press({-20, -20});
        EXPECT_EQ(::GetCapture(), nullptr) << "the next press outside lets it go";
    }
}

TEST_P(ComboBoxInput, FrameAboveTheArrowOpensToo) {
    MakeListOnly(3);
    CRect window;
    ::GetWindowRect(combo, &window);
    const int right = window.right - skin.BitmapSize(31).cx, left = right - skin.BitmapSize(33).cx;
    const auto press = [this](int x, int y) { Send(WM_NCLBUTTONDOWN, HTBORDER, At({x, y})); };
    for (const POINT beside : {POINT{left - 1, window.top + 2}, POINT{right, window.top + 2},
                               POINT{left, window.top + 1}, POINT{left, window.bottom + 2}}) {
        press(beside.x, beside.y);
        EXPECT_FALSE(IsOpen());
    }
    press(left, window.top + 2);
    EXPECT_TRUE(IsOpen());
    press(0, 0);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(::GetCapture(), combo);
    ::ReleaseCapture();
    press(right - 1, window.bottom + 1);
    EXPECT_TRUE(IsOpen());
}

TEST_P(ComboBoxInput, MouseOpensMovesChoosesAndTellsInOrder) {
    MakeListOnly(5);
    ASSERT_TRUE(BringToFront(Parent()));
    Parent().log.Clear();
    ClickMouse(combo, ArrowPoint());
    ASSERT_TRUE(IsOpen()) << "and stays open after the release";
    MoveMouse(list, RowPoint(1));
    MoveMouse(list, RowPoint(3));
    EXPECT_EQ(Current(), 3);
    ClickMouse(list, RowPoint(3));
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(Text(), "Item 3");
    const std::vector<int> told = Notices();
    // The native control tells of its opening and closing; the choice follows as the skin tells it.
    ASSERT_GE(told.size(), 5u);
    EXPECT_EQ(told.front(), CBN_DROPDOWN);
    EXPECT_EQ(std::vector<int>(told.end() - 3, told.end()),
              (std::vector<int>{CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}));
    for (std::size_t i = 1; i + 3 < told.size(); ++i)
        EXPECT_TRUE(told[i] == CBN_CLOSEUP || told[i] == CBN_SELENDOK || told[i] == CBN_SELENDCANCEL ||
                    told[i] == CBN_SETFOCUS)
            << told[i];
    EXPECT_EQ(::GetCapture(), nullptr);
    ParkMouse();
}

TEST_P(ComboBoxInput, PressElsewhereClosesWithoutAChoice) {
    MakeListOnly(5);
    ASSERT_TRUE(BringToFront(Parent()));
    ClickMouse(combo, ArrowPoint());
    ASSERT_TRUE(IsOpen());
    Parent().log.Clear();
    ClickMouse(Parent(), {350, 20});
    EXPECT_FALSE(IsOpen());
    for (const int code : Notices()) EXPECT_NE(code, CBN_SELCHANGE);
    EXPECT_EQ(Text(), "");
    ParkMouse();
}

TEST_P(ComboBoxInput, ArrowIsHotWhileThePointerIsOnIt) {
    MakeListOnly(2);
    const auto colour = [this] {
        ::UpdateWindow(combo);
        return PictureOfClient(combo).At(ClientOf(combo).right - 2, 2);
    };
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(33));
    MoveMouse(combo, BodyPoint());
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(33));
    MoveMouse(combo, ArrowPoint());
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(34));
    PumpMessages(60);
    EXPECT_EQ(colour(), TestSkin::ColourOfBitmap(34)) << "as long as it stays there";
    MoveMouse(combo, BodyPoint());
    EXPECT_TRUE(PumpUntil([&] { return colour() == TestSkin::ColourOfBitmap(33); }));
    ParkMouse();
}

// ---------------------------------------------------------------- a model

TEST_P(ComboBoxInput, FiveThousandMessagesAgreeWithAPlainModel) {
    MakeListOnly();
    struct {
        std::vector<std::string> items;
        int current = -1, top = 0;
        std::string text;
    } model;
    const auto count = [&] { return static_cast<int>(model.items.size()); };
    const auto select = [&](int i) {
        if (i < 0 || i >= count()) return;
        model.current = i;
        model.text = model.items[static_cast<std::size_t>(i)];
    };
    Xorshift random(4711);
    for (int step = 0; step < 5000; ++step) {
        const int i = static_cast<int>(random.Below(14)) - 2;
        const WPARAM index = static_cast<WPARAM>(i);
        const std::string text =
            std::string(1, static_cast<char>('a' + random.Below(5))) + std::to_string(random.Below(20));
        const LPARAM string = reinterpret_cast<LPARAM>(text.c_str());
        switch (random.Below(10)) {
            case 0:
            case 1:
                if (count() < 12) Send(CB_ADDSTRING, 0, string), model.items.push_back(text);
                break;
            case 2:
                Send(CB_SETCURSEL, index);
                select(i);
                break;
            case 3:
                EXPECT_EQ(Send(CB_DELETESTRING, index), 0);
                if (i >= 0 && i < count()) model.items.erase(model.items.begin() + i);
                model.text.clear();
                if (model.current >= count() && count() > 0) select(0);
                // The native list sends itself the message that forgets all, once its last item goes.
                if (i == 0 && count() == 0) model.current = -1, model.top = 0;
                break;
            case 4: {
                const std::string prefix = text.substr(0, 1);
                int expected = -1;
                for (int k = std::max(i, 0); k < count() && expected < 0; ++k)
                    if (model.items[static_cast<std::size_t>(k)][0] == prefix[0]) expected = k;
                ASSERT_EQ(Send(CB_SELECTSTRING, index, reinterpret_cast<LPARAM>(prefix.c_str())), expected);
                select(expected);
                break;
            }
            case 5:
                Send(WM_SETTEXT, 0, string);
                model.text = text;
                break;
            case 6:
                Send(CB_SETTOPINDEX, index);
                model.top = i;
                break;
            case 7:
                Send(0x701, index);
                if (i >= 0 && i < count()) model.text = model.items[static_cast<std::size_t>(i)];
                break;
            case 8:
                Send(WM_KEYDOWN, i % 2 ? VK_DOWN : VK_ESCAPE);
                break;
            default:
                if (random.Below(12)) break;
                Send(CB_RESETCONTENT);
                model = {};
        }
        ASSERT_EQ(Text(), model.text) << step;
        ASSERT_EQ(Current(), model.current) << step;
        ASSERT_EQ(Send(CB_GETCOUNT), count()) << step;
        ASSERT_EQ(List().topItem, model.top) << step;
    }
}

// ---------------------------------------------------------------- hostile hosts

TEST_P(ComboBoxInput, HostThatDestroysItsWindowInANotificationIsNoDanger) {
    for (const int code : {CBN_SELENDOK, CBN_CLOSEUP, CBN_SELCHANGE}) {
        ProbeWindow other(WS_POPUP | WS_VISIBLE);
        combo =
            CreateControl(GetParam().charset, other, "ComboBox", "", CBS_DROPDOWNLIST, kComboPlace, kComboId);
        Add("One");
        other.handler = [&](const Received& received) -> std::optional<LRESULT> {
            if (received.message == WM_COMMAND && HIWORD(received.wParam) == code) ::DestroyWindow(combo);
            return std::nullopt;
        };
        Send(0x701, 0);
        EXPECT_FALSE(::IsWindow(combo)) << code;
    }
}

TEST_P(ComboBoxInput, HostThatDestroysTheComboBoxWhileItClosesIsNoDanger) {
    MakeListOnly(5);
    Open();
    SendList(WM_MOUSEMOVE, 0, At(RowPoint(2)));
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_COMMAND && HIWORD(received.wParam) == CBN_CLOSEUP) ::DestroyWindow(combo);
        return std::nullopt;
    };
    SendList(WM_LBUTTONUP, 0, At(RowPoint(2)));
    EXPECT_FALSE(::IsWindow(combo));
    EXPECT_FALSE(::IsWindow(list));
    Parent().handler = nullptr;
}

TEST_P(ComboBoxInput, HostThatEmptiesTheListInANotificationIsNoDanger) {
    MakeListOnly(5);
    Parent().handler = [&](const Received& received) -> std::optional<LRESULT> {
        if (received.message == WM_COMMAND) Send(CB_RESETCONTENT);
        return std::nullopt;
    };
    Open();
    SendList(WM_MOUSEMOVE, 0, At({10, 5}));
    SendList(WM_LBUTTONUP, 0, At({10, 5}));
    Send(0x701, 3);
    Send(0x701, static_cast<WPARAM>(-5));
    Parent().handler = nullptr;
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    RepaintedClient(combo);
    RepaintedClient(list);
}

TEST_P(ComboBoxInput, ComboBoxWhoseListHasNoSkinIsNoDanger) {
    MakeListOnly(3);
    // What happens to a list that is no more.
    Combo().ForgetList(&List());
    EXPECT_EQ(Current(), -1);
    EXPECT_EQ(Send(CB_GETCOUNT), 0);
    Send(CB_SETCURSEL, 1);
    Send(CB_SETTOPINDEX, 1);
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>("It")), -1);
    Send(CB_DELETESTRING, 0);
    Send(0x701, 0);
    RepaintedClient(combo);
    Press(ArrowPoint());
    Send(WM_KEYDOWN, VK_RETURN);
}

TEST_P(ComboBoxInput, TenThousandCharactersAreCutNowhereButInTheCallersBuffer) {
    MakeListOnly();
    const std::string text(10000, 'w');
    Add(text);
    Send(CB_SETCURSEL, 0);
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 10000);
    std::vector<char> buffer(10001, '#');
    EXPECT_EQ(Send(WM_GETTEXT, buffer.size(), reinterpret_cast<LPARAM>(buffer.data())), 10000);
    EXPECT_EQ(std::string(buffer.data()), text);
    EXPECT_EQ(Send(CB_SELECTSTRING, 0, reinterpret_cast<LPARAM>(text.c_str())), 0);
    Open();
    RepaintedClient(list);
    RepaintedClient(combo);
    Send(0x701, 0);
    EXPECT_EQ(Send(WM_GETTEXTLENGTH), 10000);
}

INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxInput, kComboWorlds, NameOfComboWorld);

}  // namespace
}  // namespace tavix_test
