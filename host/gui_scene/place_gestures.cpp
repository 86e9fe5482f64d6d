#include "place_gestures.h"

#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_plug_scene.h"
#include "selection_edit.h"

#include <cmath>

namespace tarn {

namespace {

constexpr double smallest = 4; ///< pixels; side below which nothing is resized

QString move_name()
{
    return lang(u"移动", u"Move");
}

/// The selected object whose figures a read-out tells, in the numbers that its page shows; null for none.
QRectF current_rect(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (selection.controls_selected)
        return selection.current_control ? selection.current_control->rect() : QRectF();
    return selection.current_dialog ? QRectF(selection.current_dialog->rect()) : QRectF();
}

} // namespace

PlaceGesture::PlaceGesture(CGuiPlugScene& scene, QPointF start)
    : m_scene(scene), m_places(scene.gui_core()), m_start(start)
{
}

void PlaceGesture::begin_step(const QString& name)
{
    // The selection may have changed since the press, by a key for example.
    m_places = SelectionPlaces(m_scene.gui_core());
    m_action.emplace(m_scene.journal(), name);
}

void PlaceGesture::drag(QPointF place, Qt::KeyboardModifiers modifiers)
{
    const QPointF offset = place - m_start;
    change({std::round(offset.x()), std::round(offset.y())}, modifiers);
    notify_properties(m_scene);
}

void PlaceGesture::finish()
{
    m_action.reset();
    notify_properties(m_scene); // Commands wait for the end of the step.
}

void PlaceGesture::cancel()
{
    m_scene.journal().cancel();
    m_action.reset();
    notify_properties(m_scene);
}

void MoveGesture::begin()
{
    begin_step(move_name());
}

void MoveGesture::change(QPointF offset, Qt::KeyboardModifiers)
{
    m_places.move_by(offset);
}

void MoveGesture::paint(QPainter& painter) const
{
    const QRectF rect = current_rect(m_scene.gui_core());
    if (!m_places.empty())
        paint_label(painter, selected_frame(m_scene.gui_core()),
                    QStringLiteral("X %1  Y %2").arg(qRound(rect.x())).arg(qRound(rect.y())));
}

ResizeGesture::ResizeGesture(CGuiPlugScene& scene, QPointF start, Handle handle)
    : PlaceGesture(scene, start), m_handle(handle)
{
}

void ResizeGesture::begin()
{
    begin_step(lang(u"调整大小", u"Resize"));
    m_frame = resizable_frame(m_scene.gui_core());
}

void ResizeGesture::change(QPointF offset, Qt::KeyboardModifiers modifiers)
{
    const SelectionRecord& selection = m_scene.gui_core().selection();
    // A dialog keeps its caption bar beside the smallest client area.
    const double caption = selection.controls_selected || !selection.current_dialog
        ? 0
        : selection.current_dialog->caption_rect().height();
    const ResizeRules rules{.smallest = smallest + caption,
                            .keep_ratio = modifiers.testFlag(Qt::ShiftModifier),
                            .from_centre = modifiers.testFlag(Qt::AltModifier)};
    m_places.fit(m_frame, resized(m_frame, m_handle, offset, rules));
}

void ResizeGesture::paint(QPainter& painter) const
{
    const QRectF frame = resizable_frame(m_scene.gui_core());
    const SelectionRecord& selection = m_scene.gui_core().selection();
    const bool several = selection.controls_selected && selection.controls.size() > 1;
    paint_label(painter, frame, size_text(several ? frame.size() : current_rect(m_scene.gui_core()).size()));
}

bool nudge_selection(CGuiPlugScene& scene, QPointF offset)
{
    const SelectionRecord& selection = scene.gui_core().selection();
    if (selection.controls.empty() && selection.dialogs.empty())
        return false;
    SelectionPlaces places(scene.gui_core());
    if (places.empty())
        return true;
    {
        const UserAction action(scene.journal(), move_name(), "nudge");
        places.move_by(offset);
    }
    notify_properties(scene);
    return true;
}

} // namespace tarn
