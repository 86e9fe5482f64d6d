#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

#include <ctime>

using namespace tarn;
using namespace tarn::test;

namespace {

class PackageTest : public SceneTest {
protected:
    QStringList names_in(const QString& file)
    {
        CPakFile package;
        EXPECT_TRUE(package.open(file).ok());
        return package.names();
    }
};

class TimeZone {
public:
    explicit TimeZone(const char* name) : m_before(qgetenv("TZ"))
    {
        qputenv("TZ", name);
        tzset();
    }
    ~TimeZone()
    {
        m_before.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_before);
        tzset();
    }

private:
    QByteArray m_before;
};

} // namespace

TEST_F(PackageTest, samples_saved_opened_and_saved_again_give_the_same_bytes_in_any_time_zone)
{
    for (const QString& sample : {u"hud"_s, u"tiny"_s}) {
        read_sample(sample);
        const QByteArray before = text();
        const QByteArray bytes = saved_bytes();
        for (const char* zone : {"UTC", "Asia/Shanghai", "America/St_Johns", "Pacific/Apia", "Africa/Casablanca"}) {
            const TimeZone there(zone);
            ASSERT_TRUE(m_scene.open_scene(path(u"bytes.tarn"_s)).ok());
            EXPECT_TRUE(same_text(text(), before));
            ASSERT_TRUE(m_scene.save_scene(path()).ok());
            EXPECT_EQ(content_of(path()) == bytes, true) << sample.toStdString() << " in " << zone;
        }
    }
}

TEST_F(PackageTest, everything_that_this_version_does_not_know_is_kept)
{
    const QByteArray scene
        = "{\n\"screen_width\":800,\"screen_height\":600,\n"
          "\"root\":{\"id\":1,\"name\":\"R\",\"caption_shown\":false,\"frame_shown\":false,\"mood\":[1.50]},\n"
          "\"dialogs\":[\n{\"id\":5,\"name\":\"A\",\"tint\":\"\\u6e56\"}\n],\n"
          "\"controls\":[\n{\"id\":9,\"type\":0,\"dialog\":5,\"text\":\"t\",\"\xef\xbb\xbf"
          "text\":1,\"spin\":{\"a\" : [ ]}}\n],\n"
          "\"styles\":[\n{\"id\":11,\"name\":\"Glass\",\"blur\":1e1}\n],\n"
          "\"weather\":{\"rain\":true},\n\"\xef\xbb\xbf"
          "controls\":1\n}\n";
    read(scene, {{u"movies/intro.ogg"_s, "movie"}, {u"notes"_s, ""}});
    EXPECT_TRUE(same_text(text(), scene));
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), scene));
    EXPECT_EQ(core().document().files().value(u"movies/intro.ogg"_s), "movie");
    EXPECT_TRUE(core().document().files().contains(u"notes"_s));
}

TEST_F(PackageTest, texts_of_any_kind_survive)
{
    CDXUTDialog* home = dialog({0, 0, 100, 100}, u"湖 \U0001F600"_s);
    control(DXUT_CONTROL_STATIC, home, {0.1f, -3.7f, 1e6, 1e-30},
            u"\ufeff\"\\/\b\f\n\r\t\u2028"_s + QChar(0) + QChar(0x7f));
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), before));
}

TEST_F(PackageTest, opening_forgets_the_history_loading_into_the_scene_is_one_step)
{
    read_sample(u"tiny"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    m_scene.new_scene();
    const QByteArray empty = text();
    CPakFile package;
    ASSERT_TRUE(package.open(path()).ok());
    ASSERT_TRUE(m_scene.load(package, CTexPathInfo(path(), 1)).ok());
    EXPECT_FALSE(m_scene.journal().is_saved());
    EXPECT_EQ(core().GetDialogs().size(), 2);
    ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), empty));
    EXPECT_TRUE(m_scene.journal().is_saved());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_TRUE(m_scene.journal().is_saved());
    EXPECT_EQ(m_scene.openfile_name(), path());
}

