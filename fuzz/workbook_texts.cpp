#include "fuzz/support.h"
#include "fuzz/workbook_reading.h"
#include "platform/spreadsheet/workbook.h"

#include <QtCore/QFile>

using namespace Qt::Literals::StringLiterals;

/// Cells of three columns, each with a byte in front that tells how often its text is repeated.
FUZZ_HARNESS(workbook_texts)
{
    Workbook workbook;
    fuzz::CellTexts given, inUtf8;
    int cell = 0;
    qsizetype room = 70'000; // for two texts that are too long
    for (const QByteArray &part : input.toByteArray().split('\x1e')) {
        const std::pair<int, int> place(cell / 3, cell % 3);
        ++cell;
        const QString text = QString::fromUtf8(part.mid(1)).repeated(part.isEmpty() ? 0 : quint8(part[0]));
        if ((room -= text.size()) < 0)
            break;
        workbook.setCell(place.first + 1, place.second + 1, text);
        if (text.isEmpty())
            continue;
        given[place] = text;
        inUtf8[place] = QString::fromUtf8("\xEF\xBB\xBF" + text.toUtf8());
    }
    const auto saved = [&](const QString &name) {
        QFile file(fuzz::folder() + name);
        file.remove();
        workbook.saveAs(file.fileName());
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    };
    const auto refused = fuzz::refusal(
        [&] { fuzz::require(fuzz::textsOfXls(saved(u"/texts.xls"_s)) == given, "texts stay"); });
    const bool tooLong =
        std::ranges::any_of(given, [](const auto &entry) { return entry.second.size() > 32767; });
    fuzz::require(refused.has_value() == tooLong, "only a text too long for a cell is refused");
    fuzz::require(fuzz::textsOfTabs(saved(u"/texts.txt"_s)) == inUtf8, "texts stay");
}
