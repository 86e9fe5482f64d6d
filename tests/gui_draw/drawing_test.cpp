#include "drawing_fixture.h"

#include "gui_core/control_class.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_button_st.h"
#include "gui_core/dxut_media.h"
#include "gui_draw/texture_cache.h"

#include <array>
#include <random>

using namespace tarn;
using namespace tarn::test;

TEST_F(DrawingTest, an_empty_interface_draws_nothing)
{
    EXPECT_TRUE(is_blank(picture()));
}

TEST_F(DrawingTest, every_type_of_control_is_drawn_at_any_size)
{
    for (const ControlClass& row : control_classes()) {
        for (const QSizeF size :
             {QSizeF(row.default_size), QSizeF(0, 0), QSizeF(1, 1), QSizeF(3, 200), QSizeF(300, 3)}) {
            CDXUTControl* made = m_core.create_control(row.type, m_core.GetRootDialog(), QRectF(QPointF(50, 50), size));
            EXPECT_TRUE(size != QSizeF(row.default_size) || !is_blank(picture())) << row.class_name;
            m_core.remove_control(made);
        }
    }
}

TEST_F(DrawingTest, every_state_of_a_control_looks_different)
{
    m_core.EnableGui(false);
    CDXUTDialog* root = m_core.GetRootDialog();
    for (CDXUTControl* c : {static_cast<CDXUTControl*>(button(root, {50, 50, 120, 40})),
                            static_cast<CDXUTControl*>(check_box(root, {50, 150, 120, 24}))}) {
        std::vector<QImage> looks{picture()};
        m_core.live().hovered = c;
        looks.push_back(picture());
        m_core.live().pressed = c;
        looks.push_back(picture());
        m_core.live() = {};
        m_core.live().focused = c;
        looks.push_back(picture());
        m_core.live() = {};
        (void)set(*c, "enabled", false);
        looks.push_back(picture());
        c->SetVisible(false);
        looks.push_back(picture());
        expect_all_differ(looks);
        m_core.remove_control(c);
    }
    EXPECT_TRUE(is_blank(picture()));
}

TEST_F(DrawingTest, every_attribute_of_a_look_shows)
{
    CDXUTDialog* root = m_core.GetRootDialog();
    CDXUTCheckBox* box = check_box(root, {50, 50, 90, 60});
    box->SetText(u"Mist 雾 on the lake"_s);
    std::vector<QImage> looks{picture()};
    const std::pair<const char*, Value> changes[] = {
        {"checked", true},
        {"text", u"Rain 雨 on the lake"_s},
        {"text_color", qint64(0xffff0000)},
        {"font_size", qint64(9)},
        {"horizontal_align", qint64(2)},
        {"vertical_align", qint64(2)},
        {"bold", true},
        {"shadow", true},
        {"font_size", qint64(24)},
        {"word_wrap", true},
    };
    for (const auto& [name, value] : changes) {
        ASSERT_TRUE(set(*box, name, value).ok()) << name;
        looks.push_back(picture());
    }
    expect_all_differ(looks);
}

TEST_F(DrawingTest, a_picture_shows_its_image_a_place_holder_only_while_editing_and_nothing_when_it_runs)
{
    auto* p = control<CDXUTPicture>(m_core.GetRootDialog(), DXUT_CONTROL_PICTURE, {40, 40, 60, 60});
    const QImage place_holder = picture();
    EXPECT_FALSE(is_blank(place_holder));
    m_core.EnableGui(false);
    EXPECT_TRUE(is_blank(picture()));
    m_core.set_texture(u"red.png"_s, png(Qt::red));
    (void)set(*p, "image", u"red.png"_s);
    const QImage stretched = picture();
    EXPECT_EQ(stretched.pixel(90, 90), 0xffff0000u);
    ASSERT_TRUE(set(*p, "stretch", false).ok());
    EXPECT_EQ(picture().pixel(44, 44), 0xffff0000u);
    EXPECT_EQ(picture().pixel(90, 90), background);
    m_core.set_texture(u"red.png"_s, png(Qt::blue));
    EXPECT_EQ(picture().pixel(44, 44), 0xff0000ffu) << "the exchanged picture shows at once";
    for (const QByteArray& bad : {QByteArray("no picture"), QByteArray(), png(Qt::red).left(40)}) {
        m_core.set_texture(u"red.png"_s, bad);
        EXPECT_TRUE(is_blank(picture()));
    }
}

