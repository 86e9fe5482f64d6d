#include "engine/address_gate.h"
#include "frame/cmd_test.h"
#include "gui_core/dxut_media.h"
#include "script/config_scene.h"
#include "support/editor_fixture.h"
#include "support/files.h"
#include "support/gui_fixture.h"
#include "widgets/button_st.h"
#include "world/world_scene.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QTemporaryDir>

namespace tarn::test {

namespace {

enum Id : int {
    id_ok = 1,
    id_local = 6468,
    id_url = 6473,
    id_permission = 7310,
    id_take_back = 7311,
    id_transparent = 6139,
    id_keyboard = 6144,
    id_chinese = 6565,
    id_callbacks = 6553,
    id_create = 6167,
    id_remove = 6559,
    id_model = 6303,
    id_clear_model = 6619,
    id_camera = 6903,
    id_objects = 6881,
};

/// A movie of 20 by 10 pixels with one frame.
const QByteArray movie("FWS\x06\x15\x00\x00\x00\x48\x03\x20\x00\x64\x00\x00\x0c\x01\x00\x00\x00\x00", 21);

class MediaPages : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_home = core().create_dialog({0, 0, 400, 300});
    }
    CDXUTControl* select_new(int type, const QString& page_name)
    {
        core().ClearCtrlSelection();
        CDXUTControl* control = core().create_control(type, m_home, {0, 0, 80, 60});
        core().SelectControl(control, true);
        m_world.broadcast(ui_selection_changed);
        m_page = page(page_name);
        m_scene->journal().clear();
        return control;
    }
    CDXUTControl* flash() { return select_new(DXUT_CONTROL_FLASH, u"CDlgPropFlash"_s); }
    template <class Widget>
    Widget& at(int id)
    {
        return *qobject_cast<Widget*>(m_page->control(id));
    }
    void click(int id) { at<QAbstractButton>(id).click(); }
    static bool is_on(const CDXUTControl* control, const char* field) { return std::get<bool>(get(*control, field)); }
    static QString text(const CDXUTControl* control, const char* field)
    {
        return std::get<QString>(get(*control, field));
    }
    static QStringList callbacks(const CDXUTControl* control)
    {
        return std::get<QStringList>(get(*control, "callbacks"));
    }
    QStringList movies()
    {
        QStringList entries;
        for (const QString& entry : core().document().files().keys())
            if (entry.startsWith(u"movies/"_s))
                entries.append(entry);
        return entries;
    }
    QString file(const QString& name, const QByteArray& content)
    {
        put(m_folder.filePath(name), content);
        return m_folder.filePath(name);
    }
    void create(const QString& name)
    {
        m_answers.prompts.push_back(name);
        m_answers.dialogs.push_back([](QDialog& editor) { editor.reject(); });
        click(id_create);
    }

    QTemporaryDir m_folder;
    CDXUTDialog* m_home = nullptr;
    CChildDlg* m_page = nullptr;
};

} // namespace

TEST_F(MediaPages, a_transparent_movie_and_chinese_input_exclude_each_other_after_a_question)
{
    CDXUTControl* control = flash();
    click(id_chinese);
    EXPECT_TRUE(is_on(control, "chinese_input") && is_on(control, "keyboard_input"));
    EXPECT_FALSE(is_on(control, "reload")) << "an edit clears it";
    ASSERT_TRUE(set(*control, "keyboard_input", false));
    ASSERT_TRUE(set(*control, "translucency", qint64(40)));

    m_answers.buttons.push_back(boxes::Button::Cancel);
    m_scene->journal().clear();
    click(id_transparent);
    EXPECT_TRUE(is_on(control, "chinese_input") && !is_on(control, "transparent"));
    EXPECT_FALSE(at<QCheckBox>(id_transparent).isChecked());
    EXPECT_EQ(m_scene->journal().step_count(), 0u);
    m_answers.buttons.push_back(boxes::Button::Ok);
    click(id_transparent);
    EXPECT_TRUE(is_on(control, "transparent") && !is_on(control, "chinese_input"));
    EXPECT_FALSE(at<QCheckBox>(id_chinese).isChecked());
    EXPECT_FALSE(is_on(control, "keyboard_input"));

    m_answers.buttons.push_back(boxes::Button::Ok);
    VLCMsgIniW::set_language(Language::English);
    click(id_chinese);
    EXPECT_EQ(m_answers.titles.last(), u"透明背景警告"_s) << "this one is in Chinese alone";
    EXPECT_EQ(m_answers.titles.first(), u"中文输入警告"_s);
    EXPECT_TRUE(is_on(control, "chinese_input") && !is_on(control, "transparent"));
    EXPECT_TRUE(at<QCheckBox>(id_keyboard).isChecked());
    EXPECT_EQ(get(*control, "translucency"), Value(qint64(0)));
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(is_on(control, "transparent") && !is_on(control, "keyboard_input")) << "one step";
    EXPECT_EQ(get(*control, "translucency"), Value(qint64(40)));
}

