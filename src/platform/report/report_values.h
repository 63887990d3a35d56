#pragma once

#include "platform/report/report.h"

#include <QtCore/QDateTime>

#include <functional>
#include <map>
#include <memory>
#include <optional>

/// What the page numbers in a caption are written from; pages count from 1.
struct PageNumbers {
    int page = 1;
    std::function<int()> count; ///< asked for only where it is shown
};

/// The texts of a report's controls: the rows that its set shows at the beginning, read without moving the
/// set.
class ReportValues
{
public:
    /// @throws RuntimeError 8526 when a control has a field that the rows have not, 3704 for a set that is
    /// not open, 91 without one
    explicit ReportValues(const Report &report);

    int rowCount() const { return m_rows->count(); }
    /// The number of a control's field; -1 for one without.
    int fieldOf(const ReportControl &control) const;
    /// A text box or function of numbers.
    bool isNumber(const ReportControl &control) const;
    /// The same of amounts, that have decimals.
    bool isAmount(const ReportControl &control) const;
    /// A label, or a text box of texts, which may be broken over lines.
    bool isWords(const ReportControl &control) const;
    /// `field` is the control's; `row` counts from 0 and matters for text boxes alone: those outside of the
    /// detail section show the first row.
    /// @throws RuntimeError what the format gives, 6 for a sum outside the money range
    QString textOf(const ReportControl &control, int field, int row, const PageNumbers &pages);

private:
    std::optional<FieldType> typeOf(const ReportControl &control) const;
    QString captionOf(const QString &design, const PageNumbers &pages) const;
    Money sumOf(int field);

    QString m_title;
    std::shared_ptr<const RowsShown> m_rows;
    QDateTime m_printedOn;
    std::map<int, Money> m_sums; ///< by the field
};
