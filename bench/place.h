#pragma once

#include "platform/ui/dialogs.h"

#include <QtCore/QString>
#include <QtCore/QStringList>

/// The password of every store of the benchmarks.
extern const QString benchPassword;

/// Answers every question with Yes and shows nothing.
class SilentDialogs : public DialogService
{
public:
    SilentDialogs();
    ~SilentDialogs() override;
    MessageAnswer message(const MessageRequest &request) override;
    QString input(const QString &, const QString &, const QString &) override { return {}; }
    std::optional<FontChoice> font(const FontChoice &) override { return std::nullopt; }
    std::optional<QString> saveFile(const SaveFileRequest &) override { return std::nullopt; }
    bool print(QPrinter &) override { return false; }
};

/// The session stands in a folder, with a store of that name open, for as long as this lives. A store that is
/// not there is made, with those members as its family.
class Place
{
public:
    Place(const QString &folder, const QString &store, const QStringList &members);
    ~Place();
    Place(const Place &) = delete;
    Place &operator=(const Place &) = delete;

    /// Closes the session's connection and opens it anew.
    void reopen() const;
};

/// The rows of a table of the session's store.
int countOf(const QString &table);
