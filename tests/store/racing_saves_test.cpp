// Two programs save one file, and each of their steps is once the one at which the other overtakes.

#include "store/atomic_file.h"

#include "support/files.h"
#include "support/long_tests.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <array>
#include <condition_variable>
#include <limits>
#include <mutex>
#include <thread>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int to_the_end = std::numeric_limits<int>::max();

/// A save in a thread of its own. It stops before each operation on files until that is allowed.
class Save : private FileIo {
public:
    Save(QString path, QByteArray content) : m_path(std::move(path)), m_content(std::move(content))
    {
        m_thread = std::thread([this] {
            const auto status = write_file_atomically(m_path, m_content, *this, ReadOnly::Replace);
            const std::lock_guard lock(m_mutex);
            m_status = status;
            m_done = true;
            m_changed.notify_all();
        });
    }
    ~Save() override
    {
        go(to_the_end);
        m_thread.join();
    }
    Save(const Save&) = delete;
    Save& operator=(const Save&) = delete;

    /// Lets it do that many operations, and returns when they are done; false when it has ended.
    bool go(int steps)
    {
        std::unique_lock lock(m_mutex);
        m_allowed = steps;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_done || (m_waiting && m_allowed == 0); });
        return !m_done;
    }
    const Status& status() const { return m_status; } ///< once it has ended

private:
    void step()
    {
        std::unique_lock lock(m_mutex);
        m_waiting = true;
        m_changed.notify_all();
        m_changed.wait(lock, [this] { return m_allowed > 0; });
        m_waiting = false;
        if (m_allowed != to_the_end)
            --m_allowed;
    }
    int create(const QString& path, const QString& like) override
    {
        step();
        return FileIo::create(path, like);
    }
    bool write(int handle, const char* data, qint64 size) override
    {
        step();
        if (!FileIo::write(handle, data, size / 2))
            return false;
        step();
        return FileIo::write(handle, data + size / 2, size - size / 2);
    }
    bool sync(int handle) override
    {
        step();
        return FileIo::sync(handle);
    }
    bool close(int handle) override
    {
        step();
        return FileIo::close(handle);
    }
    bool rename(const QString& from, const QString& to) override
    {
        step();
        return FileIo::rename(from, to);
    }
    bool sync_folder(const QString& path) override
    {
        step();
        return FileIo::sync_folder(path);
    }

    const QString m_path;
    const QByteArray m_content;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_allowed = 0;
    bool m_waiting = false;
    bool m_done = false;
    Status m_status;
    std::thread m_thread;
};

constexpr int steps = 8; ///< more than a save has operations by one

struct Target {
    const char* name;
    bool exists;
    bool is_link;
    bool has_left_over;
};
void PrintTo(const Target& target, std::ostream* out)
{
    *out << target.name;
}
constexpr std::array targets{Target{"an old file", true, false, false}, Target{"none", false, false, false},
                             Target{"a link to an old file", true, true, false},
                             Target{"a link to nothing", false, true, false},
                             Target{"an old file and what a killed save left", true, false, true}};

class RacingSaves : public testing::TestWithParam<Target> {
protected:
    /// The first save goes `first` steps, the second `second`, then one and the other to the end.
    void race(int first, int second, bool first_ends_first, const QByteArray& a, const QByteArray& b)
    {
        const QTemporaryDir folder;
        const QString file = folder.filePath(u"scene.tarn"_s);
        const QString path = GetParam().is_link ? folder.filePath(u"link"_s) : file;
        const QByteArray old = "the old file";
        if (GetParam().exists)
            put(file, old);
        ASSERT_TRUE(!GetParam().is_link || QFile::link(file, path));
        if (GetParam().has_left_over)
            put(folder.filePath(u".scene.tarn.0123456789abcdef.saving"_s), "half");
        const auto is_whole = [&](bool saved) {
            const QByteArray found = content_of(file);
            return found == a || found == b || (!saved && (GetParam().exists ? found == old : !QFile::exists(file)));
        };
        {
            Save one(path, a);
            Save other(path, b);
            bool saved = !one.go(first);
            EXPECT_TRUE(is_whole(saved));
            saved = !other.go(second) || saved;
            EXPECT_TRUE(is_whole(saved));
            (first_ends_first ? one : other).go(to_the_end);
            EXPECT_TRUE(is_whole(true));
            (first_ends_first ? other : one).go(to_the_end);
            EXPECT_TRUE(is_whole(true));
            EXPECT_TRUE(one.status().ok()) << one.status().message().toStdString();
            EXPECT_TRUE(other.status().ok()) << other.status().message().toStdString();
        }
        EXPECT_EQ(everything_in(folder.path()).size(), GetParam().is_link ? 2 : 1);
    }
};

} // namespace

TEST_P(RacingSaves, leave_one_whole_file_whichever_step_waits)
{
    const QByteArray short_text = "short";
    const QByteArray long_text(300'000, 'l');
    const int stride = times(3, 1);
    int races = 0;
    for (int first = 0; first <= steps; first += stride) {
        for (int second = 0; second <= steps; second += stride) {
            for (const bool first_ends_first : {false, true}) {
                SCOPED_TRACE(testing::Message() << first << " and " << second << " steps, first " << first_ends_first);
                race(first, second, first_ends_first, short_text, long_text);
                if (long_tests())
                    race(first, second, first_ends_first, long_text, short_text);
                races += long_tests() ? 2 : 1;
            }
        }
    }
    RecordProperty("races", races);
}

INSTANTIATE_TEST_SUITE_P(, RacingSaves, testing::ValuesIn(targets));
