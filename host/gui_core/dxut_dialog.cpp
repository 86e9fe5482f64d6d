#include "dxut_dialog.h"

#include "anchor.h"
#include "core/document.h"
#include "core/language.h"
#include "dxut_control.h"
#include "gui_core.h"
#include "gui_event.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

using tarn::DialogState;
using tarn::FieldBase;
using tarn::key;

namespace {

constexpr int button_gap = 4; ///< pixels around the buttons of the caption

const tarn::WrittenFields place_keys{key<&DialogState::x>,          key<&DialogState::y>,
                                     key<&DialogState::width>,      key<&DialogState::height>,
                                     key<&DialogState::base_width>, key<&DialogState::base_height>};
const tarn::WrittenFields anchor_keys = [] {
    tarn::WrittenFields keys = place_keys;
    keys.add(key<&DialogState::align_type>);
    return keys;
}();

QRect whole(const QRectF& rect)
{
    return {int(std::trunc(rect.x())), int(std::trunc(rect.y())), int(std::trunc(rect.width())),
            int(std::trunc(rect.height()))};
}

/// The stored number whose scaled and truncated value is `wanted`, or the nearest one where there is none.
int unscaled(int wanted, double scale)
{
    const double exact = wanted / scale;
    if (scale >= 1)
        return int(std::lround(exact));
    return int(exact < 0 ? std::floor(exact) : std::ceil(exact));
}

} // namespace

CDXUTDialog::CDXUTDialog(CGuiCore& core, tarn::StatePtr state)
    : ModelObject(core.document(), std::move(state)), m_core(core)
{
}

tarn::ObjectState* CDXUTDialog::fresh_state() const
{
    return is_root() ? DialogState::root() : new DialogState;
}

bool CDXUTDialog::is_root() const
{
    return m_core.GetRootDialog() == this;
}

bool CDXUTDialog::SetVisible(bool visible)
{
    return change<&DialogState::visible>(visible);
}

QSizeF CDXUTDialog::base_size() const
{
    const DialogState& s = dialog_state();
    return s.base_width > 0 && s.base_height > 0 ? QSizeF(s.base_width, s.base_height) : QSizeF(m_core.design_size());
}

QRect CDXUTDialog::rect() const
{
    return rect_of(dialog_state());
}

QRect CDXUTDialog::rect_of(const DialogState& s) const
{
    if (is_root())
        return QRect(QPoint(), m_core.screen_size());
    const QRect stored(s.x, s.y, s.width, s.height);
    if (s.align_type == tarn::anchor_top_left)
        return stored;
    return whole(tarn::anchored(stored, base_size(), m_core.screen_size(), s.align_type));
}

double CDXUTDialog::scale_x() const
{
    return align_type() == tarn::anchor_scale && !is_root() ? m_core.screen_size().width() / base_size().width() : 1;
}

double CDXUTDialog::scale_y() const
{
    return align_type() == tarn::anchor_scale && !is_root() ? m_core.screen_size().height() / base_size().height() : 1;
}

QSizeF CDXUTDialog::client_size() const
{
    if (is_root())
        return m_core.screen_size();
    return QSizeF(dialog_state().width, dialog_state().height);
}

QRectF CDXUTDialog::caption_rect() const
{
    const DialogState& s = dialog_state();
    if (!s.caption_shown || is_root())
        return {};
    const QRect place = rect();
    const double height = s.caption_height * scale_y();
    if (minimized() && s.minimize_to_bottom)
        return m_core.minimized_bar(*this);
    return QRectF(place.x(), place.y(), place.width(), height);
}

QRectF CDXUTDialog::client_rect() const
{
    const QRect place = rect();
    const QRectF caption = caption_rect();
    return QRectF(place).translated(0, caption.height());
}

QRectF CDXUTDialog::outer_rect() const
{
    return minimized() ? caption_rect() : client_rect().united(caption_rect());
}

QPointF CDXUTDialog::to_client(const QPointF& on_screen) const
{
    const QPointF inside = on_screen - client_rect().topLeft();
    return {inside.x() / scale_x(), inside.y() / scale_y()};
}

void CDXUTDialog::set_base_to_screen(DialogState& state) const
{
    const QSize screen = m_core.screen_size();
    const bool design = screen == m_core.design_size();
    state.base_width = design ? 0 : screen.width();
    state.base_height = design ? 0 : screen.height();
}

