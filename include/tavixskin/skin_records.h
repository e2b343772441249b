/*
 * The thirteen records of a skin file, byte for byte as the stream "Data" of each record's
 * storage holds them. An authoring tool fills them and hands them to CSkinStorage::SaveToSkin
 * through TSkinThemes; skin_layout.h tells which field sets which value of the skin.
 *
 * All numbers are little-endian and four bytes wide, so the images are the same in 32-bit and
 * 64-bit programs. Colours are COLORREF (0x00BBGGRR), sizes are pixels.
 */
#pragma once

#include <windows.h>

#include <cstddef>

#include "tavixskin/framework/gdi.h"

/*
 * The name of a bitmap stream in the record's storage, zero-terminated. The container takes
 * names of 1 to 31 characters without \ / : and !. An empty name stands for no bitmap.
 */
typedef char TSkinName[32];

/*
 * Tells the saver which bitmap goes into the stream of a name; 0 for none. No pointer fits in
 * four bytes of a 64-bit program, so there the slot holds the bitmap's handle, which has 32
 * significant bits. Files hold 0 here, and loading ignores it.
 */
struct TSkinBitmapSlot {
    DWORD value;

    /* The bitmap stays the caller's and has to live until the record is saved. */
    void Set(const CBitmap* bitmap) {
        value = 0;
        if (!bitmap || !bitmap->GetSafeHandle()) return;
#ifdef _WIN64
        value = static_cast<DWORD>(reinterpret_cast<ULONG_PTR>(bitmap->GetSafeHandle()));
#else
        value = reinterpret_cast<DWORD>(bitmap);
#endif
    }

    /* Null for an empty slot. */
    HBITMAP Handle() const {
        if (!value) return nullptr;
#ifdef _WIN64
        return static_cast<HBITMAP>(LongToHandle(static_cast<LONG>(value)));
#else
        return *reinterpret_cast<const CBitmap*>(value);
#endif
    }
};
static_assert(sizeof(TSkinBitmapSlot) == 4);

struct TSkinFrameInfo {
    TSkinName closeNormal;
    TSkinName closeHot;
    TSkinName closeDown;
    TSkinName maxNormal;
    TSkinName maxHot;
    TSkinName maxDown;
    TSkinName minNormal;
    TSkinName minHot;
    TSkinName minDown;
    TSkinName captionLeft;
    TSkinName captionRight;
    TSkinName captionTile;
    TSkinName captionTitle;
    TSkinName gripper;
    TSkinBitmapSlot bitmaps[14];  // in the order of the names
    // left: from the window's right edge to the left-most button's left edge, negative;
    // top: from the window's top; right and bottom: a button's width and height. Each is kept
    // in a signed byte.
    RECT buttons;
    DWORD leftBorder;
    DWORD bottomBorder;
    DWORD rightBorder;
    DWORD captionHeight;
    DWORD reserved;
    DWORD menuStrip;  // height of the strip under the caption of a frame with a menu bar
    COLORREF borderFrom, borderTo;
    COLORREF outerFrom, outerTo;
    COLORREF innerFrom, innerTo;
    COLORREF bottom1From, bottom1To;
    COLORREF bottom2From, bottom2To;
    COLORREF bottom3From, bottom3To;
};
static_assert(sizeof(TSkinFrameInfo) == 0x250);
static_assert(offsetof(TSkinFrameInfo, captionLeft) == 0x120);
static_assert(offsetof(TSkinFrameInfo, gripper) == 0x1A0);
static_assert(offsetof(TSkinFrameInfo, bitmaps) == 0x1C0);
static_assert(offsetof(TSkinFrameInfo, buttons) == 0x1F8);
static_assert(offsetof(TSkinFrameInfo, leftBorder) == 0x208);
static_assert(offsetof(TSkinFrameInfo, reserved) == 0x218);
static_assert(offsetof(TSkinFrameInfo, borderFrom) == 0x220);
static_assert(offsetof(TSkinFrameInfo, bottom3To) == 0x24C);

