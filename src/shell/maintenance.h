#pragma once

/// Compacts the real store with a notice before and after it: `engine.dbConnection` is closed meanwhile and
/// stands on the real store afterwards, also during a tutorial (that is meant). On success `settings` and
/// `engine.lastCompacted` get today's date.
/// @throws RuntimeError what CompactStore throws; `engine.dbConnection` is closed then.
void maintainStore();
