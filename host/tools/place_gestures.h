#pragma once

#include "core/journal.h"
#include "gesture.h"
#include "selection_overlay.h"
#include "selection_places.h"
#include "snap_session.h"

#include <optional>

class CGuiPlugScene;

namespace tarn {

/// A drag that changes where the selected objects stand; one step of undo. It snaps while that is switched on and Ctrl
/// is not held.
class PlaceGesture : public Gesture {
public:
    PlaceGesture(CGuiPlugScene& scene, const AidsLayer& aids, QPointF start);

    void drag(QPointF place, Qt::KeyboardModifiers modifiers) override;
    void finish() override;
    void cancel() override;

protected:
    void begin_step(const QString& name);
    virtual void change(QPointF offset, Qt::KeyboardModifiers modifiers) = 0;

    CGuiPlugScene& m_scene;
    const AidsLayer& m_aids;
    SelectionPlaces m_places;
    QRectF m_frame; ///< of what is dragged, on the screen, before the drag
    std::optional<SnapSession> m_snap;

private:
    QPointF m_start;
    std::optional<UserAction> m_action;
};

class MoveGesture : public PlaceGesture {
public:
    using PlaceGesture::PlaceGesture;

    void begin() override;
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return Qt::SizeAllCursor; }

private:
    void change(QPointF offset, Qt::KeyboardModifiers modifiers) override;
};

/// Resizes the selected objects by a handle of their common frame. Shift keeps the ratio, Alt the centre.
class ResizeGesture : public PlaceGesture {
public:
    ResizeGesture(CGuiPlugScene& scene, const AidsLayer& aids, QPointF start, Handle handle);

    void begin() override;
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return handle_cursor(m_handle); }

private:
    void change(QPointF offset, Qt::KeyboardModifiers modifiers) override;

    QPointF pull(const QRectF& wanted, Qt::KeyboardModifiers modifiers);

    Handle m_handle;
};

/// Moves the selected objects by whole pixels of the screen. A run of calls is one step of undo. False when nothing is
/// selected.
bool nudge_selection(CGuiPlugScene& scene, QPointF offset);

} // namespace tarn
