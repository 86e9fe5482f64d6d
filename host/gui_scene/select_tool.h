#pragma once

#include "core/journal.h"
#include "engine/mouse_tool.h"

#include <QRectF>

#include <optional>
#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiPlugScene;

namespace tarn {

/// Selects dialogs and controls with the mouse, moves them, and resizes the selected one by its handles. One drag is
/// one step of undo; Escape drops it.
class SelectTool : public MouseTool {
public:
    explicit SelectTool(CGuiPlugScene& scene) : m_scene(scene) {}

    bool mouse(const MouseEvent& event) override;
    bool key(int key, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter& painter) override;
    void cancel() override;
    Qt::CursorShape cursor() const override { return m_cursor; }

private:
    /// What an object of the selection was when the drag began.
    struct Start {
        CDXUTDialog* dialog;
        CDXUTControl* control;
        QRectF rect; ///< of a control in its client area, of a dialog on the screen
    };

    void press(const MouseEvent& event);
    void drag(QPointF place);
    void release();
    bool select_at(QPointF place, Qt::KeyboardModifiers modifiers);
    void remember_selection();
    void begin_drag();
    void move_by(QPointF offset);
    void resize_by(QPointF offset);
    void notify_properties();
    void update_cursor(QPointF place);

    CGuiPlugScene& m_scene;
    bool m_pressed = false;
    int m_handle = -1;
    QPointF m_press_place;
    std::vector<Start> m_start;
    std::optional<UserAction> m_action; ///< open while a drag changes something
    Qt::CursorShape m_cursor = Qt::ArrowCursor;
};

} // namespace tarn
