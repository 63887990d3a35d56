#pragma once

/// The one entry point of the program: paths and connection strings, the store (made when none is there),
/// settings, compaction when it is due, login, main screen. It returns when the main screen stands; the
/// process then lives on the events of its screens. Runs under runGuarded().
void Main();
