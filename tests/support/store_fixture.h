#pragma once

#include "core/engine.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "support/store_reading.h"

#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>
#include <gtest/gtest.h>

/// A member's row as a test writes it. Codes: relation 1 wife, 2 son, 3 daughter; sex 1 male, 2 female.
struct TestMember {
    QString name;
    int relation = 2;
    int sex = 1;
    int group = 1;
    QString dob = QStringLiteral("01/01/1980"); ///< dd/MM/yyyy
    bool valid = true;
    QString title = {};
};

/// A user's row: password "secret", English, 8-point bold Arial.
struct TestUser {
    QString userid = QStringLiteral("agent");
    int rank = 3;
    QString fontColor = QStringLiteral("0");
    bool valid = true;
};

/// A folder of its own for each test, and a new session that stands in it, without a store yet: English, the
/// user "TEST" of rank 10 with 8-point bold Arial. At the end the session, the clock and the navigation
/// functions are forgotten.
class SessionFixture : public testing::Test
{
protected:
    SessionFixture();
    ~SessionFixture() override;

    QString folder() const { return m_folder.path(); }
    /// What PrepareScreen sets for the language, without a screen.
    static void setLanguage(bool arabic);

    /// Rows of a SELECT in the store's dialect, read by a connection of its own: one text for each row, its
    /// values joined by `|`, Null as `(null)`.
    static QStringList rows(const QString &sql);
    /// The same of plain SQL by the sqlcipher shell: stored values.
    static QStringList shellRows(const QString &sql, const QString &path = engine.storeFilePath);

private:
    QTemporaryDir m_folder;
};

/// The same with a store fresh from CreateStore ("unknown" deceased) at `engine.storeFilePath` and
/// `engine.dbConnection` open on it.
class StoreFixture : public SessionFixture
{
protected:
    StoreFixture();

    static void addMember(const TestMember &member);
    static void addUser(const TestUser &user = {});
    /// Runs statements on `engine.dbConnection`.
    static void execute(const QStringList &statements);
};
