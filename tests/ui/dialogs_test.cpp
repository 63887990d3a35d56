#include "platform/ui/application.h"
#include "platform/ui/dialogs.h"
#include "platform/ui/process.h"
#include "platform/ui/wait.h"
#include "support/failures.h"
#include "support/screens.h"

#include <QtGui/QScreen>
#include <QtGui/QTextLayout>
#include <QtTest/QtTest>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QFontDialog>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QPushButton>

using namespace Qt::Literals::StringLiterals;

// The dialogs as a user sees them.
namespace
{
constexpr auto onBox = onModal<QMessageBox>;

TEST(Dialogs, AnswerByKeys)
{
    for (const auto &[key, yes] :
         {std::pair(Qt::Key_Return, true), {Qt::Key_Escape, false}, {Qt::Key_N, false}, {Qt::Key_Y, true}}) {
        onBox([key = key](QMessageBox &box) {
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            EXPECT_EQ(box.windowTitle(), u"Quvana"_s);
            QTest::keyClick(&box, key);
        });
        EXPECT_EQ(askYesNo(u"Are you sure? "_s), yes) << key;
    }
    onBox([](QMessageBox &box) { box.close(); });
    EXPECT_FALSE(askYesNo(u"?"_s));
    onBox([](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), u"Login"_s);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    showMessage(u"x"_s, MessageIcon::Critical, u"Login"_s);
}

TEST(Dialogs, KeepAnyTextPlainAndOnTheScreen)
{
    const QString texts[] = {QString(10000, u'x'), QString(u"سطر\r\n"_s).repeated(2000),
                             u"<h1>Wait</h1> &amp;"_s, u""_s};
    for (const bool arabic : {false, true}) {
        loadToolkitWords(arabic);
        for (const QString &text : texts) {
            onBox([&](QMessageBox &box) {
                const QSize room = box.screen()->availableGeometry().size();
                EXPECT_TRUE(box.width() <= room.width() && box.height() <= room.height());
                for (const auto *label : box.findChildren<QLabel *>())
                    EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText);
                box.accept();
            });
            showMessage(text, MessageIcon::Information);
        }
        onBox([&](QMessageBox &box) {
            EXPECT_EQ(box.button(QMessageBox::Yes)->text(), arabic ? u"نعم"_s : u"&Yes"_s);
            EXPECT_EQ(box.isRightToLeft(), arabic);
            box.reject();
        });
        EXPECT_FALSE(askYesNo(u"?"_s));
        onModal<QInputDialog>([&](QInputDialog &box) {
            EXPECT_EQ(box.textValue(), u"old"_s);
            auto *prompt = box.findChild<QLabel *>();
            EXPECT_EQ(prompt->alignment() & Qt::AlignRight, arabic ? Qt::AlignRight : Qt::Alignment());
            box.setTextValue(u"بيت ١٢۳"_s);
            QTest::keyClick(box.findChild<QLineEdit *>(), Qt::Key_Return);
        });
        EXPECT_EQ(askText(u"فضلاً أدخل إسم المورٍث"_s, u"title"_s, u"old"_s), u"بيت 123"_s);
    }
    onModal<QInputDialog>([](QInputDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(askText(u"prompt"_s, u"title"_s, u"old"_s), u""_s);
}

TEST(Dialogs, KeepASignOnTheLeftOfItsNumber)
{
    onBox([](QMessageBox &box) {
        QTextLayout shown(box.text(), box.font());
        shown.beginLayout();
        const QTextLine line = shown.createLine();
        shown.endLayout();
        EXPECT_LT(line.cursorToX(int(box.text().indexOf(u'-'))),
                  line.cursorToX(int(box.text().indexOf(u'4'))));
        box.accept();
    });
    showMessage(u"صافي :  * -4.67"_s);
}

TEST(Dialogs, BeginWithTheFontAndTakeAnother)
{
    for (const bool arabic : {false, true}) {
        loadToolkitWords(arabic);
        const FontChoice initial{u"DejaVu Sans"_s, 10, arabic, 0x123456}; // a colour that is not on offer
        for (const int color : {0x123456, 0x0000FF}) {
            onModal<QDialog>([&](QDialog &box) {
                for (const auto *label : box.findChildren<QLabel *>())
                    EXPECT_FALSE(arabic && label->text().contains(u'&')); // would part joined letters
                auto *colors = box.findChild<QComboBox *>(u"color"_s);
                if (color != initial.color)
                    colors->setCurrentIndex(colors->findData(color));
                box.accept();
            });
            const FontChoice chosen = askFont(initial);
            EXPECT_EQ(std::tuple(chosen.name, chosen.size, chosen.bold, int(chosen.color)),
                      std::tuple(initial.name, 10, arabic, color));
        }
    }
}

TEST(Dialogs, TakeAFileAndFailWhenCancelled)
{
    const SaveFileRequest request{u"report"_s, u"Workbooks|*.xls|All|*.*"_s, u".xls"_s};
    onModal<QFileDialog>([](QFileDialog &box) {
        EXPECT_EQ(box.nameFilters().constFirst(), u"Workbooks (*.xls)"_s);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_TRUE(askSaveFile(request).endsWith(u"/report.xls"_s));

    const std::function<void()> cancelled[] = {[] { askFont({}); }, [&] { askSaveFile(request); }};
    for (const auto &ask : cancelled) {
        onModal<QDialog>([](QDialog &box) { box.reject(); });
        EXPECT_EQ(failureOf(ask), 32755);
    }
}

TEST(Dialogs, LetNobodyGoOnWhenTheProcessEnds)
{
    EXPECT_TRUE(processEnded(3, [&] {
        onBox([](QMessageBox &) { endProcess(3); });
        askYesNo(u"?"_s);
        ADD_FAILURE() << "went on behind a box";
    }));
    EXPECT_TRUE(processEnded(4, [&] {
        try {
            endProcess(4);
        } catch (const ProcessEnding &) {
        }
        showMessage(u"not shown any more"_s);
        ADD_FAILURE() << "went on without a box";
    }));
}

TEST(Dialogs, OutliveTheScreenBelow)
{
    auto *screen = new Screen(u"frmBelow"_s);
    screen->showModeless();
    serveEvents();
    onBox([&](QMessageBox &) { delete screen; });
    EXPECT_FALSE(askYesNo(u"?"_s));
}
} // namespace
