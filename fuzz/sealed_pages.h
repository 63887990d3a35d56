#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace fuzz
{

/// A small store with rows of every kind, long texts and free pages. Its pages can be changed below the
/// cipher: what seal() gives passes the store engine's check of each page.
class SealedPages
{
public:
    static constexpr qsizetype pageSize = 4096;

    SealedPages();

    /// The key itself, so that no time goes into its derivation.
    static QString password();
    /// The pages in the clear.
    const QByteArray &plain() const noexcept { return m_plain; }
    /// The file with these pages in place of the plain ones; their size must be the same.
    QByteArray seal(const QByteArray &pages) const;

private:
    void sealPage(const QByteArray &pages, qsizetype page, QByteArray &file) const;

    QByteArray m_macKey;
    QByteArray m_file;
    QByteArray m_plain;
};

} // namespace fuzz
