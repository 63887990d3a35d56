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

    QStringList captions(const char *array) const
    {
        QStringList texts;
        for (int i = 0;; ++i) {
            const auto *label = screen.findChild<QLabel *>(QLatin1String(array) + u'_' + QString::number(i));
            if (!label)
                return texts;
            texts << label->text();
        }
    }

    QString ticks() const
    {
        QString marks;
        for (int i = 0;; ++i) {
            const auto *check = screen.findChild<QCheckBox *>(u"Check1_"_s + QString::number(i));
            if (!check)
                return marks;
            marks += check->isChecked() ? u'x' : u'-';
        }
    }

    /// Answers Yes and expects the success.
    void post()
    {
        ScriptedDialogs dialogs;
        dialogs.expectYes(engine.textAreYouSure);
        dialogs.expectMessage(success);
        click(screen, "cmdEntry");
    }

    static QString lastNumber() { return rows(u"select sn from settings"_s).join(u';'); }

    frmRevenue screen;
};
