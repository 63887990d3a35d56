#include "platform/database/text_pool.h"

#include <QtCore/QHash>

#include <algorithm>

namespace database
{

int TextPool::intern(QByteArrayView text)
{
    if (m_table.size() * 2 <= m_ends.size() * 3)
        growTable();
    const auto hash = quint32(qHash(text));
    Slot &slot = slotOf(text, hash);
    if (slot.number < 0) {
        slot = {hash, count()};
        m_bytes.insert(m_bytes.end(), text.begin(), text.end());
        m_ends.push_back(m_bytes.size());
    }
    return slot.number;
}

QByteArrayView TextPool::bytes(int number) const noexcept
{
    const auto index = std::size_t(number);
    const std::size_t start = index > 0 ? m_ends[index - 1] : 0;
    return {m_bytes.data() + start, qsizetype(m_ends[index] - start)};
}

bool TextPool::is(int number, QByteArrayView text) const noexcept
{
    const QByteArrayView own = bytes(number);
    return std::equal(own.begin(), own.end(), text.begin(), text.end()); // either may have no bytes at all
}

TextPool::Slot &TextPool::slotOf(QByteArrayView text, quint32 hash)
{
    const std::size_t mask = m_table.size() - 1;
    std::size_t place = hash & mask;
    while (m_table[place].number >= 0 && (m_table[place].hash != hash || !is(m_table[place].number, text)))
        place = (place + 1) & mask;
    return m_table[place];
}

void TextPool::growTable()
{
    constexpr std::size_t smallest = 64;
    const std::vector<Slot> before = std::exchange(m_table, {});
    m_table.resize(std::max(smallest, before.size() * 2));
    const std::size_t mask = m_table.size() - 1;
    for (const Slot &slot : before) {
        if (slot.number < 0)
            continue;
        std::size_t place = slot.hash & mask;
        while (m_table[place].number >= 0)
            place = (place + 1) & mask;
        m_table[place] = slot;
    }
}

} // namespace database
