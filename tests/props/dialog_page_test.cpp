#include "support/editor_fixture.h"

#include "gui_core/anchor.h"
#include "support/files.h"
#include "support/gui_fixture.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"
#include "world/world_scene.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QTest>

namespace tarn::test {

namespace {

enum Id : int {
    id_name = 6018,
    id_caption_shown = 6019,
    id_visible = 6335,
    id_x = 6337,
    id_width = 6026,
    id_height = 6341,
    id_border = 6030,
    id_bottom = 6508,
    id_scale = 6593,
    id_anchor_centre = 6488,
    id_bind = 6201,
    id_unbind = 6202,
    id_bind_color = 6587,
    id_bind_mouse = 6595,
};

class DialogPage : public Editor {
protected:
    void SetUp() override
    {
        start();
        m_first = core().create_dialog(QRect(10, 10, 200, 100), u"First"_s);
        m_second = core().create_dialog(QRect(50, 60, 300, 150), u"Second"_s);
        core().SelectDialog(m_first, false);
        core().SelectDialog(m_second, true);
        m_world.broadcast(ui_selection_changed);
        m_scene->journal().clear();
        m_codes.clear();
    }
    template <class Widget>
    Widget& on_page(int id)
    {
        return *dynamic_cast<Widget*>(page(u"CDlgPropDialog"_s)->control(id));
    }
    void type(int id, const QString& text)
    {
        auto& edit = on_page<QWidget>(id);
        auto* line = qobject_cast<QLineEdit*>(&edit) ? qobject_cast<QLineEdit*>(&edit) : edit.findChild<QLineEdit*>();
        line->selectAll();
        QTest::keyClicks(line, text);
    }

    void pick_binding_color(quint32 argb, bool confirm)
    {
        m_answers.dialogs.push_back([argb, confirm](QDialog& dialog) {
            auto* picker = dialog.findChild<CChildDlg*>(u"CPopDlgColor"_s);
            int shift = 24;
            for (const int channel : {6411, 6397, 6401, 6405}) {
                auto* edit = qobject_cast<CSuperEdit*>(picker->control(channel));
                edit->set_pos(argb >> shift & 0xff);
                Q_EMIT edit->text_changed_by_user(edit->get_pos());
                shift -= 8;
            }
            qobject_cast<QAbstractButton*>(picker->control(confirm ? 1 : 2))->click();
        });
        on_page<QAbstractButton>(id_bind_color).click();
    }

