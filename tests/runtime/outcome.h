#pragma once

#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/runtime_error.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>
#include <gtest/gtest.h>

#include <concepts>
#include <string>

inline std::string shown(bool value)
{
    return value ? "True" : "False";
}
inline std::string shown(std::integral auto value)
{
    return std::to_string(value);
}
inline std::string shown(double value)
{
    return numberText(value).toStdString();
}
inline std::string shown(Money value)
{
    return value.toText().toStdString();
}
inline std::string shown(const QDateTime &value)
{
    EXPECT_EQ(value.timeSpec(), Qt::UTC);
    return value.toString(Qt::ISODate).toStdString();
}
inline std::string shown(const QString &value)
{
    return value.toStdString();
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
