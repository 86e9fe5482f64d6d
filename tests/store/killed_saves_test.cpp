// Programs that end while they save, or that may not write as much as they want.

#include "store/atomic_file.h"

#include "support/files.h"
#include "support/long_tests.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

/// Ends the program by force before the operation `number`; a write is cut in the middle.
class KillingIo : public FileIo {
public:
    explicit KillingIo(int number) : m_left(number) {}

    int create(const QString& path, const QString& like) override
    {
        step();
        return FileIo::create(path, like);
    }
    bool write(int handle, const char* data, qint64 size) override
    {
        step();
        const bool begun = FileIo::write(handle, data, size / 2);
        step();
        return begun && FileIo::write(handle, data + size / 2, size - size / 2);
    }
    bool sync(int handle) override
    {
        step();
        return FileIo::sync(handle);
    }
    bool rename(const QString& from, const QString& to) override
    {
        step();
        return FileIo::rename(from, to);
    }
    bool close(int handle) override
    {
        step();
        return FileIo::close(handle);
    }
    bool sync_folder(const QString& path) override
    {
        step();
        return FileIo::sync_folder(path);
    }

private:
    void step()
    {
        if (m_left-- == 0)
            ::raise(SIGKILL);
    }
    int m_left;
};

/// Runs `work` in a process of its own; answers that.
template <class Work>
pid_t start(Work work)
{
    const pid_t child = ::fork();
    if (child == 0)
        ::_exit(work());
    return child;
}

/// The exit status of a process that ended by itself; -1 when it was killed.
int end_of(pid_t child)
{
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class KilledSaves : public testing::Test {
protected:
    void expect_whole_and_then_tidy(bool may_miss)
    {
        const QByteArray found = content_of(m_path);
        EXPECT_TRUE(found == m_old || found == m_new || (may_miss && !QFile::exists(m_path))) << found.size();
        EXPECT_TRUE(write_file_atomically(m_path, m_old).ok());
        EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s});
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"scene.tarn"_s);
    const QByteArray m_old = QByteArray(100'000, 'o');
    const QByteArray m_new = QByteArray(250'000, 'n');
};

} // namespace

TEST_F(KilledSaves, at_any_step_leave_a_whole_file_and_the_next_save_tidies_up)
{
    for (const bool exists : {true, false}) {
        int killed = 0;
        for (int number = 0;; ++number, ++killed) {
            SCOPED_TRACE(testing::Message() << "step " << number << ", old file " << exists);
            exists ? put(m_path, m_old) : void(QFile::remove(m_path));
            const int status = end_of(start([&] {
                KillingIo io(number);
                return write_file_atomically(m_path, m_new, io).ok() ? 0 : 1;
            }));
            if (status >= 0) {
                EXPECT_EQ(status, 0);
                EXPECT_EQ(content_of(m_path), m_new);
                break;
            }
            expect_whole_and_then_tidy(!exists);
        }
        EXPECT_GE(killed, 7);
    }
}

TEST_F(KilledSaves, at_any_moment_leave_a_whole_file_and_the_next_save_tidies_up)
{
    put(m_path, m_old);
    std::mt19937 random(1);
    for (int i = 0; i < times(10, 400); ++i) {
        const pid_t child = start([&] {
            while (write_file_atomically(m_path, m_new).ok() && write_file_atomically(m_path, m_old).ok()) {}
            return 1;
        });
        ::usleep(random() % 20'000);
        ::kill(child, SIGKILL);
        ASSERT_EQ(end_of(child), -1) << "a save failed by itself";
        expect_whole_and_then_tidy(false);
    }
}

TEST_F(KilledSaves, a_limit_on_the_size_of_files_is_an_error_of_the_save)
{
    put(m_path, m_old);
    const int status = end_of(start([&] {
        ::signal(SIGXFSZ, SIG_IGN); // As the program does when it starts.
        const rlimit limit{150'000, 150'000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return write_file_atomically(m_path, m_new).ok() ? 1 : 0;
    }));
    EXPECT_EQ(status, 0);
    EXPECT_EQ(content_of(m_path), m_old);
    EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"scene.tarn"_s});
}
