#include "animation/anim_time.h"
#include "animation/animation_fixture.h"
#include "support/attributes.h"
#include "timeline/ruler_ticks.h"
#include "timeline/timeline_hits.h"
#include "timeline/timeline_picture.h"

#include <QPainter>
#include <QWidget>

#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

constexpr int width = 500;
constexpr int height = 200;

/// A widget on a screen of any scale.
class ScaledWidget : public QWidget {
public:
    double ratio = 1;

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        return metric == PdmDevicePixelRatioScaled ? int(ratio * devicePixelRatioFScale()) : QWidget::metric(metric);
    }
};

class TimelinePictures : public AnimationTest {
protected:
    TimelinePictures()
    {
        m_view.scene = &m_scene;
        m_view.client_width = width;
        m_view.client_height = height;
    }
    CTVar* variable(std::initializer_list<std::pair<float, float>> keys)
    {
        return with_keys(timer(m_bar, thing()), Channel::Transparency, keys);
    }
    QImage blank() const
    {
        QImage image(int(std::ceil(width * m_widget.ratio)), int(std::ceil(height * m_widget.ratio)),
                     QImage::Format_RGB32);
        image.fill(Qt::magenta);
        return image;
    }
    /// As Qt has a widget paint itself.
    void paint(TimelinePicture& picture, QImage& image, const QRegion& region)
    {
        QPainter painter(&image);
        QRegion device;
        for (const QRect& rect : region)
            device += QRectF(rect.x() * m_widget.ratio, rect.y() * m_widget.ratio, rect.width() * m_widget.ratio,
                             rect.height() * m_widget.ratio)
                          .toAlignedRect();
        painter.setClipRegion(device);
        painter.scale(m_widget.ratio, m_widget.ratio);
        picture.paint(painter, m_view, m_widget, region);
    }
    QImage painted()
    {
        TimelinePicture picture;
        QImage image = blank();
        paint(picture, image, QRect(0, 0, width, height));
        return image;
    }

    ScaledWidget m_widget;
    TimelineView m_view;
    CTimebar* m_bar = m_scene.create_bar(10);
};

} // namespace

TEST_F(TimelinePictures, only_what_is_drawn_makes_it_stale)
{
    CTVar* keys = variable({{1, 0}, {2, 1}});
    TimelinePicture picture;
    QImage image = blank();
    const auto stale_after = [&](const std::function<void()>& change) {
        paint(picture, image, QRect(0, 0, width, height));
        change();
        return picture.is_stale(m_view, m_widget);
    };
    EXPECT_FALSE(stale_after([] {}));
    EXPECT_FALSE(stale_after([&] { m_view.current_time = 3; }));
    EXPECT_FALSE(stale_after([&] { m_view.hover.key = 1; }));
    EXPECT_TRUE(stale_after([&] { m_view.selection.add_key(keys, 1); }));
    EXPECT_TRUE(stale_after([&] { m_view.axis.view_origin = 1; }));
    EXPECT_TRUE(stale_after([&] { m_bar->set_current_object(m_bar->objects().front()); }));
    {
        // Both changes of one step are seen.
        const UserAction action(m_document.journal(), u"Drag"_s);
        EXPECT_TRUE(stale_after([&] { keys->set_key_value(2, KeyValue::number(3)); }));
        EXPECT_TRUE(stale_after([&] { keys->set_key_value(2, KeyValue::number(4)); }));
    }
    EXPECT_TRUE(stale_after([&] { m_document.journal().undo(); }));
    EXPECT_TRUE(stale_after([&] {
        m_bar->objects().front()->target_object()->write<ThingState>([](ThingState& s) { s.name = u"Other"_s; });
    }));
    EXPECT_TRUE(stale_after([] { VLCMsgIniW::set_language(Language::Chinese); }));
    VLCMsgIniW::set_language(Language::English);
}

TEST_F(TimelinePictures, strips_that_are_drawn_anew_make_the_whole_picture)
{
    variable({{1, 0}, {2, 1}, {4, 0}});
    m_bar->insert_script_key(3);
    std::mt19937 random(3);
    for (const double ratio : {1., 1.25, 1.5, 2.}) {
        m_widget.ratio = ratio;
        TimelinePicture picture;
        QImage image = blank();
        paint(picture, image, QRect(0, 0, width, height));
        for (int step = 0; step < 30; ++step) {
            m_view.current_time = float(random() % 1300) / 100;
            m_view.range_select = random() % 3 == 0;
            m_view.range_anchor = float(random() % 1000) / 100;
            m_view.hover = find_hover(m_view, int(random() % width), int(random() % 64));
            ASSERT_FALSE(picture.is_stale(m_view, m_widget));
            paint(picture, image, picture.overlay_change(m_view, m_widget) & QRect(0, 0, width, height));
            ASSERT_EQ(image, painted()) << ratio << " " << step;
        }
    }
}

