// Packages of which a part that is not needed is damaged, and what else was not as it should be when one was opened.

#include "archives.h"
#include "core/language.h"
#include "gui_core/dxut_static.h"
#include "support/gui_fixture.h"
#include "support/resources_used.h"
#include "support/scene_fixture.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tarn;
using namespace tarn::test;

namespace {

const QByteArray scene = "{\"controls\":[{\"id\":3,\"type\":11,\"dialog\":1,\"name\":\"Lake\",\"image\":\"a.png\"}]}";

class DamagedPackage : public SceneTest {
protected:
    DamagedPackage() { VLCMsgIniW::set_language(Language::English); }

    QByteArray package(bool deflate)
    {
        return archive_of({{"manifest.json", "{\"format\":1}"},
                           {"scene.json", scene},
                           {"textures/a.png", m_picture},
                           {"textures/b.png", "whole"}},
                          deflate);
    }
    QStringList problems()
    {
        QStringList texts;
        for (const auto& problem : m_scene.model().problems())
            texts.append(problem.place + u": "_s + problem.text);
        return texts;
    }
    /// The bytes of the entry textures/a.png as the file holds them.
    QByteArray packed_bytes(const QString& file)
    {
        CPakFile package;
        EXPECT_TRUE(package.open(file).ok());
        EXPECT_FALSE(package.read_file(u"textures/a.png"_s).ok());
        const auto packed = package.read_packed(u"textures/a.png"_s);
        return packed ? packed.value() : QByteArray();
    }

    const QByteArray m_picture = "a picture of some length, of which a part repeats, of which a part repeats";
};

} // namespace

TEST_F(DamagedPackage, a_picture_that_cannot_be_unpacked_is_listed_and_kept_as_it_is)
{
    QByteArray broken_deflate = package(true);
    broken_deflate.replace(broken_deflate.indexOf("textures/a.png") + 14, 6, QByteArray(6, '\xff'));
    const std::vector<std::pair<const char*, QByteArray>> cases{
        {"checksum of a stored picture", replaced(package(false), "a picture of", "a pictvre of")},
        {"checksum of a packed picture", patched<quint32>(package(true), "textures/a.png", 14, 16, 0x12345678)},
        {"packed data", broken_deflate},
        {"unknown compression", patched<quint16>(package(true), "textures/a.png", 8, 10, 77)},
        {"claims to be longer", patched<quint32>(package(true), "textures/a.png", 22, 24, 500)},
        {"claims to be shorter", patched<quint32>(package(true), "textures/a.png", 22, 24, 5)},
    };
    for (const auto& [what, bytes] : cases) {
        SCOPED_TRACE(what);
        put(path(), bytes);
        const QByteArray packed = packed_bytes(path());
        EXPECT_FALSE(packed.isEmpty());
        const Status opened = m_scene.open_scene(path());
        ASSERT_TRUE(opened.ok()) << opened.message().toStdString();
        EXPECT_EQ(core().controls().size(), 1u);
        EXPECT_EQ(core().document().files().keys(), QStringList{u"textures/b.png"_s});
        EXPECT_EQ(problems(),
                  (QStringList{u"Lake: The picture a.png is damaged and not shown."_s,
                               u"textures/a.png: This entry of the package is damaged; saving keeps it as it is."_s}));
        ASSERT_TRUE(m_scene.save_scene(path(u"saved.tarn"_s)).ok());
        EXPECT_EQ(packed_bytes(path(u"saved.tarn"_s)), packed);
        ASSERT_TRUE(m_scene.open_scene(path(u"saved.tarn"_s)).ok());
        EXPECT_EQ(problems().size(), 2);
        EXPECT_EQ(saved_bytes(), content_of(path(u"saved.tarn"_s))) << "equal bytes from then on";
    }
}

TEST_F(DamagedPackage, one_that_is_out_of_reach_is_told_to_be_lost)
{
    put(path(), patched<quint32>(package(true), "textures/a.png", 10, 42, 0x7ffffff0));
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(problems().last().contains(u"beyond reach"_s)) << problems().join(u'\n').toStdString();
    ASSERT_TRUE(m_scene.save_scene(path(u"saved.tarn"_s)).ok());
    ASSERT_TRUE(m_scene.open_scene(path(u"saved.tarn"_s)).ok());
    EXPECT_EQ(problems(), QStringList{u"Lake: The picture a.png is not in the package."_s});
}

