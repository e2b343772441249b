/* Compares the counts of GDI and USER objects around every test of a program. */
#pragma once

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace tavix_test {

/*
 * The platform fills caches of its own at first uses, in whatever test they fall, so that one growth
 * proves nothing. What a test leaks it leaks in each round: the tests that grew are run again.
 */
class ObjectWatch : public testing::EmptyTestEventListener {
public:
    /* The tests after which the process held more than before: a filter for each of their suites. */
    std::vector<std::string> GrownTests() const;
    /* The tests that grew in every round but the first; there must have been more than one. */
    std::vector<std::string> Leaks() const;

    void OnTestIterationStart(const testing::UnitTest& program, int iteration) override;
    void OnTestStart(const testing::TestInfo& test) override;
    void OnTestEnd(const testing::TestInfo& test) override;

private:
    struct Growth {
        int rounds = 0;  // in how many rounds after the first
        int gdi = 0;     // in the last of them, or in the first round
        int user = 0;
    };
    std::map<std::string, Growth> m_growths;
    int m_round = 0;
    int m_gdi = 0;
    int m_user = 0;
};

/* For a test that makes the platform itself leak so many GDI objects in each round. */
void AllowPlatformLeak(int gdiObjects);

}  // namespace tavix_test
