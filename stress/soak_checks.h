#pragma once

#include "stress/soak_acts.h"

#include <QtCore/QList>

/// The store, read without the program's record sets.
struct SoakStore {
    qint64 lastNumber = 0;
    qint64 transactions = 0;
    qint64 audits = 0; ///< of transactions, also those in archives
};
/// @throws std::runtime_error when its own check finds it damaged, when a transaction's shares do not make up
/// its amount, or the last number is not that of the last transaction
SoakStore readSoakStore(const QString &path);

/// Looks for texts of the store in the files of folders and in deleted files that the process still has open;
/// `exports` is left out. @throws std::runtime_error with the place of one
void expectNoPlainText(const QStringList &folders, const QString &exports);

/// Every file of some folders but the exports, by its path.
QStringList filesIn(const QStringList &folders, const QString &exports);

/// One look at the process.
struct SoakSample {
    int operation = 0;
    double residentKib = 0;  ///< behind a trim of the heap
    double anonymousKib = 0; ///< of it, what the process itself wrote and no file holds
    double heapKib = 0;      ///< that the program holds
    int openFiles = 0;
    int widgets = 0;
};
SoakSample sampleProcess(int operation);

/// The slope of a straight line through samples, per 1,000 operations.
double growth(const QList<SoakSample> &samples, double SoakSample::*measure);
