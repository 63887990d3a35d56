#include "platform/report/report_preview.h"
#include "platform/ui/screen.h"
#include "report_fixture.h"
#include "support/child_process.h"
#include "support/failures.h"

#include <QtCore/QDir>

#include <csignal>

namespace
{

constexpr double hair = 0.3; // points

TEST_F(ReportFixture, RepeatsHeadersNeverCutsARowAndSumsOnTheLastPage)
{
    showMany(150, u"0.3333"_s);
    set->moveLast();
    const QList<Word> words = saved();
    const int pages = words.last().page;
    ASSERT_GT(pages, 2);
    EXPECT_EQ(set->absolutePosition(), 150);
    EXPECT_EQ(find(words, u"Second"_s).size(), 1);
    EXPECT_EQ(find(words, u"Number"_s).size(), pages);

    double below = 0;
    int page = 0;
    for (int row = 1; row <= 150; ++row) {
        const QList<Word> found = find(words, u"r%1"_s.arg(row));
        ASSERT_EQ(found.size(), 1) << row;
        if (found[0].page != page)
            below = find(words, u"Number"_s)[found[0].page - 1].bottom;
        page = found[0].page;
        const Word footer = find(words, u"page:%1/%2"_s.arg(page).arg(pages)).value(0);
        EXPECT_GE(found[0].top, below) << row;
        EXPECT_LE(found[0].bottom, footer.top) << row;
        below = found[0].bottom - 3; // the boxes of lines overlap by what accents may need
    }
    const QList<Word> sum = find(words, u"49.9950"_s); // 150 * 0.3333
    ASSERT_EQ(sum.size(), 1);
    EXPECT_EQ(sum[0].page, pages);
}

TEST_F(ReportFixture, GivesTheReportFooterAPageOfItsOwnWhenThereIsNoRoom)
{
    int rows = 40;
    for (showMany(rows, u"1"_s);; showMany(++rows, u"1"_s)) {
        const QList<Word> words = saved();
        const Word sum = find(words, QString::number(rows) + u".0000"_s).value(0);
        ASSERT_GT(sum.page, 0);
        ASSERT_LT(rows, 70);
        if (sum.page == 2 && find(words, u"r%1"_s.arg(rows)).value(0).page == 1)
            break;
    }
}

TEST_F(ReportFixture, MirrorsThePageAndEndsAmountsBelowEachOther)
{
    const QList<Word> english = saved();
    report.rightToLeft = true;
    const QList<Word> arabic = saved();
    constexpr double paper = 595;
    for (const QString &text : {u"Number"_s, u"Note"_s, u"b"_s, u"First"_s}) {
        const Word before = find(english, text).value(0);
        const Word after = find(arabic, text).value(0);
        EXPECT_NEAR(before.left, paper - after.right, 1.5) << text.toStdString();
        EXPECT_NEAR(before.top, after.top, hair) << text.toStdString();
    }
    for (const QList<Word> &words : {english, arabic}) {
        const double end = find(words, u"1.5000"_s).value(0).right;
        for (const QString &text : {u"Amount"_s, u"-2.0000"_s, u"1,000.0000"_s, u"999.5000"_s})
            EXPECT_NEAR(find(words, text).value(0).right, end, hair) << text.toStdString();
    }
}

TEST_F(ReportFixture, WrapsALongNoteAndElidesOneThatNoPageHasRoomFor)
{
    const QString word = u"abcdefghi "_s;
    report.sections[2].controls[1].place.setWidth(600);
    show({u"'%1',1,null"_s.arg(word.repeated(5)), u"'next',1,null"_s});
    QList<Word> words = saved();
    const double left = find(words, u"next"_s).value(0).left;
    QString note;
    double bottom = 0;
    for (const Word &part : words) {
        if (part.left < left + hair && part.left > left - hair && part.text != u"next" &&
            part.text != u"Note" && !part.text.startsWith(u"page")) {
            note += part.text;
            bottom = part.bottom;
        }
    }
    EXPECT_EQ(note, word.trimmed().repeated(5));
    EXPECT_GT(find(words, u"next"_s).value(0).top, bottom - 3);

    report.sections[2].controls[1].place.setWidth(250);
    report.sections[2].controls[1].fontSize = 24;
    words = saved();
    EXPECT_EQ(find(words, u"..."_s).size(), 1);
    EXPECT_EQ(find(words, u"2"_s).value(0).page, words.last().page);
    for (const Word &part : std::as_const(words))
        EXPECT_LT(part.bottom, 842) << part.text.toStdString();
}

TEST_F(ReportFixture, GivesHighLettersRoomAndShrinksAWideDesignToThePaper)
{
    for (ReportSection &section : report.sections) {
        for (ReportControl &each : section.controls) {
            each.fontSize = 24;
            each.place.moveLeft(each.place.x() * 2);
        }
    }
    report.sections[0].controls.push_back(made(ReportControl::Type::Image, {column, 0, 100, 700}, {}));
    const QList<Word> words = saved();
    EXPECT_EQ(find(words, u"Second"_s).size(), 1);
    EXPECT_GT(find(words, u"b"_s).value(0).top, find(words, u"a"_s).value(0).bottom - 6);
    for (const QString &text : {u"Amount"_s, u"1,000.0000"_s, u"999.5000"_s})
        EXPECT_LT(find(words, text).value(0).right, 595 - 36 + hair) << text.toStdString();
}

TEST_F(ReportFixture, ShowsATitleHigherThanThePaperNoRowsAndNoBands)
{
    for (int i = 0; i < 100; ++i)
        report.title += u"\r\ntitle%1"_s.arg(i);
    show({});
    const QList<Word> words = saved();
    EXPECT_EQ(words.last().page, find(words, u"0.0000"_s).value(0).page);
    EXPECT_LT(find(words, u"title99"_s).value(0).bottom, find(words, u"Number"_s).value(0).top);
    report.sections.clear();
    EXPECT_TRUE(saved().isEmpty());
    report.dataSource.reset();
    EXPECT_EQ(failureOf([this] { saveReportAsPdf(report, pdf); }), 91);
}

TEST_F(ReportFixture, RefusesAMissingFieldBeforeAnyWindow)
{
    report.sections[2].controls[1].dataField = u"creditordebit"_s;
    EXPECT_EQ(failureOf([&] { showReportModal(report); }), 8526);
    set->close();
    EXPECT_EQ(failureOf([&] { showReportModal(report); }), 3704);
    EXPECT_TRUE(Screen::loadedScreens().isEmpty());
}

TEST_F(ReportFixture, KeepsTheOldFileWhenTheNewOneCannotBeWritten)
{
    saved();
    EXPECT_EQ(QFile::permissions(pdf) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    const QByteArray before = bytesOf(pdf);
    const QStringList files = QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden);

    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlim_t limit = limitFileSize(4000);
    EXPECT_EQ(failureOf([this] { saveReportAsPdf(report, pdf); }), 75);
    limitFileSize(limit);
    std::signal(SIGXFSZ, handler);

    EXPECT_EQ(failureOf([this] { saveReportAsPdf(report, m_folder.path()); }), 75);
    EXPECT_EQ(failureOf([this] { saveReportAsPdf(report, m_folder.filePath(u"none/x.pdf"_s)); }), 75);
    EXPECT_EQ(failureOf([this] { saveReportAsPdf(report, pdf, reportPaper(), [](int) { return false; }); }),
              32755);
    EXPECT_EQ(bytesOf(pdf), before);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden), files);
}

} // namespace
