#pragma once

#include <sys/resource.h>
#include <sys/wait.h>

#include <exception>
#include <unistd.h>
#include <utility>

/// What a piece of work gives in a process of its own: its exit status, 99 when it throws, the negative
/// number of a signal that ended it.
template <typename Work>
int inChild(Work &&work)
{
    const pid_t child = fork();
    if (child == 0) {
        int code = 99;
        try {
            code = work();
        } catch (const std::exception &) { // the 99 tells
        }
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

/// From now on a write of this process that would make a file longer brings SIGXFSZ, which kills unless it is
/// ignored; then the write fails. Gives the limit before.
inline rlim_t limitFileSize(rlim_t bytes)
{
    rlimit limit{};
    getrlimit(RLIMIT_FSIZE, &limit);
    const rlim_t before = std::exchange(limit.rlim_cur, bytes);
    setrlimit(RLIMIT_FSIZE, &limit);
    return before;
}
