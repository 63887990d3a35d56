#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtGui/QFontMetrics>

#include <memory>

/// Upper bounds for the widths of texts in one font, put together from the widths of their words. Each word
/// is measured once, whatever digits stand in it. The texts are single lines without tabs.
class WidthBounds
{
public:
    explicit WidthBounds(const QFontMetrics &metrics);

    /// Pixels, as QFontMetrics::horizontalAdvance() gives them.
    int width(const QString &text);
    /// The text is not wider, nor is any text that has other digits in their places; mostly they are just as
    /// wide.
    int bound(const QString &text);
    /// Texts and words that were really measured.
    int measured() const noexcept { return m_measured; }

private:
    double measure(const QString &text);
    double boundWithZeros(const QString &text);
    double widthOfWords(const QString &text);
    double widthOfWord(QStringView before, QStringView word);
    double step(QStringView around, QChar before, QChar letter);
    double gain(QChar before, QChar letter);

    QFontMetricsF m_metrics;
    QHash<QString, int> m_bounds; ///< by the text with zeros for its digits; so are words
    QHash<QString, double> m_words;
    QHash<std::pair<QChar, QChar>, double> m_gains;
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
