// Thousands of random messages to a list box, beside a plain model of its rules.
#include <algorithm>
#include <optional>
#include <random>
#include <string>

#include "controls/list_box_fixture.h"

namespace tavix_test {
namespace {

int BarWidth() { return ::GetSystemMetrics(SM_CXVSCROLL); }

/* What becomes of a bar's page and position, whose range begins at 0. */
struct BarModel {
    int max = 0, page = 0, pos = 0;

    void SetRange(int last, int rows) {
        max = std::max(last, 0);
        Bound();
        page = std::min(rows, max + 1);
    }
    void SetPos(int to) {
        pos = std::max(to, 0);
        if (to >= 0) Bound();
    }
    void Bound() {
        page = std::clamp(page, 0, max + 1);
        pos = std::min(pos, std::max(max - std::max(page - 1, 0), 0));
    }
};

/* The rules of a list with items of one height, without windows. */
struct ListModel {
    struct Item {
        std::string text;
        LRESULT data = 0;
    };
    bool multiple = false;
    bool columned = false;
    bool wantsBar = false;
    CSize size{200, 96};
    std::vector<Item> items;
    int top = 0, current = -1, rows = 8, columns = 1, columnWidth = 0;
    std::optional<BarModel> bar;
    bool barShows = false;
    std::string marks;
    std::vector<int> told;
    int touched = 0;  // where items came or went last

    int Count() const { return static_cast<int>(items.size()); }
    bool Has(int item) const { return item >= 0 && item < Count(); }
    const Item& At(int item) const { return items[static_cast<std::size_t>(item)]; }
    bool Marked(int item) const {
        return Has(item) && item < static_cast<int>(marks.size()) &&
               marks[static_cast<std::size_t>(item)] == '1';
    }
    void SetMark(int item, bool on) { marks.at(static_cast<std::size_t>(item)) = on ? '1' : '0'; }
    std::vector<int> MarkedItems() const {
        if (!multiple) return {-1};
        std::vector<int> found;
        for (std::size_t i = 0; i < marks.size(); ++i)
            if (marks[i] == '1') found.push_back(static_cast<int>(i));
        return found;
    }
    void Tell() { told.push_back(LBN_SELCHANGE); }

    // ------------------------------------------------------------ layout

    void UpdateBar() {
        const int height = size.cy;
        const bool lastShows = !columned && height % kItemHeight * 10 >= kItemHeight * 8;
        rows = height / kItemHeight + (lastShows ? 1 : 0);
        if (!wantsBar) return;
        barShows = rows < Count();
        if (!barShows) return;
        if (!bar) {
            columnWidth = std::min<int>(columnWidth, size.cx - BarWidth());
            bar.emplace();
        }
        bar->SetRange(Count() - 1, rows);
    }
    void Resize(CSize to) {
        size = to;
        UpdateBar();
        if (top >= Count() - rows) top = Count() - rows;
        if (top < 1) top = 0;
        if (bar) bar->SetRange(Count() - 1, rows);
        columnWidth = columned ? std::min<int>(size.cx, 150) : size.cx;
        columns = (size.cx + columnWidth - 1) / columnWidth;
    }
    bool Inside(CPoint at) const { return CRect(CPoint(0, 0), size).PtInRect(at); }
    int Right() const { return size.cx - (barShows ? BarWidth() : 0); }
    /* Counted from the top item, in one column whatever the list's columns are. */
    int ItemAt(CPoint at) const {
        const int last = std::min(top + columns * rows, Count() - 1);
        for (int i = std::max(top, 0); Inside(at) && at.x < Right() && i <= last; ++i)
            if (at.y >= (i - top) * kItemHeight && at.y < (i - top + 1) * kItemHeight) return i;
        return -1;
    }
    /* What a press hits, where the columns do count; never called for the bar's strip. */
    int HitAt(CPoint at) const {
        if (!Inside(at)) return -1;
        const int last = std::min(columned ? columns * rows : top + rows, Count() - 1);
        for (int i = std::max(top, 0); i <= last; ++i) {
            const CPoint corner(columned ? i / rows * columnWidth : 0, (i - top) * kItemHeight);
            if (CRect(corner, CSize(columnWidth, kItemHeight)).PtInRect(at)) return i;
        }
        return -1;
    }

    // ------------------------------------------------------------ items

