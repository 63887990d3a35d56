#pragma once

#include "entry/frmExpense.h"
#include "entry/frmRevenue.h"
#include "support/hostile.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtGui/QAction>
#include <QtGui/QScreen>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>

#include <array>

inline const auto success = u"Successful Entry تم إدخال المبلغ بنجاح"_s;
inline const auto badRelation = u"Error!!  relation in database is invalid خطأ فادح في القرابه"_s;

using Family = std::vector<TestMember>;

inline const Family oneWife{
    {u"A wife"_s, 1, 2}, {u"B son"_s, 2, 1, 2}, {u"C son"_s, 2, 1, 2}, {u"D girl"_s, 3, 2}};
inline const Family twoWives{{u"A wife"_s, 1, 2}, {u"B wife"_s, 1, 2}, {u"C son"_s}, {u"D girl"_s, 3, 2}};
inline const Family noWife{{u"A son"_s}, {u"B girl"_s, 3, 2}};

/// An entry screen over a store with a family, at 10:20:30 on 15 March 2004.
template <typename EntryClass>
class EntryTest : public StoreFixture
{
protected:
    /// The boxes by their names on the screen: amount, note, payment detail.
    using Boxes = std::array<const char *, 3>;
    explicit EntryTest(const Boxes &names) : boxes(names)
    {
        setClock([] { return makeDate(2004, 3, 15, 10, 20, 30); });
    }

    void open(const Family &family)
    {
        for (const TestMember &member : family)
            addMember(member);
        screen.load();
    }

    /// The same with everybody ticked and an amount of 1000.
    void prepare(const Family &family = oneWife)
    {
        open(family);
        click(screen, "cmdAll");
        fill(screen, boxes[0], u"1000"_s);
    }

    /// The captions of an array's elements in their order.
    QStringList captions(const QString &array = u"LBLShare"_s) const
    {
        QStringList texts;
        while (const auto *label =
                   screen.template findChild<QLabel *>(array + u'_' + QString::number(texts.size())))
            texts << label->text();
        return texts;
    }

    QString ticks() const
    {
        QString marks;
        while (const auto *box =
                   screen.template findChild<QCheckBox *>(u"Check1_"_s + QString::number(marks.size())))
            marks += box->isChecked() ? u'x' : u'-';
        return marks;
    }

    /// What was told since the last look; questions are answered with Yes.
    QStringList told() { return std::exchange(dialogs.told, {}); }

    void post()
    {
        told();
        click(screen, "cmdEntry");
        EXPECT_EQ(told(), QStringList({engine.textAreYouSure, success}));
    }

    /// Posts an amount of a family's only entry, with everybody ticked but the first `unticked`; `shown` are
    /// the captions of LBLShare.
    void postAlone(const Family &family, const QString &amount, const QStringList &shown, int unticked = 0)
    {
        execute({u"delete from members"_s, u"delete from general"_s, u"delete from ledger"_s});
        open(family);
        EXPECT_EQ(captions(), QStringList(qsizetype(family.size()), u"0.00"_s));
        click(screen, "cmdAll");
        for (int i = 0; i < unticked; ++i)
            click(screen, ("Check1_" + std::to_string(i)).c_str());
        fill(screen, boxes[0], amount + u'\n');
        EXPECT_EQ(captions(), shown);
        post();
        fill(screen, boxes[0], {});
        screen.unload();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    /// Empty boxes of a payment by check, filled one by one as each is asked for; nobody is ticked.
    void fillBoxesAsTold(const QString &badAmount)
    {
        open(oneWife);
        click(screen, "Option1_1");
        for (const char *box : boxes)
            fill(screen, box, {});
        const QString faults[] = {badAmount, u"يجب صياغة شرح لهذا الإدخال "_s, u"يجب إدخال معلومات الشيك"_s};
        const QString texts[] = {u"1000"_s, u"rent"_s, u"no. 7"_s};
        for (std::size_t i = 0; i < boxes.size(); ++i) {
            click(screen, "cmdEntry");
            EXPECT_EQ(told(), QStringList{faults[i]});
            EXPECT_EQ(screen.focusWidget(), &control(screen, boxes[i]));
            fill(screen, boxes[i], texts[i]);
        }
    }

    /// Answers the question of an entry with No.
    void refuse()
    {
        ScriptedDialogs no;
        no.expectNo(engine.textAreYouSure);
        click(screen, "cmdEntry");
        EXPECT_EQ(state(), u"0|0|0");
    }

    /// A posting that ends in the failure path.
    void fail(const QString &failure)
    {
        click(screen, "cmdEntry");
        const QStringList messages = told();
        EXPECT_EQ(messages.mid(0, 2),
                  QStringList({engine.textAreYouSure, u"transaction aborted..  حصل خطأ وألغيت العمليه"_s}));
        EXPECT_TRUE(messages.last().startsWith(failure)) << messages.last().toStdString();
    }

    /// The last number, the rows of general and the rows of ledger.
    static QString state()
    {
        return rows(u"select sn,(select count(*) from general) as g,"
                    "(select count(*) from ledger) as l from settings"_s)
            .value(0);
    }

    /// Each box with each hostile text in it, paid by check: all commands post what the boxes show or leave
    /// nothing.
    void postHostileTexts()
    {
        click(screen, "Option1_1");
        const auto dump = [] {
            return dumpOf(engine.dbConnection, {u"settings"_s, u"general"_s, u"ledger"_s});
        };
        for (const char *box : boxes) {
            const bool isAmount = box == boxes[0];
            for (const QString &text : hostileTexts() + (isAmount ? hostileAmounts() : QStringList())) {
                SCOPED_TRACE(std::string(box) + ' ' + text.left(20).toStdString());
                fill(screen, boxes[0], u"8"_s);
                fill(screen, boxes[1], u"rent"_s);
                fill(screen, boxes[2], u"no. 7"_s);
                paste(screen, box, text);
                const QString typed =
                    QString::fromUtf8(textOf(screen, box).replace(u'\n', u"\r\n"_s).toUtf8());
                const QStringList before = dump();
                told();
                for (const char *command : {"cmdDivide", "cmdReDivide", "cmdEntry"})
                    std::ignore = processEnded(1, [&] { click(screen, command); });
                if (isAmount)
                    std::ignore = processEnded(1, [&] { typeText(screen, box, u"\n"_s); });
                EXPECT_FALSE(engine.dbConnection->inTransaction() || dialogs.told.isEmpty());
                const bool posted = told().contains(success);
                EXPECT_EQ(dump().size(), before.size() + (posted ? 1 + ticks().count(u'x') : 0));
                EXPECT_EQ(dump() == before, !posted);
                EXPECT_TRUE(!posted || isAmount || dump().join(u' ').contains(typed));
            }
        }
    }

    const Boxes boxes;
    Agreeing dialogs;
    EntryClass screen;
};

class RevenueTest : public EntryTest<frmRevenue>
{
protected:
    RevenueTest() : EntryTest({"txtAmount", "txtNote", "txtRevenueDetail"}) {}
};

class Languages : public RevenueTest, public testing::WithParamInterface<bool>
{
protected:
    Languages() { setLanguage(GetParam()); }
    static QString either(const QString &ar, const QString &en) { return GetParam() ? ar : en; }
    const QString selectOne =
        either(u"يجب عليك إختيار شخص واحد على الأقل للقسمه"_s, u"You have to select some members.."_s);
    const QString selectAll = either(u"لا بد من إختيار جميع الورثه عند إدخال عوائد!"_s,
                                     u"You have to select all when entering Inheritance!"_s);
};
inline const auto languageName = [](const auto &test) { return test.param ? "ar" : "en"; };
