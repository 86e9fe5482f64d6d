#include "font_sample.h"

#include "gui_core/control_style.h"
#include "gui_core/style_look.h"
#include "gui_draw/draw_functions.h"

#include <QPainter>

#include <algorithm>

using tarn::VisualState;

namespace {

constexpr int largest_line = 64; ///< pixels; larger letters are cut
constexpr double line_spacing = 1.6;
constexpr int largest_state_font = 14; ///< pixels
constexpr int state_line = 24;         ///< pixels
constexpr int margin = 6;              ///< pixels
constexpr int usual_width = 220;       ///< pixels

constexpr QRgb dark_ground = 0xff20262a;
constexpr QRgb light_ground = 0xffe8ecef;
constexpr int bright = 95; ///< of 255, from where on letters stand out against the dark

QColor ground_for(quint32 letters)
{
    return QColor::fromRgb(qGray(letters) >= bright ? dark_ground : light_ground);
}

int line_height(const tarn::TextLook& look)
{
    return std::min(largest_line, int(look.font_size * line_spacing));
}

} // namespace

CFontSample::CFontSample(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CFontSample::show_owner(const CGuiCore* core, int owner)
{
    m_core = core;
    m_owner = owner;
    updateGeometry();
    update();
}

QSize CFontSample::sizeHint() const
{
    const int line = m_core ? line_height(tarn::style_text_look(m_core->look(), m_owner)) : state_line;
    return {usual_width, 2 * line + margin + 2 * state_line};
}

QSize CFontSample::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void CFontSample::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    if (!m_core)
        return;
    tarn::TextLook look = tarn::style_text_look(m_core->look(), m_owner);
    look.vertical_align = 1;
    const double line = line_height(look);
    const auto draw = [&](const QRectF& area, const QStringList& texts, VisualState state) {
        look.color = m_core->look().text_color(m_owner, state);
        painter.fillRect(area, ground_for(look.color));
        QRectF place = area.adjusted(margin, 0, -margin, 0);
        place.setHeight(area.height() / double(texts.size()));
        for (const QString& text : texts) {
            tarn::TextCache().draw(painter, place, text, look);
            place.translate(0, place.height());
        }
    };
    draw({0, 0, double(width()), 2 * line + margin},
         {QStringLiteral("永和九年 0123"), QStringLiteral("Quick Fox 0123")}, VisualState::Normal);
    look.font_size = std::min(look.font_size, largest_state_font);
    for (int state = 1; state < tarn::style_state_count; ++state) {
        const int place = state - 1;
        draw({place % 2 * width() / 2.0, 2 * line + margin + place / 2 * state_line, width() / 2.0, state_line},
             {tarn::visual_state_caption(VisualState(state))}, VisualState(state));
    }
}
