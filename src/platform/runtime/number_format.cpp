#include "platform/runtime/number_format.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <vector>

namespace
{
struct Piece {
    enum class Kind { Literal, Zero, Optional, Point, Exponent };

    Kind kind = Kind::Literal;
    QString literal;       ///< of a literal; the letter of an exponent
    int exponentZeros = 0; ///< fewest digits of an exponent
    bool plusSign = false; ///< an exponent that shows its plus sign
};

/// One of the patterns between semicolons.
struct Section {
    std::vector<Piece> pieces;
    qint64 integerPlaces = 0;
    qint64 decimalPlaces = 0;
    bool grouped = false;
    bool scientific = false;
    qint64 shift = 0; ///< powers of ten that percent signs and scaling commas move the point by
};

Section parseSection(const QString &pattern)
{
    Section section;
    bool afterPoint = false;
    qint64 commas = 0; // behind an integer place, their meaning still open
    const auto scale = [&] {
        section.shift -= 3 * commas;
        commas = 0;
    };
    for (qsizetype at = 0; at < pattern.size();) {
        Piece piece;
        if (takeLiteral(pattern, at, piece.literal)) {
            section.pieces.push_back(piece);
            continue;
        }
        const QChar c = pattern[at++];
        if (c == u'0' || c == u'#') {
            piece.kind = c == u'0' ? Piece::Kind::Zero : Piece::Kind::Optional;
            (afterPoint ? section.decimalPlaces : section.integerPlaces) += 1;
            section.grouped = section.grouped || commas > 0;
            commas = 0;
        } else if (c == u'.' && !afterPoint) {
            piece.kind = Piece::Kind::Point;
            afterPoint = true;
            scale();
        } else if (c == u',') {
            if (!afterPoint && section.integerPlaces > 0)
                ++commas;
            continue;
        } else if (c.toLower() == u'e' && !section.scientific && at < pattern.size() &&
                   (pattern[at] == u'+' || pattern[at] == u'-')) {
            piece.kind = Piece::Kind::Exponent;
            piece.literal = c;
            piece.plusSign = pattern[at++] == u'+';
            for (; at < pattern.size() && (pattern[at] == u'0' || pattern[at] == u'#'); ++at)
                piece.exponentZeros += pattern[at] == u'0' ? 1 : 0;
            section.scientific = true;
        } else {
            if (c == u'%')
                section.shift += 2;
            piece.literal = c;
        }
        section.pieces.push_back(piece);
    }
    scale();
    return section;
}

QStringList splitSections(const QString &pattern)
{
    QStringList sections{QString()};
    for (qsizetype at = 0; at < pattern.size();) {
        const qsizetype start = at;
        QString literal;
        if (!takeLiteral(pattern, at, literal))
            ++at;
        if (at == start + 1 && pattern[start] == u';')
            sections.append(QString());
        else
            sections.last() += pattern.mid(start, at - start);
    }
    return sections;
}

/// Writes the digits of one number into the places of a section.
class Writer
{
public:
    Writer(const Section &section, const Decimal &value)
        : m_section(section), m_integer(value.integerDigits()), m_fraction(value.fractionDigits())
    {
    }

    QString write(qint64 exponent)
    {
        qint64 places = m_section.integerPlaces;
        bool afterPoint = false;
        for (const Piece &piece : m_section.pieces) {
            switch (piece.kind) {
            case Piece::Kind::Literal:
                m_text += piece.literal;
                break;
            case Piece::Kind::Point:
                // Digits without a place of their own stand in front of the point.
                if (m_section.integerPlaces == 0)
                    writeExcess(0);
                m_text += u'.';
                afterPoint = true;
                break;
            case Piece::Kind::Exponent:
                writeExponent(piece, exponent);
                break;
            case Piece::Kind::Zero:
            case Piece::Kind::Optional:
                if (afterPoint)
                    writeDecimalPlace(piece);
                else
                    writeIntegerPlace(piece, --places);
                break;
            }
        }
        return m_text;
    }