TEST_F(DrawingTest, decoded_pictures_keep_to_a_budget_and_go_with_their_scene)
{
    TextureCache cache(3 * 8 * 8 * 4);
    const QImage first = cache.image(u"0"_s, png(Qt::red));
    for (int i = 1; i < 10; ++i)
        EXPECT_FALSE(cache.image(QString::number(i), png(Qt::blue)).isNull());
    EXPECT_EQ(cache.bytes(), 3 * 8 * 8 * 4);
    EXPECT_EQ(first.pixel(4, 4), 0xffff0000u) << "who was given it keeps it";
    EXPECT_FALSE(cache.image(u"large"_s, png(Qt::red, {100, 100})).isNull()) << "larger than the budget";

    m_core.set_texture(u"red.png"_s, png(Qt::red));
    const qint64 decoded = texture(m_core, u"red.png"_s).cacheKey();
    EXPECT_EQ(texture(m_core, u"red.png"_s).cacheKey(), decoded);
    m_core.document().forget_history();
    EXPECT_NE(texture(m_core, u"red.png"_s).cacheKey(), decoded);
}

TEST_F(DrawingTest, a_large_picture_is_kept_as_large_as_it_is_shown)
{
    TextureCache cache;
    const QByteArray photo = png(Qt::red, {2400, 2000});
    EXPECT_EQ(cache.image(u"photo"_s, photo, {200, 150}).size(), QSize(300, 250));
    EXPECT_EQ(cache.image(u"photo"_s, photo, {500, 150}).size(), QSize(600, 500)) << "no side is too small";
    EXPECT_EQ(cache.image(u"photo"_s, photo).size(), QSize(2400, 2000));
    EXPECT_EQ(cache.image(u"photo"_s, photo, {10, 10}).size(), QSize(2400, 2000)) << "it is there already";
    EXPECT_EQ(cache.image(u"panel"_s, png(Qt::red, {2000, 2000}), {0, 0}).size(), QSize(2000, 2000));
    m_core.set_texture(u"photo.png"_s, photo);
    auto* p = control<CDXUTPicture>(m_core.GetRootDialog(), DXUT_CONTROL_PICTURE, {40, 40, 60, 60});
    (void)set(*p, "image", u"photo.png"_s);
    EXPECT_EQ(picture().pixel(42, 42), 0xffff0000u);
    EXPECT_LT(texture(m_core, u"photo.png"_s, {1, 1}).width(), 200);
    ASSERT_TRUE(set(*p, "stretch", false).ok());
    EXPECT_EQ(picture().pixel(98, 98), 0xffff0000u);
    EXPECT_EQ(texture(m_core, u"photo.png"_s, {1, 1}).width(), 2400) << "not stretched, all of its pixels count";
}

TEST_F(DrawingTest, an_element_too_large_to_be_kept_looks_as_if_it_were)
{
    ElementCache cache;
    const QSize size(2600, 2000);
    const QImage own = QImage::fromData(png(Qt::green, {60, 40}));
    for (const auto& [picture, tint] : {std::pair(QImage(), 0u), {QImage(), 0xffc04020}, {own, 0x80ffffff}})
        for (const Element element : {Element::Button, Element::InfoPanel, Element::MapPlaceholder})
            for (const double scale : {1.0, 1.5, 2.0})
                for (const QPoint corner : {QPoint(20, 30), QPoint(-1000, -700), QPoint(-2300, -1800)}) {
                    QImage seen(m_core.screen_size() * scale, QImage::Format_ARGB32_Premultiplied);
                    seen.setDevicePixelRatio(scale);
                    seen.fill(background);
                    QImage wanted = seen;
                    const ElementSource source = element_source(m_core.look(), element, VisualState::Normal,
                                                                {.picture = {}, .color = tint}, picture);
                    QPainter(&wanted).drawImage(corner, cache.image(source, size, scale));
                    QPainter painter(&seen);
                    cache.draw(painter, corner, source, size, scale);
                    EXPECT_TRUE(differing(seen, wanted).isNull()) << int(element) << " at " << scale;
                }
}

