#pragma once

#include <QtCore/QString>

#include <span>

/// The Arabic text of an English word or phrase when the session is Arabic; the text itself otherwise, and
/// for a text without an entry. `:`, `&` and letter case do not count.
QString translate(const QString &text);

struct VocabularyPair {
    QStringView key;
    QStringView arabic;
};
/// All pairs.
std::span<const VocabularyPair> vocabulary();
