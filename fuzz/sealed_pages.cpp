#include "fuzz/sealed_pages.h"

#include "fuzz/support.h"
#include "platform/database/store_file.h"
#include "store/connection_strings.h"

#include <QtCore/QFile>
#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace
{

// What stands behind a page's content: the vector of its cipher and its code of 20 bytes; the rest of 48 is
// unused.
constexpr qsizetype vectorSize = 16;
constexpr qsizetype contentSize = fuzz::SealedPages::pageSize - 48;
constexpr qsizetype saltSize = 16; // in front of the first page

QByteArray key()
{
    return QByteArray(32, '\x5a');
}

unsigned char *bytes(char *data)
{
    return reinterpret_cast<unsigned char *>(data);
}
const unsigned char *bytes(const char *data)
{
    return reinterpret_cast<const unsigned char *>(data);
}

void cipher(bool encrypt, const char *vector, const char *in, char *out, qsizetype size)
{
    const std::unique_ptr<EVP_CIPHER_CTX, decltype(&EVP_CIPHER_CTX_free)> context(EVP_CIPHER_CTX_new(),
                                                                                  EVP_CIPHER_CTX_free);
    int written = 0;
    EVP_CipherInit_ex(context.get(), EVP_aes_256_cbc(), nullptr, bytes(key().constData()), bytes(vector),
                      encrypt);
    EVP_CIPHER_CTX_set_padding(context.get(), 0);
    EVP_CipherUpdate(context.get(), bytes(out), &written, bytes(in), int(size));
    fuzz::require(written == size, "whole blocks are enciphered");
}

QByteArray madeStore()
{
    using Type = ColumnDefinition::Type;
    const QString path = fuzz::folder() + u"/made.mdb"_s;
    StoreFile file = StoreFile::create(path, fuzz::SealedPages::password());
    file.appendTable({u"items"_s,
                      {{u"id"_s, Type::Counter},
                       {u"name"_s, Type::Text, 50, false},
                       {u"note"_s, Type::Text, 9000},
                       {u"kind"_s, Type::Byte},
                       {u"amount"_s, Type::Money},
                       {u"valid"_s, Type::Boolean},
                       {u"day"_s, Type::Date}},
                      {u"id"_s, u"name"_s}});
    file.close();
    const ConnectionPtr store = Connection::create();
    store->open(connectionStringOf(path, fuzz::SealedPages::password()));
    for (int row = 1; row <= 60; ++row)
        store->execute(u"insert into items (name,note,kind,amount,valid,day) values "
                       "('name %1','%2',%1,%1.25,true,'%3/03/2004')"_s.arg(row)
                           .arg(QString(row % 20 == 0 ? 9000 : row, u'x'))
                           .arg(row % 28 + 1));
    store->execute(u"delete from items where kind=40"_s);
    store->close();
    QFile made(path);
    return made.open(QFile::ReadOnly) ? made.readAll() : QByteArray();
}

} // namespace

namespace fuzz
{

QString SealedPages::password()
{
    return u"x'"_s + QString::fromLatin1(key().toHex()) + u'\'';
}

SealedPages::SealedPages() : m_macKey(32, '\0'), m_file(madeStore()), m_plain(m_file)
{
    QByteArray salt = m_file.first(saltSize);
    for (char &byte : salt)
        byte = char(byte ^ 0x3a);
    PKCS5_PBKDF2_HMAC_SHA1(key().constData(), int(key().size()), bytes(salt.constData()), int(salt.size()), 2,
                           int(m_macKey.size()), bytes(m_macKey.data()));
    for (qsizetype at = 0; at < m_file.size(); at += pageSize) {
        const qsizetype skipped = at == 0 ? saltSize : 0;
        cipher(false, m_file.constData() + at + contentSize, m_file.constData() + at + skipped,
               m_plain.data() + at + skipped, contentSize - skipped);
    }
    QByteArray again = m_file;
    for (qsizetype page = 0; page < m_file.size() / pageSize; ++page)
        sealPage(m_plain, page, again);
    require(again == m_file, "unchanged pages are sealed as they were");
}

void SealedPages::sealPage(const QByteArray &pages, qsizetype page, QByteArray &file) const
{
    const qsizetype skipped = page == 0 ? saltSize : 0;
    const char *plain = pages.constData() + page * pageSize;
    char *sealed = file.data() + page * pageSize;
    std::copy_n(plain, skipped, sealed);
    std::copy_n(plain + contentSize, pageSize - contentSize, sealed + contentSize);
    cipher(true, plain + contentSize, plain + skipped, sealed + skipped, contentSize - skipped);
    QByteArray coded(sealed + skipped, contentSize - skipped + vectorSize);
    const auto number = quint32(page + 1);
    for (int shift = 0; shift < 32; shift += 8)
        coded += char(number >> shift);
    HMAC(EVP_sha1(), m_macKey.constData(), int(m_macKey.size()), bytes(coded.constData()),
         std::size_t(coded.size()), bytes(sealed + contentSize + vectorSize), nullptr);
}

QByteArray SealedPages::seal(const QByteArray &pages) const
{
    QByteArray file = m_file;
    for (qsizetype page = 0; page < pages.size() / pageSize; ++page) {
        const auto content = [&](const QByteArray &all) {
            return QByteArrayView(all).sliced(page * pageSize, pageSize);
        };
        if (content(pages) != content(m_plain))
            sealPage(pages, page, file);
    }
    return file;
}

} // namespace fuzz
