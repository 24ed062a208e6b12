#pragma once

/// Taking times on a machine that others use as well.

#include <malloc.h>

#include <ctime>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <vector>

namespace Velmara::bench {

/// The processor time of this thread: what others take of the machine does not count.
inline double processorSeconds()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

/// Lets the allocator do what it has put off while results were taken down; else the next action that asks for a large
/// block would pay for it. It may give back what is free, so that the next action finds pages that are new.
inline void settleHeap(bool isGivenBack)
{
    if (isGivenBack)
        malloc_trim(0);
    void* volatile block = std::malloc(1 << 16);
    std::free(block);
}

/// How long an action takes until its result is there; taking that down again does not count.
template <class Action> double secondsOf(Action action, bool isHeapGivenBack = false)
{
    settleHeap(isHeapGivenBack);
    const double start = processorSeconds();
    [[maybe_unused]] const auto result = action();
    return processorSeconds() - start;
}

inline double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

/// How often each side of a comparison is taken, if that does not take too long: a slow machine shall not make a run
/// endless.
struct Repetitions
{
    int rounds;
    int velmaraRuns; ///< in a turn
    int floorRuns;
    bool isHeapGivenBack = false; ///< ahead of each run

    static constexpr int fewestRounds = 3;
    static constexpr std::chrono::seconds longest{9};
};

/// Medians over the rounds.
struct Comparison
{
    double velmara = 0; ///< seconds
    double floor = 0;
    double ratio = 0; ///< within a round, whose times share what came over the machine
};

/// Takes the times of both sides in turns: in each round the library's between two of the floor's.
template <class Library, class Floor> Comparison compare(Repetitions repetitions, Library library, Floor floor)
{
    std::vector<double> librarySeconds, floorSeconds, ratios;
    const auto end = std::chrono::steady_clock::now() + Repetitions::longest;
    const auto isTimeLeft
        = [&](int round) { return round < Repetitions::fewestRounds || std::chrono::steady_clock::now() < end; };
    for (int round = 0; round < repetitions.rounds && isTimeLeft(round); ++round) {
        std::vector<double> floors, libraries;
        const auto takeTurn = [&](std::vector<double>& seconds, int runs, const auto& action) {
            for (int i = 0; i < runs; ++i)
                seconds.push_back(secondsOf(action, repetitions.isHeapGivenBack));
        };
        takeTurn(floors, repetitions.floorRuns, floor);
        takeTurn(libraries, repetitions.velmaraRuns, library);
        takeTurn(floors, repetitions.floorRuns, floor);
        librarySeconds.push_back(median(libraries));
        floorSeconds.push_back(median(floors));
        ratios.push_back(librarySeconds.back() / floorSeconds.back());
    }
    return {median(librarySeconds), median(floorSeconds), median(ratios)};
}

} // namespace Velmara::bench
