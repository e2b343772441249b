#include "tavixskin/framework/module_state.h"

#include <new>

#include "framework/thread_slot.h"
#include "tavixskin/framework/object.h"
#include "tavixskin/framework/wnd.h"

struct AFX_DOOMED_OBJECT {
    CObject* object;
    AFX_DOOMED_OBJECT* next;
};

namespace {

tavix::ThreadSlot<AFX_THREAD_STATE> g_threadState;
AFX_MODULE_STATE g_programState{"program"};
AFX_MODULE_STATE g_libraryState{"library"};

// An object's end may doom others.
void DeleteDoomed(AFX_THREAD_STATE& state) {
    while (AFX_DOOMED_OBJECT* doomed = state.m_pDoomed) {
        state.m_pDoomed = doomed->next;
        delete doomed->object;
        delete doomed;
    }
}

}  // namespace

AFX_THREAD_STATE::AFX_THREAD_STATE() = default;

AFX_THREAD_STATE::~AFX_THREAD_STATE() {
    DeleteDoomed(*this);
    delete m_pmapHWND;
}

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

void AfxDeleteLater(CObject* object) {
    AFX_THREAD_STATE* state = AfxGetThreadState();
    if (!object) return;
    if (state->m_nMaintainDepth == 0) {
        delete object;
        return;
    }
    // Without memory for the note the object stays: better kept than gone too early.
    if (auto* doomed = new (std::nothrow) AFX_DOOMED_OBJECT{object, state->m_pDoomed})
        state->m_pDoomed = doomed;
}

void AfxKeepLibraryLoaded() {
    HMODULE module = nullptr;
    ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                         reinterpret_cast<const char*>(&AfxKeepLibraryLoaded), &module);
}

AFX_MAINTAIN_STATE2::AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state)
    : m_pThreadState(AfxGetThreadState()), m_pFormer(m_pThreadState->m_pModuleState) {
    m_pThreadState->m_pModuleState = state;
    ++m_pThreadState->m_nMaintainDepth;
}

AFX_MAINTAIN_STATE2::~AFX_MAINTAIN_STATE2() {
    if (--m_pThreadState->m_nMaintainDepth == 0) {
        if (m_pThreadState->m_pDoomed) DeleteDoomed(*m_pThreadState);
        if (m_pThreadState->m_pmapHWND) m_pThreadState->m_pmapHWND->DeleteTemp();
    }
    m_pThreadState->m_pModuleState = m_pFormer;
}