    bool hasDigits() const { return m_hasDigits; }

private:
    void writeDigit(char digit)
    {
        m_text += QLatin1Char(digit);
        m_hasDigits = true;
    }

    /// `position` counts from the units place.
    void writeIntegerDigit(qint64 position)
    {
        const auto size = static_cast<qint64>(m_integer.size());
        writeDigit(position < size ? m_integer[static_cast<std::size_t>(size - 1 - position)] : '0');
        if (m_section.grouped && position > 0 && position % 3 == 0)
            m_text += u',';
    }

    /// The digits in front of that many places.
    void writeExcess(qint64 places)
    {
        for (auto position = static_cast<qint64>(m_integer.size()) - 1; position >= places; --position)
            writeIntegerDigit(position);
    }

    void writeIntegerPlace(const Piece &piece, qint64 position)
    {
        if (position == m_section.integerPlaces - 1)
            writeExcess(m_section.integerPlaces);
        m_zeroFill = m_zeroFill || piece.kind == Piece::Kind::Zero;
        if (m_zeroFill || position < static_cast<qint64>(m_integer.size()))
            writeIntegerDigit(position);
    }

    void writeDecimalPlace(const Piece &piece)
    {
        if (m_decimal < m_fraction.size())
            writeDigit(m_fraction[m_decimal]);
        else if (piece.kind == Piece::Kind::Zero)
            writeDigit('0');
        ++m_decimal;
    }

    void writeExponent(const Piece &piece, qint64 exponent)
    {
        m_text += piece.literal;
        if (exponent < 0)
            m_text += u'-';
        else if (piece.plusSign)
            m_text += u'+';
        m_text += QString::number(std::abs(exponent)).rightJustified(piece.exponentZeros, u'0');
    }

    const Section &m_section;
    std::string m_integer;
    std::string m_fraction;
    QString m_text;
    std::size_t m_decimal = 0;
    bool m_zeroFill = false;
    bool m_hasDigits = false;
};
} // namespace

bool takeLiteral(const QString &pattern, qsizetype &at, QString &literal)
{
    if (pattern[at] == u'"') {
        const qsizetype end = pattern.indexOf(u'"', at + 1);
        literal = pattern.mid(at + 1, end < 0 ? -1 : end - at - 1);
        at = end < 0 ? pattern.size() : end + 1;
        return true;
    }
    if (pattern[at] == u'\\' && at + 1 < pattern.size()) {
        literal = pattern[at + 1];
        at += 2;
        return true;
    }
    return false;
}

QString formatNumber(const Decimal &value, const QString &pattern)
{
    const QStringList sections = splitSections(pattern);
    Decimal number = value;
    bool sign = number.negative && !number.isZero();
    QString chosen = sections.first();
    if (sign && sections.size() > 1 && !sections[1].isEmpty()) {
        chosen = sections[1];
        sign = false;
    } else if (number.isZero() && sections.size() > 2 && !sections[2].isEmpty()) {
        chosen = sections[2];
    }

    const Section section = parseSection(chosen);
    if (!number.isZero())
        number.point += section.shift;
    qint64 exponent = 0;
    if (section.scientific) {
        const qint64 integerPlaces = std::max<qint64>(section.integerPlaces, 1);
        if (!number.isZero()) {
            exponent = number.point - integerPlaces;
            number.point = integerPlaces;
        }
        number.round(section.decimalPlaces, Decimal::Ties::AwayFromZero);
        if (number.point > integerPlaces) { // 9.99 became 10.0
            --number.point;
            ++exponent;
        }
    } else {
        number.round(section.decimalPlaces, Decimal::Ties::AwayFromZero);
    }

    Writer writer(section, number);
    const QString text = writer.write(exponent);
    return sign && writer.hasDigits() ? u'-' + text : text;
}
