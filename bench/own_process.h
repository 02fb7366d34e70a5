// Measurements in processes of their own, whose peak of memory can be told. A child begins with its parent's peak, so
// whoever starts them keeps small.
#pragma once

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <exception>
#include <stdexcept>

namespace relvane::bench {

struct Measured {
    double clock = 0, processor = 0; // seconds
    double megabytes = 0;            // of memory at most
    double rows = 0;                 // where rows are counted
};

inline double seconds(const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
}

inline double megabytes(const rusage& used) {
    return static_cast<double>(used.ru_maxrss) / 1024;
}

// What `work` measured in a child.
template <class Work>
Measured inOwnProcess(Work work) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe to be had");
    }
    const pid_t child = fork();
    if (child == 0) {
        int status = 1;
        try {
            const Measured measured = work();
            status = write(ends[1], &measured, sizeof measured) == sizeof measured ? 0 : 1;
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        _exit(status);
    }
    close(ends[1]);
    Measured measured;
    const bool told = read(ends[0], &measured, sizeof measured) == sizeof measured;
    close(ends[0]);
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) != 0 ||
        !told) {
        throw std::runtime_error("a child failed");
    }
    return measured;
}

} // namespace relvane::bench