struct TSkinDialogInfo {
    TSkinName closeNormal;
    TSkinName closeHot;
    TSkinName closeDown;
    TSkinName maxNormal;
    TSkinName maxHot;
    TSkinName maxDown;
    TSkinName minNormal;
    TSkinName minHot;
    TSkinName minDown;
    TSkinName helpNormal;
    TSkinName helpHot;
    TSkinName helpDown;
    TSkinName captionLeft;
    TSkinName captionRight;
    TSkinName captionTile;
    TSkinBitmapSlot bitmaps[15];  // in the order of the names
    COLORREF backFrom, backTo;
    COLORREF spare[10];
    // As the frame's, but `left` is the offset of the right-most button's right edge.
    RECT buttons;
    DWORD leftBorder;
    DWORD bottomBorder;
    DWORD rightBorder;
    DWORD captionHeight;
};
static_assert(sizeof(TSkinDialogInfo) == 0x26C);
static_assert(offsetof(TSkinDialogInfo, helpNormal) == 0x120);
static_assert(offsetof(TSkinDialogInfo, captionTile) == 0x1C0);
static_assert(offsetof(TSkinDialogInfo, bitmaps) == 0x1E0);
static_assert(offsetof(TSkinDialogInfo, backFrom) == 0x21C);
static_assert(offsetof(TSkinDialogInfo, spare) == 0x224);
static_assert(offsetof(TSkinDialogInfo, buttons) == 0x24C);
static_assert(offsetof(TSkinDialogInfo, leftBorder) == 0x25C);
static_assert(offsetof(TSkinDialogInfo, captionHeight) == 0x268);

struct TSkinButtonInfo {
    COLORREF spare44;
    COLORREF border;
    COLORREF normalFrom, normalTo;
    COLORREF spare48, spare49;
    COLORREF hotFrom, hotTo;
    COLORREF spare52, spare53;
    COLORREF downFrom, downTo;
    COLORREF disabledBorder;
    COLORREF spare57;
    COLORREF disabledFrom, disabledTo;
    COLORREF groupInner, groupOuter;
    TSkinBitmapSlot bitmaps[4];  // in the order of the names
    TSkinName checkOn;
    TSkinName checkOff;
    TSkinName radioOn;
    TSkinName radioOff;
};
static_assert(sizeof(TSkinButtonInfo) == 0xD8);
static_assert(offsetof(TSkinButtonInfo, groupOuter) == 0x44);
static_assert(offsetof(TSkinButtonInfo, bitmaps) == 0x48);
static_assert(offsetof(TSkinButtonInfo, checkOn) == 0x58);

struct TSkinToolBarInfo {
    COLORREF backFrom, backTo;
    TSkinName spare;
    TSkinName buttonHot;
    TSkinName buttonDown;
    TSkinBitmapSlot buttonBitmaps[3];  // spare, buttonHot, buttonDown
    TSkinName frameLeft;
    TSkinName frameRight;
    TSkinName background;
    TSkinName dropArrow;
    TSkinName dropHot;
    TSkinName dropDown;
    TSkinBitmapSlot dropBitmaps[3];   // dropArrow, dropHot, dropDown
    TSkinBitmapSlot frameBitmaps[3];  // frameLeft, frameRight, background
};
static_assert(sizeof(TSkinToolBarInfo) == 0x14C);
static_assert(offsetof(TSkinToolBarInfo, spare) == 0x008);
static_assert(offsetof(TSkinToolBarInfo, buttonBitmaps) == 0x068);
static_assert(offsetof(TSkinToolBarInfo, frameLeft) == 0x074);
static_assert(offsetof(TSkinToolBarInfo, dropArrow) == 0x0D4);
static_assert(offsetof(TSkinToolBarInfo, dropBitmaps) == 0x134);
static_assert(offsetof(TSkinToolBarInfo, frameBitmaps) == 0x140);

struct TSkinComboboxInfo {
    DWORD spare8, spare9, spare10, spare11;
    TSkinName left;
    TSkinName right;
    TSkinName tile;
    TSkinName dropNormal;
    TSkinName dropHot;
    TSkinName dropDisabled;
    TSkinBitmapSlot bitmaps[6];  // in the order of the names
};
static_assert(sizeof(TSkinComboboxInfo) == 0xE8);
static_assert(offsetof(TSkinComboboxInfo, left) == 0x10);
static_assert(offsetof(TSkinComboboxInfo, dropDisabled) == 0xB0);
static_assert(offsetof(TSkinComboboxInfo, bitmaps) == 0xD0);

struct TSkinTabCtrlInfo {
    COLORREF spare;
    COLORREF page;
    TSkinBitmapSlot bitmaps[14];  // in the order of the names
    TSkinName selLeft;
    TSkinName selRight;
    TSkinName selTile;
    TSkinName left;
    TSkinName right;
    TSkinName tile;
    TSkinName paneTopLeft;
    TSkinName paneTopRight;
    TSkinName paneBottomLeft;
    TSkinName paneBottomRight;
    TSkinName paneTop;
    TSkinName paneLeft;
    TSkinName paneRight;
    TSkinName paneBottom;
};
static_assert(sizeof(TSkinTabCtrlInfo) == 0x200);
static_assert(offsetof(TSkinTabCtrlInfo, bitmaps) == 0x008);
static_assert(offsetof(TSkinTabCtrlInfo, selLeft) == 0x040);
static_assert(offsetof(TSkinTabCtrlInfo, paneTopLeft) == 0x100);
static_assert(offsetof(TSkinTabCtrlInfo, paneBottom) == 0x1E0);

