#include "browser/archiving.h"
#include "entry/posting.h"
#include "journal_fixture.h"

#include <algorithm>
#include <map>
#include <random>

// Random sequences of posting, correcting, cancelling, archiving and merging, beside a model of the rows.

namespace
{

using Row = QStringList; // as stored, in the order of the columns

const QStringList generalColumns =
    u"id transactionid valid creditordebit amount ddate enteredon enteredby transactiondetail paymentdetail "
    "paymentmethod gtype lastupdate"_s.split(u' ');
const QStringList ledgerColumns =
    u"id name transactionid creditordebit amount totalamount valid ddate enteredon enteredby "
    "transactiondetail paymentdetail paymentmethod gtype"_s.split(u' ');

bool isLedger(const QString &table)
{
    return table.startsWith(u"ledger");
}

QString &cell(Row &row, const QString &table, const QString &column)
{
    return row[(isLedger(table) ? ledgerColumns : generalColumns).indexOf(column)];
}

QString storedDate(const QDateTime &date)
{
    return date.toString(date.time() == QTime(0, 0) ? u"yyyy-MM-dd"_s : u"yyyy-MM-dd HH:mm:ss"_s);
}

/// What a date of a label means between `#`: month first where that is possible.
QString readByStore(const QDate &day)
{
    return day.toString(day.day() <= 12 ? u"yyyy-dd-MM"_s : u"yyyy-MM-dd"_s);
}

class History : public JournalFixture
{
protected:
    History()
    {
        setClock([this] { return clock; });
    }

    quint32 pick(quint32 count) { return random() % count; }
    template <typename T>
    T oneOf(const QList<T> &choices)
    {
        return choices[pick(quint32(choices.size()))];
    }
    QDateTime someDay() { return makeDate(2004, 1 + int(pick(3)), 1 + int(pick(28)), pick(2) ? 0 : 14); }
    QString someTransaction() { return oneOf(model[u"general"_s])[1]; }
    /// The row of a transaction in `general`.
    Row &generalRow(const QString &number)
    {
        return *std::ranges::find_if(model[u"general"_s], [&](const Row &row) { return row[1] == number; });
    }
    template <typename Change>
    void changeEverywhere(const QString &number, Change change)
    {
        for (auto &[table, rows] : model) {
            for (Row &row : rows) {
                if ((table == u"general" || isLedger(table)) &&
                    cell(row, table, u"transactionid"_s) == number)
                    change(table, row);
            }
        }
    }
    void expectAudit(const QString &number, const QString &word)
    {
        Row &general = generalRow(number);
        model[u"audit_general"_s] << Row{QString::number(++audits)} + general +
                                         Row{storedDate(clock), u"TEST"_s, word};
        general.last() = storedDate(clock);
    }
    QStringList archivesOf(const QString &stem) const
    {
        QStringList names;
        for (const auto &[table, rows] : model) {
            if (table.startsWith(stem) && table != stem)
                names << table;
        }
        return names;
    }
    QString nextArchiveOf(const QString &stem) const
    {
        int highest = 0;
        for (const QString &name : archivesOf(stem))
            highest = std::max(highest, name.sliced(stem.size()).toInt());
        return stem + QString::number(highest + 1);
    }
    template <typename Condition>
    void moveRows(const QString &from, const QString &to, Condition condition)
    {
        QList<Row> &rows = model[from];
        const auto gone = std::stable_partition(rows.begin(), rows.end(), std::not_fn(condition));
        model[to].append(QList<Row>(gone, rows.end()));
        rows.erase(gone, rows.end());
    }