    CDXUTDialog* m_first = nullptr;
    CDXUTDialog* m_second = nullptr;
};

} // namespace

TEST_F(DialogPage, place_and_size_go_to_the_current_dialog_names_and_flags_to_all)
{
    type(id_x, u"77"_s);
    EXPECT_EQ(m_second->rect().x(), 77);
    EXPECT_EQ(m_first->rect().x(), 10);

    m_codes.clear();
    on_page<QCheckBox>(id_caption_shown).click();
    EXPECT_FALSE(m_first->dialog_state().caption_shown);
    EXPECT_FALSE(m_second->dialog_state().caption_shown);
    EXPECT_EQ(m_first->name(), m_second->name()) << "what is shown goes to all together";
    EXPECT_EQ(m_codes, std::vector{int(ui_dialog_properties)});
    EXPECT_EQ(m_first->rect(), QRect(10, 10, 200, 100));
    EXPECT_TRUE(m_scene->journal().undo());
    EXPECT_TRUE(m_first->dialog_state().caption_shown);
}

TEST_F(DialogPage, every_code_that_selects_refreshes_the_page)
{
    for (const int code : {ui_full_refresh, ui_scene_changed, ui_control_selected, ui_selection_changed}) {
        core().SelectDialog(code % 2 ? m_second : m_first, false);
        m_world.broadcast(code);
        EXPECT_EQ(on_page<QLineEdit>(id_name).text(), core().selection().current_dialog->name()) << code;
        core().SelectDialog(code % 2 ? m_first : m_second, false);
        m_world.broadcast(code);
        EXPECT_EQ(on_page<QLineEdit>(id_name).text(), core().selection().current_dialog->name()) << code;
    }
}

TEST_F(DialogPage, a_place_beyond_the_edits_range_outlives_a_click_on_a_flag)
{
    m_second->SetLocation(-40, 60);
    m_world.broadcast(ui_full_refresh);
    on_page<QCheckBox>(id_visible).click();
    EXPECT_EQ(m_second->rect().x(), -40);
}

TEST_F(DialogPage, an_edit_does_not_show_a_dialog_again_that_the_page_does_not_know_to_be_hidden)
{
    m_second->SetVisible(false);
    ASSERT_TRUE(on_page<QCheckBox>(id_visible).isChecked());
    type(id_name, u"New"_s);
    EXPECT_FALSE(m_second->GetVisible());
    EXPECT_FALSE(on_page<QCheckBox>(id_visible).isChecked());
    on_page<QCheckBox>(id_visible).click();
    EXPECT_TRUE(m_second->GetVisible());
}

TEST_F(DialogPage, a_name_takes_no_more_letters_than_it_can_have)
{
    type(id_name, QString(31, u'n') + u'm');
    EXPECT_EQ(m_second->name(), QString(31, u'n'));
    EXPECT_EQ(on_page<QLineEdit>(id_name).text(), m_second->name());
}

TEST_F(DialogPage, the_ratio_is_kept_from_either_side_and_a_height_of_nothing_takes_the_width_away)
{
    type(id_width, u"100"_s);
    EXPECT_EQ(m_second->rect().size(), QSize(100, 50));
    EXPECT_EQ(on_page<CSuperEdit>(id_height).get_pos(), 50);
    m_world.broadcast(ui_full_refresh);
    type(id_height, u"80"_s);
    EXPECT_EQ(m_second->rect().width(), 160);

    m_second->SetSize(160, 0);
    m_world.broadcast(ui_full_refresh);
    type(id_width, u"90"_s);
    EXPECT_EQ(m_second->rect().size(), QSize(90, 0));
    m_world.broadcast(ui_full_refresh);
    type(id_height, u"5"_s);
    EXPECT_EQ(m_second->rect().size(), QSize(0, 5));
}

TEST_F(DialogPage, scaling_with_the_window_keeps_each_anchor_for_later)
{
    m_first->set_align_type(anchor_right);
    m_world.broadcast(ui_full_refresh);
    auto& scale = on_page<QCheckBox>(id_scale);
    auto& centre = on_page<QAbstractButton>(id_anchor_centre);
    scale.click();
    EXPECT_EQ(m_first->align_type(), anchor_scale);
    EXPECT_EQ(m_second->align_type(), anchor_scale);
    EXPECT_FALSE(centre.isEnabled());
    scale.click();
    EXPECT_EQ(m_first->align_type(), anchor_right);
    EXPECT_EQ(m_second->align_type(), anchor_top_left);
    EXPECT_TRUE(centre.isEnabled());

    m_codes.clear();
    centre.click();
    EXPECT_EQ(m_second->align_type(), anchor_centre);
    EXPECT_EQ(m_first->align_type(), anchor_right) << "only the current dialog's";
    EXPECT_TRUE(centre.isChecked());
    EXPECT_TRUE(m_codes.empty());
}

TEST_F(DialogPage, a_dialog_is_bound_to_a_texture_that_the_scene_has)
{
    const QTemporaryDir folder;
    const QString wall = folder.filePath(u"wall.png"_s);
    put(wall, png(Qt::red));
    auto& bind = on_page<QAbstractButton>(id_bind);
    EXPECT_EQ(bind.text(), u"未绑定贴图"_s);
    for (const int id : {id_unbind, id_bind_color, id_bind_mouse})
        EXPECT_FALSE(on_page<QWidget>(id).isEnabled());

    m_answers.files = {QString(), wall, wall};
    bind.click();
    EXPECT_TRUE(m_answers.texts.isEmpty()) << "cancelled";
    m_answers.buttons = {boxes::Button::Ok};
    bind.click();
    EXPECT_EQ(m_answers.texts, QStringList(u"无模型绑定到该贴图，绑定失败！"_s));
    EXPECT_FALSE(m_scene->SearchTexbindByDialog(m_second));
    core().set_texture(u"walls/brick.png"_s, png(Qt::red));
    m_world.objects().create(WorldType::Panel)->write<PanelState>([](PanelState& s) {
        s.picture = u"walls/brick.png"_s;
    });
    bind.click();
    ASSERT_TRUE(m_scene->SearchTexbindByDialog(m_second));
    EXPECT_FALSE(m_scene->SearchTexbindByDialog(m_first)) << "the current dialog's alone";
    EXPECT_EQ(bind.text(), u"brick.png"_s);
    EXPECT_TRUE(on_page<QAbstractButton>(id_bind_mouse).isChecked()) << "what is drawn there is used there";

    pick_binding_color(0x80102030, true);
    pick_binding_color(0xff000000, false);
    const auto binding = *m_scene->SearchTexbindByDialog(m_second);
    EXPECT_EQ(binding.color, 0x80102030u);
    EXPECT_TRUE(binding.mouse);
    EXPECT_EQ(on_page<CColorSwatch>(id_bind_color).argb(), 0x80102030u);

    on_page<QAbstractButton>(id_unbind).click();
    EXPECT_FALSE(m_scene->SearchTexbindByDialog(m_second));
    EXPECT_FALSE(on_page<QAbstractButton>(id_bind_mouse).isEnabled() || on_page<QWidget>(id_unbind).isEnabled());
    EXPECT_EQ(core().texture_names().size(), 1);
    ASSERT_TRUE(m_scene->journal().undo());
    EXPECT_EQ(m_scene->SearchTexbindByDialog(m_second)->color, 0x80102030u) << "one step";
}

TEST_F(DialogPage, each_attribute_redraws_only_what_it_needs)
{
    int redraws = 0;
    m_world.on_redraw = [&redraws] { ++redraws; };
    on_page<QCheckBox>(id_bottom).click();
    EXPECT_TRUE(m_second->dialog_state().minimize_to_bottom);
    EXPECT_FALSE(m_first->dialog_state().minimize_to_bottom);
    EXPECT_EQ(redraws, 0);
    type(id_border, u"3"_s);
    EXPECT_EQ(m_first->dialog_state().border_width, 3);
    EXPECT_EQ(redraws, 1);
    EXPECT_TRUE(m_codes.empty());
}

} // namespace tarn::test
