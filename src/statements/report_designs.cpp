#include "statements/report_designs.h"

Report ledgerReport()
{
    return {};
}
Report monthlyLedgerReport()
{
    return {};
}
Report generalReport()
{
    return {};
}
Report monthlyGeneralReport()
{
    return {};
}
Report ledgerAllReport()
{
    return {};
}
