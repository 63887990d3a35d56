#include "statements/reports.h"

#include "core/engine.h"
#include "platform/report/report_preview.h"
#include "platform/runtime/dates.h"
#include "platform/runtime/format.h"
#include "platform/runtime/runtime_error.h"
#include "platform/ui/wait.h"
#include "presentation/vocabulary.h"

#include <span>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// How a Boolean field is shown.
struct BooleanWords {
    QStringView fieldName;
    QStringView arabicTrue;
    QStringView arabicFalse;
    QStringView englishTrue;
    QStringView englishFalse;
};

constexpr BooleanWords statementWords[] = {
    {u"creditordebit", u"له", u"عليه", u"(+)", u"(-)"},
    {u"validx", u"ساري", u"ملغي", u"Valid", u"Invalid"},
};
constexpr BooleanWords otherStatementWords{{}, u"نعم", u"لا", u"YES", u"NO"};

constexpr BooleanWords browserWords[] = {
    {u"valid", u"ساري", u"ملغي", u"Valid", u"Invalid"},
    {u"creditordebit", u"له", u"عليه", u"Revenue", u"Expense"},
};

const BooleanWords *wordsOf(std::span<const BooleanWords> words, const QString &fieldName)
{
    const auto found = std::ranges::find(words, fieldName, &BooleanWords::fieldName);
    return found == words.end() ? nullptr : &*found;
}

/// Of a report or a control.
template <typename Text>
void takeSessionFont(Text &text)
{
    text.fontName = engine.userFontName;
    text.fontSize = engine.userFontSize;
    text.fontBold = engine.userFontBold;
}

void showDates(ReportControl &box, const QString &fieldName)
{
    box.dataFormat = {.type = DataFormat::Type::General,
                      .format = fieldName == u"enteredon" ? u"hh:mm:ss yyyy/mm/dd"_s : u"yyyy/mm/dd"_s};
}

void showBooleans(ReportControl &box, const BooleanWords &words)
{
    box.dataFormat = {.type = DataFormat::Type::Boolean,
                      .trueValue = (engine.isArabic ? words.arabicTrue : words.englishTrue).toString(),
                      .falseValue = (engine.isArabic ? words.arabicFalse : words.englishFalse).toString()};
}

void speakSessionLanguage(ReportControl &label)
{
    if (const auto date = parseDate(label.caption))
        label.caption = format(*date, u"yyyy\\mm\\dd"_s); // both m stand as letters: that is meant
    else
        label.caption = translate(label.caption);
}

void reformatStatementControl(ReportControl &control, const Recordset &rows)
{
    if (control.type == ReportControl::Type::Line || control.type == ReportControl::Type::Image)
        return;
    takeSessionFont(control);
    control.foreColor = engine.userFontColor;
    control.canGrow = true;

    if (control.type == ReportControl::Type::Label) {
        speakSessionLanguage(control);
        static const QStringList blanked{u"DAR"_s, u"DEN"_s, u"AAR"_s, u"AEN"_s, u"PHONE"_s, u"EMAIL"_s};
        if (blanked.contains(control.name))
            control.caption.clear();
    } else if (control.type == ReportControl::Type::TextBox) {
        control.rightToLeft = engine.isArabic;
        const FieldInfo &field = rows.field(control.dataField);
        if (field.type == FieldType::Date) {
            showDates(control, field.name);
        } else if (field.type == FieldType::Boolean) {
            const BooleanWords *words = wordsOf(statementWords, field.name);
            showBooleans(control, words ? *words : otherStatementWords);
        }
    }
}

void reformatBrowserControl(ReportControl &control, const Recordset *rows)
{
    if (control.type == ReportControl::Type::Line || control.type == ReportControl::Type::Image)
        return;
    takeSessionFont(control);

    if (control.type == ReportControl::Type::Label) {
        control.foreColor = engine.userFontColor;
        speakSessionLanguage(control);
    } else if (control.type == ReportControl::Type::TextBox) {
        control.rightToLeft = engine.isArabic;
        if (!rows)
            throw runtime_errors::objectNotSet();
        const FieldInfo &field = rows->field(control.dataField);
        if (field.type == FieldType::Date) {
            showDates(control, field.name);
        } else if (field.type == FieldType::Boolean) {
            if (const BooleanWords *words = wordsOf(browserWords, field.name))
                showBooleans(control, *words);
        }
    }
}

PreviewTexts arabicPreviewTexts()
{
    return {.first = translate(u"First"_s),
            .previous = translate(u"Previous"_s),
            .next = translate(u"Next"_s),
            .last = translate(u"Last"_s),
            .page = u"صفحة"_s,
            .ofPages = u"من %1"_s,
            .ofMorePages = u"من أكثر من %1"_s,
            .zoomIn = u"تكبير"_s,
            .zoomOut = u"تصغير"_s,
            .fitWidth = u"عرض الصفحة"_s,
            .fitPage = u"الصفحة كاملة"_s,
            .print = u"طباعة..."_s,
            .save = u"حفظ بصيغة PDF..."_s,
            .close = translate(u"Close"_s),
            .sheet = u"صفحة الكشف"_s,
            .pdfFiles = u"ملفات PDF"_s,
            .replace = u"الملف \"%1\" موجود مسبقاً. هل تريد استبداله؟"_s,
            .working = u"صفحة %1، مفتاح Esc للإيقاف"_s,
            .stopped = u"تم الإيقاف"_s,
            .saved = u"تم الحفظ: %1"_s,
            .printed = u"تمت الطباعة"_s,
            .printerRefused = u"لم تقبل الطابعة الكشف."_s,
            .notSaved = u"تعذر حفظ الكشف."_s,
            .notShown = u"تعذر إظهار هذه الصفحة."_s};
}

} // namespace

void ReformatStatementReport(Report &report, const Recordset &rows)
{
    report.leftMargin = report.rightMargin = 300;
    takeSessionFont(report);
    for (ReportSection &section : report.sections) {
        serveEventsButInput(); // a click waits: it would change the rows under the report
        for (ReportControl &control : section.controls)
            ignoringErrors([&] { reformatStatementControl(control, rows); });
    }
}

void ReformatReport(Report &report)
{
    takeSessionFont(report);
    for (ReportSection &section : report.sections) {
        for (ReportControl &control : section.controls)
            ignoringErrors([&] { reformatBrowserControl(control, report.dataSource.get()); });
    }
}

void showReport(Report report)
{
    if (engine.isArabic)
        report.previewTexts = arabicPreviewTexts();
    showReportModal(report);
}
