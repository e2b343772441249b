// Thousands of random messages to a list box, beside a plain model of its rules.
#include <algorithm>
#include <random>
#include <string>

#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

/* The rules of a list of one column with items of one height, without windows. */
struct ListModel {
    bool multiple = false;
    bool wantsBar = false;
    int height = 96;
    int count = 0, top = 0, current = -1, rows = 8;
    bool hasBar = false, barShows = false;
    std::string marks;
    std::vector<int> told;

    bool Has(int item) const { return item >= 0 && item < count; }
    bool Marked(int item) const {
        return Has(item) && item < static_cast<int>(marks.size()) &&
               marks[static_cast<std::size_t>(item)] == '1';
    }
    void SetMark(int item, bool on) { marks.at(static_cast<std::size_t>(item)) = on ? '1' : '0'; }
    std::vector<int> MarkedItems() const {
        if (!multiple) return {-1};
        std::vector<int> items;
        for (std::size_t i = 0; i < marks.size(); ++i)
            if (marks[i] == '1') items.push_back(static_cast<int>(i));
        return items;
    }
    void Tell() { told.push_back(LBN_SELCHANGE); }
    void UpdateBar() {
        rows = height / kItemHeight + (height % kItemHeight * 10 >= kItemHeight * 8 ? 1 : 0);
        if (!wantsBar) return;
        if (rows < count) hasBar = true;
        barShows = rows < count;
    }
    void Resize(int to) {
        height = to;
        UpdateBar();
        if (top >= count - rows) top = count - rows;
        if (top < 1) top = 0;
    }
    LRESULT Insert(int at) {
        if (at == -1) at = count;
        if (at < 0 || at > count) return LB_ERR;
        ++count;
        if (multiple) marks.insert(std::min(static_cast<std::size_t>(at), marks.size()), 1, '0');
        if (current >= at) ++current;
        UpdateBar();
        return at;
    }
    LRESULT Delete(int item) {
        if (!Has(item)) return LB_ERR;
        --count;
        if (current >= count - 1) {
            top = std::max(top - 1, 0);
            current = count - 1;
            Tell();
        }
        if (count == 0) {
            current = -1;
            Tell();
            top = 0;
        }
        if (count <= rows) top = 0;
        const auto place = static_cast<std::size_t>(count);
        if (multiple && place < marks.size()) marks.erase(place, 1);
        UpdateBar();
        return count;
    }
    void Reset() {
        count = 0;
        current = -1;
        top = 0;
        UpdateBar();
    }
    LRESULT SetCurrent(int item) {
        if (multiple || item >= count) return LB_ERR;
        current = item;
        Tell();
        return 1;
    }
    LRESULT SetTop(int item) {
        if (!Has(item)) return LB_ERR;
        top = item;
        return 0;
    }
    LRESULT SetSel(int item, bool on) {
        if (!multiple || !Has(item)) return LB_ERR;
        SetMark(item, on);
        return 1;
    }
    LRESULT SetRange(int first, int last) {
        if (!multiple || !Has(first) || !Has(last)) return LB_ERR;
        for (int i = first; i < last; ++i) SetMark(i, true);
        return 1;
    }
    void Scroll(int code, int position) {
        if (!hasBar) return;
        const bool more = top <= count - rows - 1;
        if (code == SB_LINEUP && top > 0)
            --top;
        else if (code == SB_LINEDOWN && more)
            ++top;
        else if (code == SB_PAGEUP)
            top = top - rows >= 0 ? top - rows : 0;
        else if (code == SB_PAGEDOWN && more)
            top = top + rows < count - rows ? top + rows : count - rows;
        else if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK)
            top = position;
        else if (code == SB_BOTTOM && top != count - rows)
            top = count - rows - 1;
    }
    int HitAt(int y) const {
        if (y < 0 || y >= height) return -1;
        const int item = top + y / kItemHeight;
        return Has(item) && item <= top + rows ? item : -1;
    }
    void Press(int y, bool modified) {
        const int item = HitAt(y);
        if (item < 0) return;
        if (multiple && modified) {
            SetMark(item, !Marked(item));
        } else if (multiple) {
            std::fill(marks.begin(), marks.end(), '0');
            SetMark(item, true);
        } else if (!modified) {
            current = item;
        }
    }
    void Drag(int y) {
        const int item = HitAt(y);
        if (multiple && item >= 0) SetMark(item, true);
    }
    void Key(int key) {
        if (!multiple && key == VK_UP) {
            if (current > 0 && current - 1 >= top)
                --current;
            else if (top < 1)
                top = std::max(top - rows, 0);
            else
                --top, --current;
        }
        if (!multiple && key == VK_DOWN) {
            if (current == -1)
                current = 0;
            else if (current < count - 1)
                ++current;
            if (current > top + rows - 1) ++top;
        }
        if (key == VK_UP || key == VK_DOWN || key == VK_LEFT || key == VK_RIGHT) Tell();
    }
};

