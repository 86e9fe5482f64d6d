// Programs that end while an author works, and two programs on one file: the program itself, in processes of its own.

#include "autosave.h"
#include "support/files.h"
#include "support/long_tests.h"
#include "support/printing.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QThread>

#include <gtest/gtest.h>

#include <csignal>

using namespace Qt::StringLiterals;
using namespace tarn::test;

namespace {

/// The program, run by a script, with a folder of its own for the user's data.
class Program : public QProcess {
public:
    Program(const QString& data, const QString& script, const QStringList& arguments)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_DATA_HOME"_s, data);
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        setProcessEnvironment(environment);
        setChildProcessModifier([] {
            for (const int signal : {SIGTERM, SIGHUP, SIGINT})
                ::signal(signal, SIG_DFL); // The tests may run where one of them is ignored.
        });
        start(
            QStringLiteral(TARN_PROGRAM),
            QStringList{u"--lang"_s, u"en"_s, u"--recovery"_s, u"--script"_s, QStringLiteral(TARN_SCRIPTS "/") + script}
                + arguments);
        EXPECT_TRUE(waitForStarted());
    }
    ~Program() override
    {
        kill();
        waitForFinished();
    }
    QByteArray output()
    {
        EXPECT_TRUE(waitForFinished(60'000));
        EXPECT_EQ(exitCode(), 0) << readAllStandardError().toStdString();
        return readAllStandardOutput();
    }
};

class KilledProgram : public testing::Test {
protected:
    QStringList recovery_files() const { return everything_in(m_data + u"/tarn-studio/recovery"_s); }
    int last_logged() const { return content_of(m_log).trimmed().split('\n').last().toInt(); }
    void wait_for_edits(Program& program, int count) const
    {
        while (last_logged() < count && !program.waitForFinished(1)) {}
    }
    int recovered_edit() const
    {
        const QByteArray output = Program(m_data, u"recover.lua"_s, {}).output();
        return output.mid(output.lastIndexOf(' ') + 1).trimmed().toInt();
    }

    QTemporaryDir m_folder;
    const QString m_data = m_folder.filePath(u"data"_s);
    const QString m_log = m_folder.filePath(u"log"_s);
    const QString m_file = m_folder.filePath(u"scene.tarn"_s);
};

} // namespace

TEST_F(KilledProgram, at_any_moment_loses_fifty_edits_at_most_and_leaves_the_file_alone)
{
    QRandomGenerator random(1);
    ASSERT_TRUE(QFile::copy(QStringLiteral(TARN_SAMPLE), m_file));
    const QByteArray before = content_of(m_file);
    int most = 0;
    for (int round = 0; round < times(12, 100); ++round) {
        SCOPED_TRACE(round);
        const bool was_saved = round % 2 == 0;
        QFile::remove(m_log);
        {
            Program program(m_data, u"edit_until_killed.lua"_s,
                            QStringList{m_log, QString::number(round)}
                                + (was_saved ? QStringList{m_file} : QStringList{}));
            wait_for_edits(program, Autosave::most_edits + random.bounded(200));
            QThread::usleep(random.bounded(20'000u));
            ASSERT_FALSE(program.waitForFinished(0)) << program.readAllStandardError().toStdString();
        }
        const int lost = last_logged() - recovered_edit();
        EXPECT_GE(lost, 0);
        EXPECT_LE(lost, Autosave::most_edits);
        most = std::max(most, lost);
        EXPECT_EQ(recovery_files(), QStringList()) << "the author has it, and gave it up in the end";
    }
    RecordProperty("most_edits_lost", most);
    EXPECT_TRUE(content_of(m_file) == before);
}

TEST_F(KilledProgram, asked_to_end_it_keeps_everything)
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        SCOPED_TRACE(signal);
        QFile::remove(m_log);
        int status = 0;
        {
            Program program(m_data, u"edit_until_killed.lua"_s, {m_log, u"7"_s});
            wait_for_edits(program, 5);
            ::kill(pid_t(program.processId()), signal);
            ASSERT_TRUE(program.waitForFinished());
            EXPECT_EQ(program.exitStatus(), QProcess::CrashExit);
            status = program.exitCode();
        }
        EXPECT_EQ(status, signal) << "it ends by the signal";
        EXPECT_LE(last_logged() - recovered_edit(), 1) << "the last edit but one gave the number";
    }
}

TEST_F(KilledProgram, leaves_what_can_be_put_off_and_discarded)
{
    {
        Program program(m_data, u"edit_until_killed.lua"_s, {m_log, u"7"_s});
        wait_for_edits(program, Autosave::most_edits);
    }
    (void)Program(m_data, u"refuse.lua"_s, {}).output();
    EXPECT_EQ(recovery_files(), QStringList());
}

TEST_F(KilledProgram, while_it_runs_its_file_is_opened_as_a_copy_and_not_overwritten_unasked)
{
    ASSERT_TRUE(QFile::copy(QStringLiteral(TARN_SAMPLE), m_file));
    const QByteArray before = content_of(m_file);
    const QString link = m_folder.filePath(u"link.tarn"_s);
    ASSERT_TRUE(QFile::link(m_file, link));
    Program holder(m_data, u"hold_file.lua"_s, {m_file});
    ASSERT_TRUE(holder.waitForReadyRead(60'000));
    const QByteArray told
        = Program(m_data, u"second_program.lua"_s, {link, m_folder.filePath(u"other.tarn"_s)}).output();
    EXPECT_TRUE(told.contains("process " + QByteArray::number(holder.processId()))) << told.toStdString();
    EXPECT_TRUE(content_of(m_file) == before);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"other.tarn"_s)));

    const tarn::OpenFile other(m_data + u"/tarn-studio/open"_s);
    EXPECT_TRUE(other.other_holder(link));
    holder.kill();
    holder.waitForFinished();
    EXPECT_FALSE(other.other_holder(link)) << "its lock does not outlive it";
}
