#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QFontMetrics>

#include <memory>

/// Upper bounds for the widths of texts in one font, put together from the widths of their words. Each word
/// is measured once, whatever digits stand in it.
class WidthBounds
{
public:
    explicit WidthBounds(const QFontMetrics &metrics);

    /// Pixels, as QFontMetrics::horizontalAdvance() gives them.
    int width(const QString &text);
    /// The text is not wider; mostly it is just as wide.
    int bound(const QString &text);
    /// Nor is any text that has other digits in their places.
    int boundForAnyDigits(const QString &text);
    /// Texts and words that were really measured.
    int measured() const noexcept { return m_measured; }

private:
    struct Known {
        double withZeros; ///< the width of the text with zeros for its digits
        double gain;      ///< what other digits can add to it at most
    };
    Known known(const QString &text);
    double measure(const QString &text);
    double widthOfWords(const QString &text);
    double widthOfWord(QStringView before, QStringView word);
    double step(QStringView around, char16_t before, char16_t letter);
    double gain(char16_t before, char16_t letter);
    double greatestGain(char16_t before, char16_t letter);

    QFontMetricsF m_metrics;
    QHash<QString, Known> m_texts; ///< by the text with zeros for its digits; so are words
    QHash<QString, double> m_words;
    QHash<quint32, double> m_gains; ///< by two letters
    QHash<quint32, double> m_greatestGains;
    QString m_key; ///< of what is looked up
    int m_measured = 0;
};

/// Finds the widest of many texts in a font: one is measured only when its bound says that it may be wider
/// than the widest so far.
class WidestText
{
public:
    /// Searches in one font share their bounds.
    explicit WidestText(std::shared_ptr<WidthBounds> bounds);

    void take(const QString &text);
    int width() const noexcept { return m_width; } ///< pixels; 0 before any text

private:
    std::shared_ptr<WidthBounds> m_bounds;
    int m_width = 0;
};
