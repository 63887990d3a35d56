#include "fuzz/workbook_reading.h"

#include "fuzz/support.h"

#include <QtCore/QtEndian>

#include <utility>
#include <vector>

namespace fuzz
{

namespace
{

template <typename Number>
Number numberAt(const QByteArray &bytes, qsizetype at)
{
    require(at >= 0 && at + qsizetype(sizeof(Number)) <= bytes.size(), "a number lies inside its file");
    return qFromLittleEndian<Number>(bytes.constData() + at);
}

/// The compound file around a workbook: streams in chains of sectors.
class Compound
{
public:
    explicit Compound(const QByteArray &file) : m_file(file)
    {
        require(file.startsWith("\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1"), "a compound file has its mark");
        require(numberAt<quint16>(file, 30) == 9, "sectors have 512 bytes");
        constexpr quint32 inHeader = 109;
        const auto tables = numberAt<quint32>(file, 44);
        QByteArray list = file.mid(76, 4 * qsizetype(inHeader));
        auto next = numberAt<quint32>(file, 68);
        for (auto lists = numberAt<quint32>(file, 72); lists > 0; --lists) {
            const QByteArray more = sector(next);
            list += more.chopped(4);
            next = numberAt<quint32>(more, 508);
        }
        for (quint32 table = 0; table < tables; ++table)
            m_table += sector(numberAt<quint32>(list, 4 * qsizetype(table)));
    }

    QByteArray stream(QStringView name) const
    {
        const QByteArray directory = chain(numberAt<quint32>(m_file, 48));
        for (qsizetype entry = 0; entry < directory.size(); entry += 128) {
            const QByteArray letters(reinterpret_cast<const char *>(name.utf16()), 2 * name.size());
            if (numberAt<quint16>(directory, entry + 64) != letters.size() + 2 ||
                directory.mid(entry, letters.size()) != letters)
                continue;
            const auto size = numberAt<quint32>(directory, entry + 120);
            require(size >= numberAt<quint32>(m_file, 56), "the stream lies in full sectors");
            const QByteArray content = chain(numberAt<quint32>(directory, entry + 116));
            require(content.size() >= qsizetype(size), "the stream has its size");
            return content.first(size);
        }
        require(false, "the stream is in the directory");
        return {};
    }

private:
    QByteArray sector(quint32 number) const
    {
        const qsizetype at = 512 + qsizetype(number) * 512;
        require(at + 512 <= m_file.size(), "a sector lies inside the file");
        return m_file.mid(at, 512);
    }
    QByteArray chain(quint32 number) const
    {
        QByteArray content;
        constexpr quint32 endOfChain = 0xFFFFFFFE;
        for (; number != endOfChain; number = numberAt<quint32>(m_table, 4 * qsizetype(number))) {
            content += sector(number);
            require(content.size() <= m_file.size(), "a chain has an end");
        }
        return content;
    }

    QByteArray m_file;
    QByteArray m_table;
};

constexpr quint16 endOfPart = 0x000A;
constexpr quint16 continuation = 0x003C;
constexpr quint16 boundSheet = 0x0085;
constexpr quint16 sharedStrings = 0x00FC;
constexpr quint16 labelOfShared = 0x00FD;

struct Record {
    quint16 type = 0;
    QByteArray content;
};

/// The records from a place of the stream to the end of that part.
std::vector<Record> recordsFrom(const QByteArray &stream, qsizetype at)
{
    std::vector<Record> records;
    do {
        const auto size = numberAt<quint16>(stream, at + 2);
        require(size <= 8224 && at + 4 + size <= stream.size(), "a record has its size");
        records.push_back({numberAt<quint16>(stream, at), stream.mid(at + 4, size)});
        at += 4 + size;
    } while (records.back().type != endOfPart);
    return records;
}

/// The table of shared texts, from its record and the continuations behind it.
class Strings
{
public:
    Strings(const std::vector<Record> &records, std::size_t record) : m_records(records), m_record(record)
    {
        require(records[record].type == sharedStrings, "the shared texts have a record");
        uses = numberAt<quint32>(content(), 0);
        m_at = 8;
        for (auto count = numberAt<quint32>(content(), 4); count > 0; --count)
            texts.push_back(next());
        require(m_at == content().size(), "nothing stands behind the last text");
    }

