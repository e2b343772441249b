/* Loads the skin again when its file changes, while the windows stay open. */
#pragma once

#include <cstdint>
#include <optional>

#include "skin_session.h"

namespace gallery {

class SkinWatch {
public:
    /* Polls by a timer of the thread. Throws Failure. */
    explicit SkinWatch(SkinSession& session);
    ~SkinWatch();
    SkinWatch(const SkinWatch&) = delete;
    SkinWatch& operator=(const SkinWatch&) = delete;

    /* Looks at the file if the message is the watch's timer; true if it was. */
    bool handle(const MSG& message);

private:
    /* What tells one state of the file from another. */
    struct Stamp {
        std::uint64_t time;
        std::uint64_t size;
        bool operator==(const Stamp&) const = default;
    };

    std::optional<Stamp> read_stamp() const;
    bool is_closed_by_its_writer() const;
    void poll();

    SkinSession& session_;
    UINT_PTR timer_;
    std::optional<Stamp> loaded_;  // the state that is on the windows
    std::optional<Stamp> last_;    // the state at the last look
};

}  // namespace gallery
