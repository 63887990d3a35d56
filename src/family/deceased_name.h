#pragma once

/// Asks for the deceased's name and, after a Yes, writes it to the store and to `engine.deceasedName` when it
/// is neither empty nor the old one. The text goes into the statement as it stands: an apostrophe makes it
/// fail.
/// @throws RuntimeError what the store gives.
void recordDeceasedName();
