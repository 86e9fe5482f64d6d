#include "drawing_fixture.h"

#include "gui_core/control_class.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_combo_box.h"
#include "gui_core/dxut_edit_box.h"
#include "gui_core/dxut_media.h"
#include "gui_core/dxut_slider.h"
#include "gui_core/gui_input.h"

using namespace tarn;
using namespace tarn::test;

using ControlDrawingTest = DrawingTest;

TEST_F(ControlDrawingTest, every_type_looks_different_where_it_is_disabled)
{
    m_core.EnableGui(false);
    m_core.set_texture(u"own.png"_s, png(Qt::red));
    for (const ControlClass& row : control_classes()) {
        CDXUTControl* made = m_core.create_control(row.type, m_core.GetRootDialog(),
                                                   QRectF(QPointF(20, 20), QSizeF(row.default_size)));
        const auto expect_faint = [&](const char* with) {
            (void)set(*made, "enabled", true);
            const QImage enabled = picture();
            (void)set(*made, "enabled", false);
            EXPECT_TRUE(is_blank(enabled) || picture() != enabled) << row.class_name << with;
        };
        expect_faint(" with the usual looks");
        for (const char* image : {"image_normal", "image_unchecked", "image", "image_map"})
            if (made->fields().find(image))
                (void)set(*made, image, u"own.png"_s);
        if (made->fields().find("text"))
            (void)set(*made, "text", QString());
        expect_faint(" with a picture of its own");
        for (const StyleElement& element : style_elements(row.type))
            (void)set_entry(*made, "style_images", look_name(element, VisualState::Normal), u"own.png"_s);
        expect_faint(" with a picture for Normal");
        m_core.remove_control(made);
    }
}

TEST_F(ControlDrawingTest, an_annotation_shows_while_the_mouse_is_over_its_button_and_leaves_no_trace)
{
    auto* made = control<CDXUTButtonST>(m_core.GetRootDialog(), DXUT_CONTROL_BUTTONST, {300, 40, 60, 40});
    button(m_core.GetRootDialog(), {250, 80, 140, 60}); // Made later, it lies above.
    for (const auto& [name, value] : {std::pair<const char*, Value>("annotation_mode", true),
                                      {"text", u"What the button does"_s},
                                      {"annotation_x", qint64(20)},
                                      {"annotation_y", qint64(45)}})
        ASSERT_TRUE(set(*made, name, value).ok());
    m_core.EnableGui(false);
    GuiInput input(m_core);
    QImage view = picture();
    m_core.take_damage();
    input.mouse_moved({320, 50});
    const QRectF bubble = made->raised_area();
    EXPECT_TRUE(QRectF(0, 0, 400, 300).contains(bubble)) << "it stays on the screen";
    repaint(view);
    EXPECT_TRUE(differing(view, picture()).isNull());
    EXPECT_NE(view.copy(bubble.toRect()), (input.mouse_moved({5, 5}), picture()).copy(bubble.toRect()));
    repaint(view);
    EXPECT_TRUE(differing(view, picture()).isNull());
}

TEST_F(ControlDrawingTest, an_open_list_is_opaque_and_lights_up_the_row_under_the_mouse)
{
    auto* combo = control<CDXUTComboBox>(m_core.GetRootDialog(), DXUT_CONTROL_COMBOBOX, {20, 20, 140, 28});
    for (const auto* text : {u"one", u"two", u"three"})
        combo->AddItem(QString::fromUtf16(text));
    m_core.EnableGui(false);
    GuiInput input(m_core);
    input.mouse_pressed({30, 30});
    input.mouse_released({30, 30});
    const QImage over_blue = picture();
    const QRectF inside = combo->popup_rect();
    control<CDXUTButton>(m_core.GetRootDialog(), DXUT_CONTROL_BUTTON, inside);
    EXPECT_EQ(picture().copy(inside.toRect()), over_blue.copy(inside.toRect())) << "what lies below shows through";
    QImage view = picture();
    m_core.take_damage();
    input.mouse_moved(inside.center());
    repaint(view);
    EXPECT_NE(view, over_blue);
    EXPECT_TRUE(differing(view, picture()).isNull());
    EXPECT_EQ(combo->hot_row(), 1);
}

