#include "tavixskin/framework/gdi.h"

#include <gtest/gtest.h>

#include <functional>
#include <type_traits>
#include <vector>

#include "main/gui_objects.h"
#include "tavixskin/framework/image_list.h"

namespace {

using tavix_test::GdiObjectCount;

bool Lives(HGDIOBJ object) { return ::GetObjectType(object) != 0; }

// What `work` leaves behind once the platform's caches are warm.
long ObjectsLeftBy(const std::function<void()>& work) {
    constexpr int kRounds = 50;
    for (int i = 0; i < 5; ++i) work();
    const long before = GdiObjectCount();
    for (int i = 0; i < kRounds; ++i) work();
    return (GdiObjectCount() - before) / kRounds;
}

TEST(GdiCount, SeesAnObjectThatIsLeft) {
    std::vector<HBRUSH> left;
    EXPECT_EQ(ObjectsLeftBy([&left] { left.push_back(::CreateSolidBrush(RGB(1, 2, 3))); }), 1);
    for (HBRUSH brush : left) ::DeleteObject(brush);
}

// Each owner deletes what it holds, once: the count ends where it began, and a handle that the
// platform gave out again meanwhile is still alive.
TEST(GdiOwners, DeleteWhatTheyHold) {
    EXPECT_EQ(ObjectsLeftBy([] {
                  CBrush brush(RGB(1, 2, 3));
                  CPen pen(PS_SOLID, 1, RGB(4, 5, 6));
                  CRgn region;
                  region.CreateRectRgn(0, 0, 10, 10);
                  LOGFONTA face{};
                  face.lfHeight = -12;
                  CFont font;
                  font.CreateFontIndirect(face);
                  CBitmap bitmap;
                  bitmap.Attach(::CreateBitmap(8, 8, 1, 32, nullptr));
                  ASSERT_TRUE(Lives(brush) && Lives(pen) && Lives(region) && Lives(font) && Lives(bitmap));
              }),
              0);
}

TEST(GdiOwners, DeleteAnObjectOnlyOnce) {
    HGDIOBJ former = nullptr;
    {
        CBrush brush(RGB(1, 2, 3));
        former = brush.GetSafeHandle();
        EXPECT_TRUE(brush.DeleteObject());
        EXPECT_FALSE(Lives(former));
        EXPECT_EQ(brush.GetSafeHandle(), nullptr);
        EXPECT_FALSE(brush.DeleteObject());
    }
    EXPECT_FALSE(Lives(former));
}

TEST(GdiOwners, DeleteTheFormerObjectWhenTheyTakeAnother) {
    CBrush brush(RGB(1, 2, 3));
    HBRUSH first = brush;
    HBRUSH second = ::CreateSolidBrush(RGB(4, 5, 6));
    EXPECT_TRUE(brush.Attach(second));
    EXPECT_FALSE(Lives(first));
    EXPECT_TRUE(Lives(second));
    EXPECT_TRUE(brush.Attach(second)) << "taking what it holds already must not delete it";
    EXPECT_TRUE(Lives(second));
    EXPECT_FALSE(brush.Attach(nullptr));
    EXPECT_FALSE(Lives(second));
    EXPECT_TRUE(brush.CreateSolidBrush(RGB(7, 8, 9)));
    EXPECT_TRUE(Lives(brush));
}

TEST(GdiOwners, LeaveAloneWhatTheyGaveAway) {
    HGDIOBJ given = nullptr;
    {
        CRgn region;
        region.CreateRectRgn(1, 2, 3, 4);
        given = region.Detach();
        EXPECT_EQ(region.GetSafeHandle(), nullptr);
        EXPECT_EQ(region.Detach(), nullptr);
    }
    EXPECT_TRUE(Lives(given));
    ::DeleteObject(given);
}

TEST(GdiOwners, AreNotCopied) {
    static_assert(!std::is_copy_constructible_v<CBitmap>);
    static_assert(!std::is_copy_assignable_v<CBrush>);
    static_assert(!std::is_copy_constructible_v<CMemoryDC>);
    static_assert(!std::is_copy_constructible_v<SelectionGuard>);
    CBitmap bitmap;
    EXPECT_EQ(static_cast<HBITMAP>(bitmap), nullptr);
}

TEST(Bitmap, TellsItsSize) {
    CBitmap bitmap;
    EXPECT_EQ(bitmap.GetBitmapSize().cx, 0);
    EXPECT_EQ(bitmap.GetBitmapSize().cy, 0);
    bitmap.Attach(::CreateBitmap(17, 5, 1, 32, nullptr));
    EXPECT_EQ(bitmap.GetBitmapSize().cx, 17);
    EXPECT_EQ(bitmap.GetBitmapSize().cy, 5);
    HBITMAP stolen = static_cast<HBITMAP>(bitmap.Detach());
    ::DeleteObject(stolen);
    CBitmap dead;
    dead.m_hObject = stolen;
    EXPECT_EQ(dead.GetBitmapSize().cx, 0) << "a handle that died elsewhere has no size";
    dead.m_hObject = nullptr;
}

TEST(Region, CombinesAndMoves) {
    CRgn left, right, both;
    left.CreateRectRgn(0, 0, 10, 10);
    right.CreateRectRgn(CRect(10, 0, 20, 10));
    both.CreateRectRgn(0, 0, 0, 0);
    EXPECT_EQ(both.CombineRgn(left, right, RGN_OR), SIMPLEREGION);
    CRect box;
    ::GetRgnBox(both, &box);
    EXPECT_TRUE(box == CRect(0, 0, 20, 10));
    EXPECT_EQ(both.OffsetRgn(5, 7), SIMPLEREGION);
    ::GetRgnBox(both, &box);
    EXPECT_TRUE(box == CRect(5, 7, 25, 17));
    EXPECT_EQ(both.CombineRgn(left, right, RGN_AND), NULLREGION);
}

// ---------------------------------------------------------------- device contexts

TEST(DeviceContext, ThatIsUsedIsNotDeleted) {
    CMemoryDC owner;
    {
        CDC user(owner.GetSafeHdc());
        EXPECT_EQ(user.GetSafeHdc(), owner.GetSafeHdc());
    }
    EXPECT_TRUE(Lives(owner.GetSafeHdc()));
    CDC other;
    EXPECT_EQ(other.Detach(), nullptr);
    other.Attach(owner);
    EXPECT_EQ(other.Detach(), owner.GetSafeHdc());
    EXPECT_EQ(other.GetSafeHdc(), nullptr);
}

TEST(DeviceContext, OfMemoryEndsWithItsObject) {
    HDC dc = nullptr;
    {
        CMemoryDC memory;
        dc = memory;
        EXPECT_EQ(::GetObjectType(dc), static_cast<DWORD>(OBJ_MEMDC));
    }
    EXPECT_FALSE(Lives(dc));
    EXPECT_EQ(ObjectsLeftBy([] { CMemoryDC memory; }), 0);
}

TEST(DeviceContext, FillsAndCopies) {
    CMemoryDC from, to;
    CBitmap a, b;
    a.Attach(::CreateBitmap(20, 20, 1, 32, nullptr));
    b.Attach(::CreateBitmap(20, 20, 1, 32, nullptr));
    SelectionGuard selectA(from, a), selectB(to, b);
    ASSERT_TRUE(selectA && selectB);
    ::SetBkColor(from, RGB(9, 9, 9));
    from.FillSolidRect(CRect(0, 0, 20, 20), RGB(10, 20, 30));
    EXPECT_EQ(::GetBkColor(from), RGB(9, 9, 9));
    from.FillRect(CRect(5, 5, 10, 10), CBrush(RGB(200, 0, 0)));
    EXPECT_EQ(::GetPixel(from, 4, 4), RGB(10, 20, 30));
    EXPECT_EQ(::GetPixel(from, 5, 5), RGB(200, 0, 0));
    EXPECT_EQ(::GetPixel(from, 9, 9), RGB(200, 0, 0));
    EXPECT_EQ(::GetPixel(from, 10, 10), RGB(10, 20, 30));
    EXPECT_TRUE(to.BitBlt(0, 0, 3, 3, from, 8, 8, SRCCOPY));
    EXPECT_EQ(::GetPixel(to, 1, 1), RGB(200, 0, 0));
    EXPECT_EQ(::GetPixel(to, 2, 2), RGB(10, 20, 30));
}

class WindowContext : public testing::Test {
protected:
    void SetUp() override {
        m_window = ::CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE | WS_BORDER, 50, 60, 40, 30,
                                     nullptr, nullptr, nullptr, nullptr);
        ASSERT_NE(m_window, nullptr);
    }
    void TearDown() override { ::DestroyWindow(m_window); }
    HWND m_window = nullptr;
};

