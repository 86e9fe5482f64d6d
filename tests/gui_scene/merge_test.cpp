#include "core/authored.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "support/gui_fixture.h"
#include "support/scene_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class MergeTest : public SceneTest {
protected:
    /// Saves the present scene as the package that is merged, and starts anew.
    void keep_as_package()
    {
        ASSERT_TRUE(m_scene.save_scene(path()).ok());
        m_scene.new_scene();
    }
    Status merge(bool replace_styles = false) { return m_scene.on_merge_GUI(path(), u"Merged"_s, replace_styles); }
    QString names()
    {
        QStringList list;
        for (const CDXUTDialog* d : core().GetDialogs())
            list << d->name();
        return list.join(u' ');
    }
    CDXUTPicture* picture(CDXUTDialog* home, const QString& image)
    {
        auto* made = static_cast<CDXUTPicture*>(control(DXUT_CONTROL_PICTURE, home, {0, 0, 10, 10}));
        (void)set(*made, "image", image);
        return made;
    }
};

} // namespace

TEST_F(MergeTest, dialogs_come_above_the_present_ones_in_their_order_with_new_ids_and_old_names)
{
    read_sample(u"tiny"_s);
    keep_as_package();
    dialog({}, u"Camp"_s);
    control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), {0, 0, 10, 10}, u"btnRest"_s);
    const QByteArray before = text();
    ASSERT_TRUE(merge().ok());
    EXPECT_EQ(names(), u"Camp Merged Camp Hint"_s);
    QSet<quint32> ids;
    for (const ModelObject* object : m_world.document().objects()) {
        EXPECT_FALSE(ids.contains(object->id()));
        ids.insert(object->id());
    }
    for (const CDXUTDialog* d : core().GetDialogs())
        for (const CDXUTControl* c : d->controls()) {
            EXPECT_EQ(c->dialog(), d);
            EXPECT_EQ(static_cast<const ControlState&>(Authored::state(*c)).parent.id, d->id());
        }
    QStringList controls;
    for (const CDXUTControl* c : core().controls())
        controls << c->name();
    EXPECT_EQ(controls.join(u' '), u"btnRest txtPlace picFire chkFire btnRest txtHint"_s) << "in order of creation";
    const QByteArray after = text();
    EXPECT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), before)) << "one step";
    EXPECT_TRUE(m_scene.journal().redo());
    EXPECT_TRUE(same_text(text(), after));
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), after));
}

TEST_F(MergeTest, the_other_root_becomes_a_bare_dialog_only_when_it_holds_controls)
{
    read_sample(u"tiny"_s);
    keep_as_package();
    ASSERT_TRUE(m_scene.on_merge_GUI(path(), QString(40, u'湖'), false).ok());
    const CDXUTDialog* root = core().GetDialogs().first();
    EXPECT_EQ(root->name(), QString(31, u'湖'));
    EXPECT_EQ(root->rect(), QRect(0, 0, 1280, 720));
    EXPECT_EQ(root->client_rect(), QRectF(0, 0, 1280, 720));
    EXPECT_FALSE(root->dialog_state().frame_shown || root->dialog_state().movable);
    EXPECT_EQ(root->controls().first()->name(), u"txtPlace"_s);
    m_scene.new_scene();
    dialog({}, u"Only"_s);
    keep_as_package();
    ASSERT_TRUE(merge().ok());
    EXPECT_EQ(names(), u"Only"_s);
}

TEST_F(MergeTest, an_other_design_size_stays_what_its_dialogs_are_measured_from)
{
    read("{\"screen_width\":640,\"screen_height\":360,\"dialogs\":[{\"id\":2,\"name\":\"A\",\"x\":500,\"align_type\":2}"
         "]}");
    keep_as_package();
    ASSERT_TRUE(merge().ok());
    EXPECT_EQ(core().design_size(), QSize(1280, 720));
    EXPECT_EQ(core().GetDialogs().first()->rect().x(), 500 + 640);
}

