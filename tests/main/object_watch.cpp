#include "main/object_watch.h"

#include "main/gui_objects.h"

namespace tavix_test {

namespace {

int g_platformLeak = 0;  // of the present test

std::string NameOf(const testing::TestInfo& test) {
    return std::string(test.test_suite_name()) + "." + test.name();
}

}  // namespace

void ObjectWatch::OnTestIterationStart(const testing::UnitTest&, int iteration) { m_round = iteration; }

void AllowPlatformLeak(int gdiObjects) { g_platformLeak = gdiObjects; }

void ObjectWatch::OnTestStart(const testing::TestInfo&) {
    g_platformLeak = 0;
    m_gdi = CountGdiObjects();
    m_user = CountUserObjects();
}

void ObjectWatch::OnTestEnd(const testing::TestInfo& test) {
    const int gdi = CountGdiObjects() - m_gdi - g_platformLeak;
    const int user = CountUserObjects() - m_user;
    if (gdi <= 0 && user <= 0) return;
    Growth& growth = m_growths[NameOf(test)];
    growth.gdi = gdi;
    growth.user = user;
    if (m_round > 0) ++growth.rounds;
}

std::vector<std::string> ObjectWatch::GrownTests() const {
    std::map<std::string, std::string> filters;
    for (const auto& [name, growth] : m_growths) {
        std::string& filter = filters[name.substr(0, name.find('.'))];
        filter += (filter.empty() ? "" : ":") + name;
    }
    std::vector<std::string> result;
    for (const auto& [suite, filter] : filters) result.push_back(filter);
    return result;
}

std::vector<std::string> ObjectWatch::Leaks() const {
    std::vector<std::string> leaks;
    for (const auto& [name, growth] : m_growths)
        if (growth.rounds == m_round)
            leaks.push_back(name + ": " + std::to_string(growth.gdi) + " GDI and " +
                            std::to_string(growth.user) + " USER objects more in each round");
    return leaks;
}

}  // namespace tavix_test
