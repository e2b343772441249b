// Thousands of random messages to a combo box and its list, beside a plain model of their rules.
#include <algorithm>
#include <cstring>
#include <random>

#include "combo_fixture.h"
#include "controls/drop_rows.h"

namespace tavix_test {
namespace {

/* The rules without windows. */
struct ComboModel {
    bool hasEdit = false;
    std::vector<std::string> items;
    std::vector<LRESULT> data;
    int current = -1, top = 0;
    bool open = false;
    std::string text;  // of the edit, if there is one
    std::vector<int> told;

    int Count() const { return static_cast<int>(items.size()); }
    bool Has(int item) const { return item >= 0 && item < Count(); }
    const std::string& At(int item) const { return items[static_cast<std::size_t>(item)]; }
    void Insert(int at, const std::string& string) {
        items.insert(items.begin() + at, string);
        data.insert(data.begin() + at, 0);
    }
    void Select(int item) {
        if (!Has(item)) return;
        current = item;
        text = At(item);
    }
    /* Only the text that a combo box without an edit keeps itself is lost. */
    void Delete(int item) {
        if (Has(item)) {
            items.erase(items.begin() + item);
            data.erase(data.begin() + item);
            if (items.empty()) current = -1, top = 0;
        }
        if (!hasEdit) text.clear();
        if (current < Count() || items.empty()) return;
        current = 0;
        if (!hasEdit) text = At(0);
    }
    int SelectPrefix(int start, const std::string& prefix) {
        for (int i = std::max(start, 0); i < Count(); ++i) {
            if (::_strnicmp(At(i).c_str(), prefix.c_str(), prefix.size()) != 0) continue;
            Select(i);
            return i;
        }
        return -1;
    }
    void Choose(int item) {
        told.insert(told.end(), {CBN_SELENDOK, CBN_CLOSEUP});
        if (Has(item)) text = At(item);
        told.push_back(CBN_SELCHANGE);
    }
    void Show(bool wanted) {
        if (wanted == open) return;
        open = wanted;
        if (wanted)
            told.push_back(CBN_DROPDOWN);
        else
            told.insert(told.end(), {CBN_SELENDCANCEL, CBN_CLOSEUP});
    }
    void Return() {
        if (!open) return;
        Select(current);
        Show(false);
    }
};

class ComboBoxModel : public ComboTest {
protected:
    int UpTo(int most) { return std::uniform_int_distribution<int>(0, most)(m_random); }
    /* Now and then one out of range. */
    int AnyItem(const ComboModel& model) { return UpTo(model.Count() + 3) - 2; }
    std::string AnyText() {
        std::string text(1, static_cast<char>((UpTo(1) ? 'a' : 'A') + UpTo(4)));
        return text + std::to_string(UpTo(30));
    }

    /* One random message to both; the answers have to be the same. */
    void Step(ComboModel& model) {
        const int item = AnyItem(model);
        const auto index = static_cast<WPARAM>(item);
        const std::string text = AnyText();
        const auto string = reinterpret_cast<LPARAM>(text.c_str());
        m_kind = UpTo(17);
        switch (m_kind) {
            case 0:
            case 1:
            case 2:
                if (model.Count() >= 40) break;
                EXPECT_EQ(Send(CB_ADDSTRING, 0, string), model.Count());
                model.Insert(model.Count(), text);
                break;
            case 3:
                if (item < 0 || item > model.Count()) break;
                EXPECT_EQ(Send(CB_INSERTSTRING, index, string), item);
                model.Insert(item, text);
                break;
            case 4:
            case 5:
                EXPECT_EQ(Send(CB_DELETESTRING, index), 0) << item;
                model.Delete(item);
                break;
            case 6:
                EXPECT_EQ(Send(CB_SETCURSEL, index), 0) << item;
                model.Select(item);
                break;
            case 7: {
                const std::string prefix = text.substr(0, static_cast<std::size_t>(1 + UpTo(1)));
                EXPECT_EQ(Send(CB_SELECTSTRING, index, reinterpret_cast<LPARAM>(prefix.c_str())),
                          model.SelectPrefix(item, prefix));
                break;
            }
            case 8:
                EXPECT_EQ(Send(WM_SETTEXT, 0, string), 0);
                model.text = text;
                break;
            case 9:
                EXPECT_EQ(Send(CB_SETTOPINDEX, index), 0);
                model.top = item;
                break;
            case 10:
                EXPECT_EQ(Send(0x701, index), 0);
                model.Choose(item);
                break;
            case 11:
                EXPECT_EQ(Send(CB_SHOWDROPDOWN, !model.open), 1);
                model.Show(!model.open);
                if (model.hasEdit) TakeCompletion(model);
                break;
            case 12: {
                constexpr int kKeys[] = {VK_RETURN, VK_ESCAPE, VK_UP, VK_DOWN, VK_HOME, VK_F4, 'A'};
                const int key = kKeys[UpTo(6)];
                EXPECT_EQ(Send(WM_KEYDOWN, static_cast<WPARAM>(key)), 0);
                EXPECT_EQ(Send(WM_CHAR, static_cast<WPARAM>(key)), 0);
                if (key == VK_RETURN) model.Return();
                break;
            }
            case 13:
                if (model.Has(item)) {
                    Send(CB_SETITEMDATA, index, 1000 + item);
                    model.data[static_cast<std::size_t>(item)] = 1000 + item;
                }
                break;
            case 14: {
                const int code = UpTo(8);
                if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK) break;
                const int visible = Visible(model);
                EXPECT_EQ(SendList(WM_VSCROLL, static_cast<WPARAM>(code)), 0);
                Scroll(model, code, visible);
                break;
            }
            case 15:
            case 16: {
                const int y = UpTo(ClientOf(list).bottom - 1), row = model.top + y / RowOf(model);
                const bool isRow = y / RowOf(model) < Visible(model) && model.Has(row);
                SendList(WM_MOUSEMOVE, 0, At({12, y}));
                if (isRow) model.current = row;
                if (UpTo(2) != 0) break;
                SendList(WM_LBUTTONDOWN, MK_LBUTTON, At({12, y}));
                SendList(WM_LBUTTONUP, 0, At({12, y}));
                model.Show(false);
                if (isRow) model.Choose(model.current);
                ::ReleaseCapture();
                break;
            }
            default:
                if (UpTo(20) != 0) break;
                EXPECT_EQ(Send(CB_RESETCONTENT), 0);
                model.items.clear();
                model.data.clear();
                model.current = -1;
                model.top = 0;
                model.text.clear();
        }
    }

