#include "platform/runtime/runtime_error.h"

using namespace Qt::Literals::StringLiterals;

RuntimeError::RuntimeError(qint32 number, QString source, QString description)
    : m_number(number), m_source(std::move(source)), m_description(std::move(description)),
      m_what(m_description.toUtf8())
{
}

QString RuntimeError::numberText() const
{
    QString decimal = QString::number(m_number);
    if (m_number >= 0)
        return decimal;
    return u"%1 (%2)"_s.arg(decimal, QString::number(static_cast<quint32>(m_number), 16));
}

namespace runtime_errors
{
namespace
{
constexpr qint32 cancelledNumber = 32755;

RuntimeError failure(qint32 number, const QString &description)
{
    return RuntimeError(number, u"Quvana"_s, description);
}
} // namespace

RuntimeError invalidCall()
{
    return failure(5, u"Invalid procedure call or argument"_s);
}
RuntimeError overflow()
{
    return failure(6, u"Overflow"_s);
}
RuntimeError outOfRange()
{
    return failure(9, u"Subscript out of range"_s);
}
RuntimeError divisionByZero()
{
    return failure(11, u"Division by zero"_s);
}
RuntimeError typeMismatch()
{
    return failure(13, u"Type mismatch"_s);
}
RuntimeError fileNotFound()
{
    return failure(53, u"File not found"_s);
}
RuntimeError fileExists()
{
    return failure(58, u"File already exists"_s);
}
RuntimeError permissionDenied()
{
    return failure(70, u"Permission denied"_s);
}
RuntimeError pathAccess()
{
    return failure(75, u"Path/File access error"_s);
}
RuntimeError pathNotFound()
{
    return failure(76, u"Path not found"_s);
}
RuntimeError objectNotSet()
{
    return failure(91, u"Object variable or With block variable not set"_s);
}
RuntimeError invalidNull()
{
    return failure(94, u"Invalid use of Null"_s);
}
RuntimeError cancelled()
{
    return failure(cancelledNumber, u"Cancel was selected."_s);
}
bool isCancelled(const RuntimeError &failure)
{
    return failure.number() == cancelledNumber;
}
} // namespace runtime_errors
