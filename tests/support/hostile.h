#pragma once

#include "platform/database/recordset.h"
#include "platform/ui/dialogs.h"

#include <QtCore/QStringList>

#include <functional>

// For tests that bring into every box what nobody foresaw.

inline QStringList hostileTexts()
{
    using namespace Qt::Literals::StringLiterals;
    return {u"the heirs' x"_s,
            u"x; delete from members"_s,
            u"x','y'); drop table general --"_s,
            u"a\0b"_s,
            u"line\r\nfeed\ttab\vend"_s,
            u"\u001B\u0001\u007F\u0085\u2028"_s,
            u"\u202Eright\u200Fleft\u2066"_s,
            u"\u0661\u06F2"_s,
            u"high"_s + QChar(0xD800) + u'x',
            QChar(0xDC00) + u"low"_s,
            u"\U0001F600\U0001F468\u200D\U0001F469"_s,
            u"%s%n{0}\\|*[]"_s,
            QString(10000, u'n'),
            QString(10000, QChar(0x0646))};
}

/// Amounts at the borders, and what only looks like one.
inline QStringList hostileAmounts()
{
    using namespace Qt::Literals::StringLiterals;
    return {u"1e300"_s,
            u"-5"_s,
            u"(12)"_s,
            u"&H10"_s,
            u"922337203685477.58"_s,
            u"922337203685478"_s,
            u"1e-300"_s,
            u"&HFFFFFFFF"_s,
            u"1,,000"_s,
            u"$5"_s,
            u"nan"_s,
            u"inf"_s,
            u"1e9999"_s,
            QString(10000, u'9')};
}

/// Answers Yes to every question and an input box with `typed`, and keeps what was told.
class Agreeing : public DialogService
{
public:
    Agreeing() : m_before(installDialogService(this)) {}
    ~Agreeing() override { installDialogService(m_before); }
    MessageAnswer message(const MessageRequest &request) override
    {
        told += request.text;
        if (meanwhile)
            meanwhile();
        return request.buttons == MessageButtons::YesNo ? MessageAnswer::Yes : MessageAnswer::Ok;
    }
    QString input(const QString &, const QString &, const QString &) override { return typed; }
    std::optional<FontChoice> font(const FontChoice &) override { return {}; }
    std::optional<QString> saveFile(const SaveFileRequest &) override { return {}; }

    QString typed;
    QStringList told;
    std::function<void()> meanwhile; ///< runs while a box stands

private:
    DialogService *m_before;
};

/// Every row of some tables, as the store gives them.
inline QStringList dumpOf(const ConnectionPtr &store, const QStringList &tables)
{
    using namespace Qt::Literals::StringLiterals;
    QStringList lines;
    for (const QString &table : tables) {
        const auto rows = Recordset::create();
        rows->open(u"select * from ["_s + table + u']', store, CursorType::Static);
        for (int row = 0; row < rows->rowCount(); ++row) {
            QStringList values{table};
            for (int field = 0; field < rows->fieldCount(); ++field)
                values << rows->valueAt(row, field).toText();
            lines << values.join(u'|');
        }
        rows->close();
    }
    return lines;
}
