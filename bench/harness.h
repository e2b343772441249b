/* Measuring two ways of doing one thing, in turns, so that a noisy machine disturbs both alike. */
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/* One line of the table. `ratio` is ours over the reference; speed-ups are told as their inverse. */
struct Result {
    std::string name;
    double ours;
    double reference;
    std::string unit;
    double ratio;
    std::string target;
    bool holds;
};

using Action = std::function<void()>;

/* The middle of several rounds, in microseconds a call. */
struct Pair {
    double ours;
    double reference;
};

/* One round: runs some calls and tells the microseconds a call. */
using Round = std::function<double()>;
/* A round of `calls` calls on this thread. */
double TimeOf(const Action& action, int calls);

/*
 * Runs both in turns, after one round of each that does not count. The figures are the medians
 * of the rounds.
 */
Pair MeasureRounds(const Round& ours, const Round& reference, int rounds = 15);
Pair MeasureInTurns(const Action& ours, int ourCalls, const Action& reference, int referenceCalls,
                    int rounds = 15);

class Report {
public:
    /* Holds if ours takes at most `most` times the reference. */
    void AtMost(const std::string& name, const Pair& pair, double most);
    /* Holds if ours is at least `least` times as fast; the ratio told is reference over ours. */
    void AtLeastAsFast(const std::string& name, const Pair& pair, double least);
    /* Two times that are told beside each other; there is nothing to hold. */
    void Told(const std::string& name, const Pair& pair);
    /* A count or an amount; holds if ours is at most `most`. */
    void Amount(const std::string& name, double ours, double reference, const std::string& unit,
                const std::string& target, bool holds);

    /* Prints the table's head; each line follows when it is known. */
    void Begin() const;
    /* Writes the array; false if the file can't be written. */
    bool WriteJson(const std::string& path) const;

private:
    void Add(const Result& result);
    std::vector<Result> m_results;
};

/* Dispatches what waits in the thread's queue. */
void Pump();

/* Bytes of memory that this process has committed for itself. */
double CommittedBytes();

}  // namespace bench
