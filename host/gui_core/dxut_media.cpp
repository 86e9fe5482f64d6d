#include "dxut_media.h"

#include "core/language.h"
#include "gui_core.h"
#include "swf_header.h"

#include <algorithm>
#include <cmath>
#include <utility>

using tarn::lang;
using tarn::MapState;

namespace {

constexpr double button_side = 24; ///< pixels
constexpr double least_scale = 0.0625;
constexpr double largest_scale = 100;
constexpr double least_range = 0.01;       ///< metres
constexpr double spot_reach = 8;           ///< pixels about a spot that still hit it
constexpr char16_t first_chinese = 0x2e80; ///< letters from here on need a movie that takes them

/// Keys that type nothing, as pages of the web name them.
struct MovieKey {
    int key;
    const char* name;
};
constexpr MovieKey movie_keys[] = {
    {Qt::Key_Left, "ArrowLeft"},      {Qt::Key_Right, "ArrowRight"},
    {Qt::Key_Up, "ArrowUp"},          {Qt::Key_Down, "ArrowDown"},
    {Qt::Key_Return, "Enter"},        {Qt::Key_Enter, "Enter"},
    {Qt::Key_Backspace, "Backspace"}, {Qt::Key_Delete, "Delete"},
    {Qt::Key_Home, "Home"},           {Qt::Key_End, "End"},
    {Qt::Key_PageUp, "PageUp"},       {Qt::Key_PageDown, "PageDown"},
    {Qt::Key_Escape, "Escape"},
};

/// Where the key of a letter or digit is; empty for others.
QString code_of(QChar letter)
{
    const QChar upper = letter.toUpper();
    if (upper >= QLatin1Char('A') && upper <= QLatin1Char('Z'))
        return QLatin1String("Key") + upper;
    if (letter >= QLatin1Char('0') && letter <= QLatin1Char('9'))
        return QLatin1String("Digit") + letter;
    return letter == QLatin1Char(' ') ? QStringLiteral("Space") : QString();
}

} // namespace

QString CDXUTFlash::description() const
{
    QStringList lines{header_lines()};
    const QString failure = core().movies() ? core().movies()->failure(*this) : QString();
    if (!failure.isEmpty()) // An address may fill the control.
        lines.insert(state<tarn::FlashState>().source_local ? 1 : 0, failure);
    return lines.join(QLatin1Char('\n'));
}

QByteArray CDXUTFlash::file() const
{
    const auto& s = state<tarn::FlashState>();
    return s.source_local ? core().document().files().value(movie_entry(s.source)) : QByteArray();
}

