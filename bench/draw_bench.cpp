// An interface of buttons drawn, beside a graphics view with an item a button, and beside the best single pieces: one
// composed picture and one prepared text a button.

#include "bench_scene.h"
#include "gui_core/dxut_button.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/gui_style.h"
#include "gui_core/skin_sheet.h"
#include "gui_draw/gui_painter.h"
#include "gui_draw/text_cache.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QPainter>
#include <QStaticText>
#include <qdrawutil.h>

#include <cmath>

namespace {

constexpr QSize screen(1920, 1080);
constexpr QSize button_size(96, 28);
constexpr QColor background(0x20, 0x28, 0x30);

/// The buttons stand in rows all over the screen; where there are many, they overlap.
std::vector<QPoint> places(int count)
{
    const int columns = int(std::ceil(std::sqrt(count * 16.0 / 9)));
    const int rows = (count + columns - 1) / columns;
    std::vector<QPoint> all;
    for (int i = 0; i < count; ++i)
        all.emplace_back(i % columns * (screen.width() - button_size.width()) / std::max(1, columns - 1),
                         i / columns * (screen.height() - button_size.height()) / std::max(1, rows - 1));
    return all;
}

QString label(int number)
{
    return QString::number(number);
}

class Canvas {
public:
    Canvas() : image(screen, QImage::Format_ARGB32_Premultiplied) { image.fill(background); }
    QImage image;
};

/// The product's: fifty buttons to a dialog that shows neither caption nor frame and is as large as they need.
class Interface {
public:
    explicit Interface(int count) : m_core(m_document)
    {
        const tarn::RecordingOff off(m_document.journal());
        m_core.set_screen_size(screen);
        m_core.EnableGui(false);
        const auto all = places(count);
        for (std::size_t i = 0; i < all.size(); i += in_dialog)
            add_dialog(all, i, std::min(i + in_dialog, all.size()));
        draw(QRectF(QPointF(), screen)); // From now on pictures and texts are there.
        m_core.take_damage();
    }

    void draw(const QRectF& area)
    {
        QPainter painter(&m_canvas.image);
        painter.setClipRect(area);
        painter.fillRect(area, background);
        m_painter.paint(painter, m_core, area, 1);
    }
    void draw_damage() { draw(QRectF(m_core.take_damage().toAlignedRect())); }
    const std::vector<CDXUTButton*>& buttons() const { return m_buttons; }
    /// Two, whose buttons and texts differ.
    void add_styles()
    {
        const tarn::RecordingOff off(m_document.journal());
        for (const quint32 color : {0xffaa2211u, 0xff1122aau}) {
            auto* style = new tarn::StyleState;
            style->name = QString::number(color);
            style->tokens.insert(QStringLiteral("text"), color);
            style->atlas = tarn::Atlas::of_program();
            QImage picture(96, 96, QImage::Format_ARGB32);
            picture.fill(QColor::fromRgba(color));
            const tarn::LookOwner& owner = *tarn::look_owner(DXUT_CONTROL_BUTTON);
            style->atlas.put(tarn::default_rect(owner, 0, tarn::VisualState::Normal), picture);
            m_styles.push_back(m_core.add_style(tarn::StatePtr(style)));
        }
    }
    void take_on_style(int number)
    {
        const tarn::RecordingOff off(m_document.journal());
        m_core.set_scene_style(m_styles[std::size_t(number)]);
    }

private:
    static constexpr std::size_t in_dialog = 50;

    void add_dialog(const std::vector<QPoint>& all, std::size_t from, std::size_t to)
    {
        QRect area;
        for (std::size_t i = from; i < to; ++i)
            area |= QRect(all[i], button_size);
        CDXUTDialog* dialog = m_core.create_dialog(area);
        for (const char* part : {"caption_shown", "frame_shown"})
            (void)dialog->set_property(*dialog->fields().find(part), false);
        for (std::size_t i = from; i < to; ++i) {
            const QRectF place(all[i] - area.topLeft(), button_size);
            auto* button = static_cast<CDXUTButton*>(m_core.create_control(DXUT_CONTROL_BUTTON, dialog, place));
            button->SetText(label(int(i)));
            m_buttons.push_back(button);
        }
    }

