#include "swf_header.h"

#include "core/language.h"

#include <QtEndian>

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>

namespace tarn {

namespace {

constexpr int fixed_part = 8; ///< bytes: signature, version, length
constexpr int twips_per_pixel = 20;
constexpr int max_unpacked = 64; ///< bytes of the movie that the header can take
constexpr int max_packed = 4096; ///< bytes from which these are unpacked; a stream may go on without giving any

Status damaged()
{
    return Status::error(lang(u"影片文件已损坏", u"the movie's file is damaged"));
}

/// Bits from the most significant one on.
class Bits {
public:
    explicit Bits(const QByteArray& bytes) : m_bytes(bytes) {}
    quint32 take(int count)
    {
        quint32 value = 0;
        for (; count > 0; --count, ++m_at) {
            const qsizetype byte = m_at / 8;
            const int bit = byte < m_bytes.size() ? (quint8(m_bytes[byte]) >> (7 - m_at % 8)) & 1 : 0;
            value = value << 1 | quint32(bit);
        }
        return value;
    }
    qsizetype bytes_used() const { return (m_at + 7) / 8; }

private:
    const QByteArray& m_bytes;
    qsizetype m_at = 0;
};

double signed_pixels(quint32 value, int bits)
{
    const qint64 number = bits > 0 && value >> (bits - 1) ? qint64(value) - (qint64(1) << bits) : qint64(value);
    return double(number) / twips_per_pixel;
}

/// The movie's content behind the fixed part, unpacked as far as the header needs it.
QByteArray unpacked(const QByteArray& file, char signature)
{
    if (signature != 'C')
        return file.mid(fixed_part, max_unpacked);
    z_stream stream{};
    if (inflateInit(&stream) != Z_OK)
        return {};
    QByteArray content(max_unpacked, Qt::Uninitialized);
    stream.next_in = reinterpret_cast<const Bytef*>(file.constData() + fixed_part);
    stream.avail_in = uInt(std::min<qsizetype>(file.size() - fixed_part, max_packed));
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = uInt(content.size());
    (void)inflate(&stream, Z_SYNC_FLUSH); // What it gave before it failed tells as much as a short file.
    content.truncate(content.size() - qsizetype(stream.avail_out));
    inflateEnd(&stream);
    return content;
}

} // namespace

Result<SwfHeader> read_swf_header(const QByteArray& file)
{
    const bool known = file.size() > fixed_part && file.mid(1, 2) == "WS"
        && (file[0] == 'F' || file[0] == 'C' || file[0] == 'Z');
    if (!known)
        return Status::error(lang(u"这不是 Flash 影片", u"this is no Flash movie"));
    SwfHeader header;
    header.version = quint8(file[3]);
    header.compressed = file[0] != 'F';
    if (file[0] == 'Z')
        return header;
    const QByteArray content = unpacked(file, file[0]);
    Bits bits(content);
    const int width = int(bits.take(5));
    const double left = signed_pixels(bits.take(width), width);
    const double right = signed_pixels(bits.take(width), width);
    const double top = signed_pixels(bits.take(width), width);
    const double bottom = signed_pixels(bits.take(width), width);
    const qsizetype rest = bits.bytes_used();
    if (content.size() < rest + 4)
        return damaged();
    header.size = QSizeF(right - left, bottom - top);
    header.frame_rate = qFromLittleEndian<quint16>(content.constData() + rest) / 256.0;
    header.frame_count = qFromLittleEndian<quint16>(content.constData() + rest + 2);
    return header;
}

} // namespace tarn