TEST_F(DrawingTest, two_scales_in_turn_compose_nothing_anew)
{
    ElementCache cache;
    const auto composed = [&](double scale) {
        const ElementSource source = element_source(m_core.look(), Element::Button, VisualState::Normal, {});
        return cache.image(source, {96, 28}, scale).cacheKey();
    };
    const qint64 once = composed(1);
    const qint64 twice = composed(2);
    EXPECT_NE(once, twice);
    EXPECT_EQ(composed(1), once);
    EXPECT_EQ(composed(2), twice);
}

TEST_F(DrawingTest, the_far_end_of_a_vast_control_is_drawn_without_the_rest)
{
    button(m_core.GetRootDialog(), {-999'800, -999'900, 1e6, 1e6});
    const QImage seen = picture(); // Composed as a whole it would not fit into memory.
    EXPECT_NE(seen.pixel(190, 90), background);
    EXPECT_EQ(seen.pixel(210, 90), background);
}

TEST_F(DrawingTest, every_attribute_of_a_dialog_shows)
{
    CDXUTDialog* d = dialog({50, 40, 200, 150});
    std::vector<QImage> looks{picture()};
    const std::pair<const char*, Value> changes[] = {
        {"caption", u"Camp 营地"_s}, {"close_button", false}, {"minimize_button", true},
        {"border_width", qint64(3)}, {"frame_shown", false},  {"caption_height", qint64(40)},
        {"caption_shown", false},    {"x", qint64(60)},
    };
    for (const auto& [name, value] : changes) {
        ASSERT_TRUE(set(*d, name, value).ok()) << name;
        looks.push_back(picture());
    }
    ASSERT_TRUE(set(*d, "caption_shown", true).ok());
    m_core.SelectDialog(d, false);
    looks.push_back(picture());
    d->set_minimized(true);
    looks.push_back(picture());
    d->SetVisible(false);
    looks.push_back(picture());
    EXPECT_TRUE(is_blank(looks.back()));
    expect_all_differ(looks);
}

