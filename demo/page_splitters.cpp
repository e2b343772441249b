/* Splitters: a mail window with one splitter in another, and a map that the user splits and joins. The
   page makes objects of the library's exported class, as a host in C++ does. */
#include <windows.h>

#include <commctrl.h>

#include <initializer_list>
#include <memory>

#include "failure.h"
#include "frame_window.h"
#include "handles.h"
#include "page.h"
#include "report_list.h"
#include "tavixskin/skin_splitter_wnd.h"

namespace gallery {

namespace {

constexpr char frame_class[] = "Tavix_PaneB";
constexpr char card_class[] = "GalleryCardPane";

constexpr Card letter_card = {
    "Order 4711: delivery on Thursday",
    "Good morning,\n\nthe 40 boxes of drawing paper leave our store on Wednesday evening and reach you on "
    "Thursday before noon. Two of the boxes hold the heavier paper that you asked for.\n\n"
    "Kind regards\nPaper Mill Hochtal"};
constexpr Card map_cards[] = {{"North-west", "Woods, and a lake of 2 km."},
                              {"North-east", "The railway, two stations."},
                              {"South-west", "Fields and vineyards."},
                              {"South-east", "The old town with its bridge."}};

/* What a frame of this page shows: a splitter that fills its client area. */
class Content {
public:
    virtual ~Content() = default;
    /* Makes the panes in the frame's window, which is there by now. False on failure. */
    virtual bool create(HWND frame) = 0;
    virtual CSkinSplitterWnd& splitter() = 0;
};

// ---------------------------------------------------------------- windows of the page

Content* content_of(HWND frame) {
    return reinterpret_cast<Content*>(GetWindowLongPtrA(frame, GWLP_USERDATA));
}

LRESULT CALLBACK frame_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE: {
            // The frame owns its content from here on.
            void* const content = reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams;
            SetWindowLongPtrA(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(content));
            return content_of(window)->create(window) ? 0 : -1;
        }
        case WM_SIZE:
            if (Content* const content = content_of(window))
                MoveWindow(content->splitter().GetSafeHwnd(), 0, 0, LOWORD(lparam), HIWORD(lparam), TRUE);
            return 0;
        case WM_ERASEBKGND:
            return 1;  // the splitter covers it
        case WM_NCDESTROY:
            delete content_of(window);
            SetWindowLongPtrA(window, GWLP_USERDATA, 0);
            break;
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

LRESULT CALLBACK card_procedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam) {
    switch (message) {
        case WM_CREATE:
            SetWindowLongPtrA(
                window, GWLP_USERDATA,
                reinterpret_cast<LONG_PTR>(reinterpret_cast<CREATESTRUCTA*>(lparam)->lpCreateParams));
            return 0;
        case WM_ERASEBKGND:
            return 1;
        case WM_PAINT: {
            const PaintDc dc(window);
            RECT client;
            GetClientRect(window, &client);
            paint_sheet(dc, client, *reinterpret_cast<const Card*>(GetWindowLongPtrA(window, GWLP_USERDATA)));
            return 0;
        }
    }
    return DefWindowProcA(window, message, wparam, lparam);
}

HWND create_pane(const CSplitterWnd& splitter, int row, int column, const char* class_name, DWORD style,
                 const Card* card = nullptr) {
    const UINT_PTR id = splitter.IdFromRowCol(row, column);
    return CreateWindowExA(0, class_name, "", WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                           splitter.GetSafeHwnd(), reinterpret_cast<HMENU>(id), GetModuleHandleA(nullptr),
                           const_cast<Card*>(card));
}

HWND create_splitter_frame(const char* title, std::unique_ptr<Content> content, const SIZE& size) {
    register_window_class(frame_class, frame_procedure);
    register_window_class(card_class, card_procedure);
    return CreateWindowExA(0, frame_class, title, WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, 0, 0, size.cx,
                           size.cy, nullptr, nullptr, GetModuleHandleA(nullptr), content.release());
}

// ---------------------------------------------------------------- the mail window

void fill_folders(HWND tree) {
    const auto add = [tree](HTREEITEM parent, const char* text) {
        TVINSERTSTRUCTA entry = {};
        entry.hParent = parent;
        entry.hInsertAfter = TVI_LAST;
        entry.item.mask = TVIF_TEXT | TVIF_STATE;
        entry.item.state = entry.item.stateMask = TVIS_EXPANDED;
        entry.item.pszText = const_cast<char*>(text);
        return reinterpret_cast<HTREEITEM>(
            SendMessageA(tree, TVM_INSERTITEMA, 0, reinterpret_cast<LPARAM>(&entry)));
    };
    const HTREEITEM mail = add(TVI_ROOT, "Mail");
    for (const char* folder : {"Inbox (3)", "Sent", "Drafts"}) add(mail, folder);
    const HTREEITEM archive = add(TVI_ROOT, "Archive");
    for (const char* folder : {"Suppliers", "Customers", "Taxes"}) add(archive, folder);
}

void fill_letters(HWND list) {
    constexpr ReportColumn columns[] = {
        {"From", 130, LVCFMT_LEFT}, {"Subject", 210, LVCFMT_LEFT}, {"Received", 80, LVCFMT_LEFT}};
    fill_report(list, columns,
                {{"Paper Mill Hochtal", "Order 4711: delivery on Thursday", "Today 8:52"},
                 {"Ana Duarte", "Drafts of the cover", "Today 8:10"},
                 {"Town library", "Two books are due", "Yesterday"},
                 {"Print shop Krone", "Offer for 500 posters", "Yesterday"}});
}

/* Folders beside letters, and the letters above the one that is read. */
class Mail : public Content {
public:
    bool create(HWND frame) override {
        if (!folders_.CreateStatic(frame, 1, 2)) return false;
        const HWND tree =
            create_pane(folders_, 0, 0, WC_TREEVIEWA, TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT);
        if (!tree || !letters_.CreateStatic(folders_.GetSafeHwnd(), 2, 1, WS_CHILD | WS_VISIBLE,
                                            folders_.IdFromRowCol(0, 1)))
            return false;
        const HWND list = create_pane(letters_, 0, 0, WC_LISTVIEWA, LVS_REPORT | LVS_SINGLESEL);
        if (!list || !create_pane(letters_, 1, 0, card_class, 0, &letter_card)) return false;
        fill_folders(tree);
        fill_letters(list);
        folders_.SetColumnInfo(0, 150, 80);
        folders_.SetColumnInfo(1, 0, 160);
        letters_.SetRowInfo(0, 130, 60);
        letters_.SetRowInfo(1, 0, 60);
        return true;
    }
    CSkinSplitterWnd& splitter() override { return folders_; }

private:
    CSkinSplitterWnd folders_, letters_;
};

// ---------------------------------------------------------------- the map

class MapSplitter : public CSkinSplitterWnd {
protected:
    CWnd* CreatePane(int row, int column) override {
        return CWnd::FromHandle(create_pane(*this, row, column, card_class, 0, &map_cards[2 * row + column]));
    }
};

/* One pane at first, which may become two or four. */
class Map : public Content {
public:
    explicit Map(int width = 0, int height = 0) : width_(width), height_(height) {}
    bool create(HWND frame) override {
        if (!map_.Create(frame, 2, 2, {60, 40})) return false;
        // Room for a split that is there from the start.
        MoveWindow(map_.GetSafeHwnd(), 0, 0, 300, 220, FALSE);
        return (!width_ || map_.SplitColumn(width_)) && (!height_ || map_.SplitRow(height_));
    }
    CSkinSplitterWnd& splitter() override { return map_; }

private:
    MapSplitter map_;
    int width_, height_;
};

}  // namespace

void open_splitters(Stage& stage) {
    stage.add(create_splitter_frame("Mail", std::make_unique<Mail>(), {680, 420}));
    stage.add(create_splitter_frame("Map, in one piece", std::make_unique<Map>(), {300, 220}));
    stage.add(create_splitter_frame("Map, in four", std::make_unique<Map>(170, 100), {420, 280}));
    stage.arrange_in_rows();
    stage.show();
}

void pose_splitters_dragged(const Stage& stage, Mouse& mouse) {
    const HWND frame = stage.windows().front();
    const HWND splitter = content_of(frame)->splitter().GetSafeHwnd();
    int width = 0, minimum = 0;
    content_of(frame)->splitter().GetColumnInfo(0, width, minimum);
    POINT bar = {width + 5, 200};
    ClientToScreen(splitter, &bar);
    mouse.move_to(bar);
    mouse.press();
    mouse.move_to(POINT{bar.x + 90, bar.y});
}

}  // namespace gallery
