#pragma once

#include <QtCore/QByteArrayView>
#include <QtCore/QString>

#include <vector>

namespace database
{

/// A growing list of different texts, numbered from 0 in the order of their arrival and held as UTF-8.
class TextPool
{
public:
    /// The number of a text, which is added unless it is there.
    int intern(QByteArrayView text);
    int count() const noexcept { return int(m_ends.size()); }
    QByteArrayView bytes(int number) const noexcept;
    bool is(int number, QByteArrayView text) const noexcept;
    QString text(int number) const { return QString::fromUtf8(bytes(number)); }

private:
    /// A place of the hash table, which is searched from the text's hash on.
    struct Slot {
        quint32 hash = 0;
        qint32 number = -1; ///< none: free
    };
    Slot &slotOf(QByteArrayView text, quint32 hash);
    void growTable();

    std::vector<char> m_bytes; ///< all texts, one behind the other
    std::vector<std::size_t> m_ends;
    std::vector<Slot> m_table; ///< its size is a power of two; at most two thirds are taken
};

} // namespace database