QString CDXUTFlash::header_lines() const
{
    const auto& s = state<tarn::FlashState>();
    if (s.source.isEmpty())
        return lang(u"没有影片", u"No movie");
    if (!s.source_local)
        return s.source;
    const QByteArray movie = file();
    if (movie.isNull())
        return s.source + QLatin1Char('\n') + lang(u"文件包中没有该影片", u"the movie is not in the package");
    const auto header = tarn::read_swf_header(movie);
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

bool CDXUTFlash::is_played() const
{
    return core().movies() && core().movies()->is_played(*this);
}

bool CDXUTFlash::is_interactive() const
{
    const auto& s = state<tarn::FlashState>();
    return (s.mouse_input || s.keyboard_input) && is_played();
}

void CDXUTFlash::tell_mouse(tarn::MovieLink::Mouse what, QPointF inside)
{
    if (state<tarn::FlashState>().mouse_input && is_played())
        core().movies()->mouse(*this, what, inside);
}

void CDXUTFlash::mouse_pressed(QPointF inside)
{
    tell_mouse(tarn::MovieLink::Mouse::Press, inside);
}

void CDXUTFlash::mouse_dragged(QPointF inside)
{
    if (!m_under_mouse) // Otherwise mouse_over() tells.
        tell_mouse(tarn::MovieLink::Mouse::Move, inside);
}

void CDXUTFlash::mouse_released(QPointF inside)
{
    tell_mouse(tarn::MovieLink::Mouse::Release, inside);
}

void CDXUTFlash::mouse_over(QPointF inside)
{
    if (!std::exchange(m_under_mouse, true))
        tell_mouse(tarn::MovieLink::Mouse::Enter, inside);
    tell_mouse(tarn::MovieLink::Mouse::Move, inside);
}

void CDXUTFlash::mouse_left()
{
    m_under_mouse = false;
    tell_mouse(tarn::MovieLink::Mouse::Leave, {});
}

bool CDXUTFlash::wheel_turned(double steps)
{
    if (!state<tarn::FlashState>().mouse_input || !is_played())
        return false;
    core().movies()->wheel(*this, steps);
    return true;
}

bool CDXUTFlash::key_pressed(int key, Qt::KeyboardModifiers)
{
    if (!state<tarn::FlashState>().keyboard_input || !is_played())
        return false;
    m_last_key = key;
    const auto named = std::ranges::find(movie_keys, key, &MovieKey::key);
    if (named == std::end(movie_keys))
        return key == Qt::Key_Space; // comes as a text
    press_key(key, {QLatin1String(named->name), QLatin1String(named->name)});
    return true;
}

void CDXUTFlash::press_key(int key, const HeldKey& names)
{
    core().movies()->key(*this, true, names.key, names.code);
    if (key != 0)
        m_held_keys.insert(key, names);
    else
        core().movies()->key(*this, false, names.key, names.code);
}

void CDXUTFlash::key_released(int key)
{
    const auto held = m_held_keys.constFind(key);
    if (held == m_held_keys.cend())
        return;
    if (is_played())
        core().movies()->key(*this, false, held->key, held->code);
    m_held_keys.erase(held);
}

void CDXUTFlash::release_keys()
{
    for (const int key : m_held_keys.keys())
        key_released(key);
}

void CDXUTFlash::reset_run_state()
{
    m_under_mouse = false;
    m_last_key = 0;
    m_held_keys.clear();
}

bool CDXUTFlash::text_typed(const QString& text, const QString&)
{
    const auto& s = state<tarn::FlashState>();
    if (!s.keyboard_input || !is_played())
        return false;
    for (const QChar letter : text)
        if (s.chinese_input || letter.unicode() < first_chinese)
            press_key(std::exchange(m_last_key, 0), {letter, code_of(letter)});
    return true;
}

/// Below the movie: only the movie knows where it writes.
QRectF CDXUTFlash::caret_rect() const
{
    const auto& s = state<tarn::FlashState>();
    return s.keyboard_input && s.chinese_input && is_played() ? QRectF(rect().bottomLeft(), QSizeF(1, 1)) : QRectF();
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

QRectF CDXUTMap::range() const
{
    const auto& s = state<MapState>();
    const QRectF range = QRectF(QPointF(double(s.range_left), double(s.range_bottom)),
                                QPointF(double(s.range_right), double(s.range_top)))
                             .normalized();
    return {range.topLeft(), range.size().expandedTo({least_range, least_range})};
}

QRectF CDXUTMap::shown_range() const
{
    const QRectF all = range();
    const auto* world = core().world();
    const QPointF middle = world && state<MapState>().lock_center ? world->looked_at() : all.center();
    const QSizeF size = all.size() / scale();
    return {middle - QPointF(size.width() / 2, size.height() / 2), size};
}

QPointF CDXUTMap::on_map(QPointF metres, QSizeF size) const
{
    const QRectF shown = shown_range();
    if (shown.isEmpty())
        return {};
    return {(metres.x() - shown.x()) / shown.width() * size.width(),
            (1 - (metres.y() - shown.y()) / shown.height()) * size.height()};
}

std::vector<tarn::MapSpot> CDXUTMap::shown_spots() const
{
    const QRectF shown = shown_range();
    std::vector<tarn::MapSpot> spots;
    if (const auto* world = core().world())
        spots = world->spots();
    std::erase_if(spots, [&](const tarn::MapSpot& spot) { return !shown.contains(spot.place); });
    return spots;
}

void CDXUTMap::tell_spot(GuiEventType event, const QString& name)
{
    m_last_spot = name;
    core().raise(event, *this);
}

void CDXUTMap::follow_spots()
{
    QMap<quint32, QString> seen;
    for (const tarn::MapSpot& spot : shown_spots())
        seen.insert(spot.object, spot.name);
    const QMap<quint32, QString> before = std::exchange(m_seen_spots, seen);
    for (auto spot = before.begin(); spot != before.end(); ++spot)
        if (!seen.contains(spot.key()))
            tell_spot(EVENT_MAP_HOT_SPOT_HIDDEN, spot.value());
    for (auto spot = seen.begin(); spot != seen.end(); ++spot)
        if (!before.contains(spot.key()))
            tell_spot(EVENT_MAP_HOT_SPOT_SHOWN, spot.value());
}

bool CDXUTMap::look_at(QPointF inside)
{
    auto* world = core().world();
    const QRectF shown = shown_range();
    if (!world || !state<MapState>().eagle_eye || rect().isEmpty())
        return false;
    const QPointF share(inside.x() / rect().width(), 1 - inside.y() / rect().height());
    world->look_at({shown.x() + share.x() * shown.width(), shown.y() + share.y() * shown.height()},
                   state<MapState>().camera_model.id);
    return true;
}

void CDXUTMap::mouse_pressed(QPointF inside)
{
    m_pressed = button_area(Zoom::In).contains(inside) ? Zoom::In
        : button_area(Zoom::Out).contains(inside)      ? Zoom::Out
                                                       : Zoom::None;
    m_looks = false;
    if (m_pressed != Zoom::None)
        return zoom_by(m_pressed == Zoom::In ? 1 : -1);
    for (const tarn::MapSpot& spot : shown_spots())
        if ((on_map(spot.place, rect().size()) - inside).manhattanLength() <= spot_reach)
            return tell_spot(EVENT_MAP_HINT_CLICKED, spot.name);
    m_looks = look_at(inside);
}

void CDXUTMap::mouse_dragged(QPointF inside)
{
    // Where a map that moves under the middle is held, it would run away under the mouse.
    if (m_looks && !state<MapState>().lock_center)
        look_at(inside);
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
    m_seen_spots.clear();
    m_last_spot.clear();
    state_changed();
}