TEST_F(DamagedPackage, a_damaged_picture_gives_way_to_a_whole_one_and_comes_along_in_a_merge)
{
    put(path(), replaced(package(false), "a picture of", "a pictvre of"));
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    act([&] { core().set_texture(u"a.png"_s, "whole"); });
    EXPECT_TRUE(problems().isEmpty());
    ASSERT_TRUE(m_scene.save_scene(path(u"mended.tarn"_s)).ok());
    CPakFile mended;
    ASSERT_TRUE(mended.open(path(u"mended.tarn"_s)).ok());
    EXPECT_EQ(mended.read_file(u"textures/a.png"_s).value(), "whole");
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(problems().size(), 2);

    m_scene.new_scene();
    EXPECT_TRUE(problems().isEmpty());
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), u"M"_s, false).ok());
    EXPECT_EQ(problems().size(), 2);
    ASSERT_TRUE(m_scene.save_scene(path(u"merged.tarn"_s)).ok());
    EXPECT_EQ(packed_bytes(path(u"merged.tarn"_s)), packed_bytes(path()));
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(problems().isEmpty());
}

TEST_F(DamagedPackage, values_that_opening_held_to_their_range_are_listed_until_they_are_set)
{
    read("{\"screen_width\":-5,\"dialogs\":[{\"id\":2,\"name\":\"A\",\"width\":2000000000}],"
         "\"controls\":[{\"id\":3,\"type\":2,\"dialog\":2,\"name\":\"Title\",\"font_size\":10000,\"width\":50},"
         "{\"id\":4,\"type\":2,\"dialog\":2,\"name\":\"Small\",\"font_size\":12}]}");
    const QStringList before = problems();
    ASSERT_EQ(before.size(), 3) << before.join(u'\n').toStdString();
    EXPECT_TRUE(before[0].startsWith(u"Interface: The file gave the property screen_width as -5"_s));
    EXPECT_TRUE(before[1].startsWith(u"A: The file gave the property width as 2000000000"_s));
    EXPECT_TRUE(before[2].startsWith(u"Title: The file gave the property font_size as 10000"_s));
    act([&] { EXPECT_TRUE(set(*core().find_control(3), "font_size", Value(qint64(20)))); });
    EXPECT_EQ(problems().size(), 2);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_EQ(problems(), before);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(problems().isEmpty()) << "what was saved is in range";
}

TEST_F(DamagedPackage, values_out_of_range_without_end_are_not_all_listed)
{
    QByteArray many = "{\"controls\":[";
    for (int i = 0; i < 5000; ++i)
        many += (i ? "," : "") + QByteArray("{\"id\":") + QByteArray::number(i + 10)
            + ",\"type\":2,\"dialog\":1,\"font_size\":9999}";
    read(many + "]}");
    EXPECT_EQ(problems().size(), JsonCursor::max_held);
}

