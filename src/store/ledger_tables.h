#pragma once

#include <QtCore/QStringList>

/// The tables whose name begins with "ledger", the live one and its archives, in the order of the schema
/// list.
QStringList ledgerTables();
