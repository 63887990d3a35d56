#pragma once

#include "platform/runtime/runtime_error.h"

#include <functional>

/// The number of the RuntimeError that an action throws; 0 when it throws none.
inline int failureOf(const std::function<void()> &action)
{
    try {
        action();
    } catch (const RuntimeError &error) {
        return error.number();
    }
    return 0;
}
