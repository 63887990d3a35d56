#pragma once

#include "entry/frmRevenue.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "support/hostile.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtGui/QAction>
#include <QtGui/QScreen>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>

using namespace Qt::Literals::StringLiterals;

inline const auto success = u"Successful Entry تم إدخال المبلغ بنجاح"_s;
inline const auto badRelation = u"Error!!  relation in database is invalid خطأ فادح في القرابه"_s;

using Family = std::vector<TestMember>;

inline const Family oneWife{
    {u"A wife"_s, 1, 2}, {u"B son"_s, 2, 1, 2}, {u"C son"_s, 2, 1, 2}, {u"D girl"_s, 3, 2}};
inline const Family twoWives{{u"A wife"_s, 1, 2}, {u"B wife"_s, 1, 2}, {u"C son"_s}, {u"D girl"_s, 3, 2}};
inline const Family noWife{{u"A son"_s}, {u"B girl"_s, 3, 2}};

/// The revenue screen over a store with a family, at 10:20:30 on 15 March 2004.
class RevenueTest : public StoreFixture
{
protected:
    RevenueTest()
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
        fill(screen, "txtAmount", u"1000"_s);
    }

    /// The captions of an array's elements in their order.
    QStringList captions(const QString &array = u"LBLShare"_s) const
    {
        QStringList texts;
        while (const auto *label = screen.findChild<QLabel *>(array + u'_' + QString::number(texts.size())))
            texts << label->text();
        return texts;
    }

    QString ticks() const
    {
        QString marks;
        while (const auto *box = screen.findChild<QCheckBox *>(u"Check1_"_s + QString::number(marks.size())))
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

    /// A posting that ends in the failure path.
    void fail(const QString &failure)
    {
        click(screen, "cmdEntry");
        const QStringList boxes = told();
        EXPECT_EQ(boxes.mid(0, 2),
                  QStringList({engine.textAreYouSure, u"transaction aborted..  حصل خطأ وألغيت العمليه"_s}));
        EXPECT_TRUE(boxes.last().startsWith(failure)) << boxes.last().toStdString();
    }

    /// The last number, the rows of general and the rows of ledger.
    static QString state()
    {
        return rows(u"select sn,(select count(*) from general) as g,"
                    "(select count(*) from ledger) as l from settings"_s)
            .value(0);
    }

    Agreeing dialogs;
    frmRevenue screen;
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
