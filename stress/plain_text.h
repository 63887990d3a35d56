#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

/// What is looked for in files: texts as they would stand there readable, in UTF-8 and UTF-16.
class PlainTexts
{
public:
    explicit PlainTexts(const QStringList &texts);
    /// Of each text column of each table of a store one text that stands there, planted ones first, and the
    /// word that all planted ones begin with.
    /// @throws std::runtime_error when a column has none that is long enough to be told from chance
    static PlainTexts ofStore(const QString &path);

    bool standIn(const QByteArray &content) const;
    /// Which files below some folders, hidden ones too, have one of them, but those that are left out.
    QStringList filesWithOne(const QStringList &folders,
                             const std::function<bool(const QString &path)> &leftOut) const;

private:
    QList<QByteArray> m_forms;
};

/// Gives the open session's store a text in every text column of every table.
void plantTexts();