    LRESULT Insert(int at, const std::string& text) {
        if (at == -1) at = Count();
        if (at < 0 || at > Count()) return LB_ERR;
        touched = at;
        items.insert(items.begin() + at, Item{text});
        if (multiple) marks.insert(std::min(static_cast<std::size_t>(at), marks.size()), 1, '0');
        if (current >= at) ++current;
        UpdateBar();
        return at;
    }
    LRESULT Delete(int item) {
        if (!Has(item)) return LB_ERR;
        touched = item;
        items.erase(items.begin() + item);
        if (items.empty()) Reset();  // the native control sends itself the message for that
        if (current >= Count() - 1) {
            top = std::max(top - 1, 0);
            current = Count() - 1;
            Tell();
        }
        if (items.empty()) {
            current = -1;
            Tell();
            top = 0;
        }
        if (Count() <= rows) top = 0;
        if (multiple && items.size() < marks.size()) marks.erase(items.size(), 1);
        UpdateBar();
        return Count();
    }
    void Reset() {
        items.clear();
        current = -1;
        top = 0;
        UpdateBar();
    }
    bool SetData(int item, LRESULT data) {
        if (!Has(item)) return false;
        items[static_cast<std::size_t>(item)].data = data;
        touched = item;
        return true;
    }
    int FindExact(const std::string& text) const {
        const auto is = [&](const Item& item) { return item.text == text; };
        const auto found = std::find_if(items.begin(), items.end(), is);
        return found == items.end() ? LB_ERR : static_cast<int>(found - items.begin());
    }

    // ------------------------------------------------------------ selection

    LRESULT SetCurrent(int item) {
        if (multiple || item >= Count()) return LB_ERR;
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
    void Press(CPoint at, bool modified) {
        const int item = HitAt(at);
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
    void Drag(CPoint at) {
        const int item = HitAt(at);
        if (multiple && item >= 0) SetMark(item, true);
    }

    // ------------------------------------------------------------ scrolling and keys

    void ScrollTo(int newTop, int newPos) {
        top = newTop;
        bar->SetPos(newPos);
    }
    void Scroll(int code, int position) {
        if (!bar) return;
        const int pos = bar->pos, lastPage = Count() - rows;
        if (code == SB_LINEUP && top > 0)
            ScrollTo(top - 1, pos - 1);
        else if (code == SB_LINEDOWN && top < lastPage)
            ScrollTo(top + 1, pos + 1);
        else if (code == SB_PAGEUP && top >= rows)
            ScrollTo(top - rows, pos - rows);
        else if (code == SB_PAGEUP)
            ScrollTo(0, pos - top);
        else if (code == SB_PAGEDOWN && top < lastPage)
            ScrollTo(std::min(top + rows, lastPage), std::min(pos + rows, Count() - 1));
        else if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK)
            ScrollTo(position, position);
        else if (code == SB_BOTTOM)
            ScrollTo(top == lastPage ? top : lastPage - 1, Count() - 1);
    }
    void MoveBar(int by) {
        if (bar) bar->SetPos(bar->pos + by);
    }
    void Up() {
        if (current > 0 && current - 1 >= top) {
            --current;
        } else if (columned || top < 1) {
            top = std::max(top - rows, 0);
        } else {
            --top, --current;
            MoveBar(-1);
        }
    }
    void Down() {
        if (current == -1)
            current = 0;
        else if (current < Count() - 1)
            ++current;
        if (current <= top + (columned ? rows : rows - 1)) return;
        top += columned ? rows : 1;
        if (!columned) MoveBar(1);
    }
    void Left() {
        if (!columned || current - rows < 0) return;
        top -= rows;
        current -= rows;
    }
    void Right(int count) {
        if (!columned || top + rows >= count) return;
        top += rows;
        current = std::min(current + rows, count - 1);
    }
    void Key(int key) {
        if (key != VK_UP && key != VK_DOWN && key != VK_LEFT && key != VK_RIGHT) return;
        if (!multiple) switch (key) {
                case VK_UP:
                    Up();
                    break;
                case VK_DOWN:
                    Down();
                    break;
                case VK_LEFT:
                    Left();
                    break;
                default:
                    Right(Count());
            }
        Tell();
    }
};

class ListBoxModel : public ListBoxTest {
protected:
    int UpTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }
    /* Now and then one out of range. */
    int AnyItem(const ListModel& model) { return UpTo(model.Count() + 3) - 2; }
    /* Left of the bar's strip, and now and then above or below the list. */
    CPoint AnyPoint(const ListModel& model) {
        return {UpTo(model.size.cx - BarWidth() - 1), UpTo(model.size.cy + 20) - 10};
    }
    /* None is like another. */
    std::string NewText() {
        return std::string(static_cast<std::size_t>(UpTo(20)), 'x') + std::to_string(++m_texts);
    }

