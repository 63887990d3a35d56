#pragma once

#include "platform/database/recordset.h"

#include <QtCore/QFile>
#include <QtCore/QProcess>
#include <QtCore/QStringList>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

// What a store holds, by its own record sets and by readers that know nothing of this program.

/// All rows of a record set: one text for each, its values joined.
inline QStringList linesOf(const Recordset &set, const QString &separator = u"|"_s,
                           const QString &null = u"(null)"_s)
{
    QStringList lines;
    for (int row = 0; row < set.rowCount(); ++row) {
        QStringList values;
        for (int field = 0; field < set.fieldCount(); ++field) {
            const Value value = set.valueAt(row, field);
            values += value.isNull() ? null : value.toText();
        }
        lines += values.join(separator);
    }
    return lines;
}

/// Rows of plain SQL by the sqlcipher shell: stored values joined by `|`, Null as `(null)`. What it complains
/// of comes behind them.
inline QStringList shellLines(const QString &path, const QString &sql)
{
    QProcess shell;
    shell.setProcessChannelMode(QProcess::MergedChannels);
    shell.start(u"sqlcipher"_s,
                {u"-batch"_s, u"-init"_s, u"/dev/null"_s, u"-nullvalue"_s, u"(null)"_s, path});
    shell.write(
        "PRAGMA key = 'romanqvlt';\nPRAGMA cipher_page_size = 4096;\nPRAGMA kdf_iter = 64000;\n"
        "PRAGMA cipher_hmac_algorithm = HMAC_SHA1;\nPRAGMA cipher_kdf_algorithm = PBKDF2_HMAC_SHA1;\n" +
        sql.toUtf8() + ";\n");
    shell.closeWriteChannel();
    EXPECT_TRUE(shell.waitForFinished()) << shell.errorString().toStdString();
    QStringList lines = QString::fromUtf8(shell.readAll()).split(u'\n', Qt::SkipEmptyParts);
    lines.removeAll(u"ok"_s); // what a newer shell answers to the key
    return lines;
}

/// What a program prints; what it complains of comes with it.
inline QString outputOf(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(300'000)) << process.errorString().toStdString();
    return QString::fromUtf8(process.readAll());
}

/// What a file holds.
inline QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

/// Makes or overwrites a file.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(content) == content.size()) << path.toStdString();
}
