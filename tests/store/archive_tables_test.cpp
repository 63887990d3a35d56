#include "store/archive_tables.h"
#include "support/failures.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtWidgets/QComboBox>

namespace
{

class ArchiveTablesTest : public StoreFixture
{
protected:
    static void make(const QStringList &tables)
    {
        for (const QString &table : tables)
            execute({u"select * into ["_s + table + u"] from [ledger]"_s});
    }
};

TEST_F(ArchiveTablesTest, NamesTheNextArchiveBehindTheHighestNumber)
{
    const struct {
        QStringList tables;
        QString base, next; ///< without a next one the number leaves 16 bits
    } cases[] = {
        {{}, u"ledger"_s, u"ledger1"_s},
        {{}, u""_s, u""_s},
        {{u"ledger1"_s, u"ledger10"_s, u"ledger2"_s}, u"ledger"_s, u"ledger11"_s},
        {{u"ledger1"_s, u"ledger5"_s}, u"ledger"_s, u"ledger6"_s}, // gaps stay
        {{u"ledgerbook"_s, u"ledger-7"_s}, u"ledger"_s, u"ledger1"_s},
        {{u"ledger7b"_s}, u"ledger"_s, u"ledger8"_s},
        {{u"LEDGER3"_s}, u"ledger"_s, u"ledger4"_s},
        {{u"audit_general4"_s}, u"general"_s, u"general1"_s},
        {{u"audit_general4"_s}, u"audit_general"_s, u"audit_general5"_s},
        {{u"ledger32766"_s}, u"ledger"_s, u"ledger32767"_s},
        {{u"ledger32767"_s}, u"ledger"_s, {}},
        {{u"ledger40000"_s}, u"ledger"_s, {}},
    };
    for (const auto &c : cases) {
        make(c.tables);
        QString next;
        const int failure = failureOf([&] { next = NextArchiveName(c.base); });
        EXPECT_EQ(failure, c.next.isNull() ? 6 : 0) << c.tables.join(u' ').toStdString();
        EXPECT_EQ(next, c.next);
        for (const QString &table : c.tables)
            execute({u"drop table ["_s + table + u']'});
    }
}

TEST_F(ArchiveTablesTest, ListsATableWithItsArchivesAndTheirIntervals)
{
    const auto listed = [](const QString &table) {
        QComboBox list;
        list.setEditable(true);
        list.addItems({u"old"_s, u"older"_s});
        FillArchivesList(table, &list);
        QStringList entries;
        for (int i = 0; i < list.count(); ++i)
            entries << list.itemText(i);
        EXPECT_EQ(list.currentText(), entries.value(0));
        return entries;
    };
    EXPECT_EQ(listed(u"ledger"_s), QStringList(u"ledger"_s));
    make({u"ledger2"_s, u"ledger10"_s, u"ledger1"_s, u"ledgerbook"_s, u"ledger3x"_s, u"audit_general1"_s});
    const QString row = u"insert into archives ([table],[archive],[interval]) values('%1','%2','%3')"_s;
    const QString year = u"31/12/2004 - 01/01/2004"_s;
    execute({row.arg(u"ledger"_s, u"ledger1"_s, year), row.arg(u"ledger"_s, u"ledger10"_s, u"b - a"_s),
             row.arg(u"ledger"_s, u"ledger7"_s, u"dropped by hand"_s),
             row.arg(u"general"_s, u"ledger2"_s, u"of another table"_s)});
    const QStringList ledgers{u"ledger"_s, u"ledger1 : "_s + year, u"ledger10 : b - a"_s, u"ledger2"_s};
    EXPECT_EQ(listed(u"ledger"_s), ledgers);
    EXPECT_EQ(listed(u"LEDGER"_s), ledgers);
    EXPECT_EQ(listed(u"general"_s), QStringList(u"general"_s));
    EXPECT_EQ(listed(u"audit_general"_s), QStringList({u"audit_general"_s, u"audit_general1"_s}));
    EXPECT_EQ(listed(u"none"_s), QStringList());
    EXPECT_EQ(failureOf([&] { listed(u"o'hara"_s); }), -2147217900);
}

} // namespace
