#include "tavixskin/framework/scroll_bar.h"

IMPLEMENT_DYNAMIC(CScrollBar, CWnd)

CScrollBar::CScrollBar() = default;

CScrollBar::~CScrollBar() = default;
