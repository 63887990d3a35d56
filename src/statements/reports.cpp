#include "statements/reports.h"

void ReformatStatementReport(Report &, const Recordset &) {}
void ReformatReport(Report &) {}
void showReport(const Report &) {}
