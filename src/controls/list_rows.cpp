#include "controls/list_rows.h"

#include "draw/text_scope.h"

namespace tavix {

namespace {

// In the place of a procedure of the other character set the platform hands out a number, all of whose bits
// are set in this word, and converts what passes it.
bool IsConverted(WNDPROC procedure) { return reinterpret_cast<ULONG_PTR>(procedure) >> 16 == 0xFFFF; }

// `call` is CallWindowProc of the character set, of which a character takes at most `perUnit` of the length.
template <class String, class Call>
String ReadText(Call call, const ItemStore& store, UINT lengthMessage, UINT textMessage, int item,
                std::size_t perUnit) {
    const auto index = static_cast<WPARAM>(item);
    constexpr LRESULT kLongest = 0x0FFF'FFFF;
    const LRESULT length = call(store.procedure, store.window, lengthMessage, index, 0);
    if (length <= 0 || length > kLongest) return {};
    String text(static_cast<std::size_t>(length) * perUnit + 1, '\0');
    if (call(store.procedure, store.window, textMessage, index, reinterpret_cast<LPARAM>(text.data())) < 0)
        return {};
    text.resize(text.find_first_of(typename String::value_type{}));
    return text;
}

}  // namespace

std::wstring ReadItemText(const ItemStore& store, UINT lengthMessage, UINT textMessage, int item) {
    // Some systems convert through a buffer that has no room for a long text: it is read as it is kept.
    if (IsConverted(store.procedure))
        return ReadText<std::wstring>(::CallWindowProcW, store, lengthMessage, textMessage, item, 1);
    const auto text = ReadText<std::string>(::CallWindowProcA, store, lengthMessage, textMessage, item, 4);
    std::wstring wide(text.size(), L'\0');
    const int length = static_cast<int>(text.size());
    const int made = ::MultiByteToWideChar(CP_ACP, 0, text.c_str(), length, wide.data(), length);
    wide.resize(static_cast<std::size_t>(made));
    return wide;
}

// Clipped by the call: a region that is set and taken back for each row makes the platform find the font
// anew.
void DrawRowText(CDC& dc, const POINT& at, const RECT& shown, const std::wstring& text, COLORREF colour) {
    const TextScope scope(dc, colour);
    ::ExtTextOutW(dc, at.x, at.y, ETO_CLIPPED, &shown, text.c_str(), static_cast<UINT>(text.size()), nullptr);
}

DRAWITEMSTRUCT DrawItemOf(const OwnerDrawnRow& row, HDC dc) {
    DRAWITEMSTRUCT item{};
    item.CtlType = ODT_LISTBOX;
    item.CtlID = row.controlId;
    item.itemID = static_cast<UINT>(row.item);
    item.itemAction = ODA_DRAWENTIRE;
    item.itemState = row.state;
    item.hwndItem = row.list;
    item.hDC = dc;
    item.rcItem = row.place;
    item.itemData = row.data;
    return item;
}

}  // namespace tavix
