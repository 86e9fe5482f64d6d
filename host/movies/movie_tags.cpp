#include "movie_tags.h"

#include <QtEndian>

#define ZLIB_CONST
#include <zlib.h>

#include <algorithm>
#include <array>

namespace tarn {

namespace {

constexpr qsizetype fixed_part = 8;        ///< bytes: signature, version, length
constexpr qint64 most_content = 64 << 20;  ///< bytes; who packs more means harm
constexpr qsizetype most_script = 8 << 20; ///< bytes of scripts that are looked at
constexpr qsizetype buffer_size = 64 * 1024;

enum Tag {
    tag_button = 7,
    tag_script = 12,
    tag_sound = 14,
    tag_sound_stream = 18,
    tag_place_2 = 26,
    tag_button_2 = 34,
    tag_sprite = 39,
    tag_sound_stream_2 = 45,
    tag_init_script = 59,
    tag_video = 60,
    tag_place_3 = 70,
    tag_classes = 72,
    tag_classes_2 = 82,
    tag_place_4 = 94,
};

/// The movie's content behind the fixed part, from front to back, unpacked piece by piece.
class Content {
public:
    explicit Content(const QByteArray& file) : m_file(file), m_packed(file.startsWith('C'))
    {
        m_stream.next_in = reinterpret_cast<const Bytef*>(file.constData()) + fixed_part;
        m_stream.avail_in = uInt(file.size() - fixed_part);
        m_ends = m_packed && inflateInit(&m_stream) != Z_OK;
        m_at = m_packed ? 0 : fixed_part;
    }
    ~Content()
    {
        if (m_packed)
            inflateEnd(&m_stream);
    }
    Content(const Content&) = delete;
    Content& operator=(const Content&) = delete;

    bool at_end() { return available() == 0; }
    quint8 byte()
    {
        if (at_end())
            return 0;
        ++m_read;
        return quint8(piece()[m_at++]);
    }
    quint32 number(int bytes)
    {
        quint32 value = 0;
        for (int shift = 0; shift < bytes * 8; shift += 8)
            value |= quint32(byte()) << shift;
        return value;
    }
    void skip(qint64 bytes, QByteArray* into = nullptr)
    {
        while (bytes > 0 && !at_end()) {
            const qsizetype step = qsizetype(std::min<qint64>(bytes, available()));
            if (into)
                into->append(piece().constData() + m_at, step);
            m_at += step;
            m_read += step;
            bytes -= step;
        }
    }

private:
    const QByteArray& piece() const { return m_packed ? m_piece : m_file; }
    qsizetype available()
    {
        if (m_at < piece().size())
            return piece().size() - m_at;
        if (!m_packed || m_ends || m_read > most_content)
            return 0;
        m_piece.resize(buffer_size);
        m_stream.next_out = reinterpret_cast<Bytef*>(m_piece.data());
        m_stream.avail_out = uInt(buffer_size);
        m_ends = inflate(&m_stream, Z_NO_FLUSH) != Z_OK;
        m_piece.truncate(buffer_size - qsizetype(m_stream.avail_out));
        m_at = 0;
        return m_piece.size();
    }

    const QByteArray& m_file;
    bool m_packed;
    bool m_ends = false;
    z_stream m_stream{};
    QByteArray m_piece;
    qsizetype m_at = 0;
    qint64 m_read = 0;
};

/// Tags that scripts stand in.
constexpr std::array script_tags{tag_button,  tag_script,  tag_place_2,   tag_button_2, tag_init_script,
                                 tag_place_3, tag_classes, tag_classes_2, tag_place_4};

constexpr const char* filter_classes[] = {
    "BlurFilter",        "DropShadowFilter",      "GlowFilter",         "BevelFilter",        "ColorMatrixFilter",
    "ConvolutionFilter", "DisplacementMapFilter", "GradientGlowFilter", "GradientBevelFilter"};

/// Whether scripts use the name: it stands between the ends of texts in older ones, behind its length in newer ones.
bool use_name(const QByteArray& scripts, const QByteArray& name)
{
    return scripts.contains('\0' + name + '\0') || scripts.contains(char(name.size()) + name);
}

} // namespace

MovieLacks read_movie_tags(const QByteArray& file)
{
    MovieLacks lacks;
    lacks.packing = file.startsWith('Z');
    if (file.size() <= fixed_part || lacks.packing)
        return lacks;
    Content content(file);
    const int width = content.byte() >> 3; // of each number of the frame's rectangle, bits
    content.skip((5 + width * 4 + 7) / 8 - 1 + 4);
    QByteArray scripts;
    while (!content.at_end()) {
        const quint32 head = content.number(2);
        const quint32 code = head >> 6;
        qint64 length = head & 0x3f;
        if (length == 0x3f)
            length = content.number(4);
        if (code == tag_sprite && length >= 4)
            length = 4; // What it holds are tags again.
        lacks.sound |= code == tag_sound || code == tag_sound_stream || code == tag_sound_stream_2;
        lacks.video |= code == tag_video;
        const qsizetype begin = scripts.size();
        if (std::ranges::find(script_tags, int(code)) != script_tags.end()) {
            const qint64 taken = std::min<qint64>(length, std::max<qsizetype>(most_script - begin, 2));
            content.skip(taken, &scripts);
            length -= taken;
        }
        if ((code == tag_place_3 || code == tag_place_4) && scripts.size() >= begin + 2)
            lacks.filters |= (scripts[begin + 1] & 1) != 0;
        content.skip(length);
    }
    const auto is_used = [&](const char* name) { return use_name(scripts, name); };
    lacks.filters |= std::ranges::any_of(filter_classes, is_used);
    lacks.bitmaps = is_used("BitmapData") && (is_used("draw") || is_used("applyFilter"));
    return lacks;
}

} // namespace tarn
