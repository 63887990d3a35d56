#pragma once

#include <functional>

class Screen;

/// The screens that a lower folder opens in a higher or a neighbouring one. `shell` installs the functions at
/// start; one that is not installed, as in the tests of a lower folder, does nothing.
struct Navigation {
    std::function<void()> showMembers;
    std::function<void()> showUsers;
    std::function<void()> showChangePassword;
    std::function<void()> showRevenue;       ///< a new one, modally
    std::function<void()> showRevenueBeside; ///< one beside the other screens, shown again until it is closed
    std::function<void()> showExpense;       ///< a new one, modally
    std::function<void()> showChanges;
    std::function<void()> showReports;
    std::function<void()> showAbout;
    std::function<void()> showDateConversion;
    /// Makes a browser for `engine.browseTable`; it deletes itself when it is unloaded.
    std::function<Screen *()> newBrowser;
};

extern Navigation navigation;

/// Calls an opener when one is installed.
inline void go(const std::function<void()> &opener)
{
    if (opener)
        opener();
}