    void post()
    {
        const bool isRevenue = pick(2) == 0;
        const QStringList members = QStringList{u"son"_s, u"girl"_s, u"ابن"_s}.first(1 + int(pick(3)));
        const auto kind = oneOf<std::pair<QString, QString>>({{u"Salary"_s, u"13"_s}, {u"Phone"_s, u"1"_s}});
        const Entry entry{.isRevenue = isRevenue,
                          .total = {},
                          .date = someDay(),
                          .note = oneOf(goodTexts),
                          .paymentDetail = u"no. 7"_s,
                          .paymentMethod = u"نقداً"_s,
                          .kind = kind.first};
        if (isRevenue)
            postRevenue(entry, u"100"_s, members, [](const QString &) { return Money::fromUnits(7); });
        else
            postExpense(entry, u"100"_s, members);
        const QString equal = members.size() == 3   ? u"333333"_s
                              : members.size() == 2 ? u"500000"_s
                                                    : u"1000000"_s;
        const QString number = QString::number(++numbers);
        const QString sign = isRevenue ? u"-1"_s : u"0"_s;
        const Row head{storedDate(entry.date), storedDate(clock), u"TEST"_s};
        const Row tail{entry.paymentDetail, entry.paymentMethod, kind.second};
        model[u"general"_s] << Row{QString::number(++generals), number, u"-1"_s, sign, u"1000000"_s} + head +
                                   Row{entry.note} + tail + Row{storedDate(clock)};
        for (const QString &member : members)
            model[u"ledger"_s] << Row{QString::number(++ledgers),     member,       number, sign,
                                      isRevenue ? u"70000"_s : equal, u"1000000"_s, u"-1"_s} +
                                      head + Row{entry.note.trimmed()} + tail;
    }

    void correctSome()
    {
        const QString number = someTransaction();
        Row &row = generalRow(number);
        Edits edits;
        std::map<QString, QString> changes; // by column, as stored
        bool refused = false;
        const auto edit = [&](const QString &column, const QString &typed, const QString &value, bool bad) {
            edits.push_back({column, typed});
            if (cell(row, u"general"_s, column) == value)
                return;
            changes[column] = value;
            refused = refused || bad;
        };
        for (const char *column : {"transactiondetail", "paymentdetail"}) {
            if (pick(2) == 0)
                continue;
            const bool bad = pick(8) == 0;
            const QString text = oneOf(bad ? badTexts : goodTexts);
            edit(QString::fromLatin1(column), text, text, bad);
        }
        if (pick(3) == 0) {
            const QDate day = someDay().date();
            edit(u"ddate"_s, day.toString(u"yyyy/MM/dd"_s), day.toString(u"yyyy-MM-dd"_s), false);
        }
        if (pick(3) == 0) {
            const auto kind =
                oneOf<std::pair<QString, QString>>({{u"Pension"_s, u"14"_s}, {u"Fees"_s, u"5"_s}});
            edit(u"gtype"_s, kind.first, kind.second, false);
        }
        const bool saved = correct(number.toInt(), edits);
        EXPECT_EQ(saved, !refused && !changes.empty());
        if (!saved)
            return;
        expectAudit(number, u"Modified"_s);
        changeEverywhere(number, [&](const QString &table, Row &changed) {
            for (const auto &[column, value] : changes)
                cell(changed, table, column) = QString(value).replace(u"general"_s, table);
        });
    }

    void cancelSome()
    {
        const QString number = someTransaction();
        cancelTransaction(u"general"_s, u"general"_s, number.toInt(), auditAction);
        expectAudit(number, u"Deleted"_s);
        changeEverywhere(number,
                         [](const QString &table, Row &row) { cell(row, table, u"valid"_s) = u"0"_s; });
    }

    void archiveSome()
    {
        const QString table =
            oneOf<QString>({u"audit_general"_s, u"audit_general"_s, u"ledger"_s, u"general"_s});
        const QDateTime from = someDay();
        const QDateTime to = someDay();
        const bool archived =
            archiveRange(table, shortDate(from), shortDate(to), [](const QString &, const QString &) {});
        EXPECT_EQ(archived, table == u"audit_general");
        if (!archived)
            return;
        const QString name = nextArchiveOf(table);
        const auto [first, last] = std::minmax({readByStore(from.date()), readByStore(to.date())});
        moveRows(table, name, [first = first, last = last](const Row &row) {
            return first <= row[6] && row[6] <= last; // ddate, behind the key
        });
        model[u"archives"_s] << Row{table, name, shortDate(to) + u" - "_s + shortDate(from)};
    }

