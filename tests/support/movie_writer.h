#pragma once

#include <QByteArray>
#include <QColor>
#include <QRect>
#include <QSize>
#include <QString>

namespace tarn::test {

/// The bytes of a movie's script: what the old virtual machine of such movies runs, which takes its operands from a stack.
class MovieScript {
public:
    MovieScript& push(const QString& text);
    MovieScript& push(double number);
    MovieScript& stop() { return code(0x07); }
    /// The command goes to who shows the movie.
    MovieScript& fs_command(const QString& command, const QString& arguments);
    /// ExternalInterface.call(name, arguments...), each a text.
    MovieScript& call_out(const QString& name, const QStringList& arguments = {});
    /// ExternalInterface.addCallback(name, null, a function that runs `body`); its first argument is the variable `value`.
    MovieScript& offer(const QString& name, const MovieScript& body);
    MovieScript& set_property(const QString& clip, int property, double value);
    /// Moves `clip` to the x that the variable tells.
    MovieScript& set_x_from(const QString& clip, const QString& variable);
    MovieScript& call_out_with_variable(const QString& name, const QString& variable);
    MovieScript& navigate(const QString& address);
    /// Makes a bitmap of the size, draws `clip` into it and shows it in the corner.
    MovieScript& draw_bitmap(QSize pixels, const QString& clip);
    /// Gives `clip` a blur.
    MovieScript& blur(const QString& clip);
    MovieScript& loop_forever();
    QByteArray bytes() const { return m_bytes; }

private:
    MovieScript& code(quint8 action, const QByteArray& operands = {});
    MovieScript& external_interface();
    MovieScript& make_new(const QString& package, const QString& name);

    QByteArray m_bytes;
};

/// Writes movies for tests: plain squares, frames, buttons, texts and scripts.
class MovieWriter {
public:
    explicit MovieWriter(QSize pixels = {120, 90}, double rate = 30, int version = 8)
        : m_pixels(pixels), m_rate(rate), m_version(version)
    {
    }

    MovieWriter& background(QColor color);
    /// A filled rectangle; places are pixels.
    MovieWriter& shape(int id, const QRect& area, QColor color);
    /// A clip of one shape, which scripts find by its name.
    MovieWriter& clip(int id, int shape);
    MovieWriter& place(int id, int depth, QPoint at, const QString& name = {});
    MovieWriter& move(int depth, QPoint to);
    MovieWriter& place_filtered(int id, int depth, QPoint at); ///< with a blur
    /// A button of the shape that runs the script when it is clicked, or when the key of that code is pressed.
    MovieWriter& button(int id, int shape, const MovieScript& on_click, int key = 0);
    /// A text in the font `family` of the machine, or an input field.
    MovieWriter& text(int id, const QRect& area, const QString& text, const QString& family, int size);
    MovieWriter& script(const MovieScript& script);
    MovieWriter& label(const QString& name);
    MovieWriter& show_frame();
    MovieWriter& tag(int code, const QByteArray& content);

    QByteArray bytes(bool compressed = false) const;

private:
    QSize m_pixels;
    double m_rate;
    int m_version;
    int m_frames = 0;
    QByteArray m_tags;
};

/// A square that jumps to the right with each of `frames` frames.
QByteArray moving_movie(QSize pixels = {120, 90}, int frames = 10, double rate = 30);

} // namespace tarn::test
