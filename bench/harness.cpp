#include "harness.h"

#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <nlohmann/json.hpp>

namespace bench {

namespace {

#ifdef _WIN64
constexpr char kArchitecture[] = "x86_64";
#else
constexpr char kArchitecture[] = "i686";
#endif

double Now() {
    static const double perMicrosecond = [] {
        LARGE_INTEGER frequency;
        ::QueryPerformanceFrequency(&frequency);
        return static_cast<double>(frequency.QuadPart) / 1e6;
    }();
    LARGE_INTEGER now;
    ::QueryPerformanceCounter(&now);
    return static_cast<double>(now.QuadPart) / perMicrosecond;
}

double Median(std::vector<double> values) {
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
}

}  // namespace

double TimeOf(const Action& action, int calls) {
    const double start = Now();
    for (int i = 0; i < calls; ++i) action();
    return (Now() - start) / calls;
}

Pair MeasureRounds(const Round& ours, const Round& reference, int rounds) {
    ours();
    reference();
    std::vector<double> ourTimes;
    std::vector<double> referenceTimes;
    for (int round = 0; round < rounds; ++round) {
        // Who goes first changes, so that neither always finds the caches warm.
        if (round % 2) referenceTimes.push_back(reference());
        ourTimes.push_back(ours());
        if (round % 2 == 0) referenceTimes.push_back(reference());
    }
    return {Median(ourTimes), Median(referenceTimes)};
}

Pair MeasureInTurns(const Action& ours, int ourCalls, const Action& reference, int referenceCalls,
                    int rounds) {
    return MeasureRounds([&] { return TimeOf(ours, ourCalls); },
                         [&] { return TimeOf(reference, referenceCalls); }, rounds);
}

void Report::AtMost(const std::string& name, const Pair& pair, double most) {
    char target[32];
    std::snprintf(target, sizeof target, "<= %.4g", most);
    const double ratio = pair.ours / pair.reference;
    Add({name, pair.ours, pair.reference, "us", ratio, target, ratio <= most});
}

void Report::AtLeastAsFast(const std::string& name, const Pair& pair, double least) {
    char target[48];
    std::snprintf(target, sizeof target, ">= %.4g times as fast", least);
    const double ratio = pair.reference / pair.ours;
    Add({name, pair.ours, pair.reference, "us", ratio, target, ratio >= least});
}

void Report::Told(const std::string& name, const Pair& pair) {
    Add({name, pair.ours, pair.reference, "us", pair.ours / pair.reference, "told only", true});
}

void Report::Amount(const std::string& name, double ours, double reference, const std::string& unit,
                    const std::string& target, bool holds) {
    Add({name, ours, reference, unit, reference != 0 ? ours / reference : 0, target, holds});
}

void Report::Begin() const {
    std::printf("%-62s %12s %12s %-8s %9s  %-22s %s\n", "what", "ours", "reference", "unit", "ratio",
                "target", "holds");
}

// Told at once: a whole run takes minutes.
void Report::Add(const Result& r) {
    m_results.push_back(r);
    std::printf("%-62s %12.2f %12.2f %-8s %9.2f  %-22s %s\n", r.name.c_str(), r.ours, r.reference,
                r.unit.c_str(), r.ratio, r.target.c_str(), r.holds ? "yes" : "NO");
    std::fflush(stdout);
}

bool Report::WriteJson(const std::string& path) const {
    nlohmann::ordered_json rows = nlohmann::ordered_json::array();
    for (const Result& r : m_results)
        rows.push_back({{"name", r.name},
                        {"arch", kArchitecture},
                        {"ours", r.ours},
                        {"reference", r.reference},
                        {"unit", r.unit},
                        {"ratio", r.ratio},
                        {"target", r.target},
                        {"holds", r.holds}});
    std::ofstream stream(path, std::ios::binary);
    stream << rows.dump(2) << "\n";
    stream.flush();
    return static_cast<bool>(stream);
}

void Pump() {
    MSG message;
    while (::PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
        ::TranslateMessage(&message);
        ::DispatchMessageA(&message);
    }
}

double CommittedBytes() {
    PROCESS_MEMORY_COUNTERS counters{};
    counters.cb = sizeof counters;
    ::GetProcessMemoryInfo(::GetCurrentProcess(), &counters, sizeof counters);
    return static_cast<double>(counters.PagefileUsage);
}

}  // namespace bench
