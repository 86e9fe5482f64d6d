#include "report_list_control.h"

#include "core/language.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <QMouseEvent>

#include <array>

using tarn::lang;

namespace {

const QList<int> icon_numbers{6146, 6023, 6149, 6327, 6331, 6022, 6329, 6025,
                              6024, 6357, 6351, 6029, 6032, 6079, 6218, 6219};
constexpr int no_icon = 99; ///< beside the list

/// Indexes into the icon list by control type. The last two icons stand the other way round than their types.
constexpr std::array<int, control_type_count> type_icons{0, 1,  2,       3,  4,       5,       6,  no_icon, 7,  8,
                                                         9, 10, no_icon, 11, no_icon, no_icon, 12, 13,      15, 14};

/// Layers have as many digits as the topmost one of their dialog, so that they also sort as texts; one digit more from
/// the last number of a length on.
QString layer_text(int layer, int count)
{
    constexpr int most = 9998;
    if (count > most)
        return {};
    const int digits = count < 9 ? 1 : count < 99 ? 2 : count < 999 ? 3 : 4;
    return QStringLiteral("%1").arg(layer, digits, 10, QLatin1Char('0'));
}

const CDXUTControl& as_control(const void* item)
{
    return *static_cast<const CDXUTControl*>(item);
}

} // namespace

CReportListControl::CReportListControl(QWidget* parent) : CReportList(parent)
{
    insert_column(Id, QStringLiteral("ID"), 1, Number);
    insert_column(Name, lang(u"名称", u"Name"));
    insert_column(Type, lang(u"类型", u"Type"));
    insert_column(Dialog, lang(u"所属窗口", u"Dialog"));
    insert_column(Layer, lang(u"图层顺序", u"Layer"));
    set_icon_list(icon_numbers);
    set_multi_selection(true);
    set_empty_hint(lang(u"没有控件。请点击上面的控件类型，然后在视图中绘制。",
                        u"There are no controls. Click a type above and draw one in the view."));
}

CDXUTControl* CReportListControl::control(int row) const
{
    return static_cast<CDXUTControl*>(get_binded_ptr(row));
}

std::vector<CDXUTControl*> CReportListControl::selected_controls() const
{
    std::vector<CDXUTControl*> controls;
    for (void* item : selected_items())
        controls.push_back(static_cast<CDXUTControl*>(item));
    return controls;
}

QString CReportListControl::get_item_caption(void* item, int column) const
{
    const CDXUTControl& control = as_control(item);
    const CDXUTDialog* dialog = control.dialog();
    switch (column) {
    case Id: return QString::number(control.id());
    case Name: return control.name();
    case Type: return GetControlTypeName(control.GetType());
    case Dialog: return dialog ? dialog->name() : QString();
    case Layer: return dialog ? layer_text(dialog->GetControlIndex(&control) + 1, dialog->GetControlNum()) : QString();
    default: return {};
    }
}

int CReportListControl::get_item_icon(void* item) const
{
    const CDXUTControl& control = as_control(item);
    return control.GetVisible() ? type_icons[size_t(control.GetType())] : no_icon;
}

void CReportListControl::keyPressEvent(QKeyEvent* event)
{
    bool is_changed = false;
    const auto watch = connect(this, &CReportList::selection_changed_by_user, this, [&] { is_changed = true; });
    CReportList::keyPressEvent(event);
    disconnect(watch);
    if (is_changed)
        Q_EMIT navigated();
}

std::pair<int, int> CReportListControl::cell_under_mouse() const
{
    std::pair<int, int> cell;
    get_item_index_under_mouse(cell.first, cell.second);
    return cell;
}

void CReportListControl::mousePressEvent(QMouseEvent* event)
{
    CReportList::mousePressEvent(event);
    m_pressed_cell = cell_under_mouse();
}

void CReportListControl::mouseReleaseEvent(QMouseEvent* event)
{
    // A handler of the click may refill the list; the cells are compared before.
    const QModelIndex released = indexAt(event->position().toPoint());
    const bool is_drag = event->button() == Qt::LeftButton && m_pressed_cell.first >= 0
        && m_pressed_cell != std::pair(released.row(), released.column());
    CReportList::mouseReleaseEvent(event);
    if (is_drag)
        Q_EMIT navigated();
}