TEST_F(WindowContext, OfTheClientAndOfTheWindowAreThatWindows) {
    CClientDC client(m_window);
    CWindowDC whole(m_window);
    ASSERT_NE(client.GetSafeHdc(), nullptr);
    ASSERT_NE(whole.GetSafeHdc(), nullptr);
    EXPECT_EQ(::WindowFromDC(client), m_window);
    EXPECT_EQ(::WindowFromDC(whole), m_window);
    POINT clientOrigin{}, windowOrigin{};
    ::GetDCOrgEx(client, &clientOrigin);
    ::GetDCOrgEx(whole, &windowOrigin);
    EXPECT_EQ(windowOrigin.x, 50);
    EXPECT_EQ(windowOrigin.y, 60);
    EXPECT_EQ(clientOrigin.x, 51);
    EXPECT_EQ(clientOrigin.y, 61);
}

TEST_F(WindowContext, IsReleased) {
    EXPECT_EQ(ObjectsLeftBy([this] {
                  CClientDC client(m_window);
                  CWindowDC whole(m_window);
                  CPaintDC paint(m_window);
              }),
              0);
}

TEST_F(WindowContext, OfADeadWindowIsNull) {
    ::DestroyWindow(m_window);
    CClientDC client(m_window);
    CWindowDC whole(m_window);
    CPaintDC paint(m_window);
    EXPECT_EQ(client.GetSafeHdc(), nullptr);
    EXPECT_EQ(whole.GetSafeHdc(), nullptr);
    EXPECT_EQ(paint.GetSafeHdc(), nullptr);
}

