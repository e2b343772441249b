#include "later.h"

#include <utility>

#include "failure.h"

namespace gallery {

Later::Later(DWORD milliseconds, std::function<void()> work) : work_(std::move(work)) {
    current_ = this;
    timer_ = SetTimer(nullptr, 0, milliseconds, run);
    if (!timer_) fail_with_last_error("A timer can't be made");
}

Later::~Later() {
    stop();
    current_ = nullptr;
}

void Later::finish() {
    if (timer_) throw Failure("What was to happen later didn't");
    if (failure_) std::rethrow_exception(failure_);
}

void CALLBACK Later::run(HWND, UINT, UINT_PTR, DWORD) {
    if (!current_ || !current_->timer_) return;
    current_->stop();
    try {
        current_->work_();
    } catch (...) {
        current_->failure_ = std::current_exception();  // not through the system's frames
    }
}

void Later::stop() {
    if (timer_) KillTimer(nullptr, timer_);
    timer_ = 0;
}

}  // namespace gallery