TEST_F(ControlDrawingTest, a_slider_that_is_higher_than_wide_stands_with_its_end_at_the_top)
{
    auto* slider = control<CDXUTSlider>(m_core.GetRootDialog(), DXUT_CONTROL_SLIDER, {100, 20, 24, 200});
    const QImage middle = picture();
    ASSERT_TRUE(set(*slider, "value", qint64(100)).ok());
    const QImage full = picture();
    const QRect changed = differing(middle, full);
    EXPECT_LT(changed.top(), 30);
    EXPECT_LT(changed.bottom(), 140);
    EXPECT_TRUE(slider->screen_rect().toRect().contains(changed));
}

TEST_F(ControlDrawingTest, an_edit_box_shows_its_own_colours_and_a_placeholder_while_it_is_empty)
{
    auto* box = control<CDXUTEditBox>(m_core.GetRootDialog(), DXUT_CONTROL_EDITBOX, {20, 20, 300, 28});
    m_core.EnableGui(false);
    m_core.set_focused(box);
    box->SetText({});
    const QImage empty = picture();
    ASSERT_TRUE(set(*box, "placeholder", u"your name"_s).ok());
    EXPECT_FALSE(differing(empty, picture()).isNull());
    box->SetText(u"one"_s);
    std::vector<QImage> pictures{picture()};
    ASSERT_TRUE(set(*box, "placeholder", u"another"_s).ok());
    EXPECT_TRUE(differing(pictures[0], picture()).isNull()) << "there is a text";
    ASSERT_TRUE(set(*box, "border", qint64(2)).ok());
    box->key_pressed(Qt::Key_A, Qt::ControlModifier);
    pictures = {picture()};
    for (const char* color : {"text_color", "selection_color", "caret_color", "border_color"}) {
        ASSERT_TRUE(set(*box, color, qint64(0xffff2000)).ok());
        pictures.push_back(picture());
    }
    expect_all_differ(pictures);
}

TEST_F(ControlDrawingTest, a_maps_picture_grows_between_its_base_and_its_surface)
{
    auto* map = control<CDXUTMap>(m_core.GetRootDialog(), DXUT_CONTROL_MAP, {100, 50, 200, 200});
    QImage halves(40, 40, QImage::Format_ARGB32_Premultiplied);
    halves.fill(Qt::green);
    QPainter(&halves).fillRect(10, 10, 20, 20, Qt::red);
    QBuffer encoded;
    ASSERT_TRUE(encoded.open(QIODevice::WriteOnly) && halves.save(&encoded, "PNG"));
    m_core.set_texture(u"map.png"_s, encoded.data());
    ASSERT_TRUE(set(*map, "image_map", u"map.png"_s).ok());
    EXPECT_EQ(picture().pixelColor(280, 230), QColor(Qt::green));
    ASSERT_TRUE(set(*map, "default_scale", 2.0).ok());
    EXPECT_EQ(picture().pixelColor(280, 230), QColor(Qt::red)) << "its middle fills the map";
    ASSERT_TRUE(set(*map, "default_scale", 0.5).ok());
    const QImage small = picture();
    EXPECT_EQ(small.pixelColor(280, 230), QColor(background)) << "it does not fill the map";
    EXPECT_EQ(small.pixelColor(200, 150), QColor(Qt::red));
    EXPECT_NE(small.pixelColor(120, 70), QColor(background)) << "a button";
}

TEST_F(ControlDrawingTest, what_is_selected_in_an_edit_box_is_marked_and_no_more)
{
    auto* box = control<CDXUTEditBox>(m_core.GetRootDialog(), DXUT_CONTROL_EDITBOX, {20, 20, 300, 28});
    box->SetText(u"one two three"_s);
    m_core.EnableGui(false);
    m_core.set_focused(box);
    const QImage plain = picture();
    box->key_pressed(Qt::Key_Right, Qt::ControlModifier); // the caret to the second word
    box->key_pressed(Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    const QRect marked = differing(plain, picture());
    EXPECT_LT(marked.left(), box->text_area(box->rect()).left() + 10) << "where the caret was";
    EXPECT_NEAR(marked.right(), box->caret_rect().right(), 3) << "where it is";
}

TEST_F(ControlDrawingTest, an_open_menu_is_drawn_and_goes_when_it_is_closed)
{
    CDXUTMenu* menu = m_core.create_menu();
    m_core.create_menu_item(*menu, 0, {.text = u"item"_s});
    m_core.EnableGui(false);
    m_core.pop_menu(*menu, {30, 40});
    EXPECT_FALSE(is_blank(picture()));
    m_core.close_menu();
    EXPECT_TRUE(is_blank(picture()));
}
