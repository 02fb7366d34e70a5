// What a piece of work takes within its process.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

#include "own_process.h"

namespace relvane::bench {

template <class Work>
Measured timed(Work work) {
    rusage before{}, after{};
    getrusage(RUSAGE_SELF, &before);
    const auto begin = std::chrono::steady_clock::now();
    work();
    const std::chrono::duration<double> clock = std::chrono::steady_clock::now() - begin;
    getrusage(RUSAGE_SELF, &after);
    return {clock.count(),
            seconds(after.ru_utime) + seconds(after.ru_stime) - seconds(before.ru_utime) -
                seconds(before.ru_stime),
            megabytes(after)};
}

// By processor time.
inline Measured median(std::vector<Measured> measured) {
    const auto middle = measured.begin() + static_cast<std::ptrdiff_t>(measured.size() / 2);
    std::ranges::nth_element(measured, middle, {}, &Measured::processor);
    return *middle;
}

} // namespace relvane::bench
