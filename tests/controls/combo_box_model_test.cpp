// Thousands of random messages to a combo box and its list, beside a plain model of their rules.
#include <algorithm>
#include <cstring>
#include <random>

#include "combo_fixture.h"

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
    int touched = 0;  // where items came or went last

    int Count() const { return static_cast<int>(items.size()); }
    bool Has(int item) const { return item >= 0 && item < Count(); }
    const std::string& At(int item) const { return items[static_cast<std::size_t>(item)]; }
    LRESULT Insert(int at, const std::string& string) {
        if (at == -1) at = Count();
        if (at < 0 || at > Count()) return CB_ERR;
        touched = at;
        items.insert(items.begin() + at, string);
        data.insert(data.begin() + at, 0);
        return at;
    }
    bool SetData(int item, LRESULT value) {
        if (!Has(item)) return false;
        touched = item;
        data[static_cast<std::size_t>(item)] = value;
        return true;
    }
    static bool HasPrefix(const std::string& string, const std::string& prefix) {
        return ::_strnicmp(string.c_str(), prefix.c_str(), prefix.size()) == 0;
    }
    /* The native search: after the start, and round to it. */
    int Find(int start, const std::string& prefix) const {
        for (int n = 0; n < Count(); ++n) {
            const int item = (start + 1 + n) % Count();
            if (HasPrefix(At(item), prefix)) return item;
        }
        return CB_ERR;
    }
    void Select(int item) {
        if (!Has(item)) return;
        current = item;
        text = At(item);
    }
    /* Only the text that a combo box without an edit keeps itself is lost. */
    void Delete(int item) {
        if (Has(item)) {
            touched = item;
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
            if (!HasPrefix(At(i), prefix)) continue;
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
        m_kind = UpTo(19);
        switch (m_kind) {
            case 0:
            case 1:
            case 2:
                if (model.Count() >= 40) break;
                EXPECT_EQ(Send(CB_ADDSTRING, 0, string), model.Insert(-1, text));
                break;
            case 3:
                EXPECT_EQ(Send(CB_INSERTSTRING, index, string), model.Insert(item, text)) << item;
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
                EXPECT_EQ(Send(CB_SETITEMDATA, index, 1000 + m_step) != CB_ERR,
                          model.SetData(item, 1000 + m_step))
                    << item;
                break;
            case 14: {
                const int code = UpTo(8), visible = Visible(model), thumb = MoveThumb(model);
                EXPECT_EQ(SendList(WM_VSCROLL, static_cast<WPARAM>(code)), 0);
                Scroll(model, code, visible, thumb);
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
            case 17: {
                // Whether an open list outlives a new size is the native control's business.
                Send(CB_SHOWDROPDOWN, FALSE);
                model.Show(false);
                const CSize size(80 + UpTo(200), 60 + UpTo(200));
                ::SetWindowPos(combo, nullptr, 0, 0, size.cx, size.cy,
                               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
                EXPECT_EQ(PlaceIn(combo, combo).Width(), size.cx);
                break;
            }
            case 18: {
                RepaintedClient(list);
                const bool barShows = model.open && model.Count() > Visible(model);
                const int delta = UpTo(240) - 120, visible = Visible(model);
                EXPECT_EQ(SendList(WM_MOUSEWHEEL, MAKEWPARAM(0, static_cast<WORD>(delta))), 0);
                if (barShows) Scroll(model, delta >= 0 ? SB_LINEUP : SB_LINEDOWN, visible, 0);
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
    /* One that shows half counts. */
    int Visible(const ComboModel& model) {
        return static_cast<int>(1.0 * ClientOf(list).bottom / RowOf(model) + 0.5);
    }
    /* Takes the bar's thumb anywhere; the result is the position that the bar tells for it. */
    int MoveThumb(const ComboModel& model) {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_POS;
        info.nPos = UpTo(model.Count());
        ::SendMessageA(Bar(), SBM_SETSCROLLINFO, FALSE, reinterpret_cast<LPARAM>(&info));
        return ScrollInfoOf(Bar()).nTrackPos;
    }
    static void Scroll(ComboModel& model, int code, int visible, int thumb) {
        const int left = model.Count() - model.top;
        if (code == SB_LINEUP && model.top > 0)
            --model.top;
        else if (code == SB_LINEDOWN && left > visible)
            ++model.top;
        else if (code == SB_PAGEUP && model.top > 0)
            model.top = std::max(model.top + 1 - visible, 0);
        else if (code == SB_PAGEDOWN && left >= visible)
            model.top += std::min(visible, left - visible);
        else if (code == SB_THUMBPOSITION || code == SB_THUMBTRACK)
            model.top = thumb;
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
    /* What is told of one item, also of one that isn't there. */
    void CompareItem(const ComboModel& model, int item) {
        char buffer[64] = {};
        const auto index = static_cast<WPARAM>(item);
        const bool has = model.Has(item);
        const LRESULT length = has ? static_cast<LRESULT>(model.At(item).size()) : LRESULT{CB_ERR};
        EXPECT_EQ(Send(CB_GETLBTEXTLEN, index), length) << item;
        EXPECT_EQ(Send(CB_GETLBTEXT, index, reinterpret_cast<LPARAM>(buffer)), length) << item;
        EXPECT_EQ(std::string(buffer), has ? model.At(item) : "") << item;
        EXPECT_EQ(Send(CB_GETITEMDATA, index),
                  has ? model.data[static_cast<std::size_t>(item)] : LRESULT{CB_ERR})
            << item;
    }
    /* A few items at each step, with those about the last change among them, and all now and then. */
    void CompareItems(const ComboModel& model) {
        constexpr int kAll = 50;
        for (int i = model.touched - 1; i <= model.touched + 1; ++i) CompareItem(model, i);
        if (!model.items.empty()) CompareItem(model, m_step % model.Count());
        for (int i = -1; m_step % kAll == 0 && i <= model.Count(); ++i) CompareItem(model, i);
        const std::string prefix = AnyText().substr(0, static_cast<std::size_t>(1 + UpTo(1)));
        const int start = UpTo(model.Count()) - 1;
        EXPECT_EQ(Send(CB_FINDSTRING, static_cast<WPARAM>(start), reinterpret_cast<LPARAM>(prefix.c_str())),
                  model.Find(start, prefix))
            << prefix << " from " << start;
    }
    /* What only a painting brings up to date. */
    void ComparePainted(const ComboModel& model) {
        if (!model.open) return;
        RepaintedClient(list);
        const bool shows = model.Count() > Visible(model);
        EXPECT_EQ(::IsWindowVisible(Bar()) != FALSE, shows);
        EXPECT_EQ(::IsWindowEnabled(Bar()) != FALSE, shows);
        if (!shows) return;
        const SCROLLINFO info = ScrollInfoOf(Bar());
        EXPECT_EQ(info.nMin, 0);
        EXPECT_EQ(info.nMax, model.Count() - 1);
        EXPECT_EQ(info.nPage, static_cast<UINT>(Visible(model)));
    }
    void ComparePlaces(const ComboModel& model) {
        if (!model.hasEdit) return;
        EXPECT_EQ(PlaceIn(combo, edit), CRect(0, 0, ClientOf(combo).right - 17, ClientOf(combo).bottom));
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
        for (m_step = 0; m_step < steps; ++m_step) {
            model.told.clear();
            Step(model);
            Compare(model);
            CompareItems(model);
            ComparePlaces(model);
            if (m_step % 10 == 0) ComparePainted(model);
            if (m_step % 200 == 0) RepaintedClient(combo), RepaintedClient(list);
            ASSERT_FALSE(HasFailure()) << "seed " << seed << ", step " << m_step << ", of kind " << m_kind;
        }
        ::DestroyWindow(combo);
    }
    /* The four worlds share the messages; each has a seed of its own. */
    void RunShare(DWORD style, unsigned seed, int steps) {
        Run(style, seed + WorldOf(GetParam()), steps / 4);
    }

private:
    std::mt19937 m_random;
    int m_step = 0;
    int m_kind = 0;  // of the last step
};
INSTANTIATE_TEST_SUITE_P(Worlds, ComboBoxModel, kControlWorlds, NameOfWorld);

TEST_P(ComboBoxModel, WithoutAnEditAnswersAsItsRulesSay) {
    if (IsFullWorld(GetParam()))
        Run(CBS_DROPDOWNLIST, 1, 5000);
    else
        RunShare(CBS_DROPDOWNLIST, 10, 5000);
}
TEST_P(ComboBoxModel, WithAnEditAnswersAsItsRulesSay) { RunShare(CBS_DROPDOWN | CBS_AUTOHSCROLL, 20, 5000); }

}  // namespace
}  // namespace tavix_test
