#include "platform/runtime/runtime_error.h"
#include "platform/ui/application.h"
#include "platform/ui/dialogs.h"
#include "support/screens.h"

#include <QtGui/QScreen>
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
void onBox(const std::function<void(QMessageBox &)> &action)
{
    onModal<QMessageBox>(action);
}

TEST(Dialogs, AnswerByKeys)
{
    const struct {
        Qt::Key key;
        bool yes;
    } cases[] = {{Qt::Key_Return, true}, {Qt::Key_Escape, false}, {Qt::Key_N, false}, {Qt::Key_Y, true}};
    for (const auto &each : cases) {
        onBox([&](QMessageBox &box) {
            EXPECT_EQ(box.icon(), QMessageBox::Question);
            EXPECT_EQ(box.windowTitle(), u"Quvana"_s);
            QTest::keyClick(&box, each.key);
        });
        EXPECT_EQ(askYesNo(u"Are you sure? "_s), each.yes) << each.key;
    }
    onBox([](QMessageBox &box) { box.close(); });
    EXPECT_FALSE(askYesNo(u"?"_s));
    onBox([](QMessageBox &box) {
        EXPECT_EQ(box.windowTitle(), u"Login"_s);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    showMessage(u"<b>\nx"_s, MessageIcon::Critical, u"Login"_s);
}

TEST(Dialogs, KeepAnyTextPlainAndOnTheScreen)
{
    const QString longWord(10000, u'x');
    QString manyLines;
    for (int i = 0; i < 2000; ++i)
        manyLines += u"سطر\r\n"_s;
    const std::pair<const char *, QString> texts[] = {
        {"word", longWord},
        {"lines", manyLines},
        {"plain", u"<h1>Wait</h1> &amp;"_s},
        {"both", u"Invalid login خطأ في عملية الدخول  "_s},
        {"empty", u""_s},
        {"Arabic",
         u"لكي تقوم بالإضافه أو التعديل يجب أن تقوم بضغط الخيار في أسفل الصفحه قبل البدأ في الطباعه"_s}};
    for (const bool arabic : {false, true}) {
        loadToolkitWords(arabic);
        for (const auto &[name, text] : texts) {
            onBox([&](QMessageBox &box) {
                const QSize room = box.screen()->availableGeometry().size();
                EXPECT_LE(box.width(), room.width()) << name;
                EXPECT_LE(box.height(), room.height()) << name;
                for (const auto *label : box.findChildren<QLabel *>())
                    EXPECT_TRUE(label->text().isEmpty() || label->textFormat() == Qt::PlainText) << name;
                savePicture(box, u"box-"_s + QLatin1String(name) + (arabic ? u"-ar.png"_s : u"-en.png"_s));
                box.accept();
            });
            showMessage(text, MessageIcon::Exclamation);
        }
        onBox([&](QMessageBox &box) {
            EXPECT_EQ(box.button(QMessageBox::Yes)->text() == u"&Yes"_s, !arabic);
            EXPECT_EQ(box.isRightToLeft(), arabic);
            box.reject();
        });
        EXPECT_FALSE(askYesNo(u"?"_s));
    }
}

TEST(Dialogs, TakeTextsFontsAndFiles)
{
    onModal<QInputDialog>([](QInputDialog &box) {
        EXPECT_EQ(box.textValue(), u"old"_s);
        box.setTextValue(u"بيت ١٢۳"_s);
        savePicture(box, u"input.png"_s);
        QTest::keyClick(box.findChild<QLineEdit *>(), Qt::Key_Return);
    });
    EXPECT_EQ(askText(u"فضلاً أدخل إسم المورٍث"_s, u"title"_s, u"old"_s), u"بيت 123"_s);
    onModal<QInputDialog>([](QInputDialog &box) { QTest::keyClick(&box, Qt::Key_Escape); });
    EXPECT_EQ(askText(u"prompt"_s, u"title"_s, u"old"_s), u""_s);

    const FontChoice initial{u"DejaVu Sans"_s, 10, true, 0x123456};
    onModal<QDialog>([](QDialog &box) {
        auto *colors = box.findChild<QComboBox *>(u"color"_s);
        EXPECT_EQ(colors->currentData().toInt(), 0x123456); // also one that is not on offer
        colors->setCurrentIndex(colors->findData(0x0000FF));
        savePicture(box, u"font.png"_s);
        box.accept();
    });
    const FontChoice chosen = askFont(initial);
    EXPECT_EQ(chosen.name, u"DejaVu Sans"_s);
    EXPECT_EQ(chosen.size, 10);
    EXPECT_TRUE(chosen.bold);
    EXPECT_EQ(chosen.color, 0x0000FF);

    const SaveFileRequest request{u"report"_s, u"Workbooks|*.xls|All|*.*"_s, u".xls"_s};
    onModal<QFileDialog>([](QFileDialog &box) {
        EXPECT_EQ(box.nameFilters().constFirst(), u"Workbooks (*.xls)"_s);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    EXPECT_TRUE(askSaveFile(request).endsWith(u"/report.xls"_s));

    const std::function<void()> cancelled[] = {[&] { askFont(initial); }, [&] { askSaveFile(request); }};
    for (const auto &ask : cancelled) {
        onModal<QDialog>([](QDialog &box) { box.reject(); });
        try {
            ask();
            ADD_FAILURE() << "a cancelled dialog must fail";
        } catch (const RuntimeError &error) {
            EXPECT_EQ(error.number(), 32755);
        }
    }
}

TEST(Dialogs, LetNobodyGoOnWhenTheProcessEnds)
{
    bool wentOn = false;
    EXPECT_TRUE(processEnded(3, [&] {
        onBox([](QMessageBox &) { endProcess(3); });
        askYesNo(u"?"_s);
        wentOn = true;
    }));
    EXPECT_TRUE(processEnded(4, [&] {
        try {
            endProcess(4);
        } catch (const ProcessEnding &) {
        }
        showMessage(u"not shown any more"_s);
        wentOn = true;
    }));
    EXPECT_FALSE(wentOn);

    // A screen below may go while its box stands.
    auto *screen = new Screen(u"frmBelow"_s);
    screen->showModeless();
    serveEvents();
    onBox([&](QMessageBox &) { delete screen; });
    EXPECT_FALSE(askYesNo(u"?"_s));
}
} // namespace