bool CDXUTDialog::set_rect(const QRect& wanted)
{
    if (is_root() || wanted == rect())
        return false;
    const double sx = scale_x();
    const double sy = scale_y();
    const QRect now = rect();
    auto& s = edit<DialogState>();
    if (s.align_type == tarn::anchor_scale) {
        // Only what was asked for: the others would lose what scaling cut off.
        if (wanted.x() != now.x())
            s.x = unscaled(wanted.x(), sx);
        if (wanted.y() != now.y())
            s.y = unscaled(wanted.y(), sy);
        if (wanted.width() != now.width())
            s.width = unscaled(wanted.width(), sx);
        if (wanted.height() != now.height())
            s.height = unscaled(wanted.height(), sy);
    } else if (is_driven(key<&DialogState::x>) || is_driven(key<&DialogState::width>)) {
        // Keys count from the screen that the author's place is meant for, so that stays.
        const QRectF stored = tarn::anchored(wanted, m_core.screen_size(), base_size(), s.align_type);
        s.x = int(std::lround(stored.x()));
        s.y = int(std::lround(stored.y()));
        s.width = std::max(0, wanted.width());
        s.height = std::max(0, wanted.height());
    } else {
        s.x = wanted.x();
        s.y = wanted.y();
        s.width = std::max(0, wanted.width());
        s.height = std::max(0, wanted.height());
        if (s.align_type != tarn::anchor_top_left && base_size() != QSizeF(m_core.screen_size()))
            set_base_to_screen(s);
    }
    written(place_keys);
    return true;
}

bool CDXUTDialog::SetLocation(int x, int y)
{
    return set_rect(QRect(QPoint(x, y), rect().size()));
}

bool CDXUTDialog::SetSize(int width, int height)
{
    return set_rect(QRect(rect().topLeft(), QSize(std::max(0, width), std::max(0, height))));
}

void CDXUTDialog::on_pos_scale_changed()
{
    if (is_root() || align_type() == tarn::anchor_scale || base_size() == QSizeF(m_core.screen_size()))
        return;
    const QRect present = rect_of(static_cast<const DialogState&>(base_state()));
    auto& s = static_cast<DialogState&>(edit_base());
    s.x = present.x();
    s.y = present.y();
    set_base_to_screen(s);
    written(place_keys);
}

bool CDXUTDialog::set_align_type(int anchor)
{
    anchor = std::clamp(anchor, 0, 9);
    if (anchor == align_type())
        return false;
    // What drives the place keeps its numbers: it counts from the anchor that there is.
    const QRect present = rect_of(static_cast<const DialogState&>(base_state()));
    auto& s = static_cast<DialogState&>(edit_base());
    s.align_type = anchor;
    s.x = present.x();
    s.y = present.y();
    s.width = present.width();
    s.height = present.height();
    if (base_size() != QSizeF(m_core.screen_size()))
        set_base_to_screen(s);
    written(anchor_keys);
    return true;
}

void CDXUTDialog::set_scaled(bool scaled)
{
    if (scaled == (align_type() == tarn::anchor_scale))
        return;
    if (scaled) {
        change<&DialogState::saved_align_type>(align_type());
        set_align_type(tarn::anchor_scale);
    } else {
        set_align_type(std::min<int>(dialog_state().saved_align_type, tarn::anchor_centre));
    }
}

QRectF CDXUTDialog::caption_button_rect(CaptionButton button) const
{
    const DialogState& s = dialog_state();
    const QRectF bar = caption_rect();
    if (bar.isEmpty() || (button == CaptionButton::Close ? !s.close_button : !s.minimize_button))
        return {};
    const double side = std::max(0.0, bar.height() - 2 * button_gap);
    const int place = button == CaptionButton::Minimize && s.close_button ? 2 : 1;
    return {bar.right() - place * (side + button_gap), bar.y() + button_gap, side, side};
}

void CDXUTDialog::set_minimized(bool minimized)
{
    if (minimized == this->minimized())
        return;
    m_minimized_as = minimized ? ++m_core.m_minimized_dialogs : 0;
    state_changed();
}

QString CDXUTDialog::get_func_str(quint32 id, quint32 event_type)
{
    return QStringLiteral("GUI_DIALOG_FUNC_%1_%2").arg(id).arg(GetEventStrName(event_type));
}

int CDXUTDialog::GetControlIndex(const CDXUTControl* control) const
{
    if (!control || control->dialog() != this)
        return -1;
    const auto& list = controls();
    const auto is_right = [&] { return list.value(control->m_layer_guess) == control; };
    if (!is_right())
        for (int layer = 0; layer < int(list.size()); ++layer)
            list[layer]->m_layer_guess = layer;
    return is_right() ? control->m_layer_guess : -1;
}

bool CDXUTDialog::move_control(CDXUTControl* control, int layer)
{
    const int now = GetControlIndex(control);
    layer = std::clamp(layer, 0, std::max(0, GetControlNum() - 1));
    if (now < 0 || now == layer)
        return false;
    tarn::IdList order = dialog_state().controls;
    order.move(now, layer);
    document().reorder(*this, *control->kind(), order);
    control->redraw();
    return true;
}

