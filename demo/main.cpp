/* The gallery: an ordinary program that knows the library by its public header alone, and shows what
   each family of windows looks like under a skin. */
#include <windows.h>

#include <filesystem>
#include <iostream>
#include <optional>

#include "controls_version.h"
#include "failure.h"
#include "message_loop.h"
#include "options.h"
#include "page.h"
#include "screen_picture.h"
#include "skin_session.h"
#include "skin_watch.h"
#include "start_frame.h"
#include "text.h"

namespace gallery {

namespace {

constexpr int exit_failure = 2;

/* The part of the screen that a picture shows: the page's windows with a margin around. */
RECT picture_area(const Stage& stage) {
    constexpr int margin = 16;
    RECT area = stage.bounds();
    InflateRect(&area, margin, margin);
    const RECT screen = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
    RECT visible;
    IntersectRect(&visible, &area, &screen);
    return visible;
}

// Long enough for hover timers and for the desktop to draw what it was told.
constexpr DWORD settling_milliseconds = 400;

void take_picture(const Page& page, const std::filesystem::path& folder) {
    Stage stage;
    Mouse mouse;
    page.open(stage);
    settle(settling_milliseconds);
    if (page.pose) {
        page.pose(stage, mouse);
        settle(settling_milliseconds);
    }
    const auto shoot = [&] {
        ScreenPicture(picture_area(stage)).write(folder / (std::string(page.name) + ".png"));
    };
    if (page.show_menu)
        page.show_menu(stage, shoot);
    else
        shoot();
}

std::filesystem::path make_folder(const std::string& name) {
    const std::filesystem::path folder = widen(name);
    std::error_code error, ignored;
    std::filesystem::create_directories(folder, error);
    if (std::filesystem::is_directory(folder, ignored)) return folder;
    throw Failure("The folder '" + name +
                  "' can't be made: " + (error ? error.message() : "something else has that name"));
}

void take_pictures(const Page* only, const std::string& folder_name) {
    const std::filesystem::path folder = make_folder(folder_name);
    const Backdrop backdrop;
    for (const Page& page : all_pages()) {
        if (only && only != &page) continue;
        try {
            take_picture(page, folder);
        } catch (const Failure& failure) {
            throw Failure("Page '" + std::string(page.name) + "': " + failure.what());
        }
        settle(0);  // the mouse's last messages, and what the closed windows uncovered
    }
}

/* Runs until the user has closed what was opened: the one page, or the start frame. */
void run(const Page* only, SkinSession* session, bool is_watching) {
    std::optional<SkinWatch> watch;
    if (session && is_watching) watch.emplace(*session);
    const std::string skin = session ? "Skin: " + session->file() : std::string("No skin");
    std::optional<StartFrame> start;
    Stage stage;
    if (only) {
        only->open(stage);
    } else {
        start.emplace(skin.c_str());
    }

    MSG message;
    while ((start || !stage.is_empty()) && GetMessageA(&message, nullptr, 0, 0) > 0) {
        if (watch && watch->handle(message)) continue;
        dispatch(message);
        const Page* const request = start ? start->take_request() : nullptr;
        if (!request) continue;
        stage.close();
        request->open(stage);
    }
}

void show(const Options& options) {
    // In this order, so that the windows go first and the skin last.
    const CommonControls controls(options.controls_version);
    std::optional<SkinSession> session;
    if (!options.native) session.emplace(options.skin);
    const Page* const page = options.page.empty() ? nullptr : find_page(options.page);
    if (options.shot_folder.empty()) {
        run(page, session ? &*session : nullptr, options.watch);
    } else {
        take_pictures(page, options.shot_folder);
    }
}

}  // namespace

}  // namespace gallery

int main(int count, char** arguments) {
    using namespace gallery;
    try {
        Options options;
        if (const auto exit_code = read_options(count, arguments, options)) return *exit_code;
        if (options.list) {
            for (const Page& page : all_pages()) std::cout << page.name << '\n';
            return 0;
        }
        show(options);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "gallery: " << error.what() << '\n';
        return exit_failure;
    }
}
