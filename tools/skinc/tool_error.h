/* How the tool fails: one message that names file, key and what was expected. */
#pragma once

#include <stdexcept>
#include <string>

namespace skinc {

/* Ends the command with exit code 2. The message tells the user what to do. */
class ToolError : public std::runtime_error {
public:
    ToolError(const std::string& file, const std::string& message)
        : std::runtime_error(file + ": " + message) {}
    ToolError(const std::string& file, const std::string& key, const std::string& message)
        : std::runtime_error(file + ": " + key + ": " + message) {}
};

}  // namespace skinc