TEST_F(DrawingTest, at_scale_2_a_picture_has_twice_the_pixels_and_the_same_content)
{
    CDXUTDialog* d = dialog({50, 40, 200, 150});
    button(d, {20, 20, 100, 30});
    const QImage twice = picture(2);
    EXPECT_EQ(twice.size(), QSize(800, 600));
    QImage reduced = twice;
    reduced.setDevicePixelRatio(1);
    reduced = reduced.scaled(400, 300, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const QImage once = picture();
    int far = 0;
    for (int y = 0; y < 300; ++y)
        for (int x = 0; x < 400; ++x)
            far += std::abs(qGreen(once.pixel(x, y)) - qGreen(reduced.pixel(x, y))) > 96;
    EXPECT_LT(far, 400) << "pixels that are nowhere near the same";
}

TEST_F(DrawingTest, a_part_drawn_alone_is_that_part_of_the_whole)
{
    CDXUTDialog* d = dialog({50, 40, 200, 150});
    ASSERT_TRUE(set(*d, "border_width", qint64(2)).ok());
    button(d, {20.5, 20, 100.25, 30});
    check_box(d, {150, 30, 120, 24}); // sticks out
    button(d, {10, 140, 80, 40});
    const QImage whole = picture();
    std::mt19937 random(4);
    for (int i = 0; i < 60; ++i) {
        const QRect part(int(random() % 300), int(random() % 250), 1 + int(random() % 150), 1 + int(random() % 100));
        QImage image(whole.size(), whole.format());
        image.fill(background);
        QPainter painter(&image);
        painter.setClipRect(part);
        m_painter.paint(painter, m_core, part, 1);
        painter.end();
        ASSERT_EQ(image.copy(part), whole.copy(part)) << "seed " << i;
    }
}

TEST_F(DrawingTest, a_rotated_control_is_the_picture_of_the_unrotated_one_turned)
{
    m_core.set_screen_size({300, 300});
    m_core.set_texture(u"red.png"_s, png(Qt::red));
    auto* p = control<CDXUTPicture>(m_core.GetRootDialog(), DXUT_CONTROL_PICTURE, {120, 140, 60, 20});
    (void)set(*p, "image", u"red.png"_s);
    QImage upright = picture();
    (void)set(*p, "rotation", 90.0);
    EXPECT_EQ(picture(), upright.transformed(QTransform().rotate(90))) << "it stands in the middle of the screen";
    (void)set(*p, "rotation", 720.0);
    EXPECT_EQ(picture(), upright);
    (void)set(*p, "rotation", -45.0);
    const QImage tilted = picture();
    EXPECT_EQ(tilted.pixel(150, 150), 0xffff0000u);
    EXPECT_EQ(tilted.pixel(167, 133), 0xffff0000u) << "up to the right";
    EXPECT_EQ(tilted.pixel(167, 167), background);
    p->set_center({-100, 10});
    (void)set(*p, "rotation", 180.0);
    p->SetLocation(400, 140); // Seen from 140 on, although it lies to the right of the screen.
    EXPECT_FALSE(is_blank(picture())) << "culled by the place that it would have upright";
}

TEST_F(DrawingTest, a_change_damages_the_old_place_and_the_new_one_and_no_more)
{
    CDXUTDialog* d = dialog({50, 40, 300, 200});
    CDXUTControl* c = button(d, {20, 20, 60, 20});
    CDXUTControl* other = button(d, {200, 100, 60, 20});
    m_core.take_damage();
    EXPECT_TRUE(m_core.take_damage().isNull());
    const QRectF before = c->screen_rect();
    c->SetLocation(100, 60);
    EXPECT_EQ(m_core.take_damage(), before | c->screen_rect());
    (void)set(*c, "enabled", false);
    EXPECT_EQ(m_core.take_damage(), c->screen_rect());
    EXPECT_TRUE(set(*c, "enabled", false));
    EXPECT_TRUE(m_core.take_damage().isNull());
    m_core.move_control_to(other, m_core.GetRootDialog());
    EXPECT_TRUE(m_core.take_damage().contains(other->screen_rect()));
    const QRectF whole = m_core.dialog_bounds(*d);
    d->SetLocation(70, 50);
    EXPECT_EQ(m_core.take_damage(), whole | m_core.dialog_bounds(*d));
}

TEST_F(DrawingTest, drawing_only_the_damage_after_each_change_gives_the_same_as_drawing_all)
{
    std::mt19937 random(7);
    const auto number = [&](int below) { return int(random() % unsigned(below)); };
    QImage kept = picture();
    m_core.take_damage();
    for (int i = 0; i < 400; ++i) {
        const int change = number(15);
        const UserAction action(m_journal, QString::number(change));
        const auto& dialogs = m_core.GetDialogs();
        CDXUTDialog* d = dialogs.isEmpty() ? m_core.GetRootDialog() : dialogs[number(int(dialogs.size()))];
        CDXUTControl* c = m_core.controls().empty() ? nullptr : m_core.controls()[random() % m_core.controls().size()];
        if (change == 0 && dialogs.size() < 3)
            dialog({number(300), number(200), 40 + number(150), 40 + number(120)});
        else if (change == 1 && m_core.controls().size() < 8)
            m_core.create_control(
                std::array{0, 1, 2, 11}[random() % 4], number(4) ? d : m_core.GetRootDialog(),
                {number(150) / 2.0, number(100) / 4.0, 10 + number(200) / 4.0, 10 + number(60) / 4.0});
        else if (change == 2)
            d->SetLocation(number(300), number(200));
        else if (change == 3)
            d->SetSize(40 + number(150), 40 + number(100));
        else if (change == 4)
            d->SetVisible(number(3) > 0);
        else if (change == 5 && number(3) == 0)
            m_core.remove_dialog(d);
        else if (change == 6)
            m_core.set_screen_size({350 + number(51), 250 + number(51)});
        else if (change == 7)
            (void)set(*d, "align_type", qint64(number(10)));
        else if (change == 8)
            m_core.AdjustDialogLayer(d, number(2));
        else if (c && change == 9)
            c->SetLocation(float(number(300)) / 4, float(number(200)) / 4);
        else if (c && change == 10)
            c->set_align_type(number(10));
        else if (c && change == 11)
            (void)set(*c, "text", QString(number(30), u'湖'));
        else if (c && change == 12)
            number(2) ? m_core.move_control_to(c, d) : m_core.move_controls_to({c, m_core.controls().back()}, d);
        else if (c && change == 13)
            number(4)       ? (void)c->SetVisible(number(3) > 0)
                : number(2) ? m_core.remove_control(c)
                            : m_core.remove_controls({c, m_core.controls().back()});
        else if (c && change == 14)
            number(3) ? (void)set(*c, "rotation", number(720) - 360.0)
                      : (void)c->set_center({number(80) - 20.0, number(40) / 3.0});
        if (kept.size() != m_core.screen_size()) {
            kept = picture();
            m_core.take_damage();
        }
        repaint(kept);
        const QImage whole = picture();
        ASSERT_TRUE(differing(kept, whole).isEmpty()) << "step " << i << ", change " << change << ", differing in "
                                                      << testing::PrintToString(differing(kept, whole));
    }
    for (QString undone = m_journal.undo_name(); m_journal.undo(); undone = m_journal.undo_name()) {
        repaint(kept);
        const QImage whole = picture();
        ASSERT_TRUE(differing(kept, whole).isEmpty())
            << "after undoing change " << undone.toStdString() << ", differing in "
            << testing::PrintToString(differing(kept, whole));
    }
}

TEST_F(DrawingTest, a_dialog_on_a_screen_smaller_than_its_design_is_drawn_whole)
{
    ASSERT_TRUE(set(m_core, "screen_width", qint64(400)).ok() && set(m_core, "screen_height", qint64(300)).ok());
    CDXUTDialog* home = dialog({0, 0, 400, 276});
    ASSERT_TRUE(set(*home, "align_type", qint64(9)).ok());
    button(home, {200, 100, 180, 150})->SetText({});
    const QImage whole = picture().scaled(200, 150, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    m_core.set_screen_size({200, 150});
    QImage reduced = picture();
    const QRect inside(105, 70, 80, 60); // of the button, but for its edges
    EXPECT_TRUE(differing(whole.copy(inside), reduced.copy(inside)).isNull());
    EXPECT_NE(reduced.pixel(199, 80), QColor(background).rgb());
}

TEST_F(DrawingTest, what_fades_does_so_as_a_whole_and_takes_on_its_colour)
{
    CDXUTDialog* home = dialog({40, 30, 260, 200});
    CDXUTButton* pressed = button(home, {20, 20, 120, 60});
    pressed->SetText(u"Fading"_s);
    (void)set(*pressed, "rotation", 20.0);
    (void)set(*home, "caption_shown", true);
    const auto half = [](const QImage& image) {
        QImage mixed = image;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QRgb p = image.pixel(x, y);
                mixed.setPixel(x, y,
                               qRgb((qRed(p) + qRed(background)) / 2, (qGreen(p) + qGreen(background)) / 2,
                                    (qBlue(p) + qBlue(background)) / 2));
            }
        return mixed;
    };
    for (const double scale : {1.0, 2.0, 1.25}) {
        const QImage opaque = picture(scale);
        (void)set(*home, "transparency", 0.5);
        EXPECT_TRUE(differing(picture(scale), half(opaque)).isEmpty()) << "the frame does not shine through the button";
        (void)set(*home, "transparency", 0.0);
        (void)set(*home, "color", qint64(0x80ffffff));
        EXPECT_TRUE(differing(picture(scale), half(opaque)).isEmpty()) << "a colour's alpha fades, too";
        (void)set(*home, "color", qint64(0xffffffff));
        EXPECT_EQ(picture(scale), opaque);
    }
    QImage shown = picture();
    const QRgb middle = shown.pixel(120, 104);
    (void)m_core.take_damage();
    (void)set(*pressed, "color", qint64(0xff00ffff));
    (void)set(*pressed, "transparency", 0.25);
    repaint(shown);
    EXPECT_TRUE(differing(shown, picture()).isEmpty()) << "the change is damage";
    EXPECT_LT(qRed(shown.pixel(120, 104)), qRed(middle));
    (void)set(*pressed, "transparency", 1.0);
    const QImage without = picture();
    pressed->SetVisible(false);
    EXPECT_EQ(without, picture());
    (void)set(*home, "transparency", 1.0);
    EXPECT_TRUE(is_blank(picture()));
}
