#include "stress/plain_text.h"

#include "core/engine.h"
#include "platform/database/engine.h"
#include "platform/database/recordset.h"
#include "store/schema.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>

#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace Qt::Literals::StringLiterals;

namespace
{

constexpr int shortest = 6; // bytes: a shorter one may stand in a cipher's output by chance

/// Tells by its end where it stands.
QString plantedIn(const ColumnDefinition &column)
{
    return (u"planted "_s + column.name).left(column.size);
}

std::vector<ColumnDefinition> textColumns(const TableDefinition &table)
{
    std::vector<ColumnDefinition> texts;
    std::copy_if(table.columns.begin(), table.columns.end(), std::back_inserter(texts),
                 [](const ColumnDefinition &column) { return column.type == ColumnDefinition::Type::Text; });
    return texts;
}

bool isLongEnough(const Value &text)
{
    return text.toText().toUtf8().size() >= shortest;
}

} // namespace

PlainTexts::PlainTexts(const QStringList &texts)
{
    for (const QString &text : texts) {
        m_forms << text.toUtf8();
        m_forms << QByteArray(reinterpret_cast<const char *>(text.utf16()), text.size() * 2);
        QByteArray swapped = m_forms.last();
        for (qsizetype i = 0; i + 1 < swapped.size(); i += 2)
            std::swap(swapped[i], swapped[i + 1]);
        m_forms << swapped;
    }
}

PlainTexts PlainTexts::ofStore(const QString &path)
{
    QStringList texts{u"planted"_s};
    database::Engine file = database::Engine::open(path, engine.storePassword);
    for (const TableDefinition &table : storeTables()) {
        for (const ColumnDefinition &column : textColumns(table)) {
            const QString name = u'"' + column.name + u'"';
            const sql::Parameter text = file.first(
                u"select %1 from \"%2\" where length(cast(%1 as blob)) >= %3 "
                "order by instr(%1, 'planted') desc, length(%1) desc limit 1"_s.arg(name, table.name)
                    .arg(shortest)
                    .toUtf8());
            const auto *bytes = std::get_if<QByteArray>(&text);
            if (!bytes)
                throw std::runtime_error("no text stands in " + (table.name + u'.' + name).toStdString());
            texts << QString::fromUtf8(*bytes);
        }
    }
    texts.removeDuplicates();
    return PlainTexts(texts);
}

bool PlainTexts::standIn(const QByteArray &content) const
{
    return std::any_of(m_forms.begin(), m_forms.end(),
                       [&](const QByteArray &form) { return content.contains(form); });
}

QStringList PlainTexts::filesWithOne(const QStringList &folders,
                                     const std::function<bool(const QString &path)> &leftOut) const
{
    QStringList found;
    for (const QString &folder : folders) {
        QDirIterator entries(folder, QDir::Files | QDir::Hidden | QDir::System, QDirIterator::Subdirectories);
        while (entries.hasNext()) {
            QFile file(entries.next());
            if (!leftOut(file.fileName()) && file.open(QFile::ReadOnly) && standIn(file.readAll()))
                found << file.fileName();
        }
    }
    return found;
}

void plantTexts()
{
    for (const TableDefinition &table : storeTables()) {
        const auto rows = Recordset::create();
        rows->open(u"select * from ["_s + table.name + u']', engine.dbConnection, CursorType::Static);
        QStringList columns;
        QStringList values;
        QStringList changes;
        for (const ColumnDefinition &column : textColumns(table)) {
            columns << u'[' + column.name + u']';
            values << u'\'' + plantedIn(column) + u'\'';
            bool stands = false;
            for (int row = 0; row < rows->rowCount(); ++row)
                stands = stands || isLongEnough(rows->valueAt(row, rows->fieldIndex(column.name)));
            if (!stands)
                changes << columns.last() + u'=' + values.last();
        }
        if (rows->rowCount() == 0 || table.name == u"users") // whose earlier rows are to log in
            engine.dbConnection->execute(u"insert into [%1] (%2) values (%3)"_s.arg(
                table.name, columns.join(u','), values.join(u',')));
        else if (!changes.isEmpty())
            engine.dbConnection->execute(u"update [%1] set %2"_s.arg(table.name, changes.join(u',')));
    }
}