bool CDXUTDialog::SetCtrlLayer(CDXUTControl* control, int where)
{
    return move_control(control, where == 0 ? GetControlNum() - 1 : 0);
}

bool CDXUTDialog::SetCtrlLayerUpDown(CDXUTControl* control, int up)
{
    const int now = GetControlIndex(control);
    return now >= 0 && move_control(control, up ? now + 1 : std::max(0, now - 1));
}

void CDXUTDialog::reorder_controls(const QList<CDXUTControl*>& order)
{
    if (order == controls() || order.isEmpty())
        return;
    tarn::IdList ids;
    for (const CDXUTControl* control : order)
        ids.append(tarn::ObjectRef{control->id()});
    document().reorder(*this, *order.front()->kind(), ids);
    m_core.add_damage(m_last_bounds);
}

void CDXUTDialog::children_changed()
{
    m_controls_stale = true;
    m_core.structure_changed();
}

void CDXUTDialog::find_controls() const
{
    m_controls_stale = false;
    const tarn::IdList& ids = dialog_state().controls;
    m_controls.clear();
    m_controls.reserve(ids.size());
    for (const tarn::ObjectRef id : ids)
        // While another content has the place of the one that this dialog belongs to, its ids are those of others.
        if (tarn::ModelObject* control = document().find(id.id); control && control->parent() == this)
            m_controls.append(static_cast<CDXUTControl*>(control));
}

void CDXUTDialog::control_drawn_at(const QRectF& on_screen)
{
    m_last_bounds |= on_screen;
    m_core.add_damage(on_screen);
}

tarn::Value CDXUTDialog::value_in(const tarn::ObjectState& state, const FieldBase& field) const
{
    const auto& s = static_cast<const DialogState&>(state);
    if (field.key() == key<&DialogState::x>)
        return qint64(rect_of(s).x());
    if (field.key() == key<&DialogState::y>)
        return qint64(rect_of(s).y());
    if (field.key() == key<&DialogState::width>)
        return qint64(rect_of(s).width());
    if (field.key() == key<&DialogState::height>)
        return qint64(rect_of(s).height());
    return ModelObject::value_in(state, field);
}

tarn::Status CDXUTDialog::set_property(const FieldBase& field, const tarn::Value& value)
{
    const bool frame_field = field.key()
            == key<&DialogState::caption_shown> || field.key() == key<&DialogState::frame_shown>;
    if (is_root() && frame_field && value != tarn::Value(false))
        return tarn::Status::error(
            tarn::lang(u"根窗口没有标题栏和边框", u"the root dialog has no caption bar and no frame"));
    static constexpr std::array moved{key<&DialogState::x>, key<&DialogState::y>, key<&DialogState::width>,
                                      key<&DialogState::height>, key<&DialogState::align_type>};
    if (std::find(moved.begin(), moved.end(), field.key()) == moved.end())
        return ModelObject::set_property(field, value);
    const std::unique_ptr<tarn::ObjectState> wanted(shown_state().clone());
    if (auto status = field.set(*wanted, value); !status)
        return status;
    const auto& s = static_cast<const DialogState&>(*wanted);
    const QRect now = rect();
    if (field.key() == key<&DialogState::align_type>)
        set_align_type(s.align_type);
    else if (field.key() == key<&DialogState::x>)
        SetLocation(s.x, now.y());
    else if (field.key() == key<&DialogState::y>)
        SetLocation(now.x(), s.y);
    else if (field.key() == key<&DialogState::width>)
        SetSize(s.width, now.height());
    else
        SetSize(now.width(), s.height);
    return {};
}

void CDXUTDialog::after_write(const tarn::WrittenFields& written)
{
    if (written.contains(key<&DialogState::name>))
        m_core.names_changed();
}

/// What other dialogs go by: whether it is shown, and how.
int CDXUTDialog::shape() const
{
    return !is_seen() ? 0 : !minimized() ? 1 : dialog_state().minimize_to_bottom ? 2 : 3;
}

void CDXUTDialog::damage_bounds()
{
    m_core.add_damage(m_last_bounds);
    m_last_bounds = m_core.dialog_bounds(*this);
    m_core.add_damage(m_last_bounds);
}

void CDXUTDialog::state_changed()
{
    damage_bounds();
    if (std::exchange(m_last_shape, shape()) != shape())
        m_core.shown_changed();
    for (CDXUTControl* control : controls())
        control->m_last_bounds = control->drawn_bounds(); // Its old place was inside the old bounds.
}
