#include "presentation/vocabulary.h"

#include "core/engine.h"

#include <QtCore/QHash>

QString translate(const QString &text)
{
    if (text.isEmpty() || !engine.isArabic)
        return text;

    static const QHash<QStringView, QStringView> words = [] {
        QHash<QStringView, QStringView> byKey;
        for (const VocabularyPair &pair : vocabulary())
            byKey.insert(pair.key, pair.arabic);
        return byKey;
    }();
    QString key = text;
    key.remove(u':').remove(u'&');
    key = key.toLower();
    const QStringView arabic = words.value(key);
    return arabic.isEmpty() ? text : arabic.toString();
}
