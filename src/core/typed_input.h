#pragma once

/// Lets every loaded screen ask about what was typed into it and not saved yet, while the store in use is
/// still open: called before the session's connection closes. Errors are ignored screen by screen.
void saveTypedInput();
