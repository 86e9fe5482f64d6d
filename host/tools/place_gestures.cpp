#include "place_gestures.h"

#include "aids_layer.h"
#include "core/language.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "selection_edit.h"

#include <array>
#include <cmath>

namespace tarn {

namespace {

constexpr double smallest = 4; ///< pixels; side below which nothing is resized

QString move_name()
{
    return lang(u"移动", u"Move");
}

QPointF whole(QPointF offset)
{
    return {std::round(offset.x()), std::round(offset.y())};
}

/// The selected object whose figures a read-out tells, in the numbers that its page shows; null for none.
QRectF current_rect(const CGuiCore& core)
{
    const SelectionRecord& selection = core.selection();
    if (selection.controls_selected)
        return selection.current_control ? selection.current_control->rect() : QRectF();
    return selection.current_dialog ? QRectF(selection.current_dialog->rect()) : QRectF();
}

/// Where the current object stands, as the rulers count while they are shown. A dialog's own corner tells nothing of it.
QString place_text(const CGuiCore& core, const AidsLayer& aids)
{
    const SelectionRecord& selection = core.selection();
    if (aids.shows_rulers() && selection.controls_selected && selection.current_control)
        return aids.place_text(selection.current_control->screen_rect().topLeft());
    const QRectF rect = current_rect(core);
    return QStringLiteral("X %1  Y %2").arg(qRound(rect.x())).arg(qRound(rect.y()));
}

} // namespace

PlaceGesture::PlaceGesture(CGuiPlugScene& scene, const AidsLayer& aids, QPointF start)
    : m_scene(scene), m_aids(aids), m_places(scene.gui_core()), m_start(start)
{
}

void PlaceGesture::begin_step(const QString& name)
{
    // The selection may have changed since the press, by a key for example.
    m_places = SelectionPlaces(m_scene.gui_core());
    m_frame = m_places.frame();
    m_snap.emplace(SnapSession::for_selection(m_scene.gui_core(), m_aids));
    m_action.emplace(m_scene.journal(), name);
}

void PlaceGesture::drag(QPointF place, Qt::KeyboardModifiers modifiers)
{
    change(whole(place - m_start), modifiers);
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

void MoveGesture::change(QPointF offset, Qt::KeyboardModifiers modifiers)
{
    m_places.move_by(offset + whole(m_snap->pull_frame(m_frame.translated(offset), modifiers)));
}

void MoveGesture::paint(QPainter& painter) const
{
    if (m_places.empty())
        return;
    const QRectF frame = SelectionPlaces(m_scene.gui_core()).frame();
    m_snap->paint(painter, frame);
    paint_label(painter, frame, place_text(m_scene.gui_core(), m_aids));
}

ResizeGesture::ResizeGesture(CGuiPlugScene& scene, const AidsLayer& aids, QPointF start, Handle handle)
    : PlaceGesture(scene, aids, start), m_handle(handle)
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
    const QRectF wanted = resized(m_frame, m_handle, offset, rules);
    m_places.fit(m_frame, resized(m_frame, m_handle, offset + whole(pull(wanted, modifiers)), rules));
}

/// How far the sides that are dragged have to move on; a ratio that is kept leaves them no choice.
QPointF ResizeGesture::pull(const QRectF& wanted, Qt::KeyboardModifiers modifiers)
{
    const HandleSeat seat = handle_seat(m_handle);
    const std::array x{seat.x == 0 ? wanted.left() : wanted.right()};
    const std::array y{seat.y == 0 ? wanted.top() : wanted.bottom()};
    const bool free = !modifiers.testFlag(Qt::ShiftModifier);
    return m_snap->pull(std::span(x).first(free && seat.x != 1 ? 1 : 0),
                        std::span(y).first(free && seat.y != 1 ? 1 : 0), modifiers);
}

void ResizeGesture::paint(QPainter& painter) const
{
    const QRectF frame = resizable_frame(m_scene.gui_core());
    const SelectionRecord& selection = m_scene.gui_core().selection();
    const bool several = selection.controls_selected && selection.controls.size() > 1;
    m_snap->paint(painter, frame);
    const QString place = m_aids.shows_rulers() ? place_text(m_scene.gui_core(), m_aids) + QStringLiteral("  ")
                                                : QString();
    paint_label(painter, frame, place + size_text(several ? frame.size() : current_rect(m_scene.gui_core()).size()));
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
