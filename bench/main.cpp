/* tavix_bench --skin X.skn --json FILE: measures, prints a table, and exits 0 whatever it finds. */
#include <windows.h>

#include <objbase.h>

#include <CLI/CLI.hpp>

#include <algorithm>

#include "benches.h"
#include "tavixskin.h"

int main(int argc, char** argv) {
    CLI::App app{"Measures the library beside the platform's own ways."};
    std::string skin = "build/skins/porcelain.skn";
    std::string json;
    std::vector<std::string> only;
    app.add_option("--skin", skin, "The skin file to measure with");
    app.add_option("--json", json, "Where to write the figures");
    app.add_option("--only", only, "Measure these parts only, a part a word")->delimiter(',');
    CLI11_PARSE(app, argc, argv);
    const auto wanted = [&only](const char* part) {
        return only.empty() || std::find(only.begin(), only.end(), part) != only.end();
    };

    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    bench::Report report;
    report.Begin();
    if (wanted("drawing")) bench::MeasureDrawing(report);
    if (wanted("loading")) bench::MeasureLoading(report, skin);
    if (wanted("interception")) bench::MeasureInterception(report);
    const bench::NativeWindows native;
    if (!InstallTavixSkin(skin.c_str())) {
        std::fprintf(stderr, "tavix_bench: '%s' can't be installed; run './run build' first\n", skin.c_str());
        return 2;
    }
    if (wanted("painting")) bench::MeasurePainting(report, native);
    if (wanted("scroll-bars")) bench::MeasureScrollBars(report, native);
    if (wanted("list-views")) bench::MeasureListViews(report, native);
    if (wanted("list-boxes")) bench::MeasureListBoxes(report, native);
    if (wanted("combo-boxes")) bench::MeasureComboBoxes(report, native);
    if (wanted("controls")) bench::MeasureControls(report, native);
    if (wanted("common-controls")) bench::MeasureCommonControls(report, native);
    if (wanted("menus")) bench::MeasureMenus(report);
    if (wanted("messages")) bench::MeasureMessages(report);
    if (wanted("intercepted-calls")) bench::MeasureInterceptedCalls(report);
    if (wanted("switch")) bench::MeasureSwitch(report, skin);
    if (wanted("memory")) bench::MeasureMemory(report);
    UnInstallTavixSkin();
    ::CoUninitialize();

    if (!json.empty() && !report.WriteJson(json)) {
        std::fprintf(stderr, "tavix_bench: '%s' can't be written\n", json.c_str());
        return 2;
    }
    return 0;
}
