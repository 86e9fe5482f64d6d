#include "movie_orders.h"

#include "core/json_writer.h"

#include <QByteArrayList>
#include <QPointF>

#include <cmath>
#include <functional>

namespace tarn {

namespace {

/// Writes an array that begins with the name of a deed.
class Deed {
public:
    explicit Deed(const char* name)
    {
        m_writer.begin_array();
        m_writer.value(QString::fromLatin1(name));
    }
    template <class... Values>
    QByteArray with(const Values&... values)
    {
        (m_writer.value(values), ...);
        m_writer.end_array();
        return QByteArray::fromStdString(m_writer.text());
    }
    JsonWriter& writer() { return m_writer; }

private:
    JsonWriter m_writer;
};

void write(JsonWriter& writer, const Value& value)
{
    if (const auto* flag = std::get_if<bool>(&value))
        writer.value(*flag);
    else if (const auto* whole = std::get_if<qint64>(&value))
        writer.value(*whole);
    else if (const auto* number = std::get_if<double>(&value); number && std::isfinite(*number))
        writer.value(*number);
    else if (const auto* text = std::get_if<QString>(&value))
        writer.value(*text);
    else
        writer.raw("null");
}

QByteArray order(const char* name, const std::function<void(JsonWriter&)>& write_more, const QByteArray& bytes = {})
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("op");
    writer.value(QString::fromLatin1(name));
    write_more(writer);
    if (!bytes.isEmpty()) {
        writer.key("bytes");
        writer.value(bytes.size());
    }
    writer.end_object();
    return QByteArray::fromStdString(writer.text()) + '\n' + bytes;
}

} // namespace

void MovieDeeds::add(const QByteArray& deed)
{
    m_list += m_list.isEmpty() ? deed : ',' + deed;
}

void MovieDeeds::load(const MovieSetup& setup, QSize pixels)
{
    Deed deed("load");
    JsonWriter& writer = deed.writer();
    writer.begin_object();
    writer.key("width");
    writer.value(pixels.width());
    writer.key("height");
    writer.value(pixels.height());
    writer.key("transparent");
    writer.value(setup.transparent);
    writer.key("keep_size");
    writer.value(setup.keep_size);
    writer.end_object();
    add(deed.with());
}

void MovieDeeds::set_size(QSize pixels)
{
    add(Deed("size").with(pixels.width(), pixels.height()));
}

void MovieDeeds::mouse(const char* what, QPointF place, bool held)
{
    add(Deed("mouse").with(QString::fromLatin1(what), place.x(), place.y(), held ? 1 : 0));
}

void MovieDeeds::turn_wheel(double steps)
{
    add(Deed("wheel").with(steps));
}

void MovieDeeds::key(bool down, const QString& key, const QString& code)
{
    add(Deed("key").with(down, key, code));
}

void MovieDeeds::call(quint32 number, const QString& name, const std::vector<Value>& given)
{
    Deed deed("call");
    deed.writer().value(number);
    deed.writer().value(name);
    deed.writer().begin_array();
    for (const Value& value : given)
        write(deed.writer(), value);
    deed.writer().end_array();
    add(deed.with());
}

void MovieDeeds::run(bool on)
{
    add(Deed("run").with(on));
}

void MovieDeeds::go_to_frame(int frame)
{
    add(Deed("goto_frame").with(frame));
}

QByteArray MovieDeeds::turn(quint32 movie, double time) const
{
    JsonWriter writer;
    writer.begin_object();
    writer.key("movie");
    writer.value(movie);
    writer.key("time");
    writer.value(time);
    writer.key("todo");
    writer.begin_array();
    if (!m_list.isEmpty())
        writer.raw({m_list.constData(), std::size_t(m_list.size())});
    writer.end_array();
    writer.end_object();
    return QByteArray::fromStdString(writer.text());
}

QByteArray movie_orders::font(const QString& family, const QByteArray& file)
{
    const auto more = [&](JsonWriter& writer) {
        writer.key("family");
        writer.value(family);
    };
    return order("font", more, file);
}

QByteArray movie_orders::file(quint32 movie, const QByteArray& content)
{
    const auto more = [&](JsonWriter& writer) {
        writer.key("movie");
        writer.value(movie);
    };
    return order("file", more, content);
}

QByteArray movie_orders::end(quint32 movie)
{
    const auto more = [&](JsonWriter& writer) {
        writer.key("movie");
        writer.value(movie);
    };
    return order("end", more);
}

QByteArray movie_orders::tick(quint32 number, const QByteArrayList& turns)
{
    const QByteArray list = '[' + turns.join(',') + ']';
    const auto more = [&](JsonWriter& writer) {
        writer.key("number");
        writer.value(number);
        writer.key("movies");
        writer.raw({list.constData(), std::size_t(list.size())});
    };
    return order("tick", more);
}

} // namespace tarn