    std::vector<QString> texts;
    quint32 uses = 0;

private:
    const QByteArray &content() const { return m_records[m_record].content; }
    void goOn()
    {
        ++m_record;
        require(m_record < m_records.size() && m_records[m_record].type == continuation,
                "a text goes on in a continuation");
        m_at = 0;
    }
    QString next()
    {
        if (m_at == content().size())
            goOn();
        const auto size = numberAt<quint16>(content(), m_at);
        auto wide = numberAt<quint8>(content(), m_at + 2);
        m_at += 3;
        QString text;
        while (text.size() < size) {
            if (m_at == content().size()) {
                goOn();
                wide = numberAt<quint8>(content(), m_at++);
            }
            require(wide <= 1, "a text has no runs");
            const qsizetype width = wide ? 2 : 1;
            const qsizetype count = std::min(size - text.size(), (content().size() - m_at) / width);
            require(count > 0, "a record holds whole characters");
            const char *characters = content().constData() + m_at;
            QString piece = QString::fromLatin1(characters, wide ? 0 : count);
            piece.resize(count);
            if (wide)
                qFromLittleEndian<char16_t>(characters, count, piece.data());
            text += piece;
            m_at += count * width;
        }
        return text;
    }

    const std::vector<Record> &m_records;
    std::size_t m_record;
    qsizetype m_at = 0;
};

} // namespace

CellTexts textsOfXls(const QByteArray &file)
{
    const QByteArray stream = Compound(file).stream(u"Workbook");
    const std::vector<Record> globals = recordsFrom(stream, 0);
    std::size_t table = 0;
    qsizetype sheet = -1;
    for (std::size_t record = 0; record < globals.size(); ++record) {
        if (globals[record].type == sharedStrings)
            table = record;
        if (globals[record].type == boundSheet && sheet < 0)
            sheet = numberAt<quint32>(globals[record].content, 0);
    }
    const Strings strings(globals, table);
    CellTexts cells;
    for (const Record &record : recordsFrom(stream, sheet)) {
        if (record.type != labelOfShared)
            continue;
        const auto number = numberAt<quint32>(record.content, 6);
        require(number < strings.texts.size(), "a cell names a shared text");
        const std::pair<int, int> place(numberAt<quint16>(record.content, 0),
                                        numberAt<quint16>(record.content, 2));
        require(cells.emplace(place, strings.texts[number]).second, "a cell stands there once");
    }
    require(cells.size() == strings.uses, "the uses of shared texts are counted");
    return cells;
}

CellTexts textsOfTabs(const QByteArray &file)
{
    require(file.startsWith("\xEF\xBB\xBF"), "the text has its mark");
    CellTexts cells;
    const QString text = QString::fromUtf8(file); // which drops the mark
    std::pair<int, int> place;
    for (qsizetype at = 0; at < text.size();) {
        QString field;
        if (text[at] == u'"') {
            do { // a quote behind another stands for itself
                const qsizetype end = text.indexOf(u'"', at + 1);
                require(end > 0, "a quoted field has an end");
                field += QStringView(text).sliced(at, end - at);
                at = end + 1;
            } while (at < text.size() && text[at] == u'"');
            field.remove(0, 1);
        } else {
            const auto end = [&](qsizetype found) { return found < 0 ? text.size() : found; };
            const qsizetype line = end(text.indexOf(u"\r\n", at));
            const qsizetype start = std::exchange(at, std::min(line, end(text.indexOf(u'\t', at))));
            field = text.sliced(start, at - start);
        }
        if (!field.isEmpty())
            cells[place] = field;
        const bool sameRow = at < text.size() && text[at] == u'\t';
        require(sameRow || QStringView(text).sliced(std::min(at, text.size())).startsWith(u"\r\n"),
                "a field has an end");
        place = sameRow ? std::pair(place.first, place.second + 1) : std::pair(place.first + 1, 0);
        at += sameRow ? 1 : 2;
    }
    return cells;
}

} // namespace fuzz
