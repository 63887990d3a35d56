#pragma once

#include "platform/ui/dialogs.h"
#include "support/store_reading.h"

#include <functional>

// For tests that bring into every box what nobody foresaw.

inline QStringList hostileTexts()
{
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
    return u"1e300 -5 (12) &H10 922337203685477.58 922337203685478 1e-300 &HFFFFFFFF 1,,000 $5 nan inf 1e9999"_s
               .split(u' ')
           << QString(10000, u'9');
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
    bool print(QPrinter &) override { return false; }

    QString typed;
    QStringList told;
    std::function<void()> meanwhile; ///< runs while a box stands

private:
    DialogService *m_before;
};

/// Every row of some tables, as the store gives them.
inline QStringList dumpOf(const ConnectionPtr &store, const QStringList &tables)
{
    QStringList lines;
    for (const QString &table : tables) {
        const auto rows = Recordset::create();
        rows->open(u"select * from ["_s + table + u']', store, CursorType::Static);
        for (const QString &line : linesOf(*rows))
            lines << table + u'|' + line;
    }
    return lines;
}
