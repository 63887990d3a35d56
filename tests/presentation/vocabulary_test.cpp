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
    const struct {
        const char16_t *text;
        const char16_t *arabic;
    } cases[] = {
        {u"save", u"\u062D\u0641\u0638"},
        {u"&SAVE:", u"\u062D\u0641\u0638"},
        {u"Exit ", u"Exit "}, // blanks count
        {u"", u""},
        {u"A & B:", u"A & B:"}, // no key: as it came
        {u"Cr/Dr", u"\u0644\u0647:\u0639\u0644\u064A\u0647"},
        {u"enteredby", u"\u0627\u0644\u0645\u064F\u062F\u062E\u0650\u0644"},
        {u"enterer", u"\u0627\u0644\u0645\u064F\u062F\u062E\u0644"},
        {u"updatedby", u"\u0645\u064E\u062D\u062F\u062B \u0645\u0646 \u0642\u064D\u0628\u0644"},
        {u"general", u"\u0627\u0644\u0639\u064B\u0627\u0645"},
        {u"entry", u"\u0625\u062F\u062E\u0640\u0640\u0640\u0627\u0644"},
        {u"the desceased", u"\u062A\u0633\u062C\u064A\u0644 \u0627\u0644\u0645\u0648\u0631\u064D\u062B"},
        {u"id", u"\u0627\u0644\u0631\u0642\u0645"},
        {u"idkey", u"\u0627\u0644\u062A\u0633\u0644\u0633\u0644"},
        {u"refresh", u"\u062A\u0634\u064A\u064A\u0643"},
    };
    for (const auto &each : cases) {
        const auto text = QString::fromUtf16(each.text);
        engine.isArabic = true;
        EXPECT_EQ(translate(text), QString::fromUtf16(each.arabic)) << text.toStdString();
        engine.isArabic = false;
        EXPECT_EQ(translate(text), text);
    }
}
} // namespace
