#include "stress/soak_checks.h"

#include "core/engine.h"
#include "platform/database/engine.h"
#include "stress/plain_text.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtWidgets/QApplication>

#include <malloc.h>
#include <stdexcept>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// What stands in columns of the store: planted texts, a member, words of the lists.
const PlainTexts &plainTexts()
{
    static const PlainTexts texts({u"planted"_s, u"eldest"_s, u"Property Rentals"_s, u"إيجار"_s});
    return texts;
}

void expectNoneIn(const QString &path, const QString &name)
{
    QFile file(path);
    if (file.open(QFile::ReadOnly) && plainTexts().standIn(file.readAll()))
        throw std::runtime_error("readable text of the store in " + name.toStdString());
}

bool isBelow(const QString &path, const QString &folder)
{
    return path == folder || path.startsWith(folder + u'/');
}

} // namespace

SoakStore readSoakStore(const QString &path)
{
    database::Engine file = database::Engine::open(path, engine.storePassword);
    const auto number = [&file](const QByteArray &sql) {
        const sql::Parameter value = file.first(sql);
        return std::holds_alternative<qint64>(value) ? std::get<qint64>(value) : -1;
    };
    if (file.first("pragma integrity_check") != sql::Parameter(QByteArray("ok")))
        throw std::runtime_error("the store is damaged");
    SoakStore found;
    found.lastNumber = number("select sn from settings");
    found.transactions = number("select count(*) from general");
    if (number("select max(transactionid) from general") != found.lastNumber ||
        number("select count(distinct transactionid) from general") != found.transactions)
        throw std::runtime_error("the numbers of the transactions are wrong");
    if (number(
            "select count(*) from general g where amount <> (select sum(amount) from "
            "(select transactionid, amount from ledger union all select transactionid, amount from ledger1) "
            "l where l.transactionid = g.transactionid)") != 0)
        throw std::runtime_error("shares do not make up the amount");
    const qint64 archives =
        number("select count(*) from sqlite_master where type='table' and name glob 'audit_general[0-9]*'");
    found.audits = number("select count(*) from audit_general");
    for (qint64 i = 0; i < archives; ++i) {
        const sql::Parameter name =
            file.first("select name from sqlite_master where type='table' and name glob "
                       "'audit_general[0-9]*' order by name limit 1 offset " +
                       QByteArray::number(i));
        found.audits += number("select count(*) from [" + std::get<QByteArray>(name) + "]");
    }
    return found;
}

QStringList filesIn(const QStringList &folders, const QString &exports)
{
    QStringList files;
    for (const QString &folder : folders) {
        QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            const QString path = entries.next();
            if (!isBelow(path, exports))
                files << path;
        }
    }
    files.sort();
    return files;
}

void expectNoPlainText(const QStringList &folders, const QString &exports)
{
    for (const QString &path : filesIn(folders, exports))
        expectNoneIn(path, path);
    for (const QString &name :
         QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System)) {
        const QString link = u"/proc/self/fd/"_s + name;
        char target[4096] = {};
        if (readlink(QFile::encodeName(link).constData(), target, sizeof target - 1) < 0)
            continue;
        const QString path = QFile::decodeName(target);
        if (path.endsWith(u" (deleted)") && !path.startsWith(u"/memfd:") && !isBelow(path, exports))
            expectNoneIn(link, path);
    }
}

SoakSample sampleProcess(int operation)
{
    malloc_trim(0);
    SoakSample sample;
    sample.operation = operation;
    QFile status(u"/proc/self/status"_s);
    if (status.open(QFile::ReadOnly)) {
        for (const QByteArray &line : status.readAll().split('\n')) {
            const QByteArrayList words = line.simplified().split(' ');
            if (words[0] == "VmRSS:")
                sample.residentKib = words.value(1).toDouble();
            if (words[0] == "RssAnon:")
                sample.anonymousKib = words.value(1).toDouble();
        }
    }
    const struct mallinfo2 heap = mallinfo2();
    sample.heapKib = double(heap.uordblks + heap.hblkhd) / 1024;
    sample.openFiles = int(
        QDir(u"/proc/self/fd"_s).entryList(QDir::NoDotAndDotDot | QDir::AllEntries | QDir::System).size());
    sample.widgets = int(QApplication::allWidgets().size());
    return sample;
}

double growth(const QList<SoakSample> &samples, double SoakSample::*measure)
{
    double meanX = 0;
    double meanY = 0;
    for (const SoakSample &sample : samples) {
        meanX += sample.operation / 1000.0 / double(samples.size());
        meanY += sample.*measure / double(samples.size());
    }
    double along = 0;
    double square = 0;
    for (const SoakSample &sample : samples) {
        const double x = sample.operation / 1000.0 - meanX;
        along += x * (sample.*measure - meanY);
        square += x * x;
    }
    return square > 0 ? along / square : 0;
}
