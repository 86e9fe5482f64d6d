#pragma once

#include "movie_answers.h"
#include "movie_orders.h"
#include "movie_tools.h"

#include <QElapsedTimer>
#include <QMap>
#include <QObject>
#include <QTimer>

#include <functional>
#include <map>
#include <memory>

class QProcess;

namespace tarn {

/// Plays movies in one helper process, which is started when a movie is first to be seen and ended when none was for a
/// while. Nothing here waits for it: movies are given turns, their pictures come when they come.
///
/// A movie that hangs or breaks the helper is told as failed, and the others start again without it.
class MoviePlayer {
public:
    struct Limits {
        int answer = 3000; ///< milliseconds that a turn may take; longer where the machine is busy with others
        int start = 60000; ///< until the helper is ready
        int idle = 30000;  ///< that it is kept while nothing plays
    };

    MoviePlayer();
    explicit MoviePlayer(Limits limits);
    ~MoviePlayer();
    MoviePlayer(const MoviePlayer&) = delete;
    MoviePlayer& operator=(const MoviePlayer&) = delete;

    static constexpr int most_movies = 12; ///< that play at the same time; others wait until one is not seen any more

    using Id = quint32;
    // Called from the event loop.
    std::function<void(Id)> on_changed; ///< the movie has another picture, or failed
    std::function<void(Id, const MovieAnswer&)> on_event;

    /// Files of fonts by the names that movies know them by.
    void set_fonts(const QMap<QString, QByteArray>& fonts);

    /// A movie of which the first frame is shown; nothing happens to it before it has a size and is seen.
    Id open(const MovieSetup& setup);
    void close(Id movie);
    const MovieSetup& setup(Id movie) const { return m_movies.at(movie).setup; }
    /// From its beginning: with `on` it plays, otherwise its first frame is shown. It keeps its picture until it has another.
    void start(Id movie, bool on);
    /// Movies that are not seen get no turns.
    void set_seen(Id movie, bool seen);
    /// Of the picture; it is held to what a picture may be.
    void set_size(Id movie, QSize pixels);

    /// What is asked of the movie before its next turn, which it then gets at once; it plays.
    MovieDeeds& ask(Id movie);

    /// The last picture; null before there is one.
    const QImage& picture(Id movie) const { return m_movies.at(movie).picture; }
    /// Why the movie does not play; empty while nothing is known against it.
    QString failure(Id movie) const;
    /// Whether one that only shows its first frame is going to have it.
    bool awaits_first_frame(Id movie) const;
    bool is_running() const { return m_process != nullptr; }
    /// Processes that were started so far.
    int starts() const { return m_starts; }
    qint64 process_id() const; ///< 0 for none

private:
    struct Movie {
        MovieSetup setup;
        QSize pixels;
        bool seen = false;
        bool plays = false;
        bool loaded = false; ///< in the helper
        bool asked = false;  ///< it gets its turn at once
        int turns = 0;       ///< since it was loaded
        qint64 began = 0;    ///< when it was loaded, milliseconds of the clock
        qint64 hidden = 0;   ///< since when it is not seen
        qint64 due = 0;      ///< when it has its next turn
        MovieDeeds todo;
        QImage picture;
        QString failure;
    };
    enum class Helper { Off, AsksVersion, Starts, Ready };

    bool wants_turn(const Movie& movie) const;
    int room() const;
    void make_room();
    void schedule();
    void give_turns();
    QByteArray turn_of(Id id, Movie& movie);
    void ask_version();
    void launch(const MovieTools& tools, int node_major);
    void read();
    void take(const MovieAnswer& answer);
    void turn_done(Id id);
    void fail(Id id, const QString& why);
    void late();
    void break_off();
    bool was_held_up() const;
    void watch_turns();
    void helper_ended();
    void give_up(const QString& why);
    void drop_helper();
    void send(const QByteArray& order);
    void watch(QProcess* process);

    Limits m_limits;
    std::map<Id, Movie> m_movies;
    Id m_last = 0;
    QMap<QString, QByteArray> m_fonts;
    QObject m_processes; ///< those that were told to end among them
    QProcess* m_process = nullptr;
    Helper m_helper = Helper::Off;
    MovieAnswers m_answers;
    QString m_unavailable; ///< why there is no helper
    QList<Id> m_turns;     ///< given, and not answered yet
    bool m_outstanding = false;
    quint32 m_number = 0;        ///< of the last order
    qint64 m_turn_began = 0;     ///< milliseconds of the clock
    qint64 m_turn_processor = 0; ///< what the helper had of the processor by then
    int m_starts = 0;
    int m_deaths = 0; ///< of the helper, in no movie's turn
    QElapsedTimer m_clock;
    QTimer m_next;
    QTimer m_late;
    QTimer m_idle;
};

} // namespace tarn
