#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QFontMetrics>

/// Finds the widest of many texts in a font without measuring each: a text is measured only when the widths
/// of its words, each measured once for all digits, say that it may be wider than the widest so far.
class WidestText
{
public:
    explicit WidestText(const QFontMetrics &metrics);

    void take(const QString &text);
    /// Pixels, as QFontMetrics::horizontalAdvance() gives them; 0 before any text.
    int width() const noexcept { return m_width; }
    /// No text is wider that has these letters, its digits exchanged for any others. Pixels.
    int boundOfPattern(const QString &text);
    /// Texts and words that were really measured.
    int measured() const noexcept { return m_measured; }

private:
    enum class Digits { AsWritten, Any };
    int bound(const QString &text, Digits digits);
    double measure(const QString &text);
    double widthWithZeros(QStringView before, QStringView text);
    double widthOfWords(const QString &text);
    double gain(char16_t before, char16_t letter);
    double greatestGain(char16_t before, char16_t letter);

    QFontMetricsF m_metrics;
    QHash<QString, double> m_widths; ///< of texts whose digits are zeros
    QHash<quint32, double> m_gains;  ///< by two letters
    QHash<quint32, double> m_greatestGains;
    QString m_key; ///< of the text that is looked up
    int m_width = 0;
    int m_measured = 0;
};
