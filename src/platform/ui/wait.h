#pragma once

#include <functional>

/// Serves events until `done` is true, sleeping between them. Throws ProcessEnding when the process ends
/// meanwhile. A `done` that never becomes true makes a wait that ends only with the process.
void serveEventsUntil(const std::function<bool()> &done);

/// Serves the events that are waiting now and returns (the platform's DoEvents).
/// Throws ProcessEnding when the process ended meanwhile.
void serveEvents();

/// The same, but leaves what the user does for later: no key and no click is handled meanwhile.
void serveEventsButInput();

/// Stands while a dialog is up: under a dialog the process does not end with its last screen, since the
/// routine that shows it still runs.
class DialogWait
{
public:
    DialogWait();
    ~DialogWait();
    DialogWait(const DialogWait &) = delete;
    DialogWait &operator=(const DialogWait &) = delete;
};

/// For the life of the process: how many of the waits above are on the stack, and whether a dialog stands.
int standingWaits();
bool dialogStands();
