#include "browser/archiving.h"
#include "browser/audit_rows.h"
#include "journal_fixture.h"
#include "platform/runtime/runtime_error.h"

// The moves of rows to archive tables and back that fail.

namespace
{

/// Six audit rows of January 2004.
class Archives : public JournalFixture
{
protected:
    Archives()
    {
        for (int number = 1; number <= 6; ++number) {
            post(number);
            auditAction = u"update"_s;
            WriteAuditRow(u"general"_s, number, auditAction);
        }
    }

    static bool archive(const QString &table, const QString &from, const QString &to)
    {
        return archiveRange(table, from, to, [](const QString &, const QString &) {
            EXPECT_TRUE(engine.dbConnection->inTransaction());
        });
    }
    static bool merge(const QString &table, const QString &from)
    {
        const RecordsetPtr shown = openRows(getstrsql(table, from));
        return mergeArchive(table, from, *shown, [&] { EXPECT_FALSE(shown->isOpen()); });
    }
};

const auto cancelled = u"Archiving was cancelled..  تم إلغاء الأرشفه"_s;
const auto mergeCancelled = u"DeArchiving was cancelled..  تم إلغاء الدمج"_s;
const auto merged = u"DeArchiving Finished sucessfully..  تمت عملية الدمج بنجاح"_s;

} // namespace

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
