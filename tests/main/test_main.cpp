/* The main function of all test programs: runs the tests, and those again that seem to leak. */
#include <windows.h>

#include <cstdio>
#include <cstring>

#include "main/object_watch.h"

namespace {

// Set for the process that runs tests again; the value is the filter, which may be long.
constexpr char kAgain[] = "TAVIX_TESTS_AGAIN";
constexpr int kRounds = 3;
// What the second process says when nothing leaked. Not 0: some ways of dying end with that too.
constexpr DWORD kNothingLeaked = 42;

// The exit code of this program, run again with those tests only.
DWORD RunAgain(const std::string& tests) {
    ::SetEnvironmentVariableA(kAgain, tests.c_str());
    ::SetEnvironmentVariableA("GTEST_OUTPUT", nullptr);  // the report is this process's
    char program[MAX_PATH];
    ::GetModuleFileNameA(nullptr, program, sizeof program);
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessA(program, nullptr, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                          &process)) {
        std::printf("the tests can't be run again: error %lu\n", ::GetLastError());
        return 1;
    }
    ::WaitForSingleObject(process.hProcess, INFINITE);
    DWORD code = 1;
    ::GetExitCodeProcess(process.hProcess, &code);
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
    return code;
}

std::string TestsOfThisRound() {
    std::string tests(32'767, '\0');  // the longest value there can be
    tests.resize(::GetEnvironmentVariableA(kAgain, tests.data(), static_cast<DWORD>(tests.size())));
    return tests;
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    auto* watch = new tavix_test::ObjectWatch;  // GoogleTest's to delete
    testing::UnitTest::GetInstance()->listeners().Append(watch);

    const std::string again = TestsOfThisRound();
    if (again.empty()) {
        const int failed = RUN_ALL_TESTS();
        // Suites are kept apart, as one may leave the process in a state that another can't start from.
        bool leaked = false;
        for (const std::string& tests : watch->GrownTests()) {
            if (failed) break;
            std::printf("Ended with more GDI or USER objects; %d rounds of %s\n", kRounds, tests.c_str());
            std::fflush(stdout);
            if (RunAgain(tests) != kNothingLeaked) leaked = true;
        }
        return failed || leaked;
    }

    testing::GTEST_FLAG(filter) = again;
    testing::GTEST_FLAG(repeat) = kRounds;
    const int failed = RUN_ALL_TESTS();
    const std::vector<std::string> leaks = watch->Leaks();
    for (const std::string& leak : leaks) std::printf("[  FAILED  ] %s\n", leak.c_str());
    if (!failed && leaks.empty()) std::printf("none of them grows in each round\n");
    return failed || !leaks.empty() ? 1 : static_cast<int>(kNothingLeaked);
}