    /* Opening, the native control may complete what stands in the edit from the items. */
    void TakeCompletion(ComboModel& model) {
        const std::string shown = Text();
        EXPECT_EQ(::_strnicmp(shown.c_str(), model.text.c_str(), model.text.size()), 0);
        model.text = shown;
    }
    int RowOf(const ComboModel& model) { return model.items.empty() ? 14 : RowHeight(); }
    int Visible(const ComboModel& model) {
        return tavix::CountVisibleRows(ClientOf(list).bottom, RowOf(model));
    }
    static void Scroll(ComboModel& model, int code, int visible) {
        const int left = model.Count() - model.top;
        if (code == SB_LINEUP && model.top > 0)
            --model.top;
        else if (code == SB_LINEDOWN && left > visible)
            ++model.top;
        else if (code == SB_PAGEUP && model.top > 0)
            model.top = std::max(model.top + 1 - visible, 0);
        else if (code == SB_PAGEDOWN && left >= visible)
            model.top += std::min(visible, left - visible);
    }
    void Compare(const ComboModel& model) {
        EXPECT_EQ(Send(CB_GETCOUNT), model.Count());
        EXPECT_EQ(Current(), model.current);
        EXPECT_EQ(List().topItem, model.top);
        EXPECT_EQ(IsOpen(), model.open);
        EXPECT_EQ(Text(), model.text);
        EXPECT_EQ(Send(WM_GETTEXTLENGTH), static_cast<LRESULT>(model.text.size()));
        EXPECT_EQ(Notices(), model.told);
    }
    void CompareItems(const ComboModel& model) {
        for (int i = 0; i < model.Count(); ++i) {
            char buffer[64] = {};
            const auto index = static_cast<WPARAM>(i);
            const auto length = static_cast<LRESULT>(model.At(i).size());
            EXPECT_EQ(Send(CB_GETLBTEXTLEN, index), length);
            EXPECT_EQ(Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer)), length);
            EXPECT_EQ(std::string(buffer), model.At(i));
            EXPECT_EQ(Send(CB_GETITEMDATA, index), model.data[static_cast<std::size_t>(i)]);
        }
    }
    void Run(DWORD style, unsigned seed, int steps) {
        m_random.seed(seed);
        Make(style | WS_VSCROLL);
        // An edit tells of the keyboard's coming, which the choices bring.
        ::SetFocus(combo);
        Parent().log.Clear();
        Parent().log.Listen({WM_COMMAND});
        ComboModel model;
        model.hasEdit = edit != nullptr;
        for (int step = 0; step < steps; ++step) {
            model.told.clear();
            Step(model);
            Compare(model);
            if (step % 50 == 0) CompareItems(model);
            if (step % 200 == 0) RepaintedClient(combo), RepaintedClient(list);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << step << ", of kind " << m_kind;
        }
        ::DestroyWindow(combo);
    }

private:
    std::mt19937 m_random;
    int m_kind = 0;  // of the last step
};
INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxModel, kControlWorlds, NameOfWorld);

TEST_P(ComboBoxModel, WithoutAnEditAnswersAsItsRulesSay) { Run(CBS_DROPDOWNLIST, 1, 3000); }
TEST_P(ComboBoxModel, WithAnEditAnswersAsItsRulesSay) { Run(CBS_DROPDOWN | CBS_AUTOHSCROLL, 2, 2000); }

}  // namespace
}  // namespace tavix_test
