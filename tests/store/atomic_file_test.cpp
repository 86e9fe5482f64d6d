#include "store/atomic_file.h"

#include "core/language.h"

#include "support/failing_file_io.h"
#include "support/files.h"
#include "support/printing.h"

#include <gtest/gtest.h>

#include <cstring>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace tarn;
using namespace tarn::test;

namespace {

class AtomicFileTest : public testing::Test {
protected:
    AtomicFileTest() { VLCMsgIniW::set_language(Language::English); }
    QString in_folder(const QString& name) const { return m_folder.filePath(name); }
    QString left_over(const QString& digits = u"0123456789abcdef"_s) const
    {
        return in_folder(u".湖 lake.tarn."_s + digits + u".saving"_s);
    }
    void expect_refused(const QString& path, const QString& reason = {}, ReadOnly read_only = ReadOnly::Keep)
    {
        const auto before = everything_in(m_folder.path());
        const auto status = write_file_atomically(path, "x", FileIo::system(), read_only);
        EXPECT_FALSE(status.ok());
        EXPECT_TRUE(status.message().contains(path)) << status.message().toStdString();
        EXPECT_TRUE(status.message().contains(reason)) << status.message().toStdString();
        EXPECT_EQ(everything_in(m_folder.path()), before);
    }
    static mode_t modes_of(const QString& path)
    {
        struct stat info {};
        EXPECT_EQ(::stat(QFile::encodeName(path).constData(), &info), 0);
        return info.st_mode & 07777;
    }

    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"湖 lake.tarn"_s);
};

/// Notes the permissions that the temporary file has while it is written.
class WatchingIo : public FileIo {
public:
    bool write(int handle, const char* data, qint64 size) override
    {
        struct stat info {};
        EXPECT_EQ(::fstat(handle, &info), 0);
        modes = info.st_mode & 07777;
        return FileIo::write(handle, data, size);
    }
    mode_t modes = 0;
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

TEST_F(AtomicFileTest, what_killed_programs_left_behind_is_removed_and_nothing_else_is)
{
    put(left_over(), QByteArray(10'000, 'x'));
    put(left_over(u"ffffffffffffffff"_s), {});
    const QStringList others{left_over(u"0123456789abcdeg"_s), left_over(u"0123456789abcde"_s),
                             in_folder(u".湖 lake.tarn.saving"_s), in_folder(u".other.tarn.0123456789abcdef.saving"_s)};
    for (const QString& other : others)
        put(other, "x");
    ASSERT_TRUE(QDir().mkdir(left_over(u"1111111111111111"_s)));
    ASSERT_TRUE(QFile::link(others[0], left_over(u"2222222222222222"_s)));
    const int being_written = FileIo::system().create(left_over(u"3333333333333333"_s), {});
    ASSERT_GE(being_written, 0);
    EXPECT_TRUE(write_file_atomically(m_path, "new").ok());
    EXPECT_EQ(content_of(m_path), "new");
    EXPECT_EQ(everything_in(m_folder.path()).size(), others.size() + 4);
    EXPECT_TRUE(FileIo::system().close(being_written));
    EXPECT_TRUE(write_file_atomically(m_path, "new").ok());
    EXPECT_FALSE(QFile::exists(left_over(u"3333333333333333"_s))) << "its writer is gone";
}

TEST_F(AtomicFileTest, a_temporary_name_that_is_taken_is_left_alone)
{
    put(in_folder(u"precious"_s), "kept");
    ASSERT_TRUE(QFile::link(in_folder(u"precious"_s), in_folder(u"link"_s)));
    for (const char* name : {"precious", "link"}) {
        EXPECT_LT(FileIo::system().create(in_folder(QString::fromLatin1(name)), {}), 0);
        EXPECT_TRUE(FileIo::system().is_taken()) << name;
    }
    EXPECT_EQ(content_of(in_folder(u"precious"_s)), "kept");
    class TakenTwice : public FileIo {
    public:
        int create(const QString& path, const QString& like) override
        {
            if (++tries < 3)
                put(path, "somebody else's");
            return FileIo::create(path, like);
        }
        int tries = 0;
    } io;
    EXPECT_TRUE(write_file_atomically(m_path, "new", io).ok());
    EXPECT_EQ(io.tries, 3);
    EXPECT_EQ(content_of(m_path), "new");
}

TEST_F(AtomicFileTest, links_are_followed_and_stay_links)
{
    ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"a/b"_s));
    ASSERT_TRUE(QFile::link(u"b"_s, in_folder(u"a/folder"_s)));
    ASSERT_TRUE(QFile::link(u"../one.tarn"_s, in_folder(u"a/b/relative"_s)));
    ASSERT_TRUE(QFile::link(in_folder(u"a/folder/relative"_s), in_folder(u"chain"_s)));
    for (const char* content : {"where nothing was", "where a file was"}) {
        EXPECT_TRUE(write_file_atomically(in_folder(u"chain"_s), content).ok());
        EXPECT_EQ(content_of(in_folder(u"a/one.tarn"_s)), content);
    }
    EXPECT_TRUE(QFileInfo(in_folder(u"chain"_s)).isSymLink());
    EXPECT_TRUE(QFileInfo(in_folder(u"a/b/relative"_s)).isSymLink());
    EXPECT_EQ(everything_in(in_folder(u"a"_s)), (QStringList{u"b"_s, u"folder"_s, u"one.tarn"_s}));
    ASSERT_TRUE(QFile::link(u"right"_s, in_folder(u"left"_s)));
    ASSERT_TRUE(QFile::link(u"left"_s, in_folder(u"right"_s)));
    expect_refused(in_folder(u"left"_s));
    ASSERT_TRUE(QFile::link(u"no/folder/file"_s, in_folder(u"far"_s)));
    expect_refused(in_folder(u"far"_s));
}

TEST_F(AtomicFileTest, a_name_as_long_as_can_be_is_saved_to)
{
    const QString name = QString(84, u'湖') + u".xy"_s;
    ASSERT_EQ(name.toUtf8().size(), 255);
    EXPECT_TRUE(write_file_atomically(in_folder(name), "old").ok());
    EXPECT_TRUE(write_file_atomically(in_folder(name), "new").ok());
    EXPECT_EQ(content_of(in_folder(name)), "new");
    expect_refused(in_folder(name + u'x'));
}

TEST_F(AtomicFileTest, permissions_and_owner_are_those_of_the_old_file_from_the_first_byte_on)
{
    const mode_t mask = ::umask(022);
    WatchingIo io;
    ASSERT_TRUE(write_file_atomically(m_path, "new", io).ok());
    EXPECT_EQ(modes_of(m_path), 0644u);
    for (const mode_t modes : {0600u, 0666u, 0640u, 0755u}) {
        ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), modes), 0);
        ASSERT_TRUE(write_file_atomically(m_path, "new", io).ok());
        EXPECT_EQ(io.modes, modes);
        EXPECT_EQ(modes_of(m_path), modes);
    }
    ::umask(mask);
    if (::geteuid() != 0)
        return;
    ASSERT_EQ(::chown(QFile::encodeName(m_path).constData(), 1234, 5678), 0);
    ASSERT_TRUE(write_file_atomically(m_path, "new", io).ok());
    struct stat info {};
    ASSERT_EQ(::stat(QFile::encodeName(m_path).constData(), &info), 0);
    EXPECT_EQ(info.st_uid, 1234u);
    EXPECT_EQ(info.st_gid, 5678u);
}

