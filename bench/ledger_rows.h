#pragma once

#include <QtCore/QStringList>

class BareStore;

/// The family whose shares the rows are.
const QStringList &ledgerMembers();

/// Fills an empty store with the rows that the posting of so many ledger rows leaves, four members to a
/// transaction: most of the texts are different ones, the dates run over the years. In one transaction.
void writeLedgerRows(BareStore &store, int rows);
