#include "core/engine.h"
#include "platform/database/store_file.h"
#include "platform/runtime/runtime_error.h"
#include "store/connection_strings.h"
#include "store/schema.h"
#include "stress/child.h"
#include "stress/operations.h"
#include "stress/states.h"
#include "stress/trials.h"

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int pageSize = 4096;

constexpr std::size_t tablesInIt = 4;
constexpr int rowsInIt = 300;

enum Outcome { Unchanged, Refused, Wrong };

void put(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly) || file.write(content) != content.size())
        qFatal("no place to write to");
}

/// What a damaged store answers.
Outcome answerOf(const QString &path, const QByteArray &content, const QByteArray &digest)
{
    put(path, content);
    try {
        return answersDigest(path) == digest ? Unchanged : Wrong;
    } catch (const RuntimeError &error) {
        return error.description().isEmpty() ? Wrong : Refused;
    }
}

/// A store with the first of the program's tables and a few rows.
QByteArray smallStore(const QString &path)
{
    StoreFile file = StoreFile::create(path, engine.storePassword);
    for (std::size_t table = 0; table < tablesInIt; ++table)
        file.appendTable(storeTables().at(table));
    file.close();
    const ConnectionPtr store = Connection::create();
    store->open(connectionStringOf(path, engine.storePassword));
    for (int row = 1; row <= rowsInIt; ++row)
        store->execute(u"insert into ledger (name,transactionid,amount,transactiondetail) values "
                       "('heir %1',%1,%1,'note %1')"_s.arg(row));
    store->close();
    QFile made(path);
    return made.open(QFile::ReadOnly) ? made.readAll() : QByteArray();
}

} // namespace

Findings damageBytes(int stride)
{
    const QTemporaryDir place;
    attachSession(place.path()); // for the password
    const QString path = place.filePath(u"damaged.mdb"_s);
    const QByteArray store = smallStore(path);
    const QByteArray digest = answersDigest(path);
    Findings findings;
    const auto tryOut = [&](const QString &what, const QByteArray &content) {
        // A child, so that a crash is one finding and not the end.
        const int outcome = inChild([&] { return int(answerOf(path, content, digest)); });
        ++findings.replays;
        if (outcome == Wrong || outcome < 0 || outcome > Wrong)
            findings.finding(what + u": outcome %1"_s.arg(outcome));
        else
            findings.note(outcome == Unchanged ? u"unchanged"_s : u"refused"_s);
        QFile file(path);
        if (outcome == Refused && file.open(QFile::ReadOnly) && file.readAll() != content)
            findings.finding(what + u": the refused file was changed"_s);
        file.close();
        QFile::remove(path);
        QFile::remove(path + u"-journal"_s);
    };
    for (qsizetype at = 0; at < store.size(); at += stride) {
        QByteArray damaged = store;
        damaged[at] = char(damaged[at] ^ (1 << (at % 8)));
        tryOut(u"byte %1"_s.arg(at), damaged);
    }
    for (qsizetype length = 0; length < store.size(); length += stride)
        tryOut(u"length %1"_s.arg(length), store.first(length));
    std::printf("a store of %lld pages\n", static_cast<long long>(store.size() / pageSize));
    findings.print("bytes");
    return findings;
}
