#pragma once

#include "entry/frmRevenue.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/dates.h"
#include "support/screens.h"
#include "support/store_fixture.h"

#include <QtGui/QAction>
#include <QtGui/QScreen>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>

using namespace Qt::Literals::StringLiterals;

inline const auto selectOneAr = u"يجب عليك إختيار شخص واحد على الأقل للقسمه"_s;
inline const auto selectOneEn = u"You have to select some members.."_s;
inline const auto allHeirsAr = u"لا بد من إختيار جميع الورثه عند إدخال عوائد!"_s;
inline const auto allHeirsEn = u"You have to select all when entering Inheritance!"_s;
inline const auto success = u"Successful Entry تم إدخال المبلغ بنجاح"_s;
inline const auto aborted = u"transaction aborted..  حصل خطأ وألغيت العمليه"_s;
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

    /// The captions of an array's elements in their order.
    QStringList captions(const QString &array) const
    {
        QStringList texts;
        while (const auto *label = element<QLabel>(array, texts.size()))
            texts << label->text();
        return texts;
    }

    QString ticks() const
    {
        QString marks;
        while (const auto *check = element<QCheckBox>(u"Check1"_s, marks.size()))
            marks += check->isChecked() ? u'x' : u'-';
        return marks;
    }

    template <typename Control>
    Control *element(const QString &array, qsizetype index) const
    {
        return screen.findChild<Control *>(array + u'_' + QString::number(index));
    }

    /// Answers Yes and expects the success.
    void post()
    {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure);
        dialogs.expectMessage(success);
        click(screen, "cmdEntry");
    }

    /// The last number, the rows of general and the rows of ledger.
    static QString state()
    {
        return rows(u"select sn from settings"_s).join(u';') + u'/' +
               rows(u"select count(*) from general"_s).at(0) + u'/' +
               rows(u"select count(*) from ledger"_s).at(0);
    }

    frmRevenue screen;
};

class Languages : public RevenueTest, public testing::WithParamInterface<bool>
{
protected:
    Languages() { setLanguage(GetParam()); }
    static QString told(const QString &ar, const QString &en) { return GetParam() ? ar : en; }
};
inline const auto languageName = [](const auto &test) { return test.param ? "ar" : "en"; };