TEST_F(MediaPages, a_local_movie_comes_into_the_package_and_leaves_it_with_its_control)
{
    CDXUTControl* control = flash();
    m_answers.files.push_back(file(u"intro.swf"_s, movie));
    click(id_local);
    EXPECT_TRUE(m_answers.filters.last().contains(u"*.swf"_s));
    EXPECT_EQ(text(control, "source"), u"intro.swf"_s);
    EXPECT_EQ(at<CButtonST>(id_local).text(), u"intro.swf"_s);
    EXPECT_EQ(movies(), QStringList{u"movies/intro.swf"_s});
    EXPECT_EQ(m_scene->journal().step_count(), 1u);

    m_answers.prompts.push_back(u"  "_s);
    click(id_url);
    EXPECT_EQ(text(control, "source"), u"intro.swf"_s) << "an empty address changes nothing";
    m_answers.prompts.push_back(u"http://host.example/a&b.swf"_s);
    click(id_url);
    EXPECT_EQ(text(control, "source"), u"http://host.example/a&b.swf"_s);
    EXPECT_FALSE(is_on(control, "source_local"));
    EXPECT_EQ(at<CButtonST>(id_url).text(), u"http://host.example/a&&b.swf"_s);
    EXPECT_TRUE(movies().isEmpty()) << "nobody shows it any more";
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(movies().size(), 1);

    CDXUTControl* other = flash();
    m_answers.files.push_back(file(u"sub.txt"_s, "no movie"));
    m_answers.buttons.push_back(boxes::Button::Ok);
    click(id_local);
    EXPECT_EQ(text(other, "source"), QString());
    ASSERT_TRUE(QDir(m_folder.path()).mkdir(u"b"_s));
    m_answers.files.push_back(file(u"b/intro.swf"_s, movie + "more"));
    click(id_local);
    EXPECT_EQ(movies().size(), 2) << "another movie of that name";
    m_scene->RemoveCtrl(control);
    EXPECT_EQ(movies(), QStringList{u"movies/"_s + text(other, "source")});
}

TEST_F(MediaPages, the_permission_of_an_address_is_shown_and_taken_back)
{
    struct OneAllowed : AddressGate {
        bool is_allowed(const QString& address) const override { return address == allowed; }
        void set_allowed(const QStringList& addresses, bool on) override
        {
            if (!on && addresses.contains(allowed))
                allowed.clear();
        }
        int revision() const override { return 0; }
        bool can_ask() const override { return false; }
        void ask(const QStringList&) override {}
        void set_running(bool) override {}

        QString allowed = u"http://host.example/intro.swf"_s;
    } gate;
    m_world.set_address_gate(&gate);
    CDXUTControl* control = flash();
    EXPECT_TRUE(at<QLabel>(id_permission).isHidden());
    const auto enter = [&](const QString& address) {
        m_answers.prompts.push_back(address);
        click(id_url);
        return text(control, "source") == address;
    };
    EXPECT_TRUE(enter(u"http://host.example/other.swf"_s));
    EXPECT_FALSE(at<QLabel>(id_permission).isHidden());
    EXPECT_TRUE(at<CButtonST>(id_take_back).isHidden());
    EXPECT_TRUE(enter(u"http://Host.example/intro.swf#top"_s));
    EXPECT_FALSE(at<CButtonST>(id_take_back).isHidden());
    const QString allowed = at<QLabel>(id_permission).text();
    m_scene->journal().clear();
    click(id_take_back);
    EXPECT_TRUE(gate.allowed.isEmpty());
    EXPECT_TRUE(at<CButtonST>(id_take_back).isHidden());
    EXPECT_NE(at<QLabel>(id_permission).text(), allowed);
    EXPECT_EQ(m_scene->journal().step_count(), 0u) << "it is no part of the scene";
    EXPECT_TRUE(enter(u"ftp://host.example/intro.swf"_s)) << "it is kept, and said to be of no use";
    EXPECT_TRUE(at<QLabel>(id_permission).text().contains(u"https://"_s));
    m_world.set_address_gate(nullptr);
}

