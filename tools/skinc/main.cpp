/* skinc: builds skin files and looks into them. */
#include <windows.h>

#include <objbase.h>

#include <CLI/CLI.hpp>
#include <cstdio>

#include "commands.h"
#include "tool_error.h"

namespace {

constexpr int kMistake = 2;

struct ComSession {
    ComSession() : result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ComSession() {
        if (SUCCEEDED(result)) ::CoUninitialize();
    }
    HRESULT result;
};

int Run(int argc, char** argv) {
    CLI::App app{"Builds TavixSkinCtrls skin files and looks into them."};
    app.require_subcommand(1);
    std::string input;
    std::string output;
    bool asJson = false;

    CLI::App* build = app.add_subcommand("build", "Compile a manifest and its images into a skin file");
    build->add_option("MANIFEST", input, "The manifest (JSON)")->required();
    build->add_option("-o,--output", output, "The skin file to write")->required();
    CLI::App* extract = app.add_subcommand("extract", "Write the manifest and the images of a skin file");
    extract->add_option("SKIN", input, "The skin file")->required();
    extract->add_option("DIR", output, "The folder to write to")->required();
    CLI::App* info = app.add_subcommand("info", "List every value of a skin file");
    info->add_option("SKIN", input, "The skin file")->required();
    info->add_flag("--json", asJson, "As JSON");
    CLI::App* check =
        app.add_subcommand("check", "Look for mistakes in a skin file; exit code 1 if there are any");
    check->add_option("SKIN", input, "The skin file")->required();

    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : kMistake;
    }
    const ComSession com;
    if (*build) return skinc::Build(input, output);
    if (*extract) return skinc::Extract(input, output);
    if (*info) return skinc::Info(input, asJson);
    return skinc::Check(input);
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return Run(argc, argv);
    } catch (const skinc::ToolError& error) {
        std::fprintf(stderr, "skinc: %s\n", error.what());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "skinc: %s\n", error.what());
    }
    return kMistake;
}
