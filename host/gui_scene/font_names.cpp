#include "font_names.h"

#include "core/language.h"

#include <QStringDecoder>
#include <QtEndian>

#include <algorithm>

namespace tarn {

namespace {

constexpr qsizetype longest_text = 20'000; ///< UTF-16 units
constexpr qsizetype header_size = 6;
constexpr qsizetype record_size = 12;

// Of the records of the table.
enum NameId : quint16 { name_copyright = 0, name_licence = 13, name_licence_address = 14 };
enum PlatformId : quint16 { platform_unicode = 0, platform_macintosh = 1, platform_windows = 3 };
constexpr quint16 english_of_windows = 0x0409;
constexpr quint16 primary_language = 0x03ff;
constexpr quint16 chinese = 0x04;

quint16 number_at(const QByteArray& table, qsizetype place)
{
    return qFromBigEndian<quint16>(table.constData() + place);
}

/// How well a record serves; 0 for one that cannot be read.
int rank_of(quint16 platform, quint16 encoding, quint16 language)
{
    const bool wants_chinese = lang(u"zh", u"en") == QLatin1String("zh");
    if (platform == platform_windows) {
        if (wants_chinese && (language & primary_language) == chinese)
            return 5;
        return language == english_of_windows ? 4 : 2;
    }
    if (platform == platform_unicode)
        return 3;
    return platform == platform_macintosh && encoding == 0 ? 1 : 0;
}

QString decoded(QByteArrayView bytes, quint16 platform)
{
    const QString text = platform == platform_macintosh
        ? QString::fromLatin1(bytes)
        : QString(QStringDecoder(QStringDecoder::Utf16BE).decode(bytes.first(bytes.size() / 2 * 2)));
    return text.left(longest_text).remove(QChar::Null).trimmed();
}

} // namespace

FontNotice font_notice(const QByteArray& table)
{
    struct Found {
        NameId id;
        QString FontNotice::*text;
        int rank = 0;
    };
    Found wanted[] = {{name_copyright, &FontNotice::copyright},
                      {name_licence, &FontNotice::licence},
                      {name_licence_address, &FontNotice::address}};
    FontNotice notice;
    if (table.size() < header_size)
        return notice;
    const qsizetype texts = number_at(table, 4);
    const qsizetype count = std::min<qsizetype>(number_at(table, 2), (table.size() - header_size) / record_size);
    for (qsizetype i = 0; i < count; ++i) {
        const qsizetype record = header_size + i * record_size;
        const quint16 platform = number_at(table, record);
        const auto found = std::ranges::find(wanted, number_at(table, record + 6), &Found::id);
        const int rank = rank_of(platform, number_at(table, record + 2), number_at(table, record + 4));
        const qsizetype size = number_at(table, record + 8);
        const qsizetype place = texts + number_at(table, record + 10);
        if (found == std::end(wanted) || rank <= found->rank || place + size > table.size())
            continue;
        found->rank = rank;
        notice.*found->text = decoded(QByteArrayView(table).sliced(place, size), platform);
    }
    return notice;
}

} // namespace tarn
