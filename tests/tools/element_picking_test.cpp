#include "gui_core/dxut_list_box.h"
#include "gui_core/dxut_slider.h"
#include "gui_draw/element_at.h"
#include "mouse_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class ElementPicking : public MouseToolsTest {
protected:
    /// "Slider.Thumb.normal"; empty for none.
    static QString name_of(const std::optional<LookPart>& part)
    {
        return part ? part_name(*look_owner(part->owner), part->part, VisualState::Normal) : QString();
    }
    QString clicked(QPointF place)
    {
        click(place);
        return name_of(core().current_element());
    }
    static void set(ModelObject& object, FieldKey field, const Value& value)
    {
        EXPECT_TRUE(object.set_property(*object.fields().find(field), value));
    }
};

} // namespace

TEST_F(ElementPicking, what_is_hit_is_what_is_drawn_there)
{
    CDXUTDialog* d = home();
    const QPointF corner = d->client_rect().topLeft();
    CDXUTControl* slider = control(DXUT_CONTROL_SLIDER, d, {10, 10, 200, 20});
    CDXUTControl* combo = control(DXUT_CONTROL_COMBOBOX, d, {10, 40, 200, 24});
    CDXUTControl* list = control(DXUT_CONTROL_LISTBOX, d, {10, 80, 200, 80});
    CDXUTControl* label = control(DXUT_CONTROL_STATIC, d, {10, 180, 200, 20});
    set(*list, tarn::key<&ItemsState::items>, QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s});
    set(*list, tarn::key<&ItemsState::selected>, qint64(1));
    EXPECT_EQ(name_of(element_at(core(), *slider, corner + QPointF(110, 20))), u"Slider.Thumb.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *slider, corner + QPointF(20, 20))), u"Slider.Track.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *combo, corner + QPointF(198, 52))), u"ComboBox.Arrow.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *combo, corner + QPointF(50, 52))), u"ComboBox.Body.normal"_s);
    const QRectF rows = static_cast<CDXUTListBox*>(list)->rows_area().translated(corner);
    EXPECT_EQ(name_of(element_at(core(), *list, rows.topLeft() + QPointF(9, CDXUTItems::row_height * 1.5))),
              u"ListBox.SelectedRow.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *list, rows.topLeft() + QPointF(9, 3))), u"ListBox.Field.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *list, rows.topRight() + QPointF(-5, 3))), u"ListBox.ScrollThumb.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *label, corner + QPointF(20, 190))), u"Static.Text.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *d, d->caption_rect().center())), u"Dialog.Caption.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *d, d->caption_button_rect(CDXUTDialog::CaptionButton::Close).center())),
              u"Dialog.Close.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *d, corner + QPointF(300, 280))), u"Dialog.Frame.normal"_s);

    // Turned by a right angle the thumb moves away from where it was, and a scaled dialog scales it along.
    set(*slider, tarn::key<&SliderState::value>, qint64(100));
    const QPointF thumb = corner + QPointF(205, 20);
    EXPECT_EQ(name_of(element_at(core(), *slider, thumb)), u"Slider.Thumb.normal"_s);
    set(*slider, tarn::key<&ControlExtras::rotation>, 90.0);
    EXPECT_NE(name_of(element_at(core(), *slider, thumb)), u"Slider.Thumb.normal"_s);
    EXPECT_EQ(name_of(element_at(core(), *slider, corner + QPointF(110, 115))), u"Slider.Thumb.normal"_s);
}

TEST_F(ElementPicking, a_click_in_the_view_chooses_while_the_page_wants_it_and_a_drag_does_not)
{
    CDXUTDialog* d = home();
    const QPointF corner = d->client_rect().topLeft();
    control(DXUT_CONTROL_SLIDER, d, {10, 10, 200, 20});
    core().document().forget_history();
    const LookPart before = core().current_element();
    click(corner + QPointF(150, 20));
    EXPECT_EQ(core().current_element(), before) << "the page is not shown";
    core().view_aids().picks_elements = true;
    EXPECT_EQ(clicked(corner + QPointF(110, 20)), u"Slider.Thumb.normal"_s);
    EXPECT_EQ(clicked(corner + QPointF(20, 20)), u"Slider.Track.normal"_s) << "of the same control";
    drag(corner + QPointF(110, 20), corner + QPointF(130, 30));
    EXPECT_EQ(name_of(core().current_element()), u"Slider.Track.normal"_s);
    EXPECT_EQ(clicked(d->caption_rect().center()), u"Dialog.Caption.normal"_s);
    EXPECT_EQ(clicked({5, 5}), u"Dialog.Caption.normal"_s) << "over nothing";
    EXPECT_EQ(m_scene.journal().step_count(), 1u) << "the drag alone";
}
