#pragma once

#include "platform/ui/dialogs.h"

/// Asks for the session's font and keeps the choice in the session as it was made. Screens that are open do
/// not change.
/// @throws RuntimeError 32755 when cancelled, 6 for a size beyond 16 bits
FontChoice chooseSessionFont();