    /// As an earlier version of the program archived it.
    void archiveLedger()
    {
        const QString name = nextArchiveOf(u"ledger"_s);
        const QString number = someTransaction();
        move(u"ledger"_s, name, u"transactionid=%1"_s.arg(number));
        moveRows(u"ledger"_s, name, [&](const Row &row) { return row[2] == number; });
    }

    void mergeSome()
    {
        const QStringList archives = archivesOf(u"ledger"_s) + archivesOf(u"audit_general"_s);
        if (archives.isEmpty())
            return;
        const QString archive = oneOf<QString>(archives);
        const QString table = isLedger(archive) ? u"ledger"_s : u"audit_general"_s;
        const RecordsetPtr shown = openRows(getstrsql(table, archive));
        if (pick(4) == 0) {
            EXPECT_FALSE(
                mergeArchive(isLedger(archive) ? u"general"_s : u"ledger"_s, archive, *shown, [] {}));
            return;
        }
        if (model[archive].isEmpty())
            removeEmptyArchive(archive);
        else
            EXPECT_TRUE(mergeArchive(table, archive, *shown, [] {}));
        model[table].append(model[archive]);
        model.erase(archive);
        model[u"archives"_s].removeIf([&](const Row &row) { return row[1] == archive; });
    }

    void step()
    {
        clock = clock.addSecs(61);
        const quint32 kind = model[u"general"_s].isEmpty() ? 0 : pick(11);
        kind < 3   ? post()
        : kind < 6 ? correctSome()
        : kind < 7 ? cancelSome()
        : kind < 8 ? archiveSome()
        : kind < 9 ? archiveLedger()
                   : mergeSome();
    }

    QStringList expected() const
    {
        QStringList lines;
        for (const auto &[table, rows] : model) {
            for (const Row &row : rows)
                lines << table + u'|' + row.join(u'|');
        }
        lines.sort();
        return lines;
    }

    void clear()
    {
        engine.dbConnection->beginTrans();
        for (const auto &[table, rows] : std::exchange(model, emptyModel)) {
            const bool stays = emptyModel.contains(table);
            execute({(stays ? u"delete from [%1]"_s : u"drop table [%1]"_s).arg(table)});
        }
        engine.dbConnection->commitTrans();
    }

    const QStringList goodTexts{u"rent"_s, u" إيجار المحل "_s, u"the general general shop"_s,
                                QString(100, u'ن'), u"😀"_s};
    const QStringList badTexts{{}, QString(101, u'x'), u"the heirs' shop"_s};
    using Tables = std::map<QString, QList<Row>>;
    const Tables emptyModel{
        {u"general"_s, {}}, {u"ledger"_s, {}}, {u"audit_general"_s, {}}, {u"archives"_s, {}}};
    Tables model = emptyModel;
    int numbers = 0, generals = 0, ledgers = 0, audits = 0; // drawn so far
    QDateTime clock = makeDate(2004, 3, 15, 10, 20, 30);
    std::mt19937 random;
};

} // namespace

TEST_F(History, EveryRowIsWhereTheModelHasIt)
{
    for (quint32 seed = 1; seed <= 200 && !HasFailure(); ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        random.seed(seed);
        const quint32 steps = 4 + pick(12);
        for (quint32 i = 0; i < steps && !HasFailure(); ++i)
            step();
        QStringList lines = stored();
        lines.sort();
        EXPECT_EQ(lines.join(u'\n').toStdString(), expected().join(u'\n').toStdString());
        clear();
    }
}
