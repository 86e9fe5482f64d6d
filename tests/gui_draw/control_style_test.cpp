// What an author chooses for single controls instead of the style's pictures, colours and font.

#include "core/authored.h"
#include "gui_core/control_style.h"

#include "gui_core/control_class.h"
#include "gui_draw/gui_painter.h"
#include "support/gui_fixture.h"

#include <QPainter>
#include <QSet>

using namespace tarn;
using namespace tarn::test;

namespace {

class ControlStyleTest : public GuiTest {
protected:
    ControlStyleTest() { m_core.set_screen_size({240, 160}); }

    QImage picture()
    {
        QImage image(m_core.screen_size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::black);
        QPainter painter(&image);
        m_painter.paint(painter, m_core, QRectF(QPointF(), m_core.screen_size()), 1);
        return image;
    }
    static void set_where_known(CDXUTControl* control, std::initializer_list<const char*> names, const Value& value)
    {
        for (const char* name : names)
            if (const FieldBase* field = control->fields().find(name)) {
                EXPECT_TRUE(control->set_property(*field, value).ok()) << name;
            }
    }
    CDXUTControl* add(int type) { return m_core.create_control(type, m_core.GetRootDialog(), {20, 20, 100, 60}); }

    GuiPainter m_painter;
};

/// Red at the edges, as wide as the skin's are of its pictures, and green between them.
QByteArray framed_png()
{
    QImage image(96, 192, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    painter.fillRect(28, 56, 40, 80, Qt::green);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

TEST_F(ControlStyleTest, a_picture_is_drawn_as_nine_slices)
{
    m_core.set_texture(u"framed.png"_s, framed_png());
    CDXUTButton* b = button(m_core.GetRootDialog(), {20, 20, 100, 60});
    b->SetText(u""_s);
    const QImage plain = picture();
    ASSERT_TRUE(set_entry(*b, "style_images", u"Body.normal"_s, u"framed.png"_s));
    const QImage own = picture();
    EXPECT_EQ(own.pixel(21, 21), 0xffff0000u);
    EXPECT_EQ(own.pixel(31, 50), 0xffff0000u) << "14 pixels, whatever the picture's size";
    EXPECT_EQ(own.pixel(37, 50), 0xff00ff00u);
    EXPECT_EQ(own.pixel(102, 62), 0xff00ff00u);
    EXPECT_EQ(own.pixel(109, 69), 0xffff0000u);
    (void)set_entry(*b, "style_colors", u"Body.normal"_s, qint64(0xff804020));
    EXPECT_EQ(picture().pixel(21, 21), 0xff800000u);
    m_core.set_texture(u"framed.png"_s, png(Qt::white));
    EXPECT_EQ(picture().pixel(21, 21), 0xff804020u) << "the exchanged picture shows at once";
    (void)set(*b, "style_images", TextMap());
    (void)set(*b, "style_colors", NumberMap());
    EXPECT_EQ(picture(), plain);
    EXPECT_FALSE(b->has_extras());
}

TEST_F(ControlStyleTest, a_colour_turns_the_style_into_its_shades_and_a_missing_picture_counts_as_none)
{
    CDXUTButton* b = button(m_core.GetRootDialog(), {20, 20, 100, 60});
    b->SetText(u""_s);
    (void)set_entry(*b, "style_images", u"Body.normal"_s, u"missing.png"_s);
    const QRgb usual = picture().pixel(70, 50);
    (void)set_entry(*b, "style_colors", u"Body.normal"_s, qint64(0xffff0000));
    const QRgb red = picture().pixel(70, 50);
    EXPECT_EQ(qRed(red), std::max({qRed(usual), qGreen(usual), qBlue(usual)}));
    EXPECT_EQ(qGreen(red), 0);
}

TEST_F(ControlStyleTest, every_element_of_every_type_takes_the_authors_colour)
{
    for (const ControlClass& row : control_classes()) {
        if (row.type == DXUT_CONTROL_COMBOBOX)
            continue; // Some of its elements show only when it is open.
        CDXUTControl* control = add(row.type);
        set_where_known(control, {"checked", "annotation_mode"}, true);
        set_where_known(control, {"items"}, QStringList{u"a"_s, u"b"_s, u"c"_s, u"d"_s});
        set_where_known(control, {"selected"}, qint64(0));
        m_core.live().hovered = control; // An annotation shows only then.
        for (const StyleElement& element : style_elements(row.type)) {
            const QImage before = picture();
            (void)set_entry(*control, "style_colors", look_name(element, VisualState::Hover), qint64(0xffff00ff));
            EXPECT_NE(picture(), before) << row.class_name << ", " << element.name;
        }
        m_core.live() = {};
        m_core.remove_control(control);
    }
}

TEST_F(ControlStyleTest, text_follows_its_state_and_font_on_every_type_that_shows_one)
{
    for (const ControlClass& row : control_classes()) {
        if (!has_styled_text(row.type))
            continue;
        CDXUTControl* control = add(row.type);
        set_where_known(control, {"text", "message"}, u"Lake"_s);
        set_where_known(control, {"items", "lines"}, QStringList{u"Lake"_s});
        set_where_known(control, {"selected"}, qint64(0));
        const QImage plain = picture();
        (void)set_entry(*control, "style_text_colors", state_name(VisualState::Disabled), qint64(0xffff0000));
        EXPECT_EQ(picture(), plain) << row.class_name;
        (void)set_entry(*control, "style_text_colors", state_name(VisualState::Normal), qint64(0xffff0000));
        const QImage coloured = picture();
        EXPECT_NE(coloured, plain) << row.class_name;
        (void)set(*control, "font_italic", true);
        const QImage italic = picture();
        EXPECT_NE(italic, coloured) << row.class_name;
        (void)set(*control, "font_family", u"DejaVu Sans Mono"_s);
        EXPECT_NE(picture(), italic) << row.class_name;
        m_core.remove_control(control);
    }
}

TEST_F(ControlStyleTest, a_picture_for_normal_serves_the_states_that_have_none_with_its_colour)
{
    CDXUTControl* b = add(DXUT_CONTROL_BUTTON);
    const auto look = [&](VisualState state) {
        const auto found = element_look(m_core.look(), static_cast<const ControlState&>(Authored::state(*b)),
                                        Element::Button, state, state);
        return found.picture + u' ' + QString::number(found.color, 16);
    };
    (void)set_entry(*b, "style_colors", u"Body.normal"_s, qint64(0xff000001));
    EXPECT_EQ(look(VisualState::Normal), u" ff000001"_s);
    EXPECT_EQ(look(VisualState::Hover), u" 0"_s) << "the style's own picture for that state";
    (void)set_entry(*b, "style_images", u"Body.normal"_s, u"a.png"_s);
    EXPECT_EQ(look(VisualState::Hover), u"a.png ff000001"_s);
    (void)set_entry(*b, "style_colors", u"Body.hover"_s, qint64(0xff000002));
    EXPECT_EQ(look(VisualState::Hover), u"a.png ff000002"_s);
    (void)set_entry(*b, "style_images", u"Body.pressed"_s, u"b.png"_s);
    EXPECT_EQ(look(VisualState::Pressed), u"b.png 0"_s) << "the colour is the other picture's";
    EXPECT_EQ(look(VisualState::Hidden), u" 0"_s);
    const auto other = element_look(m_core.look(), static_cast<const ControlState&>(Authored::state(*b)),
                                    Element::Bubble, {}, {});
    EXPECT_EQ(other.picture, QString()) << "an element that buttons do not have";
}

TEST_F(ControlStyleTest, names_are_different_within_a_type_and_unknown_ones_are_kept)
{
    for (const ControlClass& row : control_classes()) {
        QSet<QString> names;
        for (const StyleElement& element : style_elements(row.type))
            for (int state = 0; state < style_state_count; ++state)
                names.insert(look_name(element, VisualState(state)));
        EXPECT_EQ(names.size(), qsizetype(style_elements(row.type).size()) * style_state_count) << row.class_name;
    }
    CDXUTControl* b = add(DXUT_CONTROL_BUTTON);
    ASSERT_TRUE(set(*b, "style_images", TextMap{{u"Body.hover"_s, u"a.png"_s}, {u"Glow.later"_s, u"b.png"_s}}).ok());
    (void)set_entry(*b, "style_images", u"Body.hover"_s, QString());
    EXPECT_EQ(get(*b, "style_images"), Value(TextMap{{u"Glow.later"_s, u"b.png"_s}}));
    ASSERT_TRUE(set(*b, "style_colors", NumberMap{{u"Body.normal"_s, 0}}).ok());
    EXPECT_EQ(get(*b, "style_colors"), Value(NumberMap())) << "0 is no colour";
}
