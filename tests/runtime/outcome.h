#pragma once

#include "platform/runtime/runtime_error.h"
#include "platform/runtime/value.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <gtest/gtest.h>

#include <string>

inline std::string shown(const Value &value)
{
    return value.toText().toStdString();
}
inline std::string shown(const QDateTime &value)
{
    EXPECT_EQ(value.timeSpec(), Qt::UTC);
    return value.toString(Qt::ISODate).toStdString();
}

/// What a call gives, as text: its result, or `error 13`.
template <typename Call>
std::string outcome(Call call)
{
    try {
        return shown(call());
    } catch (const RuntimeError &error) {
        return "error " + std::to_string(error.number());
    }
}
