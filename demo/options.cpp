#include "options.h"

#include <CLI/CLI.hpp>

#include <iostream>

#include "page.h"

namespace gallery {

namespace {

/* The combinations that make no sense. */
void check_combination(const Options& options) {
    if (options.list) return;
    if (options.skin.empty() && !options.native)
        throw CLI::ValidationError("Name a skin with --skin, or say --native for none");
}

std::vector<std::string> page_names() {
    std::vector<std::string> names;
    for (const Page& page : all_pages()) names.emplace_back(page.name);
    return names;
}

}  // namespace

std::optional<int> read_options(int count, char** arguments, Options& options) {
    CLI::App app("Shows the windows of an ordinary program under a skin.", "gallery");
    auto* native = app.add_flag("--native", options.native, "Install no skin, for comparison");
    auto* skin = app.add_option("--skin", options.skin, "The skin file")->type_name("FILE")->excludes(native);
    app.add_option("--page", options.page, "Open this page alone")
        ->type_name("NAME")
        ->check(CLI::IsMember(page_names()));
    auto* shot = app.add_option("--shot", options.shot_folder,
                                "Write a picture of each page (or of the one) into this folder and end")
                     ->type_name("FOLDER");
    app.add_flag("--watch", options.watch, "Load the skin again whenever its file changes")
        ->needs(skin)
        ->excludes(shot);
    app.add_option("--controls", options.controls_version, "Version of the common controls: 5 or 6")
        ->type_name("VERSION")
        ->capture_default_str()
        ->check(CLI::IsMember({5, 6}));
    app.add_flag("--list", options.list, "Print the names of the pages and end");

    try {
        app.parse(count, arguments);
        check_combination(options);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return 0;
    } catch (const CLI::ParseError& error) {
        std::cerr << "gallery: " << error.what() << "\n\n" << app.help();
        return 2;
    }
    return std::nullopt;
}

}  // namespace gallery
