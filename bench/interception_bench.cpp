/* Intercepted calls of windows that are no concern of the library's, and the walk through the modules. */
#include <windows.h>

#include <psapi.h>

#include <memory>
#include <vector>

#include "bench_window.h"
#include "benches.h"
#include "scroll/api_hooks.h"
#include "scroll/import_hook.h"
#include "scroll/scroll_host.h"

namespace bench {

namespace {

constexpr int kModules = 60;

// What programs of some size load.
constexpr const char* kSystemModules[] = {
    "ole32",    "oleaut32", "shell32", "shlwapi",  "comdlg32", "winmm",    "ws2_32",   "wininet",  "winhttp",
    "urlmon",   "msi",      "rpcrt4",  "setupapi", "crypt32",  "version",  "uxtheme",  "dwmapi",   "gdiplus",
    "msimg32",  "imm32",    "usp10",   "riched20", "mpr",      "netapi32", "iphlpapi", "dnsapi",   "secur32",
    "wintrust", "cryptui",  "propsys", "userenv",  "psapi",    "dbghelp",  "oleacc",   "avicap32", "msvfw32",
    "avifil32", "msacm32",  "ddraw",   "dsound",   "dinput8",  "wldap32",  "odbc32",   "wtsapi32", "powrprof",
    "cabinet",  "lz32",     "mscms",   "sensapi",  "credui",   "hid",      "cfgmgr32", "oledlg",   "pdh",
    "quartz",   "rasapi32", "rtutils", "schannel", "traffic",  "wsock32",  "xmllite",  "mlang",    "mshtml",
    "msxml3",   "devenum",  "dxdiagn", "comsvcs",  "clusapi",  "activeds", "adsldpc",  "bcrypt",   "ncrypt",
};

int CountModules() {
    std::vector<HMODULE> modules(1024);
    DWORD bytes = 0;
    ::K32EnumProcessModules(::GetCurrentProcess(), modules.data(),
                            static_cast<DWORD>(modules.size() * sizeof(HMODULE)), &bytes);
    return static_cast<int>(bytes / sizeof(HMODULE));
}

// The modules stay: what is measured later must not depend on the order.
int LoadModules() {
    for (const char* name : kSystemModules) {
        if (CountModules() >= kModules) break;
        ::LoadLibraryA(name);
    }
    return CountModules();
}

// The walks of one install and its end, none of which finds what it looks for.
void WalkOnly() {
    const FARPROC nowhere = reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&CountModules));
    const auto table = tavix::HookTable();
    for (int round = 0; round < 2; ++round)
        for (const auto rows : {table.first(tavix::kLoaderHooks), table.subspan(tavix::kLoaderHooks)}) {
            const tavix::ModuleWalk walk;
            for (const tavix::HookRow& row : rows)
                ReplaceInAllModules(row.moduleName, nowhere, row.replacement, 1);
        }
}

}  // namespace

void MeasureInterception(Report& report) {
    const int modules = LoadModules();
    const auto cycle = [] {
        InstallApiHooks();
        UnInstallApiHooks();
    };
    report.Told("interception on and off, " + std::to_string(modules) + " modules; the walks alone",
                MeasureInTurns(cycle, 1, WalkOnly, 1, 7));
}

void MeasureInterceptedCalls(Report& report) {
    Window parent(PlainClass(), WS_POPUP | WS_VISIBLE, CRect(0, 0, 500, 400));
    Window other(PlainClass(), WS_CHILD | WS_VISIBLE, CRect(0, 0, 300, 300), parent);
    std::vector<std::unique_ptr<Window>> hosts;
    int position = 0;
    const auto change = [&](auto setScrollInfo) {
        const SCROLLINFO info{sizeof info, SIF_ALL, 0, 100, 10, ++position % 90, 0};
        setScrollInfo(other, SB_VERT, &info, FALSE);
    };
    for (int count : {0, 1, 50}) {
        while (static_cast<int>(hosts.size()) < count) {
            hosts.push_back(std::make_unique<Window>(PlainClass(), WS_CHILD, CRect(0, 0, 9, 9), parent));
            InstallScrollHost(*hosts.back());
        }
        report.AtMost("SetScrollInfo of a window that is no host, beside " + std::to_string(count) + " hosts",
                      MeasureInTurns([&] { change(tavix::HookedSetScrollInfo); }, 3000,
                                     [&] { change(::SetScrollInfo); }, 3000),
                      1.2);
    }
    for (const auto& host : hosts) RemoveScrollHost(*host);
}

}  // namespace bench
