#pragma once

#include "overlay_buffer.h"

#include "engine/mouse_tool.h"

#include <QKeySequence>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <functional>

class CBaseWorld;
class QAction;

namespace tarn {
class InlineEditor;
class InputWatch;
class SceneEditor;
struct EditCommand;
class ViewMarks;
} // namespace tarn

/// The view of the 3D world with the interface over it. Draws with OpenGL where it can, and without it elsewhere.
///
/// All places are pixels of the interface's screen. It has the size of the drawing surface, or one of its own, which the
/// surface then shows reduced where it has no room for it. The author can zoom it, and pan what is larger than the view.
class CView3D : public QWidget {
    Q_OBJECT

public:
    explicit CView3D(CBaseWorld& world, QWidget* parent = nullptr);
    ~CView3D() override;

    /// What the view's context menu, its keys and a double-click on a text edit; null for nothing.
    void set_editor(tarn::SceneEditor* editor) { m_editor = editor; }
    /// The keys that a command has now; null: its usual ones.
    std::function<QList<QKeySequence>(const tarn::EditCommand&)> keys_of;
    /// The keys of these actions stay the program's while the interface that runs has all others.
    void set_program_actions(const QList<QAction*>& actions) { m_program_actions = actions; }
    /// Who hears what goes to the interface; null for nobody.
    void set_input_watch(tarn::InputWatch* watch) { m_watch = watch; }
    /// Stores the text that is being edited in the view, if any, and closes its field.
    void finish_text();

    /// Makes the drawing surface exactly this large, whatever room the window gives; empty: it fills the view.
    void set_fixed_view_size(QSize size);
    /// Lays the interface out on a screen of this size, as on another device; empty: on one as large as the view.
    void set_screen_size(QSize size);
    QSize screen_size() const;
    bool has_own_screen() const { return !m_overlay.screen().isEmpty(); }
    QSize surface_size() const { return surface_rect().size(); }
    /// The place of the screen that a place of this widget shows.
    QPointF to_screen(QPointF place) const;
    /// Where the drawing surface lies in this widget; it may be larger than the widget.
    QRect surface_rect() const;

    static constexpr double least_zoom = 0.25;
    static constexpr double largest_zoom = 8;
    /// Pixels of the view that show one of the screen.
    double zoom() const { return scale(); }
    /// Whether the screen is shown otherwise than as a whole, as large as there is room for it.
    bool is_zoomed() const { return m_zoom.has_value(); }
    /// Shows the screen in that scale, held to the limits; what lies at `about`, a place of the widget, stays there.
    void zoom_to(double scale, QPointF about);
    /// As from the middle of the view; one step doubles or halves in two.
    void zoom_by(double steps);
    void zoom_to_fit();
    /// As large as there is room for that area of the screen; nothing happens for an empty one.
    void zoom_to_area(const QRectF& on_screen);
    /// What is shown runs: it is marked, and shown as a whole until that ends.
    void set_preview(bool on);

    bool uses_gl() const { return m_uses_gl; }

    /// Cheap: the view draws once for any number of calls.
    void schedule_redraw();
    /// While on, the view draws all the time.
    void set_always_refresh(bool on);

    /// What the view shows, in device pixels; shown or not.
    QImage grab_view();
    /// A picture of this size in logical pixels, without any window and the same on every computer.
    static QImage render(CBaseWorld& world, QSize size, double dpr);

    /// What the mouse and the keyboard do, for automation too. True when the tool took it.
    bool send_mouse(const tarn::MouseEvent& event);
    bool send_key(int key, Qt::KeyboardModifiers modifiers);
    /// Text from the keyboard or an input method, and what that is about to put in.
    bool send_text(const QString& text, const QString& preedit);
    /// Positive steps come nearer.
    void send_wheel(QPointF place, double steps);
    /// The middle button moves the camera, or the screen while it is zoomed; the right one turns it; places are logical pixels of the widget.
    void camera_drag(Qt::MouseButton button, QPointF from, QPointF to);

Q_SIGNALS:
    /// Comes once, soon after the view was made, when it has to do without OpenGL.
    void gl_unavailable(const QString& message);

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;
    /// Tab is a key of the interface while that takes keys.
    bool focusNextPrevChild(bool) override { return false; }

private:
    void place_surface();
    QSize room() const;
    QRect room_rect() const;
    QSize fit_size() const;
    QRect whole_rect() const;
    QPointF shown_centre() const;
    void pan_screen(QPointF way);
    void mark();
    tarn::ScreenPlacing placing() const { return m_overlay.placing(surface_size()); }
    double scale() const { return placing().scale; }
    void press(QMouseEvent* event, tarn::MouseEvent::Kind kind);
    bool edit_text_at(QPointF place);
    void pop_context_menu(QPointF place);
    bool run_command(const QKeyEvent& event);
    bool keeps_key(const QKeyEvent& event) const;
    void drag_with_changed_modifiers(const QKeyEvent& event, bool pressed);
    void end_lost_press(const QMouseEvent& event);
    QRectF from_screen(const QRectF& area) const;
    bool on_screen(QPointF place) const;
    void show_cursor(Qt::CursorShape shape);
    void redraw_if(bool taken);

    CBaseWorld& m_world;
    tarn::OverlayBuffer m_overlay;
    QWidget* m_surface = nullptr;
    bool m_uses_gl = false;
    QSize m_fixed_size;
    std::optional<double> m_zoom;         ///< none: the whole screen is shown
    QPointF m_centre;                     ///< of the view while it is zoomed, a place of the screen
    std::optional<double> m_authors_zoom; ///< while a preview shows the whole screen
    bool m_is_preview = false;
    tarn::ViewMarks* m_marks = nullptr;
    QTimer m_refresh;
    Qt::MouseButton m_held = Qt::NoButton; ///< the one button whose press counts until its release
    bool m_drags_camera = false;           ///< what is held began on the world
    QPointF m_camera_place;                ///< of the mouse in the widget when the camera last followed it
    QPointF m_press_place;                 ///< in the widget
    QPointF m_place;                       ///< of the mouse in the last event of it
    tarn::SceneEditor* m_editor = nullptr;
    QList<QAction*> m_program_actions;
    tarn::InputWatch* m_watch = nullptr;
    QPointer<tarn::InlineEditor> m_text; ///< open while a text is edited
};
