#include "movie_player.h"

#include "confinement.h"
#include "core/language.h"

#include <QProcess>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr int turns_of_first_frame = 3; ///< after which it is drawn
constexpr double fastest = 60;          ///< turns a second
constexpr double slowest = 1;
constexpr int most_deaths = 3;
constexpr qint64 longest_log = 300; ///< bytes of what a helper said when it broke down

QSize held(QSize pixels)
{
    constexpr int side = 2048;
    return pixels.boundedTo({side, side});
}

} // namespace

MoviePlayer::MoviePlayer() : MoviePlayer(Limits()) {}

MoviePlayer::MoviePlayer(Limits limits) : m_limits(limits)
{
    m_clock.start();
    m_next.setSingleShot(true);
    m_next.setTimerType(Qt::PreciseTimer);
    m_late.setSingleShot(true);
    m_idle.setSingleShot(true);
    QObject::connect(&m_next, &QTimer::timeout, &m_next, [this] { give_turns(); });
    QObject::connect(&m_late, &QTimer::timeout, &m_late, [this] { late(); });
    QObject::connect(&m_idle, &QTimer::timeout, &m_idle, [this] { drop_helper(); });
}

MoviePlayer::~MoviePlayer()
{
    on_changed = nullptr;
    on_event = nullptr;
    drop_helper();
    for (QProcess* process : m_processes.findChildren<QProcess*>())
        process->waitForFinished(1000);
}

void MoviePlayer::set_fonts(const QMap<QString, QByteArray>& fonts)
{
    if (fonts == std::exchange(m_fonts, fonts) || m_helper != Helper::Ready)
        return;
    for (auto font = m_fonts.begin(); font != m_fonts.end(); ++font)
        send(movie_orders::font(font.key(), font.value()));
}

MoviePlayer::Id MoviePlayer::open(const MovieSetup& setup)
{
    m_movies[++m_last].setup = setup;
    return m_last;
}

void MoviePlayer::close(Id id)
{
    if (m_movies.at(id).loaded)
        send(movie_orders::end(id));
    m_movies.erase(id);
    schedule();
}

void MoviePlayer::start(Id id, bool on)
{
    Movie& movie = m_movies.at(id);
    if (std::exchange(movie.loaded, false))
        send(movie_orders::end(id));
    movie.plays = on;
    movie.turns = 0;
    movie.failure.clear();
    movie.todo.clear();
    movie.asked = true;
    m_unavailable.clear();
    m_deaths = 0;
    schedule();
}

void MoviePlayer::set_seen(Id id, bool seen)
{
    Movie& movie = m_movies.at(id);
    if (std::exchange(movie.seen, seen) == seen)
        return;
    const qint64 now = m_clock.elapsed();
    if (seen) // For the movie no time has passed.
        movie.began += now - movie.hidden;
    else
        movie.hidden = now;
    schedule();
}

void MoviePlayer::set_size(Id id, QSize pixels)
{
    Movie& movie = m_movies.at(id);
    pixels = held(pixels);
    if (std::exchange(movie.pixels, pixels) == pixels)
        return;
    if (movie.loaded)
        movie.todo.set_size(pixels);
    else
        movie.turns = 0;
    movie.asked = true;
    schedule();
}

MovieDeeds& MoviePlayer::ask(Id id)
{
    Movie& movie = m_movies.at(id);
    movie.asked = true;
    m_next.start(0);
    return movie.todo;
}

QString MoviePlayer::failure(Id id) const
{
    const Movie& movie = m_movies.at(id);
    if (!movie.failure.isEmpty() || !m_unavailable.isEmpty())
        return movie.failure.isEmpty() ? m_unavailable : movie.failure;
    return movie.plays && !movie.loaded && wants_turn(movie) && room() <= 0
        ? lang(u"同时最多播放 %1 个影片。", u"At most %1 movies play at the same time.").arg(most_movies)
        : QString();
}

bool MoviePlayer::awaits_first_frame(Id id) const
{
    const Movie& movie = m_movies.at(id);
    return !movie.plays && failure(id).isEmpty() && (movie.loaded || wants_turn(movie));
}

qint64 MoviePlayer::process_id() const
{
    return m_process ? m_process->processId() : 0;
}

// Turns -----------------------------------------------------------------------------------------------------------------

bool MoviePlayer::wants_turn(const Movie& movie) const
{
    return movie.seen && movie.failure.isEmpty() && !movie.pixels.isEmpty()
        && (movie.plays || movie.turns < turns_of_first_frame);
}

/// How many movies can still come to play.
int MoviePlayer::room() const
{
    const auto plays = [](const auto& entry) { return entry.second.loaded && entry.second.seen; };
    return most_movies - int(std::ranges::count_if(m_movies, plays));
}

