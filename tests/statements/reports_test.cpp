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

TEST_F(StoreFixture, GivesControlsTheSession)
{
    engine.userFontSize = 11;
    engine.userFontColor = 0x123456;
    const std::vector<ReportControl> controls{control(Type::TextBox, u"nosuch"_s),
                                              control(Type::Label, u"Number"_s),
                                              control(Type::Label, u"CREDITORDEBIT"_s),
                                              control(Type::Label, u"15/03/2004"_s),
                                              control(Type::Label, u"%i"_s, u"PHONE"_s),
                                              control(Type::Function),
                                              control(Type::Line)};
    const auto reformatted = [&](bool statement) {
        Report report;
        report.sections = {{ReportSection::Kind::Detail, u"Section1"_s, 300, controls}};
        report.dataSource = Recordset::create();
        report.dataSource->open(u"select * from ledger"_s, engine.dbConnection);
        statement ? ReformatStatementReport(report, *report.dataSource) : ReformatReport(report);
        QStringList texts{QString::number(report.leftMargin)};
        for (const ReportControl &control : report.sections[0].controls)
            texts << u"%1 %2 %3 %4 %5"_s.arg(control.caption)
                         .arg(control.fontSize)
                         .arg(control.foreColor, 0, 16)
                         .arg(control.canGrow)
                         .arg(control.rightToLeft);
        return texts.join(u'|');
    };
    EXPECT_EQ(reformatted(true), u"300| 11 123456 1 0|Number 11 123456 1 0|CREDITORDEBIT 11 123456 1 0|"
                                 "2004m3d15 11 123456 1 0| 11 123456 1 0| 11 123456 1 0| 8 0 0 0"_s);
    EXPECT_EQ(control(Type::Function).typeName(), u"RptFunction"_s);
    setLanguage(true);
    EXPECT_EQ(reformatted(false),
              u"1440| 11 0 0 1|"_s + u"الرقم"_s + u" 11 123456 0 0|"_s + u"له أو عليه"_s +
                  u" 11 123456 0 0|2004m3d15 11 123456 0 0|%i 11 123456 0 0| 11 0 0 0| 8 0 0 0"_s);
}

} // namespace
