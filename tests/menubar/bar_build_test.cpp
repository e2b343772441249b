// What a menu bar makes of a menu.
#include "menubar/bar_fixture.h"

namespace tavix_test {
namespace {

using MenuBarBuild = BarTest;

TEST_F(MenuBarBuild, HasAButtonForEachItem) {
    MakeBar(MakeUsualMenu());
    for (int i = 0; i < Access().ButtonCount(); ++i) {
        const CRect r = ItemRect(i);
        std::printf("%d: %ld %ld %ld %ld %s\n", i, r.left, r.top, r.right, r.bottom, Access().Texts()[i].c_str());
    }
    const CRect w = WindowRect();
    std::printf("%ld %ld %ld %ld\n", w.left, w.top, w.right, w.bottom);
    UINT id = 99;
    std::printf("map %d", Access().MapAccelerator('V', id));
    std::printf(" %u\n", id);
    PumpMessages(1500);
}

}  // namespace
}  // namespace tavix_test
