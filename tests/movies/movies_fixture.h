#pragma once

#include "movies/movie_player.h"
#include "support/movie_writer.h"
#include "support/run_until.h"

#include <gtest/gtest.h>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Skipped where there is no player.
class PlayedMovies : public testing::Test {
protected:
    void SetUp() override
    {
        if (const auto tools = MovieTools::find(); !tools)
            GTEST_SKIP() << tools.status().message().toStdString();
        m_player.on_event = [this](MoviePlayer::Id, const MovieAnswer& answer) { m_events.push_back(answer); };
    }

    /// A movie that is seen.
    MoviePlayer::Id open(const QByteArray& file, bool plays = true, QSize pixels = {120, 90})
    {
        const MoviePlayer::Id id = m_player.open({.file = file});
        m_player.set_size(id, pixels);
        m_player.set_seen(id, true);
        if (plays)
            m_player.start(id, true);
        return id;
    }
    bool shows(MoviePlayer::Id id)
    {
        return run_until([&] { return !m_player.picture(id).isNull() || !m_player.failure(id).isEmpty(); })
            && m_player.failure(id).isEmpty();
    }
    QColor color_at(MoviePlayer::Id id, QPoint place) { return m_player.picture(id).pixelColor(place); }
    bool becomes(MoviePlayer::Id id, QPoint place, QColor color)
    {
        return run_until([&] { return !m_player.picture(id).isNull() && color_at(id, place) == color; }, 20000);
    }
    /// "name(arguments)" of what movies called, one after the other.
    QStringList called() const
    {
        QStringList list;
        for (const MovieAnswer& event : m_events) {
            QStringList given;
            for (const Value& value : event.given) {
                const auto* text = std::get_if<QString>(&value);
                const auto* number = std::get_if<qint64>(&value);
                given << (text ? *text : number ? QString::number(*number) : u"?"_s);
            }
            if (event.event == u"call"_s || event.event == u"fscommand"_s)
                list << event.name + u'(' + given.join(u',') + u')';
        }
        return list;
    }

    MoviePlayer m_player;
    std::vector<MovieAnswer> m_events;
};

} // namespace tarn::test