/// Hidden movies keep their places while nobody else needs these.
void MoviePlayer::make_room()
{
    const auto is_loaded = [](const auto& entry) { return entry.second.loaded; };
    if (std::ranges::count_if(m_movies, is_loaded) < most_movies)
        return;
    const auto hidden = std::ranges::find_if(m_movies, [](const auto& e) { return e.second.loaded && !e.second.seen; });
    if (hidden == m_movies.end())
        return;
    hidden->second.loaded = false;
    send(movie_orders::end(hidden->first));
}

void MoviePlayer::schedule()
{
    if (m_outstanding || !m_unavailable.isEmpty())
        return;
    qint64 next = -1;
    const int room = this->room();
    for (const auto& [id, movie] : m_movies)
        if (wants_turn(movie) && (movie.loaded || room > 0))
            next = std::min(next < 0 ? movie.due : next, movie.asked ? 0 : movie.due);
    if (next < 0) {
        m_next.stop();
        if (m_process && !m_idle.isActive())
            m_idle.start(m_limits.idle);
        return;
    }
    m_idle.stop();
    if (m_helper == Helper::Off)
        ask_version();
    else if (m_helper == Helper::Ready)
        m_next.start(int(std::clamp<qint64>(next - m_clock.elapsed(), 0, 1000)));
}

QByteArray MoviePlayer::turn_of(Id id, Movie& movie)
{
    const qint64 now = m_clock.elapsed();
    const double period = 1000 / std::clamp(movie.setup.frame_rate, slowest, fastest);
    MovieDeeds deeds;
    if (!movie.loaded) {
        make_room();
        movie.loaded = true;
        send(movie_orders::file(id, movie.setup.file));
        deeds.load(movie.setup, movie.pixels);
        movie.began = now;
        movie.turns = 0;
    } else {
        deeds = std::exchange(movie.todo, {});
    }
    // Turns begin just behind the times of frames, so that each has one.
    const double passed = double(now - movie.began);
    movie.due = movie.began + qint64(std::ceil((std::floor(passed / period) + 1) * period)) + 1;
    movie.asked = false;
    ++movie.turns;
    // What only shows its first frame is given the time of one, and not of the second.
    const double still = movie.turns == 1 ? 0 : period + movie.turns;
    return deeds.turn(id, movie.plays ? passed : still);
}

void MoviePlayer::give_turns()
{
    if (m_outstanding || m_helper != Helper::Ready)
        return schedule();
    const qint64 now = m_clock.elapsed();
    QByteArrayList turns;
    int room = this->room();
    for (auto& [id, movie] : m_movies)
        if (wants_turn(movie) && (movie.asked || movie.due <= now) && (movie.loaded || room-- > 0)) {
            turns << turn_of(id, movie);
            m_turns << id;
        }
    if (turns.isEmpty())
        return schedule();
    m_outstanding = true;
    send(movie_orders::tick(++m_number, turns));
    watch_turns();
}

void MoviePlayer::turn_done(Id id)
{
    if (!m_turns.isEmpty() && m_turns.first() == id)
        m_turns.removeFirst();
    watch_turns();
    const auto found = m_movies.find(id);
    if (found == m_movies.end())
        return;
    Movie& movie = found->second;
    if (!movie.plays && movie.turns >= turns_of_first_frame && std::exchange(movie.loaded, false))
        send(movie_orders::end(id)); // Its picture is all that is needed.
}

// The helper ------------------------------------------------------------------------------------------------------------

void MoviePlayer::watch(QProcess* process)
{
    m_process = process;
    // When it is dropped it is still there until it ended, so that nobody has to wait for that.
    QObject::connect(process, &QProcess::finished, process, &QObject::deleteLater);
    QObject::connect(process, &QProcess::errorOccurred, process, [process](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            process->deleteLater();
    });
}

void MoviePlayer::ask_version()
{
    const auto tools = MovieTools::find();
    if (!tools)
        return give_up(tools.status().message());
    m_helper = Helper::AsksVersion;
    auto* process = new QProcess(&m_processes);
    watch(process);
    const auto ended = [this, process, tools = tools.value()] {
        if (process != m_process)
            return;
        const int major = node_major(process->readAllStandardOutput().left(100));
        m_process = nullptr;
        if (major < 20)
            return give_up(lang(u"影片播放器需要 Node 20 或更新版本。", u"The movie player needs Node 20 or later."));
        launch(tools, major);
    };
    QObject::connect(process, &QProcess::finished, &m_next, ended);
    QObject::connect(process, &QProcess::errorOccurred, &m_next, [this, ended](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended();
    });
    process->start(tools.value().node, {QStringLiteral("--version")}, QIODevice::ReadOnly);
}

void MoviePlayer::launch(const MovieTools& tools, int node_major)
{
    m_helper = Helper::Starts;
    m_answers = {};
    ++m_starts;
    auto* process = new QProcess(&m_processes);
    watch(process);
    confine(*process);
    QObject::connect(process, &QProcess::readyReadStandardOutput, &m_next, [this, process] {
        if (process == m_process)
            read();
    });
    const auto ended = [this, process] {
        if (process == m_process)
            helper_ended();
    };
    QObject::connect(process, &QProcess::finished, &m_next, ended);
    QObject::connect(process, &QProcess::errorOccurred, &m_next, [ended](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            ended();
    });
    process->start(tools.node, player_arguments(tools, node_major));
    m_late.start(m_limits.start);
}

