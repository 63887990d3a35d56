#pragma once

#include "platform/report/report.h"

// The five report designs of the program, each a fresh copy in English for a page from left to right.

Report ledgerReport();         ///< `ledger`: the rows of one member
Report monthlyLedgerReport();  ///< `MonthlyLedger`: sums by month and side of one member
Report generalReport();        ///< `general`: the transactions of the family
Report monthlyGeneralReport(); ///< `MonthlyGeneral`: sums by month and side of the family
Report ledgerAllReport();      ///< `ledgerall`: the rows of all members, from the browser
