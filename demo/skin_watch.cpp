#include "skin_watch.h"

#include "failure.h"

namespace gallery {

namespace {

constexpr UINT poll_milliseconds = 250;

std::uint64_t join(DWORD high, DWORD low) { return static_cast<std::uint64_t>(high) << 32 | low; }

}  // namespace

SkinWatch::SkinWatch(SkinSession& session)
    : session_(session), timer_(SetTimer(nullptr, 0, poll_milliseconds, nullptr)) {
    if (!timer_) fail_with_last_error("The skin's file can't be watched");
    loaded_ = last_ = read_stamp();
}

SkinWatch::~SkinWatch() { KillTimer(nullptr, timer_); }

bool SkinWatch::handle(const MSG& message) {
    if (message.message != WM_TIMER || message.hwnd || message.wParam != timer_) return false;
    poll();
    return true;
}

/* A changed file is loaded once it looks the same at two looks and nobody holds it open: until then its
   writer may be in the middle. */
void SkinWatch::poll() {
    const auto now = read_stamp();
    const bool stable = now && now == last_;
    last_ = now;
    if (!stable || now == loaded_ || !is_closed_by_its_writer()) return;
    if (session_.reload()) {
        loaded_ = last_ = read_stamp();  // a second look, as loading may itself touch the file
    } else {
        loaded_.reset();  // it vanished just now; whatever comes in its place is new
    }
}

std::optional<SkinWatch::Stamp> SkinWatch::read_stamp() const {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExA(session_.file().c_str(), GetFileExInfoStandard, &data)) return std::nullopt;
    return Stamp{join(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
                 join(data.nFileSizeHigh, data.nFileSizeLow)};
}

/* Opening without sharing fails while anyone else has the file open. */
bool SkinWatch::is_closed_by_its_writer() const {
    const OwnedFile file(CreateFileA(session_.file().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    return file.get() != INVALID_HANDLE_VALUE;
}

}  // namespace gallery
