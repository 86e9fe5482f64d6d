#include "store/pak_file.h"

#include "store/pak_rules.h"
#include "support/files.h"
#include "support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace tarn::test;

namespace {

class PakFileTest : public testing::Test {
protected:
    QTemporaryDir m_folder;
    const QString m_path = m_folder.filePath(u"包.tarn"_s);
};

} // namespace

TEST(PakRules, entry_names_stay_inside_and_are_usable_everywhere)
{
    for (const QStringView good :
         std::initializer_list<QStringView>{u"scene.json", u"textures/湖.png", u"a/b/c", u"textures/", u"a..b/..c",
                                            u".hidden", u"console/auxiliary.png", u"a b"})
        EXPECT_TRUE(tarn::check_entry_name(good.toString()).ok()) << good.toString().toStdString();
    for (const QStringView bad : std::initializer_list<QStringView>{
             u"",        u"/",       u"/etc/passwd", u"../x", u"a/../b",      u"a/..", u"..",
             u".",       u"a/./b",   u"a//b",        u"a\\b", u"\\\\host\\x", u"C:/x", u"c:x",
             u"a/con",   u"NUL.txt", u"a/Lpt1.png",  u"a.",   u"a ",          u"a./b", u"a\nb",
             u"a\u0001", u"a*",      u"a?b",         u"a\"b", u"a<b",         u"a|b",  u"a\ufffd"}) {
        const auto status = tarn::check_entry_name(bad.toString());
        EXPECT_FALSE(status.ok()) << bad.toString().toStdString();
        EXPECT_TRUE(status.message().contains(bad.toString()));
    }
    EXPECT_FALSE(tarn::check_entry_name(QString(2000, u'a')).ok());
}

TEST_F(PakFileTest, entries_are_read_back_as_they_were_added)
{
    QByteArray noise;
    for (int i = 0; i < 100'000; ++i)
        noise.append(char((i * 7919) >> 3));
    CPakFile out;
    ASSERT_TRUE(out.create(m_path).ok());
    ASSERT_TRUE(out.add_file(u"scene.json"_s, noise).ok());
    ASSERT_TRUE(out.add_file(u"textures/湖.png"_s, noise).ok());
    ASSERT_TRUE(out.add_file(u"empty"_s, {}).ok());
    EXPECT_FALSE(out.add_file(u"empty"_s, "x").ok()) << "a name is used once";
    EXPECT_FALSE(out.add_file(u"../x"_s, "x").ok());
    EXPECT_FALSE(QFile::exists(m_path)) << "nothing is written before close()";
    ASSERT_TRUE(out.close().ok());
    EXPECT_FALSE(out.add_file(u"late"_s, "x").ok());

    CPakFile in;
    ASSERT_TRUE(in.open(m_path).ok());
    EXPECT_EQ(in.names(), (QStringList{u"scene.json"_s, u"textures/湖.png"_s, u"empty"_s}));
    EXPECT_EQ(in.read_file(u"scene.json"_s).value(), noise);
    EXPECT_EQ(in.read_file(u"textures/湖.png"_s).value(), noise);
    EXPECT_EQ(in.read_file(u"empty"_s).value(), QByteArray());
    EXPECT_TRUE(in.read_file(u"none"_s).status().message().contains(u"none"_s));
}

TEST_F(PakFileTest, one_that_cannot_be_opened_is_not_open_and_names_the_file)
{
    put(m_path, "not a zip");
    for (const QString& path : {m_path, m_folder.path(), m_folder.filePath(u"missing.tarn"_s), QString()}) {
        CPakFile in;
        const auto status = in.open(path);
        EXPECT_FALSE(status.ok());
        EXPECT_TRUE(status.message().contains(path));
        EXPECT_FALSE(in.read_file(u"scene.json"_s).ok());
    }
}

TEST_F(PakFileTest, given_up_while_writing_it_leaves_the_old_file)
{
    put(m_path, "old");
    {
        CPakFile out;
        ASSERT_TRUE(out.create(m_path).ok());
        ASSERT_TRUE(out.add_file(u"a"_s, "x").ok());
    }
    EXPECT_EQ(content_of(m_path), "old");
}
