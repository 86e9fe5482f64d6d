#include "select_tool.h"

#include "aids_layer.h"
#include "animation/animation_scene.h"
#include "center_gesture.h"
#include "engine/base_world.h"
#include "gui_core/dxut_dialog.h"
#include "gui_draw/element_at.h"
#include "gui_scene/gui_plug_scene.h"
#include "guide_gesture.h"
#include "marquee_gesture.h"
#include "place_gestures.h"
#include "selection_edit.h"
#include "selection_overlay.h"
#include "tab_numbers.h"
#include "world_mouse.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarn {

namespace {

constexpr double drag_reach = 3;    ///< pixels of the view that the mouse has to move before a press becomes a drag
constexpr qint64 again_time = 3000; ///< milliseconds in which a click at the same place goes deeper
constexpr double wide_step = 10;    ///< pixels that an arrow key moves with Shift

bool is_near(QPointF a, QPointF b, double pixel)
{
    const QPointF way = a - b;
    return std::max(std::abs(way.x()), std::abs(way.y())) < drag_reach * pixel;
}

QPointF arrow_step(int key)
{
    switch (key) {
    case Qt::Key_Left: return {-1, 0};
    case Qt::Key_Right: return {1, 0};
    case Qt::Key_Up: return {0, -1};
    case Qt::Key_Down: return {0, 1};
    default: return {};
    }
}

} // namespace

SelectTool::SelectTool(CGuiPlugScene& scene, AidsLayer& aids, WorldMouse& world)
    : m_scene(scene), m_aids(aids), m_world(world)
{
}

SelectTool::~SelectTool() = default;

bool SelectTool::mouse(const MouseEvent& event)
{
    if (!m_scene.gui_core().selection().editing)
        return false;
    m_aids.follow(event);
    const bool pressed = event.kind == MouseEvent::Kind::Press || event.kind == MouseEvent::Kind::DoubleClick;
    if (pressed && event.button == Qt::LeftButton)
        press(event);
    else if (event.kind == MouseEvent::Kind::Move && m_gesture)
        drag(event);
    else if (event.kind == MouseEvent::Kind::Release && event.button == Qt::LeftButton && m_gesture)
        release(event);
    else if (event.kind == MouseEvent::Kind::Move)
        update_cursor(event.place);
    else
        return false;
    return true;
}

void SelectTool::press(const MouseEvent& event)
{
    const CGuiCore& core = m_scene.gui_core();
    cancel();
    m_press_place = event.place;
    m_click = Click::Nothing;
    m_picked = {};
    if (const auto guide = guide_under(event.place)) {
        m_gesture = std::make_unique<GuideGesture>(m_scene, m_aids, *guide);
        m_last_click.reset();
        return;
    }
    if (m_aids.on_ruler(event.place))
        return;
    if (const CDXUTControl* control = center_under(event.place)) {
        m_gesture = std::make_unique<CenterGesture>(m_scene, *control);
        m_last_click.reset();
        return;
    }
    if (const int handle = handle_under(event.place); handle >= 0) {
        m_gesture = std::make_unique<ResizeGesture>(m_scene, m_aids, event.place, Handle(handle));
        m_last_click.reset();
        return;
    }
    if (event.kind == MouseEvent::Kind::DoubleClick && m_world.edit_points(event.place, m_aids.pixel()))
        return;
    if ((m_gesture = m_world.grab(event.place, m_aids.pixel()))) {
        m_last_click.reset();
        return;
    }
    const auto targets = targets_at(core, event.place);
    if (WorldObject* object = targets.empty() ? m_world.object_at(event.place) : nullptr)
        press_world(event, *object);
    else if (targets.empty())
        press_nothing(event, nullptr);
    else
        press_target(event, targets);
}

int SelectTool::handle_under(QPointF place) const
{
    return handle_at(resizable_frame(m_scene.gui_core()), place, m_aids.pixel());
}

/// The control whose turning point a press takes hold of.
const CDXUTControl* SelectTool::center_under(QPointF place) const
{
    const CDXUTControl* control = control_with_center(m_scene);
    return control && hits_center(*control, place, m_aids.pixel()) ? control : nullptr;
}

