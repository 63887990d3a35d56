#pragma once

#include "platform/spreadsheet/xls/compound_file.h"
#include "platform/spreadsheet/xls/record.h"

#include <QtCore/QHash>
#include <QtCore/QString>

namespace spreadsheet::xls
{

/// Numbers the texts of the cells in the order in which they come, equal ones alike. It remembers the texts
/// that came last, as many as fit into a little memory; one that comes again after that gets a new number.
/// Two of these that are asked the same give the same numbers.
class TextNumbers
{
public:
    struct Numbered {
        quint32 number;
        bool isNew;
    };
    /// A text's number, from 0, and whether it is a new one.
    Numbered of(const QString &text);

private:
    QHash<QString, quint32> m_numbers;
    qint64 m_rememberedBytes = 0;
    quint32 m_next = 0;
};

/// Writes the table of the cells' texts: one record and as many continuing ones as it takes.
class SharedStrings
{
public:
    explicit SharedStrings(CompoundFile &stream); ///< which must outlive this

    /// The text of one more cell.
    void add(const QString &text);
    /// Writes what is left, and the counts in front.
    void finish();

private:
    void append(const QString &text);
    void beginContinuation();

    CompoundFile &m_stream;
    qint64 m_start;
    Record m_record{RecordType::Sst};
    TextNumbers m_numbers;
    quint32 m_cells = 0;
    quint32 m_texts = 0;
};

} // namespace spreadsheet::xls
