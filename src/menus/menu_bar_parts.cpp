#include "menus/menu_bar_parts.h"

namespace tavix {

namespace {

char Folded(char letter) {
    // With a value for its high word CharUpperA takes its argument as one character.
    return static_cast<char>(reinterpret_cast<ULONG_PTR>(
        ::CharUpperA(reinterpret_cast<char*>(static_cast<ULONG_PTR>(static_cast<BYTE>(letter))))));
}

}  // namespace

bool IsAccelerator(const char* text, char letter) {
    for (; *text; ++text) {
        if (*text != '&') continue;
        ++text;
        if (!*text) return false;
        if (*text != '&') return Folded(*text) == Folded(letter);
    }
    return false;
}

int PositionOfButton(HMENU menu, int button, int shift) {
    const int items = ::GetMenuItemCount(menu);
    for (int position = shift; position < items; ++position) {
        if (MenuText(menu, position).IsEmpty()) continue;
        if (button == 0) return position;
        --button;
    }
    return -1;
}

}  // namespace tavix