struct TSkinHeadCtrlInfo {
    DWORD spareSize;
    TSkinBitmapSlot bitmaps[7];  // in the order of the names
    TSkinName left;
    TSkinName downLeft;
    TSkinName tile;
    TSkinName downTile;
    TSkinName right;
    TSkinName downRight;
    TSkinName spare;
};
static_assert(sizeof(TSkinHeadCtrlInfo) == 0x100);
static_assert(offsetof(TSkinHeadCtrlInfo, bitmaps) == 0x04);
static_assert(offsetof(TSkinHeadCtrlInfo, left) == 0x20);
static_assert(offsetof(TSkinHeadCtrlInfo, spare) == 0xE0);

struct TSkinEditInfo {
    COLORREF border;
    COLORREF back;
    COLORREF spare;
    COLORREF backDisabled;
};
static_assert(sizeof(TSkinEditInfo) == 0x10);

struct TSkinListBoxInfo {
    COLORREF back;
    TSkinBitmapSlot bitmaps[8];  // in the order of the names
    TSkinName topLeft;
    TSkinName topRight;
    TSkinName bottomLeft;
    TSkinName bottomRight;
    TSkinName top;
    TSkinName left;
    TSkinName right;
    TSkinName bottom;
};
static_assert(sizeof(TSkinListBoxInfo) == 0x124);
static_assert(offsetof(TSkinListBoxInfo, bitmaps) == 0x004);
static_assert(offsetof(TSkinListBoxInfo, topLeft) == 0x024);
static_assert(offsetof(TSkinListBoxInfo, top) == 0x0A4);
static_assert(offsetof(TSkinListBoxInfo, bottom) == 0x104);

/* Two sets of bitmaps: small for vertical scroll bars of at most 16 pixels, else large. */
struct TSkinScrollBarInfo {
    TSkinName arrowSmall[3];  // first arrow: normal, pressed, disabled
    TSkinName arrowLarge[3];
    TSkinName arrow2Small[3];  // second arrow
    TSkinName arrow2Large[3];
    TSkinName trackSmall[2];  // enabled, disabled
    TSkinName trackLarge[2];
    TSkinName thumbSmall[6];  // start, end, tile, hot start, hot end, hot tile
    TSkinName thumbLarge[6];
    TSkinName stub;               // corner filler, of both sets
    TSkinBitmapSlot bitmaps[29];  // in the order of the names
    COLORREF gripLight, gripDark;
    COLORREF gripPressedLight, gripPressedDark;
};
static_assert(sizeof(TSkinScrollBarInfo) == 0x424);
static_assert(offsetof(TSkinScrollBarInfo, arrowLarge) == 0x060);
static_assert(offsetof(TSkinScrollBarInfo, arrow2Small) == 0x0C0);
static_assert(offsetof(TSkinScrollBarInfo, arrow2Large) == 0x120);
static_assert(offsetof(TSkinScrollBarInfo, trackSmall) == 0x180);
static_assert(offsetof(TSkinScrollBarInfo, trackLarge) == 0x1C0);
static_assert(offsetof(TSkinScrollBarInfo, thumbSmall) == 0x200);
static_assert(offsetof(TSkinScrollBarInfo, thumbLarge) == 0x2C0);
static_assert(offsetof(TSkinScrollBarInfo, stub) == 0x380);
static_assert(offsetof(TSkinScrollBarInfo, bitmaps) == 0x3A0);
static_assert(offsetof(TSkinScrollBarInfo, gripLight) == 0x414);

struct TSkinGlobalInfo {
    COLORREF transparent;
    COLORREF highlight;
    DWORD minFrameWidth;
    DWORD minFrameHeight;
};
static_assert(sizeof(TSkinGlobalInfo) == 0x10);

struct TSkinMenuInfo {
    COLORREF back;
    COLORREF border;
    COLORREF stripe;
    COLORREF textBack;
    COLORREF separator;
    COLORREF selBack;
    COLORREF selBorder;
    TSkinName check;
    TSkinName radio;
    TSkinBitmapSlot bitmaps[2];  // in the order of the names
};
static_assert(sizeof(TSkinMenuInfo) == 0x64);
static_assert(offsetof(TSkinMenuInfo, check) == 0x1C);
static_assert(offsetof(TSkinMenuInfo, radio) == 0x3C);
static_assert(offsetof(TSkinMenuInfo, bitmaps) == 0x5C);

struct TSkinDockBarInfo {
    TSkinName names[32];
    TSkinBitmapSlot bitmaps[32];  // in the order of the names
};
static_assert(sizeof(TSkinDockBarInfo) == 0x480);
static_assert(offsetof(TSkinDockBarInfo, bitmaps) == 0x400);
