#include "browser/report_title.h"

#include "core/engine.h"

#include <array>

using namespace Qt::Literals::StringLiterals;

namespace
{

struct TableTitles {
    QStringView tableName;
    std::array<QStringView, 4> texts; ///< for both sides, revenues, expenses, and none checked
};

constexpr TableTitles titles[] = {
    {u"ledger",
     {u" كشف حساب جميع مواد السجٍل ", u" كشف حساب جميع العوائد ", u" كشف حساب جميع المصروفات ",
      u" كشف حساب السجٍل"}},
    {u"audit_ledger",
     {u"تغييرات مواد السجٍل", u"تغييرات العوائد في السجٍل", u"تغييرات المصروفات في السجٍل", u"تغييرات السجٍل"}},
    {u"general",
     {u" كشف حساب جميع مواد العًام ", u" كشف حساب جميع العوائد ", u" كشف حساب جميع المصروفات ",
      u" كشف حساب العًام"}},
    {u"audit_general",
     {u"تغييرات مواد العًام", u"تغييرات العوائد في العًام", u"تغييرات المصروفات في العًام", u"تغييرات العًام"}},
};

size_t indexOf(std::optional<Filters::Credit> credit)
{
    if (!credit)
        return 3;
    switch (*credit) {
    case Filters::Credit::Both:
        return 0;
    case Filters::Credit::Revenues:
        return 1;
    case Filters::Credit::Expenses:
        return 2;
    }
    return 3;
}

} // namespace

std::optional<QString> reportTitle(const QString &tableName, std::optional<Filters::Credit> credit)
{
    for (const TableTitles &title : titles) {
        if (title.tableName == tableName)
            return u"كوفانا الشيخ/ "_s + engine.deceasedName + u" رحمه الله "_s + u"\r\n"_s +
                   title.texts[indexOf(credit)].toString();
    }
    return {};
}

QString dateRangeLine(const QString &from, const QString &to)
{
    return u"\r\n"_s +
           (engine.isArabic ? u" من "_s + from + u" إلى "_s + to : u" from "_s + from + u" to "_s + to);
}
