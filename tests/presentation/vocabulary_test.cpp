#include "core/engine.h"
#include "presentation/vocabulary.h"
#include "support/printing.h"

#include <QtCore/QCryptographicHash>
#include <QtCore/QSet>
#include <gtest/gtest.h>

using namespace Qt::Literals::StringLiterals;

namespace
{
TEST(Vocabulary, HoldsEveryPairLetterByLetter)
{
    QString all;
    QSet<QString> keys;
    for (const VocabularyPair &pair : vocabulary()) {
        all += pair.key.toString() + u'=' + pair.arabic.toString() + u'\n';
        keys.insert(pair.key.toString());
    }
    EXPECT_EQ(vocabulary().size(), 174U);
    EXPECT_EQ(keys.size(), 174);
    EXPECT_EQ(QString::fromLatin1(QCryptographicHash::hash(all.toUtf8(), QCryptographicHash::Sha256).toHex()),
              u"ece753e12523485b23d277a8fd1e3707f91de8ea15a2d45e4e0505c253e00917"_s);
}

TEST(Vocabulary, TranslatesInAnArabicSessionOnly)
{
    const std::pair<QString, QString> cases[] = {
        {u"save"_s, u"حفظ"_s},      {u"&SAVE:"_s, u"حفظ"_s},    {u"Exit "_s, u"Exit "_s}, // blanks count
        {u"A & B:"_s, u"A & B:"_s}, {u"Cr/Dr"_s, u"له:عليه"_s}, {u""_s, u""_s}};
    for (const auto &[text, arabic] : cases) {
        engine.isArabic = true;
        EXPECT_EQ(translate(text), arabic);
        engine.isArabic = false;
        EXPECT_EQ(translate(text), text);
    }
}
} // namespace
