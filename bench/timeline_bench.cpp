// The timeline drawn with many keys, beside a graphics view with an item a key, and beside a prepared stamp for each
// column of pixels that has a key.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/document.h"
#include "timeline/timeline_picture.h"

#include <benchmark/benchmark.h>

#include <QGraphicsPolygonItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QWidget>

#include <random>

namespace {

constexpr QSize size(1920, 1000);
constexpr int row_count = 50;
constexpr float length = 48; // seconds, all of which are seen
constexpr int mark_size = 9;

std::vector<float> key_times(int row, int count)
{
    std::mt19937 random(static_cast<unsigned>(row));
    std::uniform_real_distribution<float> time(0, length);
    std::vector<float> times(std::size_t(count / row_count));
    std::generate(times.begin(), times.end(), [&] { return time(random); });
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

int column_of(float time)
{
    return int(time / length * float(size.width()));
}
int row_top(int row)
{
    return tarn::bands::rows_top + row * tarn::TimelineRow::height + 4;
}

/// The product's: fifty objects with one variable each.
class Timeline {
public:
    explicit Timeline(int keys)
    {
        const tarn::RecordingOff off(m_document.journal());
        CTimebar* bar = m_scene.create_bar(length);
        for (int row = 0; row < row_count; ++row) {
            CTVar* variable = bar->create_script_object()->create_var(tarn::VarType::Float);
            std::vector<tarn::Key> added;
            for (const float time : key_times(row, keys))
                added.push_back({.time = time, .value = tarn::KeyValue::number(time)});
            tarn::KeyTrack track;
            track.edit({}, added);
            variable->set_keys(std::move(track));
        }
        m_widget.resize(size);
        m_view.scene = &m_scene;
        m_view.client_width = size.width();
        m_view.client_height = size.height();
        draw(m_widget.rect());
    }

    void draw(const QRegion& region)
    {
        QPainter painter(&m_image);
        m_picture.paint(painter, m_view, m_widget, region);
    }
    /// Another picture: as if the author had scrolled.
    void draw_all()
    {
        m_view.axis.view_origin = m_view.axis.view_origin > 0 ? 0 : 0.025f;
        draw(m_widget.rect());
    }
    void move_cursor()
    {
        m_view.current_time = m_view.current_time < length / 2 ? m_view.current_time + 1 : 0;
        if (!m_picture.is_stale(m_view, m_widget))
            draw(m_picture.overlay_change(m_view, m_widget));
    }

private:
    tarn::Document m_document;
    CAnimationScene m_scene{m_document};
    tarn::TimelineView m_view;
    QWidget m_widget;
    tarn::TimelinePicture m_picture;
    QImage m_image{size, QImage::Format_RGB32};
};

void draw_tarn(benchmark::State& state)
{
    Timeline timeline(int(state.range(0)));
    for (auto _ : state)
        timeline.draw_all();
}

void move_cursor_tarn(benchmark::State& state)
{
    Timeline timeline(int(state.range(0)));
    for (auto _ : state)
        timeline.move_cursor();
}

QPolygonF diamond()
{
    constexpr double half = mark_size / 2.0;
    return QPolygonF({{half, 0}, {2 * half, half}, {half, 2 * half}, {0, half}});
}

QImage stamp()
{
    QImage image(mark_size, mark_size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::gray);
    painter.drawPolygon(diamond());
    return image;
}

void draw_graphics_view(benchmark::State& state)
{
    QGraphicsScene scene(QRectF(QPointF(), size));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex); // All items are drawn each time: an index would only cost.
    for (int row = 0; row < row_count; ++row)
        for (const float time : key_times(row, int(state.range(0)))) {
            scene.addPolygon(diamond(), QPen(Qt::black), Qt::gray)
                ->setPos(QPoint(column_of(time) - mark_size / 2, row_top(row)));
        }
    QGraphicsView view(&scene);
    view.setRenderHint(QPainter::Antialiasing);
    view.setFrameStyle(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setOptimizationFlags(QGraphicsView::DontSavePainterState | QGraphicsView::DontAdjustForAntialiasing);
    view.setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    view.resize(size);
    QImage image(size, QImage::Format_RGB32);
    view.viewport()->render(&image);
    for (auto _ : state)
        view.viewport()->render(&image);
}

void draw_stamps(benchmark::State& state)
{
    const QImage mark = stamp();
    std::vector<std::vector<float>> rows;
    for (int row = 0; row < row_count; ++row)
        rows.push_back(key_times(row, int(state.range(0))));
    QImage image(size, QImage::Format_RGB32);
    for (auto _ : state) {
        QPainter painter(&image);
        painter.fillRect(image.rect(), Qt::white);
        for (int row = 0; row < row_count; ++row)
            for (int last = -1; const float time : rows[std::size_t(row)])
                if (const int column = column_of(time); column != last) {
                    painter.drawImage(column - mark_size / 2, row_top(row), mark);
                    last = column;
                }
    }
}

void keys(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
}
void fewer_keys(benchmark::internal::Benchmark* benchmark)
{
    benchmark->Arg(100'000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(draw_tarn)->Name("draw_timeline/tarn")->Apply(keys);
BENCHMARK(draw_graphics_view)->Name("draw_timeline/QGraphicsView")->Apply(fewer_keys);
BENCHMARK(draw_stamps)->Name("draw_timeline/stamps")->Apply(keys);
BENCHMARK(move_cursor_tarn)->Name("move_time_cursor/tarn")->Apply(keys);
BENCHMARK(draw_tarn)->Name("move_time_cursor/full")->Apply(keys);

} // namespace