class ListBoxModel : public ListBoxTest {
protected:
    /* One random message to both; the answers have to be the same. */
    void Step(ListModel& model) {
        const auto upTo = [this](int most) { return std::uniform_int_distribution<int>(0, most)(m_random); };
        // Now and then an index out of range.
        const auto item = [&] { return upTo(model.count + 3) - 2; };
        const auto send = [this](UINT message, int wParam, LPARAM lParam = 0) {
            return Send(message, static_cast<WPARAM>(wParam), lParam);
        };
        const LPARAM text = reinterpret_cast<LPARAM>("Random");
        switch (upTo(15)) {
            case 0:
            case 1:
                EXPECT_EQ(send(LB_ADDSTRING, 0, text), model.Insert(-1));
                break;
            case 2: {
                const int at = item();
                if (at == -2) break;
                EXPECT_EQ(send(LB_INSERTSTRING, at, text), model.Insert(at)) << at;
                break;
            }
            case 3: {
                const int at = item();
                EXPECT_EQ(send(LB_DELETESTRING, at), model.Delete(at)) << at;
                break;
            }
            case 4:
                if (upTo(20) == 0) {
                    send(LB_RESETCONTENT, 0);
                    model.Reset();
                }
                break;
            case 5: {
                const int at = item();
                EXPECT_EQ(send(LB_SETCURSEL, at), model.SetCurrent(at)) << at;
                break;
            }
            case 6: {
                const int at = item(), on = upTo(1);
                EXPECT_EQ(send(LB_SETSEL, on, at), model.SetSel(at, on != 0)) << at;
                break;
            }
            case 7: {
                const int first = item(), last = item();
                EXPECT_EQ(send(LB_SELITEMRANGEEX, first, last), model.SetRange(first, last));
                break;
            }
            case 8: {
                const int at = item();
                EXPECT_EQ(send(LB_SETTOPINDEX, at), model.SetTop(at)) << at;
                break;
            }
            case 9: {
                const int code = upTo(8), position = upTo(std::max(model.count, 1));
                Scroll(code, position);
                model.Scroll(code, position);
                break;
            }
            case 10: {
                const int delta = upTo(240) - 120;
                Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)));
                if (model.barShows) model.Scroll(delta >= 0 ? SB_LINEUP : SB_LINEDOWN, 0);
                break;
            }
            case 11: {
                const int height = 20 + upTo(180);
                if (height == model.height) break;
                Resize({200, height});
                model.Resize(height);
                break;
            }
            case 12:
            case 13: {
                constexpr int kKeys[] = {VK_UP,    VK_DOWN, VK_DOWN, VK_UP,    VK_LEFT,
                                         VK_RIGHT, VK_HOME, VK_END,  VK_PRIOR, VK_NEXT};
                const int key = kKeys[upTo(9)];
                Key(static_cast<WORD>(key));
                model.Key(key);
                break;
            }
            case 14: {
                const int y = upTo(230) - 10;
                const WPARAM keys = upTo(2) ? 0 : MK_CONTROL;
                Press({20, y}, keys);
                model.Press(y, keys != 0);
                break;
            }
            default: {
                const int y = upTo(230) - 10;
                Send(WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(20, y));
                model.Drag(y);
                break;
            }
        }
    }
    void Compare(const ListModel& model) {
        EXPECT_EQ(Count(), model.count);
        EXPECT_EQ(Top(), model.top);
        EXPECT_EQ(Current(), model.current);
        EXPECT_EQ(Marked(), model.MarkedItems());
        EXPECT_EQ(BarShows(), model.barShows);
        EXPECT_EQ(Told(), model.told);
    }
    void Run(DWORD listStyle, unsigned seed, int steps) {
        m_random.seed(seed);
        MakeList(listStyle, 0);
        ::SetFocus(list);
        Parent().log.Clear();
        ListModel model;
        model.multiple = (listStyle & LBS_MULTIPLESEL) != 0;
        model.wantsBar = (listStyle & WS_VSCROLL) != 0;
        for (int step = 0; step < steps; ++step) {
            model.told.clear();
            Step(model);
            Compare(model);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step;
            if (step % 500 == 0) RepaintedClient(list);
        }
        ::DestroyWindow(list);
    }

private:
    std::mt19937 m_random;
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxModel, kControlWorlds, NameOfWorld);

TEST_P(ListBoxModel, SingleSelectionAnswersAsItsRulesSay) { Run(WS_VSCROLL, 1, 1700); }
TEST_P(ListBoxModel, SingleSelectionWithoutABarAnswersAsItsRulesSay) { Run(0, 2, 800); }
TEST_P(ListBoxModel, MultipleSelectionAnswersAsItsRulesSay) { Run(WS_VSCROLL | LBS_MULTIPLESEL, 3, 2500); }

}  // namespace
}  // namespace tavix_test