TEST_F(TimelinePictures, marks_are_drawn_where_they_are_hit)
{
    std::mt19937 random(5);
    for (int round = 0; round < 40; ++round) {
        m_widget.ratio = std::array{1., 1.25, 1.5, 2.}[std::size_t(round % 4)];
        m_bar = m_scene.create_bar(100);
        m_view.axis = {.view_origin = float(random() % 400) / 100, .seconds_per_pixel = 0.025f};
        m_view.current_time = 99;
        const QImage without = painted();
        for (int i = 0; i < 2; ++i) {
            CTVar* keys = m_bar->create_script_object()->create_var(VarType::Float);
            for (int key = 0; key < int(random() % 40); ++key) {
                const float time = float(random() % 20000) / 1000;
                keys->set_key_value(time, KeyValue::number(1));
                keys->set_key_ease(time, float(random() % 3) * 80 - 80);
            }
        }
        const QImage with = painted();
        const auto is_drawn = [&](int x) {
            const auto column = [&](int place) { return int(std::floor(place * m_widget.ratio + 0.5)); };
            for (int px = column(x); px < column(x + 1); ++px)
                for (int py = column(bands::keys_top); py < column(bands::keys_bottom); ++py)
                    if (with.pixel(px, py) != without.pixel(px, py))
                        return true;
            return false;
        };
        constexpr int half_mark = 5;
        constexpr int label = 60; // The cursor's stands at the right edge.
        for (int x = half_mark; x < width - label; ++x) {
            if (find_hover(m_view, x, bands::keys_top + half_mark).key >= 0) {
                ASSERT_TRUE(is_drawn(x)) << x;
            }
            const KeyColumns near = key_columns(m_view.axis, m_bar->shown_variables(), x - half_mark, x + half_mark);
            if (near.columns.empty()) {
                ASSERT_FALSE(is_drawn(x)) << x;
            }
        }
    }
}

TEST_F(TimelinePictures, ticks_leave_room_for_labels_and_stand_on_frames)
{
    for (const int mode : {1, 2}) {
        ASSERT_TRUE(set(*m_bar, "display_mode", qint64(mode)));
        for (const float scale : {0.005f, 0.02f, 0.11f, 1.f})
            for (const float origin : {-0.3f, 0.f, 3600.f}) {
                m_view.axis = {.view_origin = origin, .seconds_per_pixel = scale};
                int last = -1000;
                for (const RulerTick& tick : ruler_ticks(m_view)) {
                    EXPECT_GE(tick.time, 0);
                    if (mode == 2) {
                        EXPECT_EQ(tick.time, frame_time(frame_of(tick.time, 25), 25));
                    }
                    if (tick.major) {
                        EXPECT_GE(tick.column - std::exchange(last, tick.column), 71);
                    }
                }
                EXPECT_GT(last, 0);
            }
    }
}

TEST_F(TimelinePictures, of_two_timebars_on_one_channel_the_higher_wins)
{
    CTimebar* lower = m_scene.create_bar(6, u"Lower"_s);
    Thing* driven = thing();
    CTVar* high = with_keys(timer(m_bar, driven), Channel::Transparency, {{0, 0}});
    CTVar* low = with_keys(timer(lower, driven), Channel::Transparency, {{1, 1}});
    CTVar* alone = with_keys(high->object(), Channel::Position, {{0, 0}});
    const auto told = [&](const CTVar* variable) {
        QString text;
        for (const DrivenSpan& span : DrivenConflicts(&m_scene).of(*variable))
            text += u"%1 %2 %3"_s.arg(span.other->name()).arg(double(span.end)).arg(span.other_wins);
        return text;
    };
    EXPECT_EQ(told(high), u"Lower 6 0"_s);
    EXPECT_EQ(told(low), m_bar->name() + u" 6 1"_s);
    EXPECT_EQ(told(alone), QString());
    ASSERT_TRUE(set(*low->object(), "flags", qint64(low->object()->flags() & ~bit(Channel::Transparency))));
    EXPECT_EQ(told(high), QString());
}
