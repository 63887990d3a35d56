#include "platform/database/sql/collation.h"

#include "platform/database/errors.h"

#include <QtCore/QByteArrayView>
#include <QtCore/QtEndian>
#include <sqlcipher/sqlite3.h>
#include <unicode/ucol.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace sql
{

namespace
{

struct Close {
    void operator()(UCollator *collator) const { ucol_close(collator); }
};
using Collator = std::unique_ptr<UCollator, Close>;

Collator openCollator()
{
    UErrorCode status = U_ZERO_ERROR;
    Collator collator(ucol_open("ar", &status));
    if (U_FAILURE(status))
        throw data_errors::engineFailure(u"The collation for Arabic can't be made: "_s +
                                         QLatin1StringView(u_errorName(status)));
    ucol_setStrength(collator.get(), UCOL_SECONDARY); // letter case is a difference of the third level
    return collator;
}

const UCollator *arabic()
{
    static const Collator collator = openCollator();
    return collator.get();
}

QByteArrayView withoutTrailingBlanks(QByteArrayView text)
{
    while (text.endsWith(' '))
        text.chop(1);
    return text;
}

/// The texts are UTF-8, as the engine gives them.
int compare(QByteArrayView left, QByteArrayView right)
{
    left = withoutTrailingBlanks(left);
    right = withoutTrailingBlanks(right);
    if (left == right)
        return 0;
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(arabic(), left.data(), int(left.size()), right.data(), int(right.size()),
                            &status);
}

int compareForEngine(void *, int leftSize, const void *left, int rightSize, const void *right) noexcept
{
    return compare(QByteArrayView(static_cast<const char *>(left), leftSize),
                   QByteArrayView(static_cast<const char *>(right), rightSize));
}

} // namespace

int compareTexts(const QString &left, const QString &right)
{
    return compare(left.toUtf8(), right.toUtf8());
}

QByteArray sortKey(const QString &text)
{
    QStringView trimmed = text;
    while (trimmed.endsWith(u' '))
        trimmed.chop(1);
    QByteArray key(3 * trimmed.size() + 16, Qt::Uninitialized);
    const auto fill = [&] {
        return ucol_getSortKey(arabic(), trimmed.utf16(), int(trimmed.size()),
                               reinterpret_cast<uint8_t *>(key.data()), int(key.size()));
    };
    int size = fill();
    if (size > key.size()) {
        key.resize(size);
        size = fill();
    }
    key.resize(size);
    return key;
}

void registerCollation(sqlite3 *handle)
{
    arabic(); // fails here if at all: the engine's call can't
    if (sqlite3_create_collation_v2(handle, "arabic", SQLITE_UTF8, nullptr, compareForEngine, nullptr) !=
        SQLITE_OK)
        throw data_errors::engineFailure(QString::fromUtf8(sqlite3_errmsg(handle)));
}

qint32 collationVersion()
{
    UVersionInfo version{};
    ucol_getVersion(arabic(), version);
    const auto number = qFromBigEndian<qint32>(version);
    return number != 0 ? number : 1;
}

} // namespace sql
