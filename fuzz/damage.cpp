#include "fuzz/damage.h"

#include "fuzz/sealed_pages.h"
#include "platform/database/session.h"

#include <sqlcipher/sqlite3.h>

#include <algorithm>

namespace fuzz
{

QByteArray damagedStore(QByteArrayView changes)
{
    static const SealedPages store;
    constexpr quint8 onDisk = 0x80;
    constexpr qsizetype headSize = 4;
    const qsizetype pages = store.plain().size() / SealedPages::pageSize;

    const auto changed = [&](QByteArray all, bool disk) {
        for (QByteArrayView rest = changes; rest.size() >= headSize;) {
            const auto number = quint8(rest[0]);
            const qsizetype offset = quint8(rest[1]) | quint8(rest[2]) << 8;
            const qsizetype size = std::min(qsizetype(quint8(rest[3])), rest.size() - headSize);
            const QByteArrayView put = rest.sliced(headSize, size);
            rest = rest.sliced(headSize + size);
            const qsizetype at =
                (number & ~onDisk) % pages * SealedPages::pageSize + offset % SealedPages::pageSize;
            if (disk != ((number & onDisk) != 0))
                continue;
            if (disk && put.isEmpty())
                all.truncate(at);
            else if (at < all.size())
                std::copy_n(put.data(), std::min(put.size(), all.size() - at), all.data() + at);
        }
        return all;
    };
    return changed(store.seal(changed(store.plain(), false)), true);
}

void limitWork(const ConnectionPtr &store)
{
    sqlite3_progress_handler(
        store->session().engine().handle(), 1'000'000, [](void *) { return 1; }, nullptr);
}

} // namespace fuzz
