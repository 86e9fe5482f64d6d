#include "store/atomic_file.h"

#include "support/failing_file_io.h"
#include "support/files.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <cstring>

using namespace Qt::StringLiterals;
using namespace tarn::test;
using tarn::write_file_atomically;

namespace {

class AtomicFileTest : public testing::Test {
protected:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"湖 lake.tarn"_s);
};

} // namespace

TEST_F(AtomicFileTest, a_file_is_made_or_replaced_and_nothing_else_stays)
{
    for (const char* content : {"first", "", "second, which is longer"}) {
        EXPECT_TRUE(write_file_atomically(m_path, content).ok());
        EXPECT_EQ(content_of(m_path), content);
        EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"湖 lake.tarn"_s});
    }
}

TEST_F(AtomicFileTest, what_a_killed_program_left_behind_is_overwritten)
{
    put(m_folder.filePath(u".湖 lake.tarn.saving"_s), QByteArray(10'000, 'x'));
    EXPECT_TRUE(write_file_atomically(m_path, "new").ok());
    EXPECT_EQ(content_of(m_path), "new");
    EXPECT_EQ(everything_in(m_folder.path()).size(), 1);
}

TEST_F(AtomicFileTest, a_link_stays_a_link_and_permissions_are_kept)
{
    put(m_path, "old");
    const auto permissions = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup;
    QFile::setPermissions(m_path, permissions);
    const QString link = m_folder.filePath(u"link"_s);
    ASSERT_TRUE(QFile::link(m_path, link));
    EXPECT_TRUE(write_file_atomically(link, "new").ok());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(content_of(m_path), "new");
    EXPECT_EQ(QFileInfo(m_path).permissions() & ~(QFile::ReadUser | QFile::WriteUser), permissions);
}

TEST_F(AtomicFileTest, a_target_that_cannot_be_is_refused_with_its_name)
{
    for (const QString& path : {m_folder.path(), m_folder.filePath(u"no/such/folder.tarn"_s)}) {
        const auto status = write_file_atomically(path, "x");
        EXPECT_FALSE(status.ok());
        EXPECT_TRUE(status.message().contains(path)) << status.message().toStdString();
    }
    EXPECT_TRUE(everything_in(m_folder.path()).isEmpty());
}

TEST_F(AtomicFileTest, a_temporary_file_that_cannot_be_removed_does_not_hide_why_saving_failed)
{
    put(m_path, "old");
    class NoRename : public FailingFileIo {
    public:
        NoRename() : FailingFileIo(Rename, 0) {}
        bool remove(const QString&) override
        {
            errno = EPERM;
            return false;
        }
    } io;
    const auto status = write_file_atomically(m_path, "new", io);
    EXPECT_FALSE(status.ok());
    EXPECT_TRUE(status.message().contains(QString::fromLocal8Bit(std::strerror(EIO))))
        << status.message().toStdString();
    EXPECT_EQ(content_of(m_path), "old");
    EXPECT_TRUE(write_file_atomically(m_path, "new").ok());
    EXPECT_EQ(everything_in(m_folder.path()).size(), 1);
}
