/* What the gallery throws when it can't go on. main() turns it into a line on stderr and exit code 2. */
#pragma once

#include <stdexcept>
#include <string>

namespace gallery {

class Failure : public std::runtime_error {
public:
    explicit Failure(const std::string& what) : std::runtime_error(what) {}
};

/* Throws a Failure that says what was attempted and why the system refused (GetLastError). */
[[noreturn]] void fail_with_last_error(const std::string& attempted);

}  // namespace gallery
