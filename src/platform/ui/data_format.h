#pragma once

#include "platform/runtime/value.h"

/// How a column of a grid or a box of a report writes its values.
struct DataFormat {
    enum class Type { General = 0, Custom = 1, Boolean = 5 };
    Type type = Type::General;
    QString nullValue = {};
    QString format = {}; ///< of General and Custom; empty for the value's plain text
    // Of Boolean. A text is written as it is.
    QString trueValue = QStringLiteral("True");
    QString falseValue = QStringLiteral("False");
};

/// The value as the format writes it.
/// @throws RuntimeError as format() does
QString formatted(const Value &value, const DataFormat &format);
