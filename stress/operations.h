#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSet>
#include <QtCore/QString>

#include <functional>
#include <vector>

/// A piece of the program's work on the files of a folder.
struct Operation {
    const char *name;
    /// The program's own routine in an attached session; False when it told a failure.
    std::function<bool()> run;
    bool auditMayFail = false; ///< its audit row fails in silence and the work goes on: that is meant
};

/// Posting, correcting, cancelling, archiving, merging, compacting, creating a store, tutorial start, and
/// three exports: in place of an earlier `.xls` and `.xlsx`, and a `.txt` where none was.
const std::vector<Operation> &operations();

/// What every message box of the work told, since the last call.
QStringList takeTold();
/// Puts dialogs in place that say Yes to everything and save under the proposed name.
void installDialogs();

/// A folder with a store in use (members, transactions of both kinds, corrections, an archive of audit rows
/// and one of the ledger; a planted text in every text column), an older backup and two earlier workbooks.
void makeTemplate(const QString &folder);
/// Begins a session in a copy of the template: paths, user, clock, an open connection.
void attachSession(const QString &folder);
/// Ends it.
void detachSession();

/// What a folder's files hold: one digest for each kind of file.
struct FolderState {
    QByteArray store;
    QByteArray amounts; ///< of the store, without the marks of a cancel
    QByteArray backup;
    QByteArray tutorial;
    QByteArray workbooks;
    bool operator==(const FolderState &) const = default;
};
/// @throws RuntimeError when a store can't be opened or is damaged
FolderState stateOf(const QString &folder);

/// The states that a folder may be in during an operation: found by one run without a fault.
struct Course {
    std::vector<FolderState> states; ///< from before to after
    int diskOperations = 0;
    qint64 microseconds = 0;

    bool holds(const FolderState &state) const;
};
Course courseOf(const Operation &operation, const QString &templateFolder);

/// Copies the template into a folder, in place of what is in it.
void layOut(const QString &templateFolder, const QString &folder);

/// Begins a session in the folder and posts once more, as the next start does: what is wrong, or the empty
/// text. Its state must be one of the course; behind a failed statement of work whose audit row may fail, its
/// rows without the audit rows and the marks of a cancel must.
QString wrongAtNextStart(const Operation &operation, const Course &course, const QString &folder,
                         bool statementFailed = false);
