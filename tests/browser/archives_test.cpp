#include "browser/archiving.h"
#include "browser/audit_rows.h"
#include "journal_fixture.h"
#include "platform/runtime/runtime_error.h"
#include "store/archive_tables.h"

// Rows of a period move to archive tables and back.

namespace
{

class Archives : public JournalFixture
{
protected:
    Archives()
    {
        int number = 0;
        for (const char *day :
             {"01/01/2004", "02/01/2004", "01/02/2004", "13/02/2004", "13/02/2004 10:00:00", "14/02/2004"}) {
            post(++number, QString::fromLatin1(day));
            auditAction = u"update"_s;
            WriteAuditRow(u"general"_s, number, auditAction);
        }
    }

    bool archive(const QString &table, const QString &from, const QString &to)
    {
        return archiveRange(table, from, to, [this](const QString &name, const QString &interval) {
            EXPECT_TRUE(engine.dbConnection->inTransaction());
            entries << name + u" : "_s + interval;
        });
    }
    static bool merge(const QString &table, const QString &from)
    {
        const RecordsetPtr shown = openRows(getstrsql(table, from));
        return mergeArchive(table, from, *shown, [&] { EXPECT_FALSE(shown->isOpen()); });
    }
    /// The audit rows of all tables together, and the number of rows in each.
    static QStringList unionOfAudits()
    {
        QStringList lines;
        for (const QString &line : stored(journalTables().filter(u"audit_general"_s)))
            lines << line.section(u'|', 1);
        lines.sort();
        return lines;
    }
    static QString transactionsIn(const QString &table)
    {
        return shellRows(u"select transactionid from %1 order by idkey"_s.arg(table)).join(u' ');
    }

    QStringList entries;
};

const auto cancelled = u"Archiving was cancelled..  تم إلغاء الأرشفه"_s;
const auto mergeCancelled = u"DeArchiving was cancelled..  تم إلغاء الدمج"_s;
const auto merged = u"DeArchiving Finished sucessfully..  تمت عملية الدمج بنجاح"_s;

} // namespace

TEST_F(Archives, AuditRowsOfAPeriodMoveAndComeBackToTheLastColumn)
{
    const QStringList all = unionOfAudits();
    ASSERT_EQ(all.size(), 6);
    // Month first, else day first: from 2 January to 13 February.
    EXPECT_TRUE(archive(u"audit_general"_s, u"01/02/2004"_s, u"13/02/2004"_s));
    EXPECT_EQ(entries, QStringList{u"audit_general1 : 13/02/2004 - 01/02/2004"_s});
    EXPECT_EQ(transactionsIn(u"audit_general1"_s), u"2 3 4"_s);
    EXPECT_EQ(transactionsIn(u"audit_general"_s), u"1 5 6"_s); // a time on the last day lies behind it
    EXPECT_EQ(unionOfAudits(), all);
    EXPECT_EQ(shellRows(u"select * from archives"_s),
              QStringList{u"audit_general|audit_general1|13/02/2004 - 01/02/2004"_s});

    // Ends the other way round; nothing there; a second archive.
    EXPECT_TRUE(archive(u"audit_general"_s, u"14/02/2004"_s, u"13/02/2004"_s));
    EXPECT_TRUE(archive(u"audit_general"_s, u"14/02/2014"_s, u"14/02/2014"_s));
    EXPECT_EQ(transactionsIn(u"audit_general2"_s) + u'/' + transactionsIn(u"audit_general3"_s), u"5 6/"_s);
    EXPECT_EQ(unionOfAudits(), all);

    EXPECT_TRUE(merge(u"audit_general"_s, u"audit_general1"_s));
    EXPECT_EQ(transactionsIn(u"audit_general"_s), u"1 2 3 4"_s);
    EXPECT_EQ(unionOfAudits(), all);
    EXPECT_EQ(NextArchiveName(u"audit_general"_s), u"audit_general4"_s); // while a higher one stands
    removeEmptyArchive(u"audit_general3"_s);
    EXPECT_EQ(NextArchiveName(u"audit_general"_s), u"audit_general3"_s);
    EXPECT_TRUE(merge(u"audit_general"_s, u"audit_general2"_s));
    EXPECT_EQ(NextArchiveName(u"audit_general"_s), u"audit_general1"_s);
    EXPECT_EQ(unionOfAudits(), all);
    EXPECT_EQ(journalTables().filter(QRegularExpression(u"[0-9]"_s)) + shellRows(u"select * from archives"_s),
              QStringList());
    EXPECT_EQ(told(), QStringList({merged, merged}));

    WriteAuditRow(u"general"_s, 1, auditAction); // numbers go on behind those that came back
    EXPECT_EQ(shellRows(u"select max(idkey), count(*) from audit_general"_s), QStringList{u"7|7"_s});
}

TEST_F(Archives, AFailureAtAnyStepMovesNothing)
{
    const auto fail = [](auto &&...) { throw runtime_errors::overflow(); };
    const QString from = u"01/01/2000"_s;
    const QString to = u"01/01/2010"_s;
    const QStringList before = stored();
    EXPECT_FALSE(archiveRange(u"audit_general"_s, from, to, fail));
    EXPECT_FALSE(archive(u"audit_general"_s, u"soon"_s, to));
    EXPECT_EQ(told(), QStringList({cancelled, cancelled}));
    EXPECT_EQ(stored(), before);
    // An entry whose table was dropped by hand holds the name: the next archive can't be entered.
    execute(
        {u"insert into archives ([table],[archive],[interval]) values('audit_general','AUDIT_GENERAL1','x')"_s});
    EXPECT_FALSE(archive(u"audit_general"_s, from, to));
    execute({u"delete from archives"_s});
    EXPECT_EQ(stored(), before);
    EXPECT_TRUE(archive(u"audit_general"_s, from, to));
    EXPECT_EQ(told(), QStringList{cancelled});

    const QStringList archived = stored();
    const RecordsetPtr shown = openRows(u"select * from audit_general1"_s);
    EXPECT_FALSE(mergeArchive(u"audit_general"_s, u"audit_general1"_s, *shown, fail));
    EXPECT_FALSE(mergeArchive(u"audit_general"_s, u"audit_general1"_s, *shown, [] {})); // it is closed by now
    EXPECT_FALSE(merge(u"general"_s, u"audit_general1"_s));                             // no such columns
    EXPECT_EQ(stored(), archived);
    // The next audit row takes a number that the archive holds, if somebody has turned the counter back.
    execute({u"insert into audit_general (idkey,updatedby) values(3,'x')"_s});
    const QStringList doubled = stored();
    EXPECT_FALSE(merge(u"audit_general"_s, u"audit_general1"_s));
    EXPECT_EQ(stored(), doubled);
    execute({u"delete from audit_general"_s});
    EXPECT_TRUE(merge(u"audit_general"_s, u"audit_general1"_s));
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(told(), QStringList({mergeCancelled, mergeCancelled, mergeCancelled, mergeCancelled, merged}));

    // The schema list is read again after each roll-back: an archive that was taken back is no table.
    EXPECT_THROW(openRows(u"select * from audit_general1"_s), RuntimeError);
    EXPECT_THROW(removeEmptyArchive(u"audit_general1"_s), RuntimeError);
    EXPECT_EQ(stored(), before);
}
