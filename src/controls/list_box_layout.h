/* The arithmetic of list boxes: what fits, what a point hits, where scrolling leads, which items are marked.
 */
#pragma once

#include <optional>
#include <string>

#include "tavixskin/framework/geometry.h"

namespace tavix {

/*
 * Rows in a height. A last row of which at least four fifths show counts as well, but not in a list of
 * several columns.
 */
int RowsThatFit(int height, int itemHeight, bool multiColumn);

/* The width of a column: the list's own, or at most 150 in a list of several columns. */
int ColumnWidthOf(int width, bool multiColumn);
/* Columns in a width, one that shows in part among them. */
int ColumnsThatFit(int width, int columnWidth);

/* The top item once it leaves no more room below than it has to. */
int BoundedTopItem(int top, int rows, int count);

/* What scrolling and hit tests depend on. */
struct ListLayout {
    CRect client;
    int top = 0;  // the first item that shows; scrolling by columns may leave it below 0
    int rows = 0;
    int columns = 0;
    int columnWidth = 0;
    int itemHeight = 0;
    int count = 0;
    bool multiColumn = false;

    /* The item after those that the rows and columns have room for. */
    int End() const { return top + rows * columns; }
};

/* The values are those of the list's hit test, on which the handlers decide. */
enum class ListPart { Outside = -1, Nothing = 0, Item = 1, VertBar = 2, HorzBar = 3 };
struct ListHit {
    ListPart part = ListPart::Nothing;
    int item = -1;
    bool operator==(const ListHit&) const = default;
};

/* How much of the client area the bars take, 0 for a bar that isn't there. */
struct BarExtents {
    int vertWidth = 0;
    int horzHeight = 0;
};
ListHit HitTestList(const ListLayout& layout, const BarExtents& bars, const POINT& point);

/* A scrolling's outcome: the new top item and the new position of the bar. */
struct ScrollStep {
    int top;
    int pos;
    bool operator==(const ScrollStep&) const = default;
};
/* `code` is an SB_ code, `position` the one that comes with it, `pos` the bar's. Nothing if the list stays.
 */
std::optional<ScrollStep> ScrollStepOf(int code, int position, int pos, const ListLayout& layout);

/*
 * The marks of a multiple selection: a character an item, "0" or "1". Marks may be missing, where the
 * items came by another road, or left over: what is missing counts as "0".
 */
class ItemMarks {
public:
    bool Has(int item) const;
    void Set(int item, bool marked);
    /* A new unmarked item takes its place among the others. */
    void Insert(int item);
    /* Takes away the mark that stands there, if one does. */
    void Remove(int place);
    int Count() const;
    int Length() const { return static_cast<int>(m_marks.size()); }

private:
    std::string m_marks;
};

}  // namespace tavix