TEST_F(WindowContext, ForPaintingValidatesWhatItCovers) {
    ::UpdateWindow(m_window);
    const RECT dirty{2, 3, 8, 9};
    ::InvalidateRect(m_window, &dirty, FALSE);
    {
        CPaintDC paint(m_window);
        ASSERT_NE(paint.GetSafeHdc(), nullptr);
        EXPECT_TRUE(CRect(paint.m_ps.rcPaint) == dirty);
    }
    EXPECT_FALSE(::GetUpdateRect(m_window, nullptr, FALSE));
}

TEST(Selection, IsPutBackOnEveryWayOut) {
    CMemoryDC memory;
    CBitmap bitmap;
    bitmap.Attach(::CreateBitmap(4, 4, 1, 32, nullptr));
    HGDIOBJ former = ::GetCurrentObject(memory, OBJ_BITMAP);
    try {
        SelectionGuard guard(memory, bitmap);
        EXPECT_TRUE(guard);
        EXPECT_EQ(::GetCurrentObject(memory, OBJ_BITMAP), bitmap.GetSafeHandle());
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(::GetCurrentObject(memory, OBJ_BITMAP), former);
    {
        CPen outer(PS_SOLID, 1, 1), inner(PS_SOLID, 1, 2);
        HGDIOBJ first = ::GetCurrentObject(memory, OBJ_PEN);
        {
            SelectionGuard a(memory, outer);
            SelectionGuard b(memory, inner);
            EXPECT_EQ(::GetCurrentObject(memory, OBJ_PEN), inner.GetSafeHandle());
        }
        EXPECT_EQ(::GetCurrentObject(memory, OBJ_PEN), first);
    }
}

TEST(Selection, OfNothingOrOfWhatTheContextRefusesIsFalse) {
    CMemoryDC memory, second;
    CBitmap bitmap;
    bitmap.Attach(::CreateBitmap(4, 4, 1, 32, nullptr));
    HGDIOBJ former = ::GetCurrentObject(memory, OBJ_BITMAP);
    {
        SelectionGuard none(memory, nullptr);
        EXPECT_FALSE(none);
        SelectionGuard first(memory, bitmap);
        SelectionGuard refused(second, bitmap);  // a bitmap is in one context at a time
        EXPECT_TRUE(first);
        EXPECT_FALSE(refused);
    }
    EXPECT_EQ(::GetCurrentObject(memory, OBJ_BITMAP), former);
}

// ---------------------------------------------------------------- image lists

TEST(ImageList, TakesMaskedImagesAndDrawsThem) {
    CImageList list;
    EXPECT_EQ(list.GetImageCount(), 0);
    ASSERT_TRUE(list.Create(4, 4, ILC_COLOR32 | ILC_MASK, 1, 1));
    CMemoryDC memory;
    CBitmap source, target;
    source.Attach(::CreateBitmap(8, 4, 1, 32, nullptr));
    target.Attach(::CreateBitmap(8, 8, 1, 32, nullptr));
    {
        SelectionGuard guard(memory, source);
        memory.FillSolidRect(CRect(0, 0, 8, 4), RGB(255, 0, 255));
        memory.FillSolidRect(CRect(0, 0, 2, 4), RGB(0, 128, 0));
    }
    EXPECT_EQ(list.AddMasked(source, RGB(255, 0, 255)), 0);
    EXPECT_EQ(list.GetImageCount(), 2);
    SelectionGuard guard(memory, target);
    memory.FillSolidRect(CRect(0, 0, 8, 8), RGB(1, 1, 1));
    EXPECT_TRUE(list.Draw(memory, 0, 2, 2, ILD_TRANSPARENT));
    EXPECT_EQ(::GetPixel(memory, 2, 2), RGB(0, 128, 0));
    EXPECT_EQ(::GetPixel(memory, 4, 2), RGB(1, 1, 1));
}

TEST(ImageList, OwnsItsHandle) {
    CImageList list;
    EXPECT_FALSE(list.DeleteImageList());
    ASSERT_TRUE(list.Create(4, 4, ILC_COLOR32, 1, 1));
    HIMAGELIST given = list.Detach();
    EXPECT_EQ(static_cast<HIMAGELIST>(list), nullptr);
    EXPECT_EQ(list.GetImageCount(), 0);
    EXPECT_TRUE(list.Attach(given));
    EXPECT_TRUE(list.Attach(given)) << "taking what it holds already must not destroy it";
    EXPECT_EQ(::ImageList_GetImageCount(given), 0);
    int width = 0, height = 0;
    EXPECT_TRUE(::ImageList_GetIconSize(given, &width, &height));
    EXPECT_EQ(width, 4);
    EXPECT_FALSE(list.Attach(nullptr));
    EXPECT_FALSE(list.Create(0, 0, 0, 0, 0)) << "an empty image is refused";
}

TEST(ImageList, LeavesNothingBehind) {
    EXPECT_EQ(ObjectsLeftBy([] {
                  CImageList list;
                  list.Create(16, 16, ILC_COLOR32 | ILC_MASK, 4, 4);
                  list.Create(8, 8, ILC_COLOR32 | ILC_MASK, 4, 4);
              }),
              0);
}

}  // namespace
