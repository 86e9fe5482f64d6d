// The look of one control taken to others, through the clipboard and into other scenes.

#include "core/authored.h"
#include "core/language.h"
#include "gui_core/look_fields.h"
#include "gui_scene/font_library.h"
#include "mouse_fixture.h"
#include "support/gui_fixture.h"
#include "support/test_font.h"
#include "tools/look_clipboard.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

using namespace tarn;
using namespace tarn::test;
using Editor = GuiSceneEditor;

namespace {

class LookClipboardTest : public MouseToolsTest {
protected:
    template <class T>
    static void give(CDXUTControl& control, FieldKey field, const T& value)
    {
        ASSERT_TRUE(control.set_property(*control.fields().find(field), Value(value)));
    }
    static QStringList look_of(const CDXUTControl& control)
    {
        const auto& s = static_cast<const ControlState&>(Authored::state(control));
        const ControlExtras& own = s.extras.get();
        QStringList look;
        for (auto image = own.style_images.begin(); image != own.style_images.end(); ++image)
            look << image.key() + u'=' + image.value();
        for (auto color = own.style_colors.begin(); color != own.style_colors.end(); ++color)
            look << color.key() + u'=' + QString::number(color.value(), 16);
        look << own.font_family;
        if (const auto* text = dynamic_cast<const StaticState*>(&s))
            look << QString::number(text->font_size) << (text->bold ? u"bold"_s : u"regular"_s);
        return look;
    }
    /// A combo box with a look in everything.
    CDXUTControl* original()
    {
        CDXUTControl* made = control(DXUT_CONTROL_COMBOBOX, core().GetRootDialog(), {0, 0, 90, 24});
        core().set_texture(u"row.png"_s, png(Qt::red));
        core().set_texture(u"body.png"_s, png(Qt::blue));
        give(*made, tarn::key<&ControlExtras::style_images>,
             TextMap{{u"SelectedRow.normal"_s, u"row.png"_s}, {u"Body.hover"_s, u"body.png"_s}});
        give(*made, tarn::key<&ControlExtras::style_colors>, NumberMap{{u"Arrow.normal"_s, double(0xff00ff00)}});
        give(*made, tarn::key<&ControlExtras::font_family>, u"Tarn Squares"_s);
        EXPECT_TRUE(m_scene.fonts().take(u"squares.ttf"_s, TestFont().bytes()));
        return made;
    }
    void select_only(const std::vector<CDXUTControl*>& controls)
    {
        core().ClearCtrlSelection();
        core().SelectControls(controls);
    }
    QStringList files() { return m_scene.document().files().keys(); }
};

} // namespace

TEST_F(LookClipboardTest, all_selected_controls_take_the_look_on_in_one_step_and_other_types_what_they_have_as_well)
{
    CDXUTControl* from = original();
    CDXUTControl* combo = control(DXUT_CONTROL_COMBOBOX, core().GetRootDialog(), {0, 30, 90, 24});
    CDXUTControl* list = control(DXUT_CONTROL_LISTBOX, core().GetRootDialog(), {0, 60, 90, 24});
    CDXUTControl* slider = control(DXUT_CONTROL_SLIDER, core().GetRootDialog(), {0, 90, 90, 24});
    CDXUTControl* label = control(DXUT_CONTROL_STATIC, core().GetRootDialog(), {0, 120, 90, 24});
    give(*list, tarn::key<&ControlExtras::style_images>,
         TextMap{{u"SelectedRow.hover"_s, u"body.png"_s}, {u"Field.normal"_s, u"row.png"_s}});
    give(*slider, tarn::key<&ControlExtras::style_images>, TextMap{{u"Thumb.normal"_s, u"row.png"_s}});
    give(*label, tarn::key<&StaticState::bold>, true);
    give(*combo, tarn::key<&ControlExtras::style_colors>, NumberMap{{u"Body.normal"_s, 1.0}});
    m_scene.document().forget_history();
    EXPECT_FALSE(run(Editor::paste_own_look).ok() && m_scene.journal().can_undo()) << "nothing was copied";

    core().SelectControl(from, false);
    EXPECT_TRUE(run(Editor::copy_own_look).ok());
    select_only({combo, list, slider, label});
    EXPECT_TRUE(run(Editor::paste_own_look).ok());
    EXPECT_EQ(look_of(*combo), look_of(*from)) << "what it had before is gone";
    EXPECT_EQ(look_of(*list),
              (QStringList{u"Field.normal=row.png"_s, u"SelectedRow.normal=row.png"_s, u"Tarn Squares"_s}));
    EXPECT_EQ(look_of(*slider), (QStringList{u"Thumb.normal=row.png"_s, QString()}));
    EXPECT_EQ(look_of(*label), (QStringList{u"Tarn Squares"_s, u"0"_s, u"bold"_s})) << "a combo box has no weight";
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(look_of(*combo), (QStringList{u"Body.normal=1"_s, QString()}));
}

