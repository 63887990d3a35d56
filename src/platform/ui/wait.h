#pragma once

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

/// Serves the events that are waiting now, but leaves what the user does for later: no key and no click is
/// handled meanwhile. Throws ProcessEnding when the process ended meanwhile.
void serveEventsButInput();
