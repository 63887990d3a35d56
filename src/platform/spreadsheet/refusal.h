#pragma once

#include "platform/runtime/runtime_error.h"

namespace spreadsheet
{

/// 5: what is asked for, or what the contents need, is more than the chosen form of workbook has.
inline RuntimeError refused(const QString &reason)
{
    return RuntimeError(5, QStringLiteral("Workbook"), reason);
}

} // namespace spreadsheet
