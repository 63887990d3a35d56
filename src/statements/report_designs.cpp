#include "statements/report_designs.h"

#include "core/program_icon.h"

#include <span>

using namespace Qt::Literals::StringLiterals;

namespace
{

/// A column's heading and the text box below it.
struct Column {
    QStringView labelName;
    QStringView caption;
    QStringView boxName;
    QStringView dataField;
    int width; ///< twips
};
constexpr int rest = 0; ///< the width that the other columns leave

// In the order in which they are read.
constexpr Column ledgerColumns[] = {
    {u"Label13", u"Number", u"Text7", u"id", 1000},
    {u"Label5", u"Note", u"Text1", u"transactiondetail", rest},
    {u"Label10", u"Information", u"Text3", u"gtype", 1750},
    {u"Label11", u"Method", u"Text4", u"paymentmethod", 1280},
    {u"Label3", u"Amount", u"Text2", u"amount", 1750},
    {u"Label4", u"CR/DR", u"Text6", u"creditordebit", 950},
    {u"Label6", u"Date", u"Text5", u"ddate", 1350},
};

constexpr Column ledgerAllColumns[] = {
    {u"Label14", u"Number", u"Text8", u"id", 980},
    {u"Label13", u"Name", u"Text7", u"name", 1150},
    {u"Label5", u"Note", u"Text1", u"transactiondetail", rest},
    {u"Label10", u"Information", u"Text3", u"gtype", 1480},
    {u"Label11", u"Method", u"Text4", u"paymentmethod", 980},
    {u"Label3", u"Amount", u"Text2", u"amount", 1700},
    {u"Label4", u"CR/DR", u"Text6", u"creditordebit", 1000},
    {u"Label6", u"Date", u"Text5", u"ddate", 1350},
};

constexpr Column generalColumns[] = {
    {u"Label13", u"Number", u"Text8", u"transactionid", 1000},
    {u"Label6", u"Date", u"Text5", u"ddate", 1350},
    {u"Label3", u"Amount", u"Text2", u"amount", 1750},
    {u"Label11", u"Method", u"Text4", u"paymentmethod", 1280},
    {u"Label5", u"Note", u"Text1", u"transactiondetail", rest},
    {u"Label10", u"Information", u"Text3", u"paymentdetail", 1750},
    {u"Label4", u"Type", u"Text6", u"gtype", 1350},
};

constexpr Column monthlyLedgerColumns[] = {
    {u"Label4", u"Month", u"Text1", u"ddate", 3000},
    {u"Label5", u"creditordebit", u"Text3", u"creditordebit", rest},
    {u"Label3", u"Amount", u"Text2", u"amount", 3600},
};

constexpr Column monthlyGeneralColumns[] = {
    {u"Label10", u"Month", u"Text6", u"ddate", 3000},
    {u"Label3", u"CREDITORDEBIT", u"Text1", u"creditordebit", rest},
    {u"Label4", u"Amount", u"Text2", u"amount", 3600},
};

// All lengths are twips.
constexpr int pageWidth = 11300; // A4 between margins of 300
constexpr int margin = 300;
constexpr int columnGap = 160;
constexpr int lineHeight = 240; // of 8 points; larger letters make their bands higher
constexpr int titleHeight = 2 * lineHeight;
constexpr int ruleGap = 50; // between a line and the texts beside it
constexpr int rowGap = 80;

// The sign is the currency's own in both languages.
const QString amountFormat = u"\"ر.س.\u200F\" #,##0"_s;
const QString dayFormat = u"yyyy/MM/dd"_s;
const QString monthFormat = u"####/##"_s;

using Type = ReportControl::Type;
using Alignment = ReportControl::Alignment;

ReportControl label(const QString &name, const QRect &place, const QString &caption,
                    Alignment alignment = Alignment::Start)
{
    return {.type = Type::Label,
            .name = name,
            .place = place,
            .caption = caption,
            .alignment = alignment,
            .canGrow = true};
}

ReportControl line(const QString &name, int top)
{
    return {.type = Type::Line, .name = name, .place = {0, top, pageWidth, 0}};
}

DataFormat shownBy(const QString &format)
{
    return {.type = DataFormat::Type::Custom, .format = format};
}

ReportSection reportHeader()
{
    constexpr int pictureSide = 900;
    return {ReportSection::Kind::ReportHeader,
            u"Section4"_s,
            pictureSide + ruleGap,
            {{.type = Type::Image,
              .name = u"Image1"_s,
              .place = {0, 0, pictureSide, pictureSide},
              .image = programPicture()},
             label(u"Label1"_s, {pictureSide, 0, pageWidth - 2 * pictureSide, pictureSide}, u"%i"_s,
                   Alignment::Center)}};
}

/// The columns' places, from the first one's start to the last one's end.
std::vector<QRect> placesOf(std::span<const Column> columns)
{
    int left = pageWidth + columnGap;
    for (const Column &column : columns)
        left -= column.width + columnGap;
    std::vector<QRect> places;
    int x = 0;
    for (const Column &column : columns) {
        const int width = column.width == rest ? left : column.width;
        places.emplace_back(x, 0, width, lineHeight);
        x += width + columnGap;
    }
    return places;
}

bool isAmount(const Column &column)
{
    return column.dataField == u"amount";
}

/// Amounts line up at their last digit.
Alignment alignmentOf(const Column &column)
{
    return isAmount(column) ? Alignment::End : Alignment::Start;
}

ReportSection pageHeader(std::span<const Column> columns)
{
    constexpr int sideWidth = 2400;
    constexpr int captionWidth = 900;
    constexpr int pageNumberWidth = 1000;
    constexpr int headingsTop = titleHeight + 2 * ruleGap;
    constexpr int height = headingsTop + lineHeight + 2 * ruleGap;
    ReportSection section{
        ReportSection::Kind::PageHeader,
        u"Section2"_s,
        height,
        {label(u"Label7"_s, {0, 0, captionWidth, lineHeight}, u"Date"_s),
         label(u"repDate"_s, {captionWidth, 0, sideWidth - captionWidth, lineHeight}, u"%d"_s),
         label(u"Label8"_s, {sideWidth, 0, pageWidth - 2 * sideWidth, titleHeight}, u"%i"_s,
               Alignment::Center),
         label(u"Label2"_s, {pageWidth - pageNumberWidth, 0, pageNumberWidth, lineHeight}, u"%p"_s,
               Alignment::End),
         line(u"Line2"_s, titleHeight + ruleGap)}};
    const std::vector<QRect> places = placesOf(columns);
    for (size_t i = 0; i < columns.size(); ++i)
        section.controls.push_back(label(columns[i].labelName.toString(),
                                         places[i].translated(0, headingsTop), columns[i].caption.toString(),
                                         alignmentOf(columns[i])));
    section.controls.push_back(line(u"Line3"_s, headingsTop + lineHeight + ruleGap));
    return section;
}

ReportSection detail(std::span<const Column> columns, const QString &dateFormat)
{
    ReportSection section{ReportSection::Kind::Detail, u"Section1"_s, lineHeight + rowGap, {}};
    const std::vector<QRect> places = placesOf(columns);
    for (size_t i = 0; i < columns.size(); ++i) {
        ReportControl box{.type = Type::TextBox,
                          .name = columns[i].boxName.toString(),
                          .place = places[i],
                          .dataField = columns[i].dataField.toString(),
                          .alignment = alignmentOf(columns[i]),
                          .canGrow = true};
        if (isAmount(columns[i]))
            box.dataFormat = shownBy(amountFormat);
        else if (columns[i].dataField == u"ddate")
            box.dataFormat = shownBy(dateFormat);
        section.controls.push_back(std::move(box));
    }
    return section;
}

ReportSection reportFooter(std::span<const Column> columns, const QString &totalName)
{
    constexpr int captionWidth = 1500;
    const auto amount = std::ranges::find_if(columns, isAmount);
    const QRect sum = placesOf(columns)[size_t(amount - columns.begin())].translated(0, 2 * ruleGap);
    return {ReportSection::Kind::ReportFooter,
            u"Section5"_s,
            lineHeight + 2 * ruleGap,
            {label(totalName, {sum.x() - columnGap - captionWidth, sum.y(), captionWidth, lineHeight},
                   u"Total"_s, Alignment::End),
             {.type = Type::Function,
              .name = u"Function1"_s,
              .place = sum,
              .dataField = u"AMOUNT"_s,
              .dataFormat = shownBy(amountFormat),
              .alignment = Alignment::End,
              .canGrow = true}}};
}

Report design(std::span<const Column> columns, const QString &dateFormat, const QString &totalName)
{
    Report report;
    report.leftMargin = report.rightMargin = margin;
    report.sections = {
        reportHeader(),
        pageHeader(columns),
        detail(columns, dateFormat),
        {ReportSection::Kind::PageFooter, u"Section3"_s, 2 * ruleGap, {line(u"Line1"_s, ruleGap)}},
        reportFooter(columns, totalName)};
    return report;
}

} // namespace

Report ledgerReport()
{
    return design(ledgerColumns, dayFormat, u"Label12"_s);
}
Report monthlyLedgerReport()
{
    return design(monthlyLedgerColumns, monthFormat, u"Label12"_s);
}
Report generalReport()
{
    return design(generalColumns, dayFormat, u"Label14"_s);
}
Report monthlyGeneralReport()
{
    return design(monthlyGeneralColumns, monthFormat, u"Label14"_s);
}
Report ledgerAllReport()
{
    return design(ledgerAllColumns, dayFormat, u"Label12"_s);
}