TEST_F(DamagedPackage, loose_pictures_are_plain_files_inside_their_folder)
{
    QDir(m_folder.path()).mkpath(u"project/textures"_s);
    QDir(m_folder.path()).mkpath(u"elsewhere"_s);
    put(path(u"elsewhere/secret.png"_s), "secret");
    const QString textures = path(u"project/textures/"_s);
    put(textures + u"good.png"_s, "good");
    ASSERT_TRUE(QFile::link(u"good.png"_s, textures + u"inside.png"_s));
    ASSERT_TRUE(QFile::link(path(u"elsewhere/secret.png"_s), textures + u"out.png"_s));
    ASSERT_TRUE(QFile::link(path(u"elsewhere"_s), textures + u"folder"_s));
    ASSERT_TRUE(QFile::link(u"/dev/zero"_s, textures + u"device.png"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(textures + u"pipe.png"_s).constData(), 0600), 0);
    QFile huge(textures + u"huge.png"_s);
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly) && huge.resize(qint64(1) << 30));
    const QByteArray file = archive_of(
        {{"manifest.json", "{\"format\":1}"},
         {"scene.json",
          "{\"dialogs\":[{\"id\":2,\"bind_texture\":\"good.png\"},{\"id\":3,\"bind_texture\":\"pipe.png\"},"
          "{\"id\":4,\"bind_texture\":\"inside.png\"},{\"id\":5,\"bind_texture\":\"out.png\"},"
          "{\"id\":6,\"bind_texture\":\"folder/secret.png\"},{\"id\":7,\"bind_texture\":\"device.png\"},"
          "{\"id\":8,\"bind_texture\":\"huge.png\"},{\"id\":9,\"bind_texture\":\"folder\"}]}"}});
    put(path(u"project/scene.tarn"_s), file);
    ASSERT_TRUE(m_scene.open_scene(path(u"project/scene.tarn"_s)).ok());
    EXPECT_EQ(core().document().files().keys(), (QStringList{u"textures/good.png"_s, u"textures/inside.png"_s}))
        << "those of dialogs count too";

    ASSERT_TRUE(QDir(textures).rename(textures, path(u"elsewhere/textures"_s)));
    ASSERT_TRUE(QFile::link(path(u"elsewhere/textures"_s), path(u"project/textures"_s)));
    ASSERT_TRUE(m_scene.open_scene(path(u"project/scene.tarn"_s)).ok());
    EXPECT_TRUE(core().document().files().isEmpty()) << "the folder itself is a link out";
}

TEST_F(DamagedPackage, a_pipe_chosen_as_a_picture_is_refused_and_not_waited_for)
{
    read(scene);
    ASSERT_EQ(::mkfifo(QFile::encodeName(path(u"pipe.png"_s)).constData(), 0600), 0);
    EXPECT_FALSE(m_scene.set_picture({core().find_control(3)}, key<&PictureState::image>, path(u"pipe.png"_s)).ok());
    EXPECT_FALSE(m_scene.set_picture({core().find_control(3)}, key<&PictureState::image>, u"/dev/zero"_s).ok());
}

TEST_F(DamagedPackage, memory_that_does_not_suffice_is_a_refusal)
{
    if (sanitizers_factor > 1)
        GTEST_SKIP() << "sanitizers end the program themselves";
    // Made and opened in processes of their own: this one's free memory is to stay as little as it is.
    const auto in_child = [](const auto& work) {
        const pid_t child = ::fork();
        if (child == 0)
            ::_exit(work());
        int status = 0;
        EXPECT_EQ(::waitpid(child, &status, 0), child);
        EXPECT_TRUE(WIFEXITED(status)) << "it ended by signal " << WTERMSIG(status);
        return WEXITSTATUS(status);
    };
    const QByteArray manifest = "{\"format\":1}";
    in_child([&] {
        QByteArray noise(60 << 20, Qt::Uninitialized);
        for (qsizetype i = 0; i < noise.size(); ++i)
            noise[i] = char(i * 7919 >> 5);
        put(path(u"pictures.tarn"_s),
            archive_of({{"manifest.json", manifest},
                        {"scene.json", scene},
                        {"textures/a.png", noise},
                        {"textures/b.png", noise}},
                       false));
        const QByteArray text = "{\"new\":[" + QByteArray("[1],").repeated(3'000'000) + "0]}";
        put(path(u"text.tarn"_s), archive_of({{"manifest.json", manifest}, {"scene.json", text}}, false));
        return 0;
    });
    for (const QString& name : {u"pictures.tarn"_s, u"text.tarn"_s}) {
        SCOPED_TRACE(name.toStdString());
        const int opened = in_child([&] {
            QFile status(u"/proc/self/statm"_s);
            (void)status.open(QIODevice::ReadOnly);
            const auto taken = status.readAll().split(' ').first().toULongLong() * quint64(::sysconf(_SC_PAGESIZE));
            const rlim_t most = taken + (50 << 20);
            const rlimit limit{most, most};
            ::setrlimit(RLIMIT_AS, &limit);
            return m_scene.open_scene(path(name)).ok() ? 1 : 0;
        });
        EXPECT_EQ(opened, 0) << "a picture left out would be lost with the next save";
    }
}