TEST_F(PackageTest, loose_pictures_beside_the_package_are_found_but_not_outside_their_folder)
{
    QDir(m_folder.path()).mkpath(u"textures/sub"_s);
    put(path(u"textures/loose.png"_s), "loose");
    put(path(u"textures/sub/deep.png"_s), "deep");
    put(path(u"textures/held.png"_s), "beside");
    put(path(u"secret.png"_s), "secret");
    CDXUTDialog* home = dialog({0, 0, 100, 100});
    for (const QString& name : {u"loose.png"_s, u"sub/deep.png"_s, u"held.png"_s, u"../secret.png"_s,
                                path(u"secret.png"_s), u"missing.png"_s, u""_s})
        (void)set(*control(DXUT_CONTROL_PICTURE, home, {}), "image", name);
    core().set_texture(u"held.png"_s, "inside");
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    const auto& files = core().document().files();
    EXPECT_EQ(files.keys().join(u' '), u"textures/held.png textures/loose.png textures/sub/deep.png"_s);
    EXPECT_EQ(files.value(u"textures/held.png"_s), "inside") << "what the package holds counts";
    EXPECT_EQ(files.value(u"textures/loose.png"_s), "loose");
    EXPECT_TRUE(same_text(text(), before)) << "names stay";
    EXPECT_TRUE(CTexPathInfo::find_loose(u"loose.png"_s).isNull()) << "the folder counts only while opening";
    const CTexPathInfo outer(path(u"textures"_s), 0);
    {
        const CTexPathInfo inner(path(u"textures/sub"_s), 0);
        EXPECT_EQ(CTexPathInfo::find_loose(u"deep.png"_s), "deep");
        EXPECT_TRUE(CTexPathInfo::find_loose(u"loose.png"_s).isNull());
    }
    EXPECT_EQ(CTexPathInfo::find_loose(u"loose.png"_s), "loose");
}

TEST_F(PackageTest, options_leave_out_pictures_and_unselected_dialogs_and_prefix_names)
{
    read_sample(u"tiny"_s);
    core().set_texture(u"campfire.png"_s, "fire");
    CSaveOpt bare;
    bare.prefix = u"gui/"_s;
    bare.with_pictures = false;
    ASSERT_TRUE(save(path(), bare).ok());
    EXPECT_EQ(names_in(path()), (QStringList{u"gui/manifest.json"_s, u"gui/scene.json"_s}));
    CDXUTDialog* camp = core().GetDialogs().first();
    core().SelectDialog(camp, false);
    CSaveOpt selected;
    selected.selection_only = true;
    ASSERT_TRUE(save(path(), selected).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    ASSERT_EQ(core().GetDialogs().size(), 1);
    EXPECT_EQ(core().GetDialogs().first()->name(), u"Camp"_s);
    EXPECT_EQ(core().GetDialogs().first()->GetControlNum(), 3);
    EXPECT_EQ(core().GetRootDialog()->GetControlNum(), 0);
}

TEST_F(PackageTest, objects_made_after_opening_get_ids_that_were_never_used)
{
    const QByteArray scene = "{\"dialogs\":[{\"id\":700,\"name\":\"A\"}],\"controls\":[]}";
    read(scene, {}, "{\"format\":1,\"next_id\":3}");
    EXPECT_EQ(dialog({})->id(), 701u);
    read(scene, {}, "{\"format\":1,\"next_id\":900}");
    EXPECT_EQ(dialog({})->id(), 900u);
    // Nobody gets that far by making objects.
    read(scene, {}, "{\"format\":1,\"next_id\":4294967295}");
    EXPECT_EQ(dialog({})->id(), 701u);
}

TEST_F(PackageTest, a_scene_whose_ids_are_used_up_gets_no_objects_that_could_not_be_opened_again)
{
    const QByteArray used_up = "{\"dialogs\":[{\"id\":2147483646,\"name\":\"A\"}]}";
    read(used_up);
    CDXUTControl* last = control(DXUT_CONTROL_BUTTON, core().find_dialog(2147483646), {0, 0, 10, 10});
    ASSERT_TRUE(last);
    EXPECT_EQ(last->id(), 2147483647u);
    EXPECT_EQ(dialog({}), nullptr);
    EXPECT_EQ(control(DXUT_CONTROL_BUTTON, last->dialog(), {}), nullptr);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    EXPECT_FALSE(m_scene.on_merge_GUI(path(), u"merged"_s, false).ok());
    EXPECT_TRUE(m_scene.open_scene(path()).ok());
}

TEST_F(PackageTest, of_the_checked_radio_buttons_of_a_group_the_first_stays_so)
{
    const auto radio = [](int id, int group) {
        return QByteArray("{\"id\":%1,\"type\":3,\"dialog\":1,\"checked\":true,\"group\":%2}")
            .replace("%1", QByteArray::number(id))
            .replace("%2", QByteArray::number(group));
    };
    read("{\"root\":{\"id\":1},\"controls\":[" + radio(2, 0) + ',' + radio(3, 0) + ',' + radio(4, 5) + "]}");
    QList<bool> checked;
    for (const quint32 id : {2, 3, 4})
        checked.append(std::get<bool>(get(*core().find_control(id), "checked")));
    EXPECT_EQ(checked, QList<bool>({true, false, true}));
}
