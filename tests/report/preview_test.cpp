#include "platform/report/preview_window.h"
#include "platform/report/report_preview.h"
#include "platform/ui/wait.h"
#include "report_fixture.h"
#include "support/screens.h"

#include <QtPrintSupport/QPrinter>
#include <QtWidgets/QLineEdit>

namespace
{

class PreviewFixture : public ReportFixture
{
protected:
    PreviewFixture() { showMany(150, u"1"_s); }
    void preview(const std::function<void(PreviewWindow &)> &action)
    {
        onModal<PreviewWindow>([action](PreviewWindow &window) {
            action(window);
            pressKey(window, Qt::Key_Escape);
        });
        showReportModal(report);
        EXPECT_TRUE(Screen::loadedScreens().isEmpty());
    }
    static QString page(PreviewWindow &window) { return control<QLineEdit>(window, "txtPage").text(); }

    ScriptedDialogs dialogs;
};

TEST_F(PreviewFixture, TurnsPagesByKeysButtonsAndNumber)
{
    preview([](PreviewWindow &window) {
        const struct {
            int key;
            const char *page;
        } steps[] = {{Qt::Key_PageDown, "2"}, {Qt::Key_End, "4"},  {Qt::Key_PageDown, "4"},
                     {Qt::Key_PageUp, "3"},   {Qt::Key_Home, "1"}, {Qt::Key_PageUp, "1"}};
        for (const auto &step : steps) {
            pressKey(window, step.key);
            EXPECT_EQ(page(window), QLatin1StringView(step.page)) << step.key;
        }
        EXPECT_EQ(textOf(window, "lblPages"), u"of 4"_s);
        click(window, "cmdLast");
        click(window, "cmdPrevious");
        EXPECT_EQ(page(window), u"3"_s);
        fill(window, "txtPage", u"٢\n"_s);
        EXPECT_EQ(page(window), u"2"_s);
        fill(window, "txtPage", u"99\n"_s);
        EXPECT_EQ(page(window), u"2"_s);
        for (const int key : {Qt::Key_Plus, Qt::Key_Minus})
            pressKey(window, key);
        click(window, "cmdFitPage");
    });
}

TEST_F(PreviewFixture, CountsPagesWhileTheWindowLives)
{
    showMany(3000, u"1"_s);
    preview([](PreviewWindow &window) {
        EXPECT_TRUE(textOf(window, "lblPages").startsWith(u"of more than"_s));
        serveEventsUntil([&] { return !textOf(window, "lblPages").contains(u"more"_s); });
    });
    preview([](PreviewWindow &) {}); // closed in the middle of it
}

TEST_F(PreviewFixture, SavesAsPdfAndAsksBeforeItReplaces)
{
    const QString question = u"The file \"report.pdf\" is there already. Replace it?"_s;
    dialogs.expectSaveFile(u"First Second.pdf"_s, {}).withFilter(u"PDF files|*.pdf"_s);
    dialogs.expectSaveFile(u"First Second.pdf"_s, pdf);
    dialogs.expectSaveFile(u"First Second.pdf"_s, pdf);
    dialogs.expectNo(question);
    dialogs.expectSaveFile(u"First Second.pdf"_s, pdf);
    dialogs.expectYes(question);
    dialogs.expectSaveFile(u"First Second.pdf"_s, m_folder.filePath(u"none/x.pdf"_s));
    dialogs.expectMessage(u"The report could not be saved.\n\nThe file \"x.pdf\" could not be written: "
                          "No such file or directory"_s);
    preview([this](PreviewWindow &window) {
        const auto save = [&] { pressKey(window, Qt::Key_S, Qt::ControlModifier); };
        save();
        EXPECT_FALSE(QFile::exists(pdf));
        save();
        EXPECT_EQ(textOf(window, "lblStatus"), u"Saved: report.pdf"_s);
        EXPECT_EQ(wordsOf(pdf).last().page, 4);
        QFile::resize(pdf, 0);
        save();
        EXPECT_EQ(QFile(pdf).size(), 0);
        save();
        EXPECT_EQ(wordsOf(pdf).last().page, 4);
        save();
    });
}

TEST_F(PreviewFixture, PrintsTheChosenPagesAndTellsThatAPrinterRefuses)
{
    dialogs.expectPrint([this](QPrinter &printer) {
        printer.setOutputFileName(pdf);
        printer.setPageSize(QPageSize(QPageSize::A5));
        printer.setPrintRange(QPrinter::PageRange);
        printer.setFromTo(2, 3);
        printer.setCopyCount(2);
    });
    dialogs.expectPrint([](QPrinter &printer) {
        printer.setOutputFileName({});
        printer.setPageSize(QPageSize(QPageSize::A3));
    });
    dialogs.expectMessage(u"The printer did not take the report.\n\nPrinter error"_s);
    dialogs.expectPrint({});
    preview([](PreviewWindow &window) {
        pressKey(window, Qt::Key_End);
        for (int i = 0; i < 3; ++i)
            pressKey(window, Qt::Key_P, Qt::ControlModifier);
        EXPECT_EQ(page(window), u"3"_s); // of the larger paper
    });
    QStringList pages;
    for (const Word &word : wordsOf(pdf)) {
        if (word.text.startsWith(u"page:"_s))
            pages << word.text.section(u'/', 0, 0);
    }
    EXPECT_EQ(pages, (QStringList{u"page:2"_s, u"page:3"_s, u"page:2"_s, u"page:3"_s}));
    setReportPaper(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait, {28, 28, 28, 28}));
}

TEST_F(PreviewFixture, ShowsAMessageForAPageThatCannotBeDrawn)
{
    showMany(2, u"922337203685477"_s);
    dialogs.expectSaveFile(u"First Second.pdf"_s, pdf);
    dialogs.expectMessage(u"The report could not be saved.\n\nOverflow"_s);
    preview([](PreviewWindow &window) {
        window.grab();
        pressKey(window, Qt::Key_S, Qt::ControlModifier);
    });
    EXPECT_FALSE(QFile::exists(pdf));
}

} // namespace
