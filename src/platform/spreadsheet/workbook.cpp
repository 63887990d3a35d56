#include "platform/spreadsheet/workbook.h"

struct Workbook::Private {
};

Workbook::Workbook() : d(std::make_unique<Private>()) {}
Workbook::~Workbook() = default;
void Workbook::setCell(int, int, const Value &) {}
void Workbook::setBold(int, int, int) {}
void Workbook::copyFromRecordset(int, Recordset &) {}
void Workbook::saveAs(const QString &) {}
