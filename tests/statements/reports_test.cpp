#include "platform/runtime/dates.h"
#include "statements/reports.h"
#include "support/printing.h"
#include "support/store_fixture.h"

using namespace Qt::Literals::StringLiterals;

namespace
{

using Type = ReportControl::Type;

/// `text` is a label's caption or a box's field.
ReportControl control(Type type, const QString &text = {}, const QString &name = {})
{
    ReportControl made{.type = type, .name = name, .place = {}};
    (type == Type::Label ? made.caption : made.dataField) = text;
    return made;
}

class ReportsTest : public StoreFixture
{
protected:
    /// One section's controls behind a box of an unknown field, as a statement or the browser shows them.
    Report reformatted(std::vector<ReportControl> controls, bool statement) const
    {
        const auto rows = Recordset::create();
        rows->open(u"select amount,creditordebit,valid as validx,valid,ddate,enteredon from ledger"_s,
                   engine.dbConnection, CursorType::Static);
        controls.insert(controls.begin(), control(Type::TextBox, u"nosuch"_s));
        Report report;
        report.sections = {{ReportSection::Kind::Detail, u"Section1"_s, 300, std::move(controls)}};
        report.dataSource = rows;
        statement ? ReformatStatementReport(report, *rows) : ReformatReport(report);
        return report;
    }
};

TEST_F(ReportsTest, ShowsValuesByTheirTypes)
{
    const QString stamp = u"13:05:09 2004/03/15"_s;
    const struct {
        QString field;
        QStringList shown; // by a statement in Arabic and English, by the browser in Arabic and English
    } cases[] = {
        {u"creditordebit"_s, {u"له عليه"_s, u"(+) (-)"_s, u"له عليه"_s, u"Revenue Expense"_s}},
        {u"validx"_s, {u"ساري ملغي"_s, u"Valid Invalid"_s, u"True False"_s, u"True False"_s}},
        {u"valid"_s, {u"نعم لا"_s, u"YES NO"_s, u"ساري ملغي"_s, u"Valid Invalid"_s}},
        {u"ddate"_s, QStringList(4, u"2004/03/15"_s)},
        {u"enteredon"_s, QStringList(4, stamp)},
        {u"amount"_s, QStringList(4, u"-1.5"_s)},
    };
    for (const auto &each : cases) {
        for (int i = 0; i < 4; ++i) {
            setLanguage(i % 2 == 0);
            const Report report = reformatted({control(Type::TextBox, each.field)}, i < 2);
            const ReportControl &box = report.sections[0].controls[1];
            const auto show = [&](const Value &value) { return formatted(value, box.dataFormat); };
            const FieldType type = report.dataSource->field(each.field).type;
            EXPECT_EQ(type == FieldType::Boolean ? show(true) + u' ' + show(false)
                      : type == FieldType::Date  ? show(makeDate(2004, 3, 15, 13, 5, 9))
                                                 : show(-1.5),
                      each.shown[i]);
        }
    }
}

TEST_F(ReportsTest, GivesControlsTheSession)
{
    engine.userFontSize = 11;
    engine.userFontColor = 0x123456;
    const auto text = [](const Report &report) {
        QStringList texts{QString::number(report.leftMargin)};
        for (const ReportControl &control : report.sections[0].controls)
            texts << u"%1 %2 %3 %4 %5"_s.arg(control.caption)
                         .arg(control.fontSize)
                         .arg(control.foreColor, 0, 16)
                         .arg(control.canGrow)
                         .arg(control.rightToLeft);
        return texts.join(u'|');
    };
    const std::vector<ReportControl> controls{control(Type::Label, u"Number"_s),
                                              control(Type::Label, u"CREDITORDEBIT"_s),
                                              control(Type::Label, u"15/03/2004"_s),
                                              control(Type::Label, u"%i"_s, u"PHONE"_s),
                                              control(Type::Function),
                                              control(Type::Line)};
    EXPECT_EQ(text(reformatted(controls, true)),
              u"300| 11 123456 1 0|Number 11 123456 1 0|CREDITORDEBIT 11 123456 1 0|"
              "2004m3d15 11 123456 1 0| 11 123456 1 0| 11 123456 1 0| 8 0 0 0"_s);
    setLanguage(true);
    EXPECT_EQ(text(reformatted(controls, false)),
              u"1440| 11 0 0 1|"_s + u"الرقم"_s + u" 11 123456 0 0|"_s + u"له أو عليه"_s +
                  u" 11 123456 0 0|2004m3d15 11 123456 0 0|%i 11 123456 0 0| 11 0 0 0| 8 0 0 0"_s);
}

} // namespace
