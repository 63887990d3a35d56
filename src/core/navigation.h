#pragma once

#include <functional>

/// The screens that a lower folder opens in a higher or a neighbouring one. `shell` installs the functions at
/// start; one that is not installed (its screen comes with a later version) does nothing.
struct Navigation {
    std::function<void()> showMembers;
    std::function<void()> showUsers;
    std::function<void()> showChangePassword;
    std::function<void()> showRevenueModeless;
};

extern Navigation navigation;

/// Calls an opener when one is installed.
inline void go(const std::function<void()> &opener)
{
    if (opener)
        opener();
}
