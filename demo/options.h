/* The command line. */
#pragma once

#include <optional>
#include <string>

namespace gallery {

struct Options {
    std::string skin;          // the skin file; empty with `native`
    std::string page;          // the one page to open; empty for the start frame, or for all in a shot
    std::string shot_folder;   // where the pictures go; empty to run until closed
    bool native = false;       // no skin: for comparison
    bool watch = false;        // load the skin again when its file changes
    bool list = false;         // print the pages' names and end
    int controls_version = 5;  // of the common controls: 5 or 6
};

/* Reads the command line into `options`. Gives the exit code if the program is to end at once: 0 after
   the help, 2 after a mistake, which is told on stderr with the usage. */
std::optional<int> read_options(int count, char** arguments, Options& options);

}  // namespace gallery
