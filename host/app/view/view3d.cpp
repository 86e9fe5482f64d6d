#include "view3d.h"

#include "camera_look.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "gl_surface.h"
#include "inline_editor.h"
#include "input_watch.h"
#include "plain_surface.h"
#include "view_marks.h"

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

using tarn::MouseEvent;

namespace {

constexpr auto refresh_interval = std::chrono::milliseconds(16);
/// Where the mouse is for the tool while it is not over the view.
constexpr QPointF nowhere(-1e6, -1e6);
constexpr double wheel_step = 120; ///< eighths of a degree, as mice count
constexpr double wheel_steps = 4;  ///< that double what is shown
constexpr double click_reach = 3;  ///< pixels that the mouse may move in a click of the right button

double wheel_factor(double steps)
{
    return std::exp2(steps / wheel_steps);
}

} // namespace

CView3D::CView3D(CBaseWorld& world, QWidget* parent)
    : QWidget(parent), m_world(world), m_uses_gl(tarn::GlSurface::available())
{
    if (m_uses_gl)
        m_surface = new tarn::GlSurface(world, m_overlay, this);
    else
        m_surface = new tarn::PlainSurface(world, m_overlay, this);
    // The view hears the mouse itself, also beside a surface that is smaller than the window.
    m_surface->setAttribute(Qt::WA_TransparentForMouseEvents);
    m_marks = new tarn::ViewMarks(*this);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_InputMethodEnabled);
    setMinimumSize(160, 120);
    setAccessibleName(tarn::lang(u"三维视图", u"3D view"));
    m_refresh.setInterval(refresh_interval);
    m_refresh.setTimerType(Qt::PreciseTimer);
    connect(&m_refresh, &QTimer::timeout, this, &CView3D::schedule_redraw);
    if (m_uses_gl)
        return;
    // Later, when somebody listens.
    const auto tell = [this] {
        Q_EMIT gl_unavailable(tarn::lang(u"无法使用 OpenGL 3.3：三维世界以简化方式显示。",
                                         u"OpenGL 3.3 is not available: the 3D world is shown in a simple way."));
    };
    QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
}

CView3D::~CView3D()
{
    if (m_text)
        m_text->finish(false);
    // Before the overlay's picture, which it refers to.
    delete m_surface;
}

void CView3D::set_fixed_view_size(QSize size)
{
    m_fixed_size = size;
    place_surface();
}

void CView3D::set_screen_size(QSize size)
{
    if (size == m_overlay.screen())
        return;
    finish_text();
    m_zoom.reset();
    m_overlay.set_screen(size);
    place_surface();
    if (auto* overlay = m_world.overlay())
        overlay->set_screen_size(screen_size());
    schedule_redraw();
}

QSize CView3D::screen_size() const
{
    return m_overlay.screen().isEmpty() ? room() : m_overlay.screen();
}

QSize CView3D::room() const
{
    return m_fixed_size.isEmpty() ? size() : m_fixed_size;
}

QSize CView3D::fit_size() const
{
    const QSize screen = screen_size();
    return screen.width() <= room().width() && screen.height() <= room().height()
        ? screen
        : screen.scaled(room(), Qt::KeepAspectRatio).expandedTo({1, 1});
}

QRect CView3D::surface_rect() const
{
    return is_zoomed() ? whole_rect() & room_rect() : whole_rect();
}

void CView3D::place_surface()
{
    const QRect place = surface_rect();
    std::optional<tarn::ScreenPlacing> zoom;
    if (is_zoomed())
        zoom = {*m_zoom, QPointF(whole_rect().topLeft() - place.topLeft())};
    if (m_surface->geometry() != place || m_overlay.zoom() != zoom) {
        finish_text();
        m_overlay.set_zoom(zoom, screen_size());
        m_surface->setGeometry(place);
        if (auto* overlay = m_world.overlay())
            overlay->set_screen_size(screen_size());
        schedule_redraw();
    }
    mark(); // Of the scale that is in force now.
}

/// Whether the key comes to the view even if it is a shortcut of the program.
bool CView3D::keeps_key(const QKeyEvent& event) const
{
    // Alt in a drag is the drag's; the menu bar would take the keyboard when it is let go.
    if (m_held == Qt::LeftButton && event.key() == Qt::Key_Alt)
        return true;
    const bool is_programs = std::any_of(
        m_program_actions.begin(), m_program_actions.end(),
        [&event](const QAction* action) { return action->shortcuts().contains(event.keyCombination()); });
    return m_world.mouse_tool() && m_world.mouse_tool()->takes_all_keys() && !is_programs;
}

bool CView3D::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride && keeps_key(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
    }
    return QWidget::event(event);
}

void CView3D::resizeEvent(QResizeEvent*)
{
    place_surface();
}

void CView3D::schedule_redraw()
{
    m_surface->update();
}

void CView3D::set_always_refresh(bool on)
{
    on ? m_refresh.start() : m_refresh.stop();
}