TEST_F(AtomicFileTest, a_read_only_file_is_replaced_only_when_that_is_wanted)
{
    EXPECT_FALSE(is_read_only(m_path));
    put(m_path, "old");
    EXPECT_FALSE(is_read_only(m_path));
    ASSERT_TRUE(QFile::link(m_path, in_folder(u"link"_s)));
    ASSERT_EQ(::chmod(QFile::encodeName(m_path).constData(), 0444), 0);
    for (const QString& path : {m_path, in_folder(u"link"_s)}) {
        EXPECT_TRUE(is_read_only(path));
        expect_refused(path, u"read-only"_s);
    }
    EXPECT_EQ(content_of(m_path), "old");
    EXPECT_TRUE(write_file_atomically(m_path, "new", FileIo::system(), ReadOnly::Replace).ok());
    EXPECT_EQ(content_of(m_path), "new");
    EXPECT_EQ(modes_of(m_path), 0444u);
}

TEST_F(AtomicFileTest, a_target_that_cannot_be_is_refused_with_its_name)
{
    const QString pipe = in_folder(u"pipe"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    for (const QString& path : {m_folder.path(), in_folder(u"no/such/folder.tarn"_s), pipe, u"/dev/null"_s})
        expect_refused(path, {}, ReadOnly::Replace);
    EXPECT_EQ(everything_in(m_folder.path()), QStringList{u"pipe"_s});
}

TEST_F(AtomicFileTest, a_failure_tells_of_an_old_file_only_where_there_is_one)
{
    const QString as_before = u"as it was before"_s;
    FailingFileIo full(FailingFileIo::Write, 0);
    EXPECT_FALSE(write_file_atomically(m_path, "new", full).message().contains(as_before));
    put(m_path, "old");
    FailingFileIo full_again(FailingFileIo::Write, 0);
    EXPECT_TRUE(write_file_atomically(m_path, "new", full_again).message().contains(as_before));
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
