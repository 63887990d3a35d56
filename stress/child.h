#pragma once

#include <sys/wait.h>

#include <unistd.h>
#include <utility>

/// Runs a piece of work in a process of its own. Gives its exit status, or the negative number of the signal
/// that ended it.
template <typename Work>
int inChild(Work &&work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(std::forward<Work>(work)());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}