TEST_F(MergeTest, a_picture_of_a_taken_name_is_renamed_with_its_references_an_equal_one_is_shared)
{
    CDXUTDialog* other = dialog({}, u"Other"_s);
    for (const QString& image : {u"same.png"_s, u"differs.png"_s, u"new.png"_s, u"sub/differs.png"_s, u"missing.png"_s})
        picture(other, image);
    const FieldBase& style_images = *ControlState::field_table().find("style_images");
    CDXUTControl* last = other->controls().last();
    for (const auto& [look, image] : {std::pair(u"Body.normal"_s, u"same.png"_s),
                                      {u"Body.hover"_s, u"differs.png"_s},
                                      {u"Later.hover"_s, u"sub/differs.png"_s}})
        (void)set_entry(*last, "style_images", look, image);
    core().set_texture(u"same.png"_s, "same");
    core().set_texture(u"differs.png"_s, "theirs");
    core().set_texture(u"differs-2.png"_s, "theirs too");
    core().set_texture(u"sub/differs.png"_s, "theirs");
    core().set_texture(u"new.png"_s, "new");
    keep_as_package();
    CDXUTPicture* mine = picture(dialog({}), u"differs.png"_s);
    core().set_texture(u"same.png"_s, "same");
    core().set_texture(u"differs.png"_s, "mine");
    core().set_texture(u"sub/differs.png"_s, "mine");
    ASSERT_TRUE(merge().ok());
    QStringList images;
    for (const CDXUTControl* c : core().GetDialogs().last()->controls())
        images << static_cast<const CDXUTPicture*>(c)->image();
    EXPECT_EQ(images.join(u' '), u"same.png differs-3.png new.png sub/differs-2.png missing.png"_s);
    const CDXUTControl* styled = core().GetDialogs().last()->controls().last();
    EXPECT_EQ(style_images.get(Authored::state(*styled)),
              Value(TextMap{{u"Body.normal"_s, u"same.png"_s},
                            {u"Body.hover"_s, u"differs-3.png"_s},
                            {u"Later.hover"_s, u"sub/differs-2.png"_s}}));
    EXPECT_EQ(mine->image(), u"differs.png"_s);
    const auto& files = core().document().files();
    EXPECT_EQ(files.value(u"textures/differs.png"_s), "mine");
    EXPECT_EQ(files.value(u"textures/differs-3.png"_s), "theirs");
    EXPECT_EQ(files.value(u"textures/differs-2.png"_s), "theirs too");
    EXPECT_EQ(files.value(u"textures/sub/differs-2.png"_s), "theirs");
    EXPECT_EQ(files.size(), 7);
}

TEST_F(MergeTest, renamed_entries_have_names_that_can_be_saved)
{
    const QMap<QString, QByteArray> theirs{
        {u"notes"_s, "a"}, {u"a.b/plain"_s, "a"}, {u".rc"_s, "a"}, {u"x.tar.gz"_s, "a"}};
    read("{}", theirs);
    keep_as_package();
    auto mine = theirs;
    for (QByteArray& content : mine)
        content = "b";
    read("{}", mine);
    ASSERT_TRUE(merge().ok());
    EXPECT_EQ(core().document().files().size(), 8);
    const Status status = m_scene.save_scene(path());
    EXPECT_TRUE(status.ok()) << status.message().toStdString();
    EXPECT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_EQ(core().document().files().size(), 8);
}

TEST_F(MergeTest, styles_of_taken_names_are_replaced_only_when_asked_for)
{
    read(R"({"scene_style":4,"styles":[{"id":2,"name":"Glass","tokens":{"text":7}},{"id":3,"name":"New"},)"
         R"({"id":4,"base":2,"tokens":{"caret":9}}]})");
    keep_as_package();
    for (const bool replace : {false, true}) {
        read(R"({"scene_style":2,"styles":[{"id":2,"name":"Glass","tokens":{"text":5}}]})");
        ASSERT_TRUE(merge(replace).ok());
        EXPECT_EQ(core().find_style(u"Glass"_s)->style_state().tokens.value(u"text"_s), replace ? 7u : 5u);
        EXPECT_EQ(core().worn_style(), core().find_style(u"Glass"_s));
        EXPECT_EQ(core().look().token(u"text"_s), replace ? 7u : 5u);
        EXPECT_EQ(core().look().token(u"caret"_s) == 9u, replace) << "with what was changed there";
        EXPECT_NE(core().find_style(u"New"_s), nullptr);
        EXPECT_EQ(core().GetStyles().size(), replace ? 3 : 2);
        ASSERT_TRUE(m_scene.journal().undo());
        EXPECT_EQ(core().look().token(u"text"_s), 5u);
    }
}

TEST_F(MergeTest, a_scene_can_be_merged_into_itself_again_and_again)
{
    read_sample(u"tiny"_s);
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray before = text();
    for (int i = 1; i <= 3; ++i) {
        ASSERT_TRUE(merge().ok());
        EXPECT_EQ(core().GetDialogs().size(), 2 + 3 * i);
        EXPECT_EQ(int(core().controls().size()), 5 + 5 * i);
    }
    const QByteArray after = text();
    ASSERT_TRUE(m_scene.save_scene(path(u"more.tarn"_s)).ok());
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(m_scene.journal().undo());
    EXPECT_TRUE(same_text(text(), before));
    ASSERT_TRUE(m_scene.open_scene(path(u"more.tarn"_s)).ok());
    EXPECT_TRUE(same_text(text(), after));
}
