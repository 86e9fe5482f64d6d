// How movies play: pictures a second, memory, gaps of the program's thread, and from a click to the changed picture. Needs
// the player; prints a table.

#include "movies/movie_player.h"
#include "support/movie_writer.h"
#include "support/run_until.h"

#include <QFile>
#include <QGuiApplication>
#include <QRegularExpression>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <vector>

#include <unistd.h>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int measured = 10; ///< seconds

QByteArray content_of(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Megabytes that the process has of its own.
double memory_of(qint64 process)
{
    const QString text = QString::fromLatin1(content_of(QStringLiteral("/proc/%1/smaps_rollup").arg(process)));
    const QRegularExpression line(QStringLiteral("^Pss: +(\\d+)"), QRegularExpression::MultilineOption);
    return line.match(text).captured(1).toDouble() / 1024;
}

/// Seconds of the processor that it took so far.
double processor_of(qint64 process)
{
    const QByteArray stat = content_of(QStringLiteral("/proc/%1/stat").arg(process));
    const QByteArrayList fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() < 13 ? 0 : (fields[11].toDouble() + fields[12].toDouble()) / double(sysconf(_SC_CLK_TCK));
}

/// The longest time between two turns of the event loop.
class Gaps {
public:
    Gaps()
    {
        m_clock.start();
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            m_longest = std::max(m_longest, m_clock.nsecsElapsed() / 1e6);
            m_clock.start();
        });
        m_timer.setTimerType(Qt::PreciseTimer);
        m_timer.start(1);
    }
    double longest() const { return m_longest; } ///< milliseconds

private:
    QTimer m_timer;
    QElapsedTimer m_clock;
    double m_longest = 0;
};

void spin(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

void play(int movies, QSize pixels)
{
    MoviePlayer player;
    int pictures = 0;
    player.on_changed = [&](auto) { ++pictures; };
    auto starting = std::make_unique<Gaps>();
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < movies; ++i) {
        const auto movie = player.open({.file = moving_movie(pixels, 120)});
        player.set_size(movie, pixels);
        player.set_seen(movie, true);
        player.start(movie, true);
    }
    while (pictures == 0 && player.failure(1).isEmpty())
        spin(5);
    if (pictures == 0) {
        std::printf("%s\n", qPrintable(player.failure(1)));
        return;
    }
    const double first = double(clock.elapsed());
    const double gap_of_start = starting->longest();
    starting.reset();
    spin(2000);
    const double before = processor_of(player.process_id());
    pictures = 0;
    const Gaps gaps;
    spin(measured * 1000);
    std::printf("%2d of %4d x %-4d  first %5.0f ms  %5.1f a second each  processor %4.1f %%  helper %4.0f MB  gap "
                "%4.1f ms, at the start %4.1f ms\n",
                movies, pixels.width(), pixels.height(), first, double(pictures) / measured / movies,
                (processor_of(player.process_id()) - before) / measured * 100, memory_of(player.process_id()),
                gaps.longest(), gap_of_start);
}

/// Two buttons move a box there and back.
QByteArray clicked_movie()
{
    MovieWriter writer;
    writer.background(Qt::white)
        .shape(1, {0, 0, 20, 20}, Qt::red)
        .clip(2, 1)
        .place(2, 1, {0, 0}, QStringLiteral("box"));
    writer.shape(3, {0, 0, 40, 20}, Qt::blue);
    for (const int side : {0, 1})
        writer.button(4 + side, 3, MovieScript().set_property(QStringLiteral("box"), 0, 60 * side))
            .place(4 + side, 5 + side, {10 + 60 * side, 50});
    return writer.script(MovieScript().stop()).show_frame().bytes();
}

void click_on(MoviePlayer& player, MoviePlayer::Id movie, int i)
{
    for (const char* what : {"move", "down", "up"})
        player.ask(movie).mouse(what, QPointF(i % 2 ? 15 : 75, 55), false);
}

void click()
{
    MoviePlayer player;
    const auto movie = player.open({.file = clicked_movie()});
    player.set_size(movie, {120, 90});
    player.set_seen(movie, true);
    player.start(movie, true);
    int pictures = 0;
    player.on_changed = [&](auto) { ++pictures; };
    if (!run_until([&] { return pictures > 1; }, 20000))
        (void)run_until([&] { return pictures > 0; }, 1000);
    spin(500);
    std::vector<double> times;
    for (int i = 0; i < 50; ++i) {
        spin(37);
        QElapsedTimer clock;
        clock.start();
        const int before = pictures;
        click_on(player, movie, i);
        QEventLoop loop;
        QTimer::singleShot(1000, &loop, &QEventLoop::quit);
        player.on_changed = [&](auto) {
            ++pictures;
            loop.quit();
        };
        loop.exec();
        if (pictures > before)
            times.push_back(double(clock.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    if (!times.empty())
        std::printf("click to picture: median %.1f ms, longest %.1f ms, %d of 50\n", times[times.size() / 2],
                    times.back(), int(times.size()));
}

/// Two movies for a while, with clicks on a third. Every frame of the two is another picture, so one that is missing is a
/// tick that was lost.
void play_long()
{
    constexpr int seconds = 180;
    constexpr int clicks = 200;
    constexpr double rate = 30;
    MoviePlayer player;
    std::vector<MoviePlayer::Id> movies;
    for (int i = 0; i < 3; ++i) {
        const QSize pixels = i < 2 ? QSize(240, 180) : QSize(120, 90);
        movies.push_back(player.open({.file = i < 2 ? moving_movie(pixels, 120, rate) : clicked_movie()}));
        player.set_size(movies.back(), pixels);
        player.set_seen(movies.back(), true);
        player.start(movies.back(), true);
    }
    std::vector<int> pictures(4);
    player.on_changed = [&](MoviePlayer::Id movie) { ++pictures[std::min<std::size_t>(movie, 3)]; };
    if (!run_until([&] { return pictures[1] > 0 && pictures[2] > 0 && pictures[3] > 0; }, 20000))
        return;
    spin(2000);
    const double memory = memory_of(player.process_id());
    std::fill(pictures.begin(), pictures.end(), 0);
    const Gaps gaps;
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < clicks; ++i) {
        spin(seconds * 1000 / clicks);
        click_on(player, movies[2], i);
    }
    spin(500);
    const double due = double(clock.elapsed()) / 1000 * rate;
    std::printf(
        "%d s of two movies: %.0f and %.0f ticks lost of %.0f, %d of %d clicks answered, helper %.0f MB before, "
        "%.0f MB after, gap %.1f ms\n",
        seconds, std::max(due - pictures[1], 0.0), std::max(due - pictures[2], 0.0), due, pictures[3], clicks, memory,
        memory_of(player.process_id()), gaps.longest());
}

} // namespace

int main(int argc, char** argv)
{
    const QGuiApplication app(argc, argv);
    play(1, {240, 180});
    play(1, {640, 480});
    play(4, {640, 480});
    play(12, {240, 180});
    click();
    play_long();
}