QImage CView3D::grab_view()
{
    // An OpenGL surface without a window knows neither its size nor its pixels.
    if (!isVisible())
        return render(m_world, screen_size(), devicePixelRatioF());
    QPixmap picture = m_surface->grab();
    if (m_text)
        m_text->field().render(&picture, m_text->field().pos() - surface_rect().topLeft());
    return picture.toImage().convertToFormat(QImage::Format_RGB32);
}

QImage CView3D::render(CBaseWorld& world, QSize size, double dpr)
{
    const QSize pixels = tarn::device_size(size, dpr);
    if (pixels.isEmpty())
        return {};
    tarn::OverlayBuffer objects;
    objects.paint_all(world.objects_layer(), size, dpr);
    tarn::OverlayBuffer overlay;
    overlay.paint_all(world.overlay(), size, dpr);
    QImage picture = tarn::WorldPicture().image(world, tarn::camera_render_view(world, size, dpr, {}, size));
    picture.setDevicePixelRatio(dpr);
    QPainter painter(&picture);
    tarn::paint_over(painter, {objects.image(), overlay.image()}, world, {});
    return picture;
}

QPointF CView3D::to_screen(QPointF place) const
{
    return placing().to_screen(place - QPointF(surface_rect().topLeft()));
}

QRectF CView3D::from_screen(const QRectF& area) const
{
    return placing().to_surface(area).translated(surface_rect().topLeft());
}

bool CView3D::on_screen(QPointF place) const
{
    return QRectF(QPointF(), QSizeF(screen_size())).contains(place);
}

void CView3D::show_cursor(Qt::CursorShape shape)
{
    if (cursor().shape() != shape)
        setCursor(shape);
}

void CView3D::redraw_if(bool taken)
{
    if (m_overlay.has_damage(m_world.overlay()) || taken)
        schedule_redraw();
}

bool CView3D::send_mouse(const MouseEvent& event)
{
    if (m_watch)
        m_watch->input_comes(event.kind == MouseEvent::Kind::Move, event.place);
    auto* tool = m_world.mouse_tool();
    m_place = event.place;
    MouseEvent scaled = event;
    scaled.scale = scale();
    scaled.corner = placing().to_screen({});
    const bool taken = tool && tool->mouse(scaled);
    // The event may have put another tool in its place.
    tool = m_world.mouse_tool();
    show_cursor(tool && (m_held == Qt::LeftButton || on_screen(event.place)) ? tool->cursor() : Qt::ArrowCursor);
    redraw_if(taken);
    if (m_watch)
        m_watch->mouse_came(event);
    return taken;
}

bool CView3D::send_key(int key, Qt::KeyboardModifiers modifiers)
{
    if (m_watch)
        m_watch->input_comes(false, m_place);
    auto* tool = m_world.mouse_tool();
    const bool taken = tool && tool->key(key, modifiers);
    redraw_if(taken);
    if (m_watch)
        m_watch->key_came(key, modifiers);
    return taken;
}

bool CView3D::send_text(const QString& text, const QString& preedit)
{
    if (m_watch)
        m_watch->input_comes(false, m_place);
    auto* tool = m_world.mouse_tool();
    const bool taken = tool && tool->text(text, preedit);
    redraw_if(taken);
    if (m_watch)
        m_watch->text_came(text);
    updateMicroFocus();
    return taken;
}

void CView3D::send_wheel(QPointF place, double steps)
{
    if (m_watch)
        m_watch->input_comes(false, place);
    auto* tool = m_world.mouse_tool();
    const bool taken = tool && tool->wheel(place, steps);
    if (!taken)
        m_world.camera().zoom(steps);
    taken ? redraw_if(true) : schedule_redraw();
    if (m_watch)
        m_watch->wheel_came(place, steps);
}

void CView3D::camera_drag(Qt::MouseButton button, QPointF from, QPointF to)
{
    if (m_watch)
        m_watch->input_comes(true, m_place);
    if (button == Qt::MiddleButton && is_zoomed())
        pan_screen(to - from);
    else if (button == Qt::MiddleButton)
        m_world.camera().pan(to - from, surface_size().height());
    else if (button == Qt::RightButton)
        m_world.camera().orbit(to - from);
    else
        return;
    schedule_redraw();
    if (m_watch)
        m_watch->camera_came(button, to - from);
}

void CView3D::end_lost_press(const QMouseEvent& event)
{
    // A window that a press opened keeps the release to itself.
    if (m_held == Qt::NoButton || event.buttons() & m_held)
        return;
    m_drags_camera = false;
    if (std::exchange(m_held, Qt::NoButton) == Qt::LeftButton)
        send_mouse({MouseEvent::Kind::Release, to_screen(event.position()), Qt::LeftButton, event.modifiers()});
}