    /* One random message to both; the answers have to be the same. */
    void Step(ListModel& model) {
        const int item = AnyItem(model);
        const auto index = static_cast<WPARAM>(item);
        const std::string text = NewText();
        const auto string = reinterpret_cast<LPARAM>(text.c_str());
        m_kind = UpTo(16);
        switch (m_kind) {
            case 0:
            case 1:
                EXPECT_EQ(Send(LB_ADDSTRING, 0, string), model.Insert(-1, text));
                break;
            case 2:
                EXPECT_EQ(Send(LB_INSERTSTRING, index, string), model.Insert(item, text)) << item;
                break;
            case 3:
                EXPECT_EQ(Send(LB_DELETESTRING, index), model.Delete(item)) << item;
                break;
            case 4:
                if (UpTo(20) != 0) break;
                Send(LB_RESETCONTENT);
                model.Reset();
                break;
            case 5:
                EXPECT_EQ(Send(LB_SETCURSEL, index), model.SetCurrent(item)) << item;
                break;
            case 6: {
                const int on = UpTo(1);
                EXPECT_EQ(Send(LB_SETSEL, static_cast<WPARAM>(on), item), model.SetSel(item, on != 0))
                    << item;
                break;
            }
            case 7: {
                const int last = AnyItem(model);
                EXPECT_EQ(Send(LB_SELITEMRANGEEX, index, last), model.SetRange(item, last));
                break;
            }
            case 8:
                EXPECT_EQ(Send(LB_SETTOPINDEX, index), model.SetTop(item)) << item;
                break;
            case 9: {
                const int code = UpTo(8), position = UpTo(std::max(model.Count(), 1));
                Scroll(code, position);
                model.Scroll(code, position);
                break;
            }
            case 10: {
                const int delta = UpTo(240) - 120;
                Send(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta)));
                if (model.barShows) model.Scroll(delta >= 0 ? SB_LINEUP : SB_LINEDOWN, 0);
                break;
            }
            case 11: {
                const CSize size(100 + UpTo(280), 20 + UpTo(180));
                if (size.cx == model.size.cx && size.cy == model.size.cy) break;
                Resize(size);
                model.Resize(size);
                break;
            }
            case 12:
            case 13: {
                constexpr int kKeys[] = {VK_UP,    VK_DOWN, VK_DOWN, VK_UP,    VK_LEFT,
                                         VK_RIGHT, VK_HOME, VK_END,  VK_PRIOR, VK_NEXT};
                const int key = kKeys[UpTo(9)];
                Key(static_cast<WORD>(key));
                model.Key(key);
                break;
            }
            case 14: {
                const CPoint at = AnyPoint(model);
                const WPARAM keys = UpTo(2) ? 0 : MK_CONTROL;
                Press(at, keys);
                model.Press(at, keys != 0);
                break;
            }
            case 15: {
                const CPoint at = AnyPoint(model);
                Send(WM_MOUSEMOVE, MK_LBUTTON, Packed(at));
                model.Drag(at);
                break;
            }
            default:
                EXPECT_EQ(Send(LB_SETITEMDATA, index, m_texts) != LB_ERR, model.SetData(item, m_texts))
                    << item;
        }
    }

