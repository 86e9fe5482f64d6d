#include "dxut_media.h"

#include "core/language.h"
#include "gui_core.h"
#include "swf_header.h"

#include <algorithm>
#include <cmath>

using tarn::lang;
using tarn::MapState;

namespace {

constexpr double button_side = 24; ///< pixels
constexpr double least_scale = 0.0625;
constexpr double largest_scale = 100;

} // namespace

QString CDXUTFlash::description() const
{
    const auto& s = state<tarn::FlashState>();
    if (s.source.isEmpty())
        return lang(u"没有影片", u"No movie");
    if (!s.source_local)
        return s.source;
    const auto& files = core().document().files();
    const auto movie = files.find(movie_entry(s.source));
    if (movie == files.end())
        return s.source + QLatin1Char('\n') + lang(u"文件包中没有该影片", u"the movie is not in the package");
    const auto header = tarn::read_swf_header(*movie);
    if (!header)
        return s.source + QLatin1Char('\n') + header.status().message();
    const tarn::SwfHeader& h = header.value();
    return lang(u"%1\n%2 × %3 像素\n%4 帧，每秒 %5 帧\n版本 %6，%7",
                u"%1\n%2 × %3 pixels\n%4 frames, %5 a second\nversion %6, %7")
        .arg(s.source)
        .arg(h.size.width())
        .arg(h.size.height())
        .arg(h.frame_count)
        .arg(h.frame_rate)
        .arg(h.version)
        .arg(h.compressed ? lang(u"已压缩", u"compressed") : lang(u"未压缩", u"not compressed"));
}

QRectF CDXUTMap::button_area(Zoom zoom) const
{
    const auto& s = state<MapState>();
    const QPointF corner = zoom == Zoom::In ? QPointF(s.zoom_in_x, s.zoom_in_y) : QPointF(s.zoom_out_x, s.zoom_out_y);
    return {corner, QSizeF(button_side, button_side)};
}

tarn::VisualState CDXUTMap::button_state(Zoom zoom) const
{
    using enum tarn::VisualState;
    const tarn::VisualState look = visual_state();
    return look == Pressed && zoom != m_pressed ? Normal : look == Focused || look == Hover ? Normal : look;
}

double CDXUTMap::scale() const
{
    return std::clamp(double(state<MapState>().default_scale) * m_zoom, least_scale, largest_scale);
}

void CDXUTMap::zoom_by(double steps)
{
    const double usual = double(state<MapState>().default_scale);
    const double wanted = scale() * std::pow(double(state<MapState>().zoom_rate), steps);
    m_zoom = std::clamp(wanted, least_scale, largest_scale) / usual;
    redraw();
}

void CDXUTMap::mouse_pressed(QPointF inside)
{
    m_pressed = button_area(Zoom::In).contains(inside) ? Zoom::In
        : button_area(Zoom::Out).contains(inside)      ? Zoom::Out
                                                       : Zoom::None;
    if (m_pressed != Zoom::None)
        zoom_by(m_pressed == Zoom::In ? 1 : -1);
}

bool CDXUTMap::wheel_turned(double steps)
{
    zoom_by(steps);
    return true;
}

bool CDXUTMap::key_pressed(int key, Qt::KeyboardModifiers)
{
    const bool in = key == Qt::Key_Plus || key == Qt::Key_Equal;
    if (!in && key != Qt::Key_Minus)
        return false;
    zoom_by(in ? 1 : -1);
    return true;
}

void CDXUTMap::reset_run_state()
{
    m_zoom = 1;
    m_pressed = Zoom::None;
    state_changed();
}