TEST_F(MediaPages, callbacks_are_functions_named_after_the_control_and_shared_by_name)
{
    CDXUTControl* first = flash();
    ASSERT_TRUE(set(*first, "name", u"movie"_s));
    create(u"done"_s);
    EXPECT_EQ(callbacks(first), QStringList{u"movie_done"_s});
    ASSERT_NE(m_scene->functions().find_function(u"movie_done"_s), nullptr);
    EXPECT_TRUE(m_scene->events().events().empty()) << "no event is bound";
    CDXUTControl* second = flash();
    ASSERT_TRUE(set(*second, "name", u"movie"_s));
    create(u"done"_s);
    EXPECT_EQ(callbacks(second), QStringList{u"movie_done"_s});
    create(u"done"_s);
    EXPECT_EQ(callbacks(second).size(), 1) << "it is there already";

    m_answers.buttons.push_back(boxes::Button::Cancel);
    click(id_remove);
    EXPECT_EQ(callbacks(second).size(), 1);
    m_answers.buttons.push_back(boxes::Button::Ok);
    click(id_remove);
    EXPECT_TRUE(m_answers.texts.last().contains(u"movie_done"_s));
    EXPECT_TRUE(callbacks(second).isEmpty());
    EXPECT_EQ(m_scene->functions().find_function(u"movie_done"_s), nullptr);
    EXPECT_FALSE(m_page->control(id_remove)->isEnabled());
    EXPECT_EQ(callbacks(first).size(), 1) << "the other still names it";
}

TEST_F(MediaPages, objects_of_the_world_are_picked_by_kind_and_cleared)
{
    const auto pick = [&](const QStringList& offered) {
        m_answers.dialogs.push_back([offered](QDialog& dialog) {
            auto* page = dialog.findChild<CChildDlg*>(u"CDlgSelObjs"_s);
            auto* list = qobject_cast<QListWidget*>(page->control(id_objects));
            QStringList names;
            for (int i = 1; i < list->count(); ++i)
                names.append(list->item(i)->text());
            EXPECT_EQ(names, offered);
            list->setCurrentRow(1);
            qobject_cast<QAbstractButton*>(page->control(id_ok))->click();
        });
    };
    const WorldObject* path = m_world.objects().create(WorldType::Path, u"way"_s);
    const WorldObject* world_camera = m_world.objects().create(WorldType::Camera, u"eye"_s);
    CDXUTControl* map = select_new(DXUT_CONTROL_MAP, u"CDlgPropMap"_s);
    pick({u"way"_s});
    click(id_model);
    EXPECT_EQ(at<CButtonST>(id_model).text(), u"way"_s);
    EXPECT_EQ(get(*map, "camera_model"), Value(ObjectRef{path->id()}));
    click(id_clear_model);
    EXPECT_EQ(get(*map, "camera_model"), Value(ObjectRef()));
    EXPECT_FALSE(m_page->control(id_clear_model)->isEnabled());
    ASSERT_TRUE(set(*map, "camera_model", ObjectRef{999}));
    m_world.broadcast(ui_full_refresh);
    EXPECT_EQ(at<CButtonST>(id_model).text(), u"（不存在的物体）"_s);

    CDXUTControl* picture = select_new(DXUT_CONTROL_PIP, u"CDlgPropPictureInPicture"_s);
    pick({u"eye"_s});
    click(id_camera);
    EXPECT_EQ(get(*picture, "camera"), Value(ObjectRef{world_camera->id()}));
}

} // namespace tarn::test
