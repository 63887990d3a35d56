#include "platform/report/report_values.h"

#include "platform/report/report_font.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/format.h"
#include "platform/runtime/runtime_error.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

bool hasField(const ReportControl &control)
{
    return control.type == ReportControl::Type::TextBox || control.type == ReportControl::Type::Function;
}

} // namespace

ReportValues::ReportValues(const Report &report) : m_title(report.title), m_printedOn(now())
{
    if (!report.dataSource)
        throw runtime_errors::objectNotSet();
    m_rows = report.dataSource->rowsShown();
    for (const ReportSection &section : report.sections) {
        for (const ReportControl &control : section.controls) {
            if (hasField(control) && fieldOf(control) < 0)
                throw RuntimeError(8526, u"report"_s, u"The data field can't be found."_s);
        }
    }
}

int ReportValues::fieldOf(const ReportControl &control) const
{
    const std::vector<FieldInfo> &fields = m_rows->fields();
    for (std::size_t i = 0; hasField(control) && i < fields.size(); ++i) {
        if (fields[i].name.compare(control.dataField, Qt::CaseInsensitive) == 0)
            return int(i);
    }
    return -1;
}

std::optional<FieldType> ReportValues::typeOf(const ReportControl &control) const
{
    const int field = fieldOf(control);
    if (field < 0)
        return {};
    return control.type == ReportControl::Type::Function ? FieldType::Money
                                                         : m_rows->fields()[std::size_t(field)].type;
}

bool ReportValues::isNumber(const ReportControl &control) const
{
    const auto type = typeOf(control);
    return isAmount(control) || type == FieldType::Long || type == FieldType::Byte;
}

bool ReportValues::isAmount(const ReportControl &control) const
{
    const auto type = typeOf(control);
    return type == FieldType::Money || type == FieldType::Double;
}

bool ReportValues::isWords(const ReportControl &control) const
{
    return typeOf(control).value_or(FieldType::Text) == FieldType::Text;
}

QString ReportValues::textOf(const ReportControl &control, int field, int row, const PageNumbers &pages)
{
    switch (control.type) {
    case ReportControl::Type::Label:
        return withLineFeeds(captionOf(control.caption, pages));
    case ReportControl::Type::TextBox:
        return row < rowCount() ? withLineFeeds(formatted(m_rows->value(row, field), control.dataFormat))
                                : QString();
    case ReportControl::Type::Function:
        return formatted(sumOf(field), control.dataFormat);
    case ReportControl::Type::Line:
    case ReportControl::Type::Image:
        break;
    }
    return {};
}

QString ReportValues::captionOf(const QString &design, const PageNumbers &pages) const
{
    if (!design.contains(u'%'))
        return design;
    const Value printedOn(m_printedOn);
    QString text;
    for (qsizetype i = 0; i < design.size(); ++i) {
        const QChar code = design[i] == u'%' && i + 1 < design.size() ? design[++i] : QChar();
        switch (code.unicode()) {
        case u'i':
            text += m_title;
            break;
        case u'p':
            text += QString::number(pages.page);
            break;
        case u'P':
            text += QString::number(pages.count());
            break;
        case u'd':
            text += format(printedOn, u"Short Date"_s);
            break;
        case u'D':
            text += format(printedOn, u"Long Date"_s);
            break;
        case u't':
            text += format(printedOn, u"hh:nn"_s);
            break;
        case u'T':
            text += format(printedOn, u"Long Time"_s);
            break;
        case 0:
            text += design[i];
            break;
        default:
            text += u'%';
            text += code;
        }
    }
    return text;
}

Money ReportValues::sumOf(int field)
{
    if (const auto known = m_sums.find(field); known != m_sums.end())
        return known->second;
    Money sum;
    const int rows = rowCount();
    if (m_rows->fields()[std::size_t(field)].type == FieldType::Money) {
        m_rows->visitNumbers(field, 0, rows,
                             [&](int, qint64 number) { sum = sum + Money::fromTenThousandths(number); });
    } else {
        for (int row = 0; row < rows; ++row) {
            const Value value = m_rows->value(row, field);
            if (!value.isNull())
                sum = sum + value.toMoneyValue();
        }
    }
    m_sums[field] = sum;
    return sum;
}
