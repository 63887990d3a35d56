#include "platform/report/report.h"

using namespace Qt::Literals::StringLiterals;

QString ReportControl::typeName() const
{
    switch (type) {
    case Type::Label:
        return u"RptLabel"_s;
    case Type::TextBox:
        return u"RptTextBox"_s;
    case Type::Function:
        return u"RptFunction"_s;
    case Type::Line:
        return u"RptLine"_s;
    case Type::Image:
        return u"RptImage"_s;
    }
    return {};
}