    void Compare(const ListModel& model) {
        EXPECT_EQ(Count(), model.Count());
        EXPECT_EQ(Top(), model.top);
        // With columns the native control is asked, which knows of none.
        EXPECT_EQ(Current(), model.columned ? LB_ERR : model.current);
        EXPECT_EQ(Marked(), model.MarkedItems());
        EXPECT_EQ(Told(), model.told);
        CompareBar(model);
        const CPoint at(UpTo(model.size.cx + 20) - 10, UpTo(model.size.cy + 20) - 10);
        EXPECT_EQ(Send(LB_ITEMFROMPOINT, 0, Packed(at)),
                  MAKELONG(model.ItemAt(at) & 0xFFFF, model.Inside(at)))
            << at.x << "," << at.y;
        const std::string text = model.items.empty() ? "none" : model.At(UpTo(model.Count() - 1)).text;
        EXPECT_EQ(Send(LB_FINDSTRINGEXACT, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(text.c_str())),
                  model.FindExact(text));
    }
    void CompareBar(const ListModel& model) {
        EXPECT_EQ(Bar() != nullptr, model.bar.has_value());
        EXPECT_EQ(BarShows(), model.barShows);
        if (!Bar() || !model.bar) return;
        const SCROLLINFO info = BarInfo();
        EXPECT_EQ(info.nMin, 0);
        EXPECT_EQ(info.nMax, model.bar->max);
        EXPECT_EQ(info.nPage, static_cast<UINT>(model.bar->page));
        EXPECT_EQ(info.nPos, model.bar->pos);
    }
    /* What the list tells of one item, also of one that it doesn't have. */
    void CompareItem(const ListModel& model, int item) {
        const auto index = static_cast<WPARAM>(item);
        char buffer[64] = {};
        CRect rect;
        const LRESULT length = Send(LB_GETTEXTLEN, index);
        const LRESULT read = Send(LB_GETTEXT, index, reinterpret_cast<LPARAM>(buffer));
        const LRESULT data = Send(LB_GETITEMDATA, index);
        const LRESULT placed =
            Send(LB_GETITEMRECT, index, reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
        if (!model.Has(item)) {
            EXPECT_EQ(length, LB_ERR) << item;
            EXPECT_EQ(read, LB_ERR) << item;
            EXPECT_EQ(data, LB_ERR) << item;
            return;
        }
        EXPECT_EQ(length, static_cast<LRESULT>(model.At(item).text.size())) << item;
        EXPECT_EQ(read, length) << item;
        EXPECT_EQ(std::string(buffer), model.At(item).text) << item;
        EXPECT_EQ(data, model.At(item).data) << item;
        // The native control never scrolls, and has no columns.
        EXPECT_NE(placed, LB_ERR) << item;
        EXPECT_EQ(rect, CRect(0, item * kItemHeight, model.size.cx, (item + 1) * kItemHeight)) << item;
    }
    /* A few items at each step, with those about the last change among them, and all now and then. */
    void CompareItems(const ListModel& model, int step) {
        constexpr int kAll = 50;
        for (int i = model.touched - 1; i <= model.touched + 1; ++i) CompareItem(model, i);
        if (!model.items.empty()) CompareItem(model, step % model.Count());
        for (int i = -1; step % kAll == 0 && i <= model.Count(); ++i) CompareItem(model, i);
    }

    void Run(DWORD listStyle, unsigned seed, int steps) {
        m_random.seed(seed);
        MakeList(listStyle, 0);
        ::SetFocus(list);
        Parent().log.Clear();
        ListModel model;
        model.multiple = (listStyle & LBS_MULTIPLESEL) != 0;
        model.columned = (listStyle & LBS_MULTICOLUMN) != 0;
        model.wantsBar = (listStyle & WS_VSCROLL) != 0;
        model.Resize(model.size);
        for (int step = 0; step < steps; ++step) {
            model.told.clear();
            Step(model);
            Compare(model);
            CompareItems(model, step);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step << ", of kind " << m_kind;
            if (step % 500 == 0) RepaintedClient(list);
        }
        ::DestroyWindow(list);
    }
    /* The four worlds share the messages; each has a seed of its own. */
    void RunShare(DWORD listStyle, unsigned seed, int steps) {
        Run(listStyle, seed + WorldOf(GetParam()), steps / 4);
    }

private:
    std::mt19937 m_random;
    int m_kind = 0;   // of the last step
    int m_texts = 0;  // made so far
};
INSTANTIATE_TEST_SUITE_P(Worlds, ListBoxModel, kControlWorlds, NameOfWorld);

TEST_P(ListBoxModel, SingleSelectionAnswersAsItsRulesSay) {
    if (IsFullWorld(GetParam()))
        Run(WS_VSCROLL, 1, 5000);
    else
        RunShare(WS_VSCROLL, 10, 5000);
}
TEST_P(ListBoxModel, SingleSelectionWithoutABarAnswersAsItsRulesSay) { RunShare(0, 20, 2500); }
TEST_P(ListBoxModel, MultipleSelectionAnswersAsItsRulesSay) {
    RunShare(WS_VSCROLL | LBS_MULTIPLESEL, 30, 5000);
}
TEST_P(ListBoxModel, ColumnsAnswerAsTheirRulesSay) { RunShare(WS_VSCROLL | LBS_MULTICOLUMN, 40, 5000); }
TEST_P(ListBoxModel, MultipleSelectionInColumnsAnswersAsItsRulesSay) {
    RunShare(LBS_MULTICOLUMN | LBS_MULTIPLESEL, 50, 2500);
}

}  // namespace
}  // namespace tavix_test