void CView3D::press(QMouseEvent* event, MouseEvent::Kind kind)
{
    end_lost_press(*event);
    finish_text();
    const QPointF place = to_screen(event->position());
    const bool known = event->button() & (Qt::LeftButton | Qt::MiddleButton | Qt::RightButton);
    const auto* tool = m_world.mouse_tool();
    if (m_held != Qt::NoButton || !known || !on_screen(place))
        return;
    m_held = event->button();
    m_drags_camera = m_held != Qt::LeftButton && !(tool && tool->covers(place));
    m_camera_place = m_press_place = event->position();
    if (m_held == Qt::LeftButton)
        send_mouse({kind, place, m_held, event->modifiers()});
    else if (m_drags_camera)
        show_cursor(Qt::ClosedHandCursor);
}

void CView3D::mousePressEvent(QMouseEvent* event)
{
    press(event, MouseEvent::Kind::Press);
}

void CView3D::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || m_held != Qt::NoButton || !edit_text_at(to_screen(event->position())))
        press(event, MouseEvent::Kind::DoubleClick);
}

void CView3D::mouseMoveEvent(QMouseEvent* event)
{
    end_lost_press(*event);
    if (m_drags_camera)
        camera_drag(m_held, std::exchange(m_camera_place, event->position()), event->position());
    else
        send_mouse({MouseEvent::Kind::Move, to_screen(event->position()), Qt::NoButton, event->modifiers()});
}

void CView3D::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != m_held)
        return;
    m_held = Qt::NoButton;
    m_drags_camera = false;
    const QPointF place = to_screen(event->position());
    const QPointF way = event->position() - m_press_place;
    const bool clicked = std::max(std::abs(way.x()), std::abs(way.y())) < click_reach;
    if (event->button() == Qt::LeftButton)
        send_mouse({MouseEvent::Kind::Release, place, Qt::LeftButton, event->modifiers()});
    else // the tool's cursor is back, for what is now under the mouse
        send_mouse({MouseEvent::Kind::Move, place, Qt::NoButton, event->modifiers()});
    if (event->button() == Qt::RightButton && clicked
        && !send_mouse({MouseEvent::Kind::Release, place, Qt::RightButton, event->modifiers()}))
        pop_context_menu(place);
}

void CView3D::leaveEvent(QEvent*)
{
    // A drag goes on beside the view, and when another program's window opens over it.
    if (m_held == Qt::NoButton)
        send_mouse({MouseEvent::Kind::Move, nowhere, Qt::NoButton, Qt::NoModifier});
}

void CView3D::wheelEvent(QWheelEvent* event)
{
    const double steps = event->angleDelta().y() / wheel_step;
    // An interface that runs has the wheel to itself.
    const bool runs = m_world.mouse_tool() && m_world.mouse_tool()->takes_all_keys();
    if (event->modifiers().testFlag(Qt::ControlModifier) && !runs)
        zoom_to(zoom() * wheel_factor(steps), event->position());
    else
        send_wheel(to_screen(event->position()), steps);
}

void CView3D::keyPressEvent(QKeyEvent* event)
{
    if (m_text) { // The field had the key first and did not want it.
        QWidget::keyPressEvent(event);
        return;
    }
    drag_with_changed_modifiers(*event, true);
    bool taken = send_key(event->key(), event->modifiers());
    const QString text = event->text();
    const bool types = !text.isEmpty() && text.front().isPrint()
        && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier));
    if (types)
        taken |= send_text(text, {});
    if (!taken && !run_command(*event))
        QWidget::keyPressEvent(event);
}

void CView3D::keyReleaseEvent(QKeyEvent* event)
{
    drag_with_changed_modifiers(*event, false);
    if (auto* tool = m_world.mouse_tool(); tool && !event->isAutoRepeat())
        tool->key_released(event->key());
    QWidget::keyReleaseEvent(event);
}

/// A drag follows Shift, Ctrl and Alt also while the mouse rests.
void CView3D::drag_with_changed_modifiers(const QKeyEvent& event, bool pressed)
{
    const Qt::KeyboardModifier changed = event.key() == Qt::Key_Shift ? Qt::ShiftModifier
        : event.key() == Qt::Key_Control                              ? Qt::ControlModifier
        : event.key() == Qt::Key_Alt                                  ? Qt::AltModifier
                                                                      : Qt::NoModifier;
    if (changed == Qt::NoModifier || m_held != Qt::LeftButton)
        return;
    Qt::KeyboardModifiers modifiers = event.modifiers();
    modifiers.setFlag(changed, pressed);
    send_mouse({MouseEvent::Kind::Move, m_place, Qt::NoButton, modifiers});
}

void CView3D::inputMethodEvent(QInputMethodEvent* event)
{
    send_text(event->commitString(), event->preeditString());
    event->accept();
}

QVariant CView3D::inputMethodQuery(Qt::InputMethodQuery query) const
{
    const auto* tool = m_world.mouse_tool();
    const QRectF caret = tool ? tool->text_caret() : QRectF();
    if (query == Qt::ImEnabled)
        return !caret.isEmpty();
    if (query == Qt::ImCursorRectangle)
        return from_screen(caret);
    return QWidget::inputMethodQuery(query);
}
