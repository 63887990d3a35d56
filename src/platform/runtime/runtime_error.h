#pragma once

#include <QtCore/QString>

#include <exception>
#include <utility>

/// A failure of the platform: the one exception type that `platform/` throws. A routine that traps errors
/// catches it where its header says so; what nobody traps reaches the application's event dispatch and
/// ends the process.
class RuntimeError : public std::exception
{
public:
    RuntimeError(qint32 number, QString source, QString description);

    qint32 number() const noexcept { return m_number; }
    const QString &source() const noexcept { return m_source; }
    const QString &description() const noexcept { return m_description; }

    /// The number as failure boxes print it: `6`, or `-2147217900 (80040e14)` for a negative one.
    QString numberText() const;

    const char *what() const noexcept override { return m_what.constData(); }

private:
    qint32 m_number;
    QString m_source;
    QString m_description;
    QByteArray m_what;
};

/// The run-time's own failures with their numbers and words, ready to be thrown.
namespace runtime_errors
{
RuntimeError invalidCall();      ///< 5
RuntimeError overflow();         ///< 6
RuntimeError outOfRange();       ///< 9
RuntimeError divisionByZero();   ///< 11
RuntimeError typeMismatch();     ///< 13
RuntimeError fileNotFound();     ///< 53
RuntimeError fileExists();       ///< 58
RuntimeError permissionDenied(); ///< 70
RuntimeError pathAccess();       ///< 75
RuntimeError pathNotFound();     ///< 76
RuntimeError objectNotSet();     ///< 91
RuntimeError invalidNull();      ///< 94
RuntimeError cancelled();        ///< 32755

/// Whether it was the user who stopped: a failure of the kind of cancelled().
bool isCancelled(const RuntimeError &failure);
} // namespace runtime_errors

/// Runs one statement with errors ignored: a RuntimeError that it throws is dropped and the caller goes on.
template <typename Statement>
void ignoringErrors(Statement &&statement)
{
    try {
        std::forward<Statement>(statement)();
    } catch (const RuntimeError &) {
        // dropped on purpose: that is what the caller asks for
    }
}
