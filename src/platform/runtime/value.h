#pragma once

#include "platform/runtime/money.h"

#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <variant>

/// One dynamically typed value: what a field of a row holds, or a parameter of a statement.
class Value
{
public:
    enum class Kind { Null, Boolean, Long, Double, Money, Date, Text };

    Value() = default; ///< Null
    Value(bool value) : m_value(value) {}
    Value(qint32 value) : m_value(value) {}
    Value(double value) : m_value(value) {}
    Value(Money value) : m_value(value) {}
    Value(QDateTime value) : m_value(std::move(value)) {}
    Value(QString value) : m_value(std::move(value)) {}
    Value(const char *) = delete; // would turn into a Boolean

    Kind kind() const noexcept { return static_cast<Kind>(m_value.index()); }
    bool isNull() const noexcept { return kind() == Kind::Null; }

    /// The value as the type asked for. True counts as -1, a date as its dateSerial(); a text goes through
    /// toBoolean(), toLongInteger(), readDouble(), readMoney() or readDate(), any other value to a date
    /// through dateFromSerial(). Whole numbers and money are rounded half to even.
    /// @throws RuntimeError 94 for Null, 13 for a text that can't be converted, 6 outside the type's range.
    bool toBool() const;
    qint32 toInt() const;
    double toDouble() const;
    Money toMoneyValue() const;
    QDateTime toDate() const;
    /// As `&` joins it: Null is the empty text, a Boolean `True` or `False`, a date its general form, money
    /// and numbers in their shortest form. Never throws.
    QString toText() const;

    /// Same kind and same content; two Nulls are equal. Texts are compared by code unit.
    friend bool operator==(const Value &a, const Value &b) { return a.m_value == b.m_value; }

private:
    std::variant<std::monostate, bool, qint32, double, Money, QDateTime, QString> m_value;
};
