#include "movie_writer.h"

#include <QtEndian>

#include <algorithm>
#include <bit>
#include <cmath>

namespace tarn::test {

namespace {

constexpr int twips = 20; ///< to the pixel

template <class Number>
QByteArray little(Number value)
{
    const Number stored = qToLittleEndian(value);
    return {reinterpret_cast<const char*>(&stored), sizeof stored};
}

QByteArray short_number(int value)
{
    return little(quint16(value));
}

QByteArray text_of(const QString& text)
{
    return text.toUtf8() + '\0';
}

/// Numbers of any width, from the most significant bit on.
class Bits {
public:
    Bits& put(qint64 value, int count)
    {
        for (int bit = count - 1; bit >= 0; --bit, ++m_used) {
            if (m_used % 8 == 0)
                m_bytes.append('\0');
            if (value >> bit & 1)
                m_bytes.back() = char(quint8(m_bytes.back()) | 0x80 >> m_used % 8);
        }
        return *this;
    }
    QByteArray bytes() const { return m_bytes; }

private:
    QByteArray m_bytes;
    int m_used = 0;
};

QByteArray rectangle(const QRect& area)
{
    constexpr int width = 20;
    return Bits()
        .put(width, 5)
        .put(area.x() * twips, width)
        .put((area.x() + area.width()) * twips, width)
        .put(area.y() * twips, width)
        .put((area.y() + area.height()) * twips, width)
        .bytes();
}

QByteArray moved_by(QPoint by)
{
    constexpr int width = 20;
    return Bits().put(0, 2).put(width, 5).put(by.x() * twips, width).put(by.y() * twips, width).bytes();
}

QByteArray color_of(QColor color)
{
    return QByteArray().append(char(color.red())).append(char(color.green())).append(char(color.blue()));
}

QByteArray header_of(int code, qsizetype length)
{
    return short_number(code << 6 | 0x3f) + little(quint32(length));
}

void put_edge(Bits& bits, int dx, int dy)
{
    constexpr int width = 17; // the widest
    bits.put(1, 1).put(1, 1).put(width - 2, 4).put(1, 1).put(dx * twips, width).put(dy * twips, width);
}

} // namespace

MovieScript& MovieScript::code(quint8 action, const QByteArray& operands)
{
    m_bytes += char(action);
    if (action >= 0x80)
        m_bytes += short_number(int(operands.size())) + operands;
    return *this;
}

MovieScript& MovieScript::push(const QString& text)
{
    return code(0x96, QByteArray(1, '\0') + text_of(text));
}

MovieScript& MovieScript::push(double number)
{
    const quint64 bits = std::bit_cast<quint64>(number);
    return code(0x96, QByteArray(1, '\6') + little(quint32(bits >> 32)) + little(quint32(bits)));
}

MovieScript& MovieScript::fs_command(const QString& command, const QString& arguments)
{
    return code(0x83, text_of(QStringLiteral("FSCommand:") + command) + text_of(arguments));
}

MovieScript& MovieScript::navigate(const QString& address)
{
    return code(0x83, text_of(address) + text_of(QStringLiteral("_self")));
}

MovieScript& MovieScript::external_interface()
{
    push(QStringLiteral("flash")).code(0x1c);
    push(QStringLiteral("external")).code(0x4e);
    return push(QStringLiteral("ExternalInterface")).code(0x4e);
}

MovieScript& MovieScript::call_out(const QString& name, const QStringList& arguments)
{
    for (auto argument = arguments.crbegin(); argument != arguments.crend(); ++argument)
        push(*argument);
    push(name).push(double(arguments.size() + 1));
    return external_interface().push(QStringLiteral("call")).code(0x52).code(0x17);
}

MovieScript& MovieScript::call_out_with_variable(const QString& name, const QString& variable)
{
    push(variable).code(0x1c);
    push(name).push(2.0);
    return external_interface().push(QStringLiteral("call")).code(0x52).code(0x17);
}

MovieScript& MovieScript::offer(const QString& name, const MovieScript& body)
{
    code(0x9b,
         text_of({}) + short_number(1) + text_of(QStringLiteral("value")) + short_number(int(body.m_bytes.size())));
    m_bytes += body.m_bytes;
    code(0x96, QByteArray(1, '\2')); // null
    push(name).push(3.0);
    return external_interface().push(QStringLiteral("addCallback")).code(0x52).code(0x17);
}

MovieScript& MovieScript::set_property(const QString& clip, int property, double value)
{
    return push(clip).push(double(property)).push(value).code(0x23);
}

MovieScript& MovieScript::set_x_from(const QString& clip, const QString& variable)
{
    return push(clip).push(0.0).push(variable).code(0x1c).code(0x23);
}

/// A new object of a class of the player's; its arguments and their number were pushed.
MovieScript& MovieScript::make_new(const QString& package, const QString& name)
{
    push(QStringLiteral("flash")).code(0x1c);
    return push(package).code(0x4e).push(name).code(0x53);
}

MovieScript& MovieScript::draw_bitmap(QSize pixels, const QString& clip)
{
    push(QStringLiteral("bitmap")).push(pixels.height()).push(pixels.width()).push(2.0);
    make_new(QStringLiteral("display"), QStringLiteral("BitmapData")).code(0x1d);
    push(clip).code(0x1c).push(1.0).push(QStringLiteral("bitmap")).code(0x1c);
    push(QStringLiteral("draw")).code(0x52).code(0x17);
    push(20.0).push(QStringLiteral("bitmap")).code(0x1c).push(2.0).push(QStringLiteral("_root")).code(0x1c);
    return push(QStringLiteral("attachBitmap")).code(0x52).code(0x17);
}

MovieScript& MovieScript::blur(const QString& clip)
{
    push(clip).code(0x1c).push(QStringLiteral("filters"));
    push(0.0);
    make_new(QStringLiteral("filters"), QStringLiteral("BlurFilter"));
    return push(1.0).code(0x42).code(0x4f); // a list of it
}

MovieScript& MovieScript::loop_forever()
{
    return code(0x99, short_number(-5));
}

MovieWriter& MovieWriter::tag(int code, const QByteArray& content)
{
    m_tags += header_of(code, content.size()) + content;
    return *this;
}

MovieWriter& MovieWriter::background(QColor color)
{
    return tag(9, color_of(color));
}

MovieWriter& MovieWriter::shape(int id, const QRect& area, QColor color)
{
    Bits edges;
    edges.put(1, 4).put(0, 4); // a bit for numbers of fillings, none for lines
    constexpr int width = 20;
    edges.put(0, 1).put(0b00011, 5).put(width, 5).put(area.x() * twips, width).put(area.y() * twips, width).put(1, 1);
    put_edge(edges, area.width(), 0);
    put_edge(edges, 0, area.height());
    put_edge(edges, -area.width(), 0);
    put_edge(edges, 0, -area.height());
    edges.put(0, 6);
    const QByteArray filling = QByteArray("\1\0", 2) + color_of(color);
    return tag(2, short_number(id) + rectangle(area) + filling + '\0' + edges.bytes());
}

MovieWriter& MovieWriter::clip(int id, int shape)
{
    const QByteArray placing = QByteArray(1, '\6') + short_number(1) + short_number(shape) + moved_by({});
    const QByteArray inner = header_of(26, placing.size()) + placing + header_of(1, 0) + header_of(0, 0);
    return tag(39, short_number(id) + short_number(1) + inner);
}

MovieWriter& MovieWriter::place(int id, int depth, QPoint at, const QString& name)
{
    const char flags = name.isEmpty() ? 0x06 : 0x26;
    const QByteArray named = name.isEmpty() ? QByteArray() : text_of(name);
    return tag(26, QByteArray(1, flags) + short_number(depth) + short_number(id) + moved_by(at) + named);
}

MovieWriter& MovieWriter::move(int depth, QPoint to)
{
    return tag(26, QByteArray(1, '\5') + short_number(depth) + moved_by(to));
}

MovieWriter& MovieWriter::place_filtered(int id, int depth, QPoint at)
{
    const QByteArray blur = QByteArray("\1\1", 2) + little(quint32(4 << 16)) + little(quint32(4 << 16)) + '\x08';
    return tag(70, QByteArray("\x06\x01", 2) + short_number(depth) + short_number(id) + moved_by(at) + blur);
}

MovieWriter& MovieWriter::button(int id, int shape, const MovieScript& on_click, int key)
{
    const QByteArray record = QByteArray(1, '\x0f') + short_number(shape) + short_number(1) + moved_by({}) + '\0';
    const QByteArray records = record + '\0';
    const QByteArray condition = short_number(key ? key << 9 : 0x0008); // released over it
    const QByteArray action = short_number(0) + condition + on_click.bytes() + '\0';
    return tag(34, short_number(id) + '\0' + short_number(int(records.size()) + 2) + records + action);
}

MovieWriter& MovieWriter::text(int id, const QRect& area, const QString& text, const QString& family, int size)
{
    const int font = id + 1000;
    const QByteArray name = family.toUtf8();
    tag(48, short_number(font) + '\0' + '\0' + char(name.size()) + name + short_number(0));
    const QByteArray flags("\x8d\x00", 2); // has a text, is read-only, has a colour and a font
    return tag(37,
               short_number(id) + rectangle(area) + flags + short_number(font) + short_number(size * twips)
                   + QByteArray("\0\0\0\xff", 4) + text_of({}) + text_of(text));
}

MovieWriter& MovieWriter::script(const MovieScript& script)
{
    return tag(12, script.bytes() + '\0');
}

MovieWriter& MovieWriter::label(const QString& name)
{
    return tag(43, text_of(name));
}

MovieWriter& MovieWriter::show_frame()
{
    ++m_frames;
    return tag(1, {});
}

QByteArray MovieWriter::bytes(bool compressed) const
{
    const QByteArray content = rectangle({{}, m_pixels}) + short_number(int(std::lround(m_rate * 256)))
        + short_number(m_frames) + m_tags + header_of(0, 0);
    const QByteArray begin = QByteArray(compressed ? "CWS" : "FWS") + char(m_version)
        + little(quint32(content.size() + 8));
    return begin + (compressed ? qCompress(content).mid(4) : content);
}

QByteArray moving_movie(QSize pixels, int frames, double rate)
{
    MovieWriter movie(pixels, rate);
    movie.background(Qt::white).shape(1, {0, 0, 20, 20}, Qt::red).place(1, 1, {0, 0});
    for (int frame = 0; frame < frames; ++frame)
        movie.move(1, {frame * (pixels.width() - 20) / std::max(frames - 1, 1), 10}).show_frame();
    return movie.bytes();
}

} // namespace tarn::test
