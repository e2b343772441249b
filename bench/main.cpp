/* tavix_bench --skin X.skn --json FILE: measures, prints a table, and exits 0 whatever it finds. */
#include <windows.h>

#include <objbase.h>

#include <CLI/CLI.hpp>

#include "benches.h"
#include "tavixskin.h"

int main(int argc, char** argv) {
    CLI::App app{"Measures the library beside the platform's own ways."};
    std::string skin = "build/skins/porcelain.skn";
    std::string json;
    app.add_option("--skin", skin, "The skin file to measure with");
    app.add_option("--json", json, "Where to write the figures");
    CLI11_PARSE(app, argc, argv);

    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    bench::Report report;
    report.Begin();
    bench::MeasureDrawing(report);
    bench::MeasureLoading(report, skin);
    bench::MeasureInterception(report);
    const bench::NativeWindows native;
    if (!InstallTavixSkin(skin.c_str())) {
        std::fprintf(stderr, "tavix_bench: '%s' can't be installed; run './run build' first\n", skin.c_str());
        return 2;
    }
    bench::MeasurePainting(report, native);
    bench::MeasureScrollBars(report, native);
    bench::MeasureListViews(report, native);
    bench::MeasureMenus(report);
    bench::MeasureMessages(report);
    bench::MeasureInterceptedCalls(report);
    bench::MeasureSwitch(report, skin);
    bench::MeasureMemory(report);
    UnInstallTavixSkin();
    ::CoUninitialize();

    if (!json.empty() && !report.WriteJson(json)) {
        std::fprintf(stderr, "tavix_bench: '%s' can't be written\n", json.c_str());
        return 2;
    }
    return 0;
}
