#include "support/gui_fixture.h"
#include "versions_fixture.h"

#include <sys/stat.h>

using namespace tarn;
using namespace tarn::test;

namespace {

class Packing : public VersionsTest {
protected:
    int pack(const QString& folder, const QString& file) { return run({u"--pack"_s, path(folder), path(file)}).status; }
    int unpack(const QString& file, const QString& folder, const QStringList& options = {})
    {
        return run(QStringList{u"--unpack"_s, path(file), path(folder)} + options).status;
    }
    void keep_sample()
    {
        read_sample(u"hud"_s);
        core().set_texture(u"sub/fire.png"_s, png(Qt::red));
        keep(u"a.tarn"_s);
    }
};

} // namespace

TEST_F(Packing, round_trips_keep_every_byte)
{
    keep_sample();
    ASSERT_EQ(unpack(u"a.tarn"_s, u"a"_s), 0);
    ASSERT_EQ(pack(u"a"_s, u"b.tarn"_s), 0);
    EXPECT_EQ(test::content_of(path(u"b.tarn"_s)), test::content_of(path(u"a.tarn"_s)));
    ASSERT_EQ(unpack(u"b.tarn"_s, u"b"_s), 0);
    EXPECT_EQ(read_folder_entries(path(u"a"_s)).value(), read_folder_entries(path(u"b"_s)).value());
    EXPECT_EQ(everything_in(m_folder.path()), QStringList({u"a"_s, u"a.tarn"_s, u"b"_s, u"b.tarn"_s}));
}

TEST_F(Packing, replaces_an_older_version_and_nothing_else)
{
    keep_sample();
    ASSERT_EQ(unpack(u"a.tarn"_s, u"a"_s), 0);
    ASSERT_TRUE(QDir(path(u"a/.git"_s)).mkpath(u"."_s));
    put(path(u"a/.git/HEAD"_s), "ref");
    put(path(u"a/textures/old.png"_s), "old");
    EXPECT_EQ(unpack(u"a.tarn"_s, u"a"_s), 2) << "it is not empty";
    ASSERT_EQ(unpack(u"a.tarn"_s, u"a"_s, {u"--replace"_s}), 0);
    EXPECT_EQ(test::content_of(path(u"a/.git/HEAD"_s)), "ref");
    EXPECT_FALSE(QFile::exists(path(u"a/textures/old.png"_s)));
    ASSERT_TRUE(QDir().mkpath(path(u"mine"_s)));
    put(path(u"mine/letter.txt"_s), "dear");
    EXPECT_EQ(unpack(u"a.tarn"_s, u"mine"_s, {u"--replace"_s}), 2) << "no interface was unpacked there";
    EXPECT_EQ(everything_in(path(u"mine"_s)), QStringList(u"letter.txt"_s));
}

TEST_F(Packing, hostile_folders_are_refused)
{
    keep_sample();
    const auto refuses = [&](const char* why, const std::function<void()>& spoil) {
        ASSERT_TRUE(QDir(path(u"a"_s)).removeRecursively());
        ASSERT_EQ(unpack(u"a.tarn"_s, u"a"_s), 0);
        spoil();
        EXPECT_EQ(pack(u"a"_s, u"out.tarn"_s), 2) << why;
        EXPECT_FALSE(QFile::exists(path(u"out.tarn"_s))) << why;
        QFile::remove(path(u"a/textures/x"_s));
    };
    const QByteArray trap = QFile::encodeName(path(u"a/textures/x"_s));
    refuses("a link to a file", [&] { QFile::link(u"/etc/passwd"_s, path(u"a/textures/x"_s)); });
    refuses("a link to a folder", [&] { QFile::link(u"/etc"_s, path(u"a/textures/x"_s)); });
    refuses("a link to nothing", [&] { QFile::link(u"nowhere"_s, path(u"a/textures/x"_s)); });
    refuses("a pipe", [&] { ::mkfifo(trap.constData(), 0600); });
    refuses("a name that no package has", [&] { put(path(u"a/textures/con"_s), "x"); });
    refuses("no manifest", [&] { QFile::remove(path(u"a/manifest.json"_s)); });
    refuses("a merge that was left half done",
            [&] { put(path(u"a/scene.json"_s), "<<<<<<< ours\n" + test::content_of(path(u"a/scene.json"_s))); });
    refuses("a file of two gigabytes", [&] {
        put(path(u"a/textures/x"_s), {});
        QFile::resize(path(u"a/textures/x"_s), qint64(2) << 30);
    });
    QFile::link(path(u"a"_s), path(u"link"_s));
    EXPECT_EQ(pack(u"link"_s, u"out.tarn"_s), 2);
    EXPECT_EQ(pack(u"gone"_s, u"out.tarn"_s), 2);
}

TEST_F(Packing, packages_that_cannot_be_a_folder_leave_none)
{
    keep_sample();
    const auto with = [&](const QString& name) {
        CPakFile package;
        ASSERT_TRUE(package.create(path(u"odd.tarn"_s)).ok());
        ASSERT_TRUE(package.add_file(u"manifest.json"_s, "{\"format\":1}").ok());
        ASSERT_TRUE(package.add_file(u"scene.json"_s, "{}").ok());
        ASSERT_TRUE(package.add_file(name, "x").ok());
        ASSERT_TRUE(package.close().ok());
    };
    with(u".git/hooks/post-checkout"_s);
    EXPECT_EQ(unpack(u"odd.tarn"_s, u"odd"_s), 2);
    with(u"textures/.GITATTRIBUTES"_s);
    EXPECT_EQ(unpack(u"odd.tarn"_s, u"odd"_s), 2);
    with(u"scene.json/below"_s);
    EXPECT_EQ(unpack(u"odd.tarn"_s, u"odd"_s), 2);
    EXPECT_EQ(unpack(u"gone.tarn"_s, u"odd"_s), 2);
    put(path(u"text"_s), "no package");
    EXPECT_EQ(unpack(u"text"_s, u"odd"_s), 2);
    EXPECT_EQ(unpack(u"a.tarn"_s, u"text"_s), 2) << "a file stands there";
    EXPECT_EQ(everything_in(m_folder.path()), QStringList({u"a.tarn"_s, u"odd.tarn"_s, u"text"_s}));
}