void MoviePlayer::send(const QByteArray& order)
{
    if (m_process && m_helper == Helper::Ready)
        m_process->write(order);
}

void MoviePlayer::read()
{
    std::vector<MovieAnswer> answers;
    const bool fine = m_answers.feed(m_process->readAllStandardOutput(), answers);
    const QProcess* const process = m_process;
    for (const MovieAnswer& answer : answers)
        if (process == m_process) // What is told may end it.
            take(answer);
    if (!fine && process == m_process)
        break_off();
}

void MoviePlayer::take(const MovieAnswer& answer)
{
    using Kind = MovieAnswer::Kind;
    const auto found = m_movies.find(answer.movie);
    switch (answer.kind) {
    case Kind::Ready:
        if (m_helper != Helper::Starts)
            return;
        m_helper = Helper::Ready;
        m_late.stop();
        for (auto font = m_fonts.begin(); font != m_fonts.end(); ++font)
            send(movie_orders::font(font.key(), font.value()));
        return schedule();
    case Kind::Picture:
    case Kind::Same:
        turn_done(answer.movie);
        if (answer.kind == Kind::Same || found == m_movies.end())
            return;
        found->second.picture = answer.picture;
        if (on_changed)
            on_changed(answer.movie);
        return;
    case Kind::Event:
        if (found == m_movies.end())
            return;
        if (answer.event == QLatin1String("failed"))
            fail(answer.movie,
                 lang(u"播放器无法播放这个影片，它可能已损坏。",
                      u"The player cannot play this movie; it may be damaged."));
        else if (on_event)
            on_event(answer.movie, answer);
        return;
    case Kind::Done:
        if (answer.movie != m_number)
            return;
        m_late.stop();
        m_turns.clear();
        m_outstanding = false;
        return schedule();
    }
}

void MoviePlayer::fail(Id id, const QString& why)
{
    const auto found = m_movies.find(id);
    if (found == m_movies.end())
        return;
    found->second.failure = why;
    found->second.picture = {};
    if (std::exchange(found->second.loaded, false))
        send(movie_orders::end(id));
    if (on_changed)
        on_changed(id);
}

void MoviePlayer::watch_turns()
{
    m_turn_began = m_clock.elapsed();
    m_turn_processor = processor_time(process_id());
    m_late.start(m_limits.answer);
}

/// Whether the machine hardly let the helper run since the turn began: then the movie is not to blame yet.
bool MoviePlayer::was_held_up() const
{
    constexpr int patience = 10;
    if (m_turn_processor < 0 || m_clock.elapsed() - m_turn_began >= patience * qint64(m_limits.answer))
        return false;
    const qint64 now = processor_time(process_id());
    return now >= 0 && now - m_turn_processor < m_limits.answer / 2;
}

void MoviePlayer::late()
{
    if (m_helper == Helper::Starts)
        return give_up(lang(u"影片播放器没有启动。", u"The movie player did not start."));
    if (was_held_up())
        m_late.start(m_limits.answer / 10);
    else
        break_off();
}

/// The helper does not answer, or says what it cannot mean.
void MoviePlayer::break_off()
{
    const Id culprit = m_turns.isEmpty() ? 0 : m_turns.first();
    drop_helper();
    fail(culprit, lang(u"影片没有响应，已停止播放。", u"The movie did not answer and was stopped."));
    schedule();
}

void MoviePlayer::helper_ended()
{
    const QByteArray said = m_process->readAllStandardError().right(longest_log);
    const bool started = m_helper == Helper::Ready;
    const Id culprit = m_turns.isEmpty() ? 0 : m_turns.first();
    drop_helper();
    if (culprit)
        fail(culprit, lang(u"影片使播放器崩溃，已停止播放。", u"The movie broke the player and was stopped."));
    else if (!started || ++m_deaths > most_deaths)
        return give_up(lang(u"影片播放器意外终止：%1", u"The movie player broke down: %1")
                           .arg(QString::fromUtf8(said).simplified()));
    schedule();
}

void MoviePlayer::give_up(const QString& why)
{
    drop_helper();
    m_unavailable = why;
    if (!on_changed)
        return;
    QList<Id> all;
    for (const auto& [id, movie] : m_movies)
        all << id;
    for (const Id id : all)
        on_changed(id);
}

void MoviePlayer::drop_helper()
{
    for (QTimer* timer : {&m_next, &m_late, &m_idle})
        timer->stop();
    m_helper = Helper::Off;
    m_outstanding = false;
    m_turns.clear();
    for (auto& [id, movie] : m_movies) {
        movie.loaded = false;
        movie.todo.clear();
    }
    if (QProcess* process = std::exchange(m_process, nullptr))
        process->kill();
}

} // namespace tarn
