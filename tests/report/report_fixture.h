#pragma once

#include "platform/report/report_output.h"
#include "support/store_reading.h"
#include "tests/ui/rows_fixture.h"

#include <QtCore/QRegularExpression>

/// A word of a PDF as an independent reader finds it; lengths are points from the page's top left corner.
struct Word {
    int page = 0; ///< from 1
    double left = 0, top = 0, right = 0, bottom = 0;
    QString text;
};

/// The words of a PDF, with Arabic letters in their plain forms.
inline QList<Word> wordsOf(const QString &pdf)
{
    static const QRegularExpression element(
        u"<page |<word xMin=\"(.*?)\" yMin=\"(.*?)\" xMax=\"(.*?)\" yMax=\"(.*?)\">(.*?)</word>"_s);
    QList<Word> words;
    int page = 0;
    for (const auto &match : element.globalMatch(outputOf(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s}))) {
        const auto place = [&](int group) { return match.captured(group).toDouble(); };
        if (match.capturedLength(5) == 0)
            ++page;
        else
            words << Word{page,     place(1), place(2),
                          place(3), place(4), match.captured(5).normalized(QString::NormalizationForm_KC)};
    }
    return words;
}

/// A report of the columns n, name (the note) and amount, of two inches each, with a sum.
class ReportFixture : public RowsFixture
{
protected:
    static constexpr int column = 2880;
    static constexpr int line = 300;

    static ReportControl made(ReportControl::Type type, const QRect &place, const QString &what)
    {
        ReportControl control;
        control.type = type;
        control.place = place;
        control.canGrow = true;
        (type == ReportControl::Type::Label ? control.caption : control.dataField) = what;
        return control;
    }

    ReportFixture()
    {
        using Kind = ReportSection::Kind;
        using Type = ReportControl::Type;
        const auto at = [](int place) { return QRect(place * column, 0, column - 100, line); };
        report.sections = {{Kind::ReportHeader, {}, 2 * line, {made(Type::Label, at(0), u"%i"_s)}},
                           {Kind::PageHeader,
                            {},
                            2 * line,
                            {made(Type::Label, at(0), u"Number"_s), made(Type::Label, at(1), u"Note"_s),
                             made(Type::Label, at(2), u"Amount"_s)}},
                           {Kind::Detail,
                            {},
                            line,
                            {made(Type::TextBox, at(0), u"n"_s), made(Type::TextBox, at(1), u"name"_s),
                             made(Type::TextBox, at(2), u"amount"_s)}},
                           {Kind::PageFooter, {}, line, {made(Type::Label, at(1), u"page:%p/%P"_s)}},
                           {Kind::ReportFooter, {}, line, {made(Type::Function, at(2), u"AMOUNT"_s)}}};
        for (const int section : {2, 4})
            report.sections[std::size_t(section)].controls.back().dataFormat.format = u"#,##0.0000"_s;
        report.title = u"First\r\nSecond"_s;
        report.leftMargin = report.rightMargin = 720;
        show({u"'a',1.5,null"_s, u"'b',-2,null"_s, u"'c',1000,null"_s});
    }

    void show(const QStringList &rows)
    {
        openCells(rows);
        report.dataSource = set;
    }
    /// Rows of notes "r1", "r2" ... and of one amount.
    void showMany(int count, const QString &amount)
    {
        QStringList rows;
        for (int i = 1; i <= count; ++i)
            rows << u"'r%1',%2,null"_s.arg(QString::number(i), amount);
        show(rows);
    }

    QList<Word> saved()
    {
        saveReportAsPdf(report, pdf);
        return wordsOf(pdf);
    }
    static QList<Word> find(const QList<Word> &words, const QString &text)
    {
        QList<Word> found;
        std::ranges::copy_if(words, std::back_inserter(found), [&](const Word &w) { return w.text == text; });
        return found;
    }

    Report report;
    const QString pdf = m_folder.filePath(u"report.pdf"_s);
};