/// The guide line that a press takes hold of. What is selected comes first, so that a guide beneath does not keep it
/// from being dragged away.
std::optional<Guide> SelectTool::guide_under(QPointF place) const
{
    if (m_aids.on_ruler(place))
        return m_aids.guide_from_ruler(place);
    const auto guide = m_aids.guide_at(place);
    if (!guide || handle_under(place) >= 0)
        return {};
    const auto targets = targets_at(m_scene.gui_core(), place);
    const bool busy = std::any_of(targets.begin(), targets.end(),
                                  [&](const Target& target) { return is_selected(m_scene.gui_core(), target); });
    return busy ? std::nullopt : guide;
}

void SelectTool::press_nothing(const MouseEvent& event, CDXUTDialog* home)
{
    if (!(event.modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
        m_click = Click::Clear;
    m_gesture = std::make_unique<MarqueeGesture>(m_scene, event.place, home);
}

void SelectTool::press_target(const MouseEvent& event, const std::vector<Target>& targets)
{
    const CGuiCore& core = m_scene.gui_core();
    const auto selected = std::find_if(targets.begin(), targets.end(),
                                       [&](const Target& target) { return is_selected(core, target); });
    const bool again = m_last_click && is_near(*m_last_click, event.place, m_aids.pixel())
        && !m_since_click.hasExpired(again_time) && selected != targets.end();
    m_picked = again ? *selected : targets.front();
    if (event.modifiers & (Qt::ControlModifier | Qt::ShiftModifier)) {
        m_picked = targets.front();
        const bool in_client = !m_picked.control && m_picked.dialog->client_rect().contains(event.place);
        if (event.modifiers.testFlag(Qt::ShiftModifier) && in_client) {
            press_nothing(event, m_picked.dialog);
            m_click = Click::Add;
            return;
        }
        if (event.modifiers.testFlag(Qt::ControlModifier) && is_selected(core, m_picked))
            m_click = Click::Deselect;
        else
            select(m_scene, m_picked, true);
    } else if (is_selected(core, m_picked)) {
        const bool alone = core.selection().controls.size() + core.selection().dialogs.size() == 1;
        m_click = !alone ? Click::SelectOnly : again ? Click::Beneath : Click::Nothing;
        select(m_scene, m_picked, true); // It becomes the current one.
    } else {
        select(m_scene, m_picked, false);
    }
    m_gesture = std::make_unique<MoveGesture>(m_scene, m_aids, event.place);
}

void SelectTool::press_world(const MouseEvent& event, WorldObject& object)
{
    m_last_click.reset();
    if (event.modifiers & (Qt::ControlModifier | Qt::ShiftModifier)) {
        m_world.select(object, true);
        return;
    }
    if (!m_world.is_selected(object))
        m_world.select(object, false);
    m_gesture = m_world.move_gesture(event.place);
}

void SelectTool::drag(const MouseEvent& event)
{
    if (!m_dragging) {
        if (is_near(event.place, m_press_place, m_aids.pixel()))
            return;
        m_dragging = true;
        m_cursor = m_gesture->cursor();
        m_gesture->begin();
    }
    m_gesture->drag(event.place, event.modifiers);
}

void SelectTool::release(const MouseEvent& event)
{
    m_last_click.reset();
    const auto gesture = std::exchange(m_gesture, nullptr);
    if (std::exchange(m_dragging, false)) {
        gesture->finish();
    } else {
        click(m_press_place);
        choose_element(m_press_place);
        if (!(event.modifiers & (Qt::ControlModifier | Qt::ShiftModifier)))
            note_click();
    }
    update_cursor(event.place);
}

/// Without a modifier; the next one there goes deeper.
void SelectTool::note_click()
{
    m_last_click = m_press_place;
    m_since_click.start();
}

void SelectTool::click(QPointF place)
{
    if (m_click == Click::Clear) {
        clear_selection(m_scene);
        m_world.clear_selection();
        return;
    }
    const auto targets = targets_at(m_scene.gui_core(), place);
    const auto picked = std::find(targets.begin(), targets.end(), m_picked);
    if (m_click == Click::Nothing || picked == targets.end())
        return;
    if (m_click == Click::Deselect)
        deselect(m_scene, *picked);
    else if (m_click == Click::SelectOnly || m_click == Click::Add)
        select(m_scene, *picked, m_click == Click::Add);
    else
        select(m_scene, std::next(picked) == targets.end() ? targets.front() : *std::next(picked), false);
}

/// The page that edits elements goes on with the one that was clicked.
void SelectTool::choose_element(QPointF place)
{
    CGuiCore& core = m_scene.gui_core();
    if (!core.view_aids().picks_elements || m_click == Click::Clear)
        return;
    const auto targets = targets_at(core, place);
    const auto clicked = std::find_if(targets.begin(), targets.end(),
                                      [&](const Target& target) { return is_selected(core, target); });
    if (clicked == targets.end())
        return;
    const auto part = clicked->control ? element_at(core, *clicked->control, place)
                                       : element_at(core, *clicked->dialog, place);
    if (!part)
        return;
    core.set_current_element(*part);
    m_scene.world()->broadcast(ui_selection_changed);
}

void SelectTool::cancel()
{
    const auto gesture = std::exchange(m_gesture, nullptr);
    if (std::exchange(m_dragging, false))
        gesture->cancel();
}

bool SelectTool::key(int key, Qt::KeyboardModifiers modifiers)
{
    if (!m_scene.gui_core().selection().editing)
        return false;
    if (key == Qt::Key_Escape) {
        m_last_click.reset();
        if (!m_gesture && m_world.has_selection()) {
            m_world.clear_selection();
            return true;
        }
        if (!m_gesture)
            return select_less(m_scene);
        cancel();
        return true;
    }
    if (key == Qt::Key_F && modifiers == Qt::NoModifier && !m_gesture)
        return m_world.frame_selection();
    const QPointF step = arrow_step(key);
    if (step.isNull() || m_gesture || modifiers & (Qt::ControlModifier | Qt::AltModifier))
        return false;
    return nudge_selection(m_scene, step * (modifiers.testFlag(Qt::ShiftModifier) ? wide_step : 1));
}

void SelectTool::update_cursor(QPointF place)
{
    const CGuiCore& core = m_scene.gui_core();
    m_cursor = Qt::ArrowCursor;
    if (const auto guide = guide_under(place)) {
        m_cursor = GuideGesture::guide_cursor(guide->lines);
        return;
    }
    if (m_aids.on_ruler(place))
        return;
    if (center_under(place)) {
        m_cursor = Qt::CrossCursor;
        return;
    }
    if (const int handle = handle_under(place); handle >= 0) {
        m_cursor = handle_cursor(Handle(handle));
        return;
    }
    const auto targets = targets_at(core, place);
    if (!targets.empty() && is_selected(core, targets.front()))
        m_cursor = Qt::SizeAllCursor;
}

void SelectTool::paint(QPainter& painter)
{
    m_world.paint(painter, m_dragging ? m_gesture.get() : nullptr);
    m_aids.paint_grid(painter);
    m_aids.paint_guides(painter);
    const CAnimationScene& animation = m_scene.animation();
    paint_selection(painter, m_scene.gui_core(), [&](const ModelObject& object) {
        return animation.unrecorded().contains(object.id()) ? DriveMark::Unrecorded
            : animation.driven_channels(object.id())        ? DriveMark::Keys
                                                            : DriveMark::None;
    });
    if (m_scene.gui_core().view_aids().tab_numbers)
        paint_tab_numbers(painter, m_scene.gui_core());
    if (const CDXUTControl* control = control_with_center(m_scene))
        paint_center(painter, *control);
    if (animation.is_editing() && animation.auto_record())
        paint_recording(painter);
    if (m_dragging)
        m_gesture->paint(painter);
    m_aids.paint_rulers(painter);
}

} // namespace tarn
