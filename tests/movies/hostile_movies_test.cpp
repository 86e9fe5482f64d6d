#include "movies/confinement.h"
#include "movies_fixture.h"
#include "support/long_tests.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>

using namespace tarn;
using namespace tarn::test;

namespace {

class HostileMovie : public PlayedMovies {};

QByteArray endless_movie()
{
    return MovieWriter().background(Qt::white).script(MovieScript().loop_forever()).show_frame().bytes();
}

} // namespace

TEST_F(HostileMovie, that_never_ends_is_stopped_and_the_others_start_again_without_it)
{
    const auto good = open(moving_movie());
    ASSERT_TRUE(shows(good));
    const auto bad = open(endless_movie());
    ASSERT_TRUE(run_until([&] { return !m_player.failure(bad).isEmpty(); }));
    EXPECT_TRUE(m_player.failure(good).isEmpty());
    ASSERT_TRUE(run_until([&] { return m_player.starts() == 2; }));
    int changes = 0;
    m_player.on_changed = [&](auto id) { changes += id == good; };
    EXPECT_TRUE(run_until([&] { return changes > 3; })) << "the good one plays on";
    EXPECT_TRUE(m_player.picture(bad).isNull());
    m_player.start(bad, true); // Who insists gets the same again.
    EXPECT_TRUE(run_until([&] { return m_player.starts() == 3; }));
}

TEST_F(HostileMovie, with_code_for_names_reaches_no_file)
{
    const QTemporaryDir folder;
    const QString prey = folder.filePath(u"prey"_s);
    const QString write = u"require('fs').writeFileSync('%1','x')"_s.arg(prey);
    MovieScript script;
    script.call_out(write);
    script.call_out(u"eval"_s, {write});
    script.call_out(u"(()=>{%1})"_s.arg(write));
    script.call_out(u"this.constructor.constructor('return process')().binding('fs')"_s);
    script.call_out(u"globalThis.constructor.constructor"_s, {write});
    script.navigate(u"javascript:"_s + write).navigate(u"file://"_s + prey).fs_command(u"exec"_s, u"touch "_s + prey);
    script.call_out(u"done"_s).stop();
    const auto movie = open(MovieWriter().background(Qt::white).script(script).show_frame().bytes());
    ASSERT_TRUE(run_until([&] { return called().contains(u"done()"_s); }));
    EXPECT_EQ(called().size(), 7) << "they are names, and nothing else";
    EXPECT_TRUE(shows(movie));
    EXPECT_FALSE(QFile::exists(prey));
}

TEST_F(HostileMovie, that_is_damaged_or_huge_is_refused_or_drawn_and_the_next_one_plays)
{
    const QByteArray whole = moving_movie({120, 90}, 30);
    QByteArray wild = whole;
    for (qsizetype i = 30; i < wild.size(); i += 7)
        wild[i] = char(i * 31);
    MovieWriter many;
    for (int i = 0; i < 20000; ++i)
        many.shape(i + 1, {i % 100, i % 80, 20, 20}, Qt::red).place(i + 1, i + 1, {0, 0});
    const QByteArray huge = MovieWriter({30000, 30000})
                                .background(Qt::white)
                                .tag(777, QByteArray(40 << 20, 'x'))
                                .show_frame()
                                .bytes(true);
    for (const QByteArray& file :
         {whole.left(40), wild, many.show_frame().bytes(), huge, QByteArray("CWS\x08zzzzzzzzzzzzzzzz"), QByteArray()}) {
        const auto movie = open(file);
        EXPECT_TRUE(run_until([&] { return !m_player.picture(movie).isNull() || !m_player.failure(movie).isEmpty(); }));
        m_player.close(movie);
    }
    EXPECT_TRUE(shows(open(whole)));
}

TEST_F(HostileMovie, that_calls_without_end_is_heard_only_so_often)
{
    MovieScript script;
    for (int i = 0; i < 500; ++i)
        script.fs_command(u"again"_s, QString(10, u'x'));
    open(MovieWriter().background(Qt::white).script(script.stop()).show_frame().bytes());
    ASSERT_TRUE(run_until([&] { return !m_events.empty(); }));
    run_for(300);
    EXPECT_LE(m_events.size(), 100);
}

TEST_F(HostileMovie, can_be_started_again_and_again)
{
    const auto other = open(moving_movie());
    ASSERT_TRUE(shows(other));
    const auto movie = open(moving_movie());
    const int rounds = times(15, 100);
    for (int round = 0; round < rounds; ++round) {
        int changes = 0;
        m_player.on_changed = [&](auto id) { changes += id == movie; };
        m_player.start(movie, true);
        ASSERT_TRUE(run_until([&] { return changes > 1; })) << round;
    }
    EXPECT_EQ(m_player.starts(), 1);
    EXPECT_TRUE(m_player.failure(other).isEmpty());
}

TEST_F(HostileMovie, ends_the_helper_and_only_it)
{
    const auto good = open(moving_movie());
    ASSERT_TRUE(shows(good));
    const qint64 before = m_player.process_id();
    ASSERT_EQ(kill(pid_t(before), SIGSEGV), 0);
    int changes = 0;
    m_player.on_changed = [&](auto) { ++changes; };
    EXPECT_TRUE(run_until([&] { return m_player.starts() == 2 || !m_player.failure(good).isEmpty(); }));
    m_player.start(good, true);
    changes = 0;
    EXPECT_TRUE(run_until([&] { return changes > 3; }));
    EXPECT_NE(m_player.process_id(), before);
}

TEST_F(HostileMovie, that_took_the_helper_over_finds_nothing_to_do_there)
{
    const auto tools = MovieTools::find();
    if (!tools)
        return;
    const QTemporaryDir folder;
    QFile script(folder.filePath(u"main.js"_s));
    ASSERT_TRUE(script.open(QIODevice::WriteOnly));
    script.write(R"(
        const done = [];
        const attempt = (name, job) => { try { job(); done.push(name); } catch {} };
        attempt('write', () => require('fs').writeFileSync(process.argv[2] + '/x', 'x'));
        attempt('read', () => require('fs').readFileSync('/etc/passwd'));
        attempt('start', () => { if (require('child_process').spawnSync('true').status !== 0) throw 0; });
        attempt('thread', () => new (require('worker_threads').Worker)('1', { eval: true }));
        attempt('code', () => new Function('return 1')());
        attempt('variables', () => { if (!process.env.TARN_MOVIE_PLAYER) throw 0; });
        const end = (what) => { console.log([...done, what].join()); process.exit(); };
        require('net').connect(9, '127.0.0.1').on('connect', () => end('network')).on('error', (e) => end(e.code));
    )");
    script.close();
    QProcess process;
    confine(process);
    const QTemporaryDir packages;
    process.start(tools.value().node, player_arguments({{}, folder.path(), packages.path()}, 20));
    ASSERT_TRUE(process.waitForFinished());
    const QByteArray said = process.readAllStandardOutput().trimmed();
#ifdef Q_OS_LINUX
    EXPECT_EQ(said, "EPERM") << process.readAllStandardError().toStdString();
#else
    EXPECT_EQ(said, "ECONNREFUSED") << "nothing but the network";
#endif
}