TEST_F(LookClipboardTest, a_look_goes_to_another_scene_with_its_pictures_and_its_font)
{
    CDXUTControl* from = original();
    const QStringList wanted = look_of(*from);
    core().SelectControl(from, false);
    EXPECT_TRUE(run(Editor::copy_own_look).ok());
    m_scene.new_scene();
    CDXUTControl* to = control(DXUT_CONTROL_COMBOBOX, core().GetRootDialog(), {0, 0, 90, 24});
    core().set_texture(u"row.png"_s, png(Qt::yellow));
    m_scene.document().forget_history();
    core().SelectControl(to, false);
    EXPECT_TRUE(run(Editor::paste_own_look).ok());
    EXPECT_EQ(look_of(*to), QStringList(wanted).replaceInStrings(u"row.png"_s, u"row-2.png"_s)) << "the name was taken";
    EXPECT_EQ(
        files(),
        (QStringList{u"fonts/squares.ttf"_s, u"textures/body.png"_s, u"textures/row-2.png"_s, u"textures/row.png"_s}));
    EXPECT_TRUE(m_scene.fonts().find(u"Tarn Squares"_s));
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(files(), QStringList(u"textures/row.png"_s));
    ASSERT_TRUE(m_scene.journal().redo());

    // A look of the style's own takes all of it away again.
    CDXUTControl* plain = control(DXUT_CONTROL_COMBOBOX, core().GetRootDialog(), {0, 50, 90, 24});
    const QByteArray nothing = look_text(m_scene, *plain);
    EXPECT_TRUE(paste_look_text(m_scene, nothing).ok());
    EXPECT_EQ(look_of(*to), look_of(*plain));
    EXPECT_EQ(files(), QStringList(u"textures/row.png"_s));
}

TEST_F(LookClipboardTest, hostile_texts_are_refused_and_change_nothing)
{
    CDXUTControl* to = control(DXUT_CONTROL_COMBOBOX, core().GetRootDialog(), {0, 0, 90, 24});
    core().SelectControl(to, false);
    m_scene.document().forget_history();
    const QByteArray before = text();
    const QByteArray good = R"({"format":1,"look":{"type":6,"style_images":{"Body.normal":"a.png"}},"pictures":{}})";
    const QByteArrayList bad{"",
                             "no text",
                             "{}",
                             R"({"format":1})",
                             R"({"format":2,"look":{"type":6}})",
                             R"({"format":1,"look":{"type":99}})",
                             R"({"format":1,"look":{"type":6,"style_images":7}})",
                             R"({"format":1,"look":{"type":6},"pictures":{"../a.png":""}})",
                             R"({"format":1,"look":{"type":6},"pictures":{"scene.json":""}})",
                             R"({"format":1,"look":{"type":6},"pictures":{"textures/a.png":"?"}})",
                             good.left(good.size() - 4)};
    for (const QByteArray& hostile : bad) {
        EXPECT_FALSE(paste_look_text(m_scene, hostile).ok()) << hostile.toStdString();
        EXPECT_EQ(text(), before);
    }
    EXPECT_FALSE(m_scene.journal().can_undo());
    EXPECT_TRUE(paste_look_text(m_scene, R"({"format":1,"look":{"type":6,"name":"Other","x":77,"font_family":"F"},
        "pictures":{"fonts/none.ttf":"bm8gZm9udA=="}})")
                    .ok());
    EXPECT_EQ(look_of(*to), QStringList(u"F"_s));
    EXPECT_EQ(to->name(), u"Combo1"_s) << "a look is no more than that";
    EXPECT_EQ(files(), QStringList());
}