    tarn::Document m_document;
    CGuiCore m_core;
    tarn::GuiPainter m_painter;
    Canvas m_canvas;
    std::vector<CDXUTButton*> m_buttons;
    std::vector<CGuiStyle*> m_styles;
};

void draw_tarn(benchmark::State& state)
{
    Interface interface(int(state.range(0)));
    for (auto _ : state)
        interface.draw(QRectF(QPointF(), screen));
}

void change_text_tarn(benchmark::State& state)
{
    Interface interface(int(state.range(0)));
    CDXUTButton* button = interface.buttons()[interface.buttons().size() / 2];
    int number = 0;
    for (auto _ : state) {
        button->SetText(label(++number % 1000));
        interface.draw_damage();
    }
}

void change_place_tarn(benchmark::State& state)
{
    Interface interface(int(state.range(0)));
    CDXUTButton* button = interface.buttons()[interface.buttons().size() / 2];
    const auto home = button->rect().topLeft();
    int number = 0;
    for (auto _ : state) {
        button->SetLocation(float(home.x()) + float(++number % 5), float(home.y()));
        interface.draw_damage();
    }
}

/// Every button takes on a style with an atlas of its own, and is drawn.
void take_on_style_tarn(benchmark::State& state)
{
    Interface interface(int(state.range(0)));
    interface.add_styles();
    int number = 0;
    for (auto _ : state) {
        interface.take_on_style(++number % 2);
        interface.draw_damage();
    }
}

/// The skin's button picture, at one pixel for one of the screen.
const QPixmap& button_pixmap()
{
    static const QPixmap pixmap = [] {
        const QRect cell = tarn::sheet_picture(tarn::Element::Button, tarn::VisualState::Normal).rect;
        constexpr int units = tarn::atlas_pixels_per_unit;
        const QImage picture = tarn::default_sheet().copy({cell.topLeft() * units, cell.size() * units});
        return QPixmap::fromImage(picture.scaled(cell.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    }();
    return pixmap;
}

constexpr QMargins edges(14, 14, 14, 14);

class ButtonItem : public QGraphicsItem {
public:
    explicit ButtonItem(const QString& text) : m_text(text) {}

    QRectF boundingRect() const override { return QRectF(QPointF(), button_size); }
    void paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) override
    {
        static const QFont font = tarn::interface_font(tarn::default_font_size, false);
        const QRect area(QPoint(), button_size);
        qDrawBorderPixmap(painter, area, edges, button_pixmap());
        painter->setFont(font);
        painter->setPen(Qt::white);
        painter->drawText(area, Qt::AlignCenter, m_text);
    }

private:
    QString m_text;
};

void draw_graphics_view(benchmark::State& state)
{
    QGraphicsScene scene(QRectF(QPointF(), screen));
    scene.setItemIndexMethod(QGraphicsScene::NoIndex); // All items are drawn each time: an index would only cost.
    scene.setBackgroundBrush(background);
    int number = 0;
    for (const QPoint place : places(int(state.range(0)))) {
        auto* item = new ButtonItem(label(number++));
        item->setPos(place);
        scene.addItem(item);
    }
    QGraphicsView view(&scene);
    view.setFrameStyle(QFrame::NoFrame);
    view.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view.setOptimizationFlags(QGraphicsView::DontSavePainterState | QGraphicsView::DontAdjustForAntialiasing);
    view.setViewportUpdateMode(QGraphicsView::FullViewportUpdate);
    view.resize(screen);
    Canvas canvas;
    view.viewport()->render(&canvas.image);
    for (auto _ : state)
        view.viewport()->render(&canvas.image);
}

void draw_pieces(benchmark::State& state)
{
    const auto all = places(int(state.range(0)));
    QImage picture(button_size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    {
        QPainter painter(&picture);
        qDrawBorderPixmap(&painter, picture.rect(), edges, button_pixmap());
    }
    const QFont font = tarn::interface_font(tarn::default_font_size, false);
    std::vector<QStaticText> texts;
    std::vector<QPoint> text_places;
    for (int i = 0; i < int(all.size()); ++i) {
        QStaticText text(label(i));
        text.setTextFormat(Qt::PlainText);
        text.setPerformanceHint(QStaticText::AggressiveCaching);
        text.prepare({}, font);
        const QSizeF spare = (QSizeF(button_size) - text.size()) / 2;
        text_places.push_back(all[std::size_t(i)] + QPoint(qRound(spare.width()), qRound(spare.height())));
        texts.push_back(std::move(text));
    }
    Canvas canvas;
    const auto draw = [&] {
        QPainter painter(&canvas.image);
        painter.fillRect(canvas.image.rect(), background);
        painter.setFont(font);
        painter.setPen(Qt::white);
        for (std::size_t i = 0; i < all.size(); ++i) {
            painter.drawImage(all[i], picture);
            painter.drawStaticText(text_places[i], texts[i]);
        }
    };
    draw();
    for (auto _ : state)
        draw();
}

using bench::growing;

BENCHMARK(draw_tarn)->Name("draw/tarn")->Apply(growing);
BENCHMARK(take_on_style_tarn)->Name("take_on_style/tarn")->Apply(growing);
BENCHMARK(draw_tarn)->Name("take_on_style/full")->Apply(growing);
BENCHMARK(draw_graphics_view)->Name("draw/QGraphicsView")->Apply(growing);
BENCHMARK(draw_pieces)->Name("draw/pieces")->Apply(growing);
BENCHMARK(change_text_tarn)->Name("draw_changed_text/tarn")->Apply(growing);
BENCHMARK(draw_tarn)->Name("draw_changed_text/full")->Apply(growing);
BENCHMARK(change_place_tarn)->Name("draw_changed_place/tarn")->Apply(growing);
BENCHMARK(draw_tarn)->Name("draw_changed_place/full")->Apply(growing);

} // namespace
