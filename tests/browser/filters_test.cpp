#include "browser/filters.h"
#include "browser_fixture.h"

#include <QtCore/QHash>

#include <random>

namespace
{

/// The filters once more, as conditions of plain SQL: what a sequence of presses is to show.
class Presses
{
public:
    /// The condition that the rows fulfil after a press.
    const QString &press(const QString &item)
    {
        static const QHash<QString, QString> pieces{{u"mnuValid"_s, u"valid=-1"_s},
                                                    {u"mnuInValid"_s, u"valid=0"_s},
                                                    {u"mnuBothValid"_s, u""_s},
                                                    {u"mnuRevenues"_s, u"creditordebit=-1"_s},
                                                    {u"mnuExpenses"_s, u"creditordebit=0"_s},
                                                    {u"mnuBothCreditOrDebit"_s, u""_s}};
        if (item == u"mnuSelect") {
            m_names = u"name collate binary in ('Ali','Sara')"_s;
            return m_shown = m_names; // alone, until the next press
        }
        const bool side = item == u"mnuRevenues" || item == u"mnuExpenses" || item == u"mnuBothCreditOrDebit";
        QString &checked = side ? m_sideItem : m_validItem;
        if (item == checked)
            return m_shown;
        checked = item;
        (side ? m_side : m_valid) = pieces[item];
        QStringList all{m_valid, m_side, m_names};
        all.removeAll(QString());
        m_shown = all.isEmpty() ? u"1"_s : all.join(u" and "_s);
        return m_shown;
    }

private:
    QString m_validItem = u"mnuValid"_s;
    QString m_sideItem = u"mnuBothCreditOrDebit"_s;
    QString m_valid = u"valid=-1"_s; // in force from the first press on
    QString m_side;
    QString m_names;
    QString m_shown = u"1"_s;
};

class FiltersTest : public BrowserFixture
{
protected:
    FiltersTest()
    {
        execute({u"delete from ledger"_s});
        for (int i = 0; i < 12; ++i) // for each name each side, invalid and valid: the numbers 11 to 22
            post(11 + i, i & 1, i & 2, u"1"_s, u"01/01/2004"_s, {u"'%1',1"_s.arg(names[i / 4])});
    }
    /// The transactions of a condition as the sqlcipher shell finds them.
    QString stored(const QString &condition)
    {
        if (!m_stored.contains(condition))
            m_stored[condition] =
                shellRows(u"select transactionid from ledger where "_s + condition + u" order by rowid"_s)
                    .join(u' ');
        return m_stored[condition];
    }

    const QStringList names{u"Ali"_s, u"Omar"_s, u"Sara"_s};
    const QStringList items{u"mnuValid"_s,    u"mnuInValid"_s,           u"mnuBothValid"_s, u"mnuExpenses"_s,
                            u"mnuRevenues"_s, u"mnuBothCreditOrDebit"_s, u"mnuSelect"_s};

private:
    QHash<QString, QString> m_stored;
};

TEST_F(FiltersTest, EveryOrderOfChoicesSelectsTheRowsOfTheStore)
{
    const auto rows = Recordset::create();
    rows->open(u"select * from ledger"_s, engine.dbConnection, CursorType::Static);
    const auto shown = [&] {
        QStringList numbers;
        for (int row = 0; row < rows->rowCount(); ++row)
            numbers << rows->valueAt(row, 2).toText();
        return numbers.join(u' ');
    };
    const std::function<void(const Filters &, const Presses &, QStringList)> chooseEach =
        [&](const Filters &before, const Presses &toldBefore, const QStringList &order) {
            for (int item = 0; item < items.size() && order.size() < 4; ++item) {
                Filters filters = before;
                Presses told = toldBefore;
                const bool changes = item < 3   ? filters.choose(Filters::Valid(item))
                                     : item < 6 ? filters.choose(Filters::Credit(item == 5 ? 2 : 4 - item))
                                                : filters.choose(QStringList{u"Ali"_s, u"Sara"_s});
                const QString expected = stored(told.press(items[item]));
                if (changes) {
                    rows->setFilter(item == 6 ? filters.namesFilter : filters.combinedFilter);
                    ASSERT_EQ(shown(), expected) << order.join(u' ').toStdString() << ' ' << item;
                }
                chooseEach(filters, told, order + QStringList(items[item]));
            }
        };
    chooseEach({}, {}, {});
}

TEST_F(FiltersTest, PressesShowTheRowsThatTheyChoose)
{
    std::mt19937 random; // the same presses each time
    for (const QString &first : items) {
        const auto screen = browse(u"ledger"_s);
        screen->hide();                   // many presses, nothing to see
        chooseMenu(*screen, "mnuName_1"); // Omar, of Ali, Omar and Sara
        QStringList presses{first};
        while (presses.size() < 100)
            presses << items[qsizetype(random() % std::uint32_t(items.size()))];
        Presses told;
        for (const QString &item : std::as_const(presses)) {
            chooseMenu(*screen, item.toLatin1().constData());
            const QString rows = stored(told.press(item));
            ASSERT_EQ(column(*screen, u"transactionid"_s), rows)
                << first.toStdString() << ".." << item.toStdString();
            const qsizetype count = rows.isEmpty() ? 0 : rows.count(u' ') + 1;
            ASSERT_EQ(textOf(*screen, "Label1"), u"Totals : %1"_s.arg(count));
        }
        screen->unload();
    }
}

} // namespace
