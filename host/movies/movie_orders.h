#pragma once

#include "core/value.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QPointF>
#include <QSize>
#include <QString>

#include <vector>

namespace tarn {

constexpr qint64 largest_movie = 64 << 20; ///< bytes of its file

/// What a movie is played from, and how. Equal ones are played alike.
struct MovieSetup {
    QByteArray file;
    bool transparent = false; ///< its background is not drawn
    bool keep_size = false;   ///< it is not scaled to the picture
    double frame_rate = 30;   ///< pictures a second that it can have
    bool operator==(const MovieSetup&) const = default;
};

/// What is asked of a movie in its next turn, as JSON.
class MovieDeeds {
public:
    void load(const MovieSetup& setup, QSize pixels);
    void set_size(QSize pixels);
    /// `what`: "move", "down", "up", "enter", "leave"; places are pixels of the picture.
    void mouse(const char* what, QPointF place, bool held);
    void turn_wheel(double steps);
    void key(bool down, const QString& key, const QString& code);
    void call(quint32 number, const QString& name, const std::vector<Value>& given);
    void run(bool on);
    void go_to_frame(int frame); ///< from 1 on

    bool is_empty() const { return m_list.isEmpty(); }
    void clear() { m_list.clear(); }
    /// The next turn, at so many milliseconds of the movie's own clock.
    QByteArray turn(quint32 movie, double time) const;

private:
    void add(const QByteArray& deed);

    QByteArray m_list;
};

/// The lines that tell the player what to do; those with bytes are followed by them.
namespace movie_orders {

QByteArray font(const QString& family, const QByteArray& file);
QByteArray file(quint32 movie, const QByteArray& content);
QByteArray end(quint32 movie);
QByteArray tick(quint32 number, const QByteArrayList& turns);

} // namespace movie_orders

} // namespace tarn
