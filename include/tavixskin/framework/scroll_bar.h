/* CScrollBar: a scroll bar control of the framework. */
#pragma once

#include "tavixskin/framework/wnd.h"

class TAVIX_API CScrollBar : public CWnd {
    DECLARE_DYNAMIC(CScrollBar)
public:
    CScrollBar();
    ~CScrollBar() override;
};
