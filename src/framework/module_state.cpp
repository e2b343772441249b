#include "tavixskin/framework/module_state.h"

#include "framework/thread_slot.h"
#include "tavixskin/framework/wnd.h"

namespace {

tavix::ThreadSlot<AFX_THREAD_STATE> g_threadState;
AFX_MODULE_STATE g_programState{"program"};
AFX_MODULE_STATE g_libraryState{"library"};

}  // namespace

AFX_THREAD_STATE::AFX_THREAD_STATE() = default;

AFX_THREAD_STATE::~AFX_THREAD_STATE() { delete m_pmapHWND; }

AFX_THREAD_STATE* AfxGetThreadState() { return &g_threadState.Get(); }

AFX_MODULE_STATE* AfxGetModuleState() {
    AFX_MODULE_STATE* state = AfxGetThreadState()->m_pModuleState;
    return state ? state : &g_programState;
}

AFX_MODULE_STATE* AfxGetLibraryModuleState() { return &g_libraryState; }

CHandleMap* AfxMapHWND(bool create) {
    CHandleMap*& map = AfxGetThreadState()->m_pmapHWND;
    if (!map && create) map = new CHandleMap;
    return map;
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state)
    : m_pThreadState(AfxGetThreadState()), m_pFormer(m_pThreadState->m_pModuleState) {
    m_pThreadState->m_pModuleState = state;
    ++m_pThreadState->m_nMaintainDepth;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() {
    if (--m_pThreadState->m_nMaintainDepth == 0 && m_pThreadState->m_pmapHWND)
        m_pThreadState->m_pmapHWND->DeleteTemp();
    m_pThreadState->m_pModuleState = m_pFormer;
}
