#include "report_list_control.h"

#include "core/language.h"
#include "gui_core/control_class.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"

#include <array>

using tarn::lang;

namespace {

const QList<int> icon_numbers{6146, 6023, 6149, 6327, 6331, 6022, 6329, 6025,
                              6024, 6357, 6351, 6029, 6032, 6079, 6218, 6219};
constexpr int no_icon = 99; ///< beside the list

enum CellIconNumber : int { icon_shown = 1, icon_hidden, icon_locked, icon_unlocked };

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
    set_rows_draggable(true);
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

std::vector<CReportList::CellIcon> CReportListControl::cell_icons(void* item, int column) const
{
    if (column != Layer)
        return {};
    const CDXUTControl& control = as_control(item);
    const bool shown = control.GetVisible();
    const bool locked = control.locked();
    return {{.number = shown ? icon_shown : icon_hidden,
             .tip = shown ? lang(u"已显示，单击隐藏", u"Shown; a click hides it")
                          : lang(u"已隐藏，单击显示", u"Hidden; a click shows it")},
            {.number = locked ? icon_locked : icon_unlocked,
             .tip = locked ? lang(u"已锁定，单击解锁", u"Locked; a click unlocks it")
                           : lang(u"未锁定，单击锁定：视图中的鼠标将不会改动它",
                                  u"Not locked; a click locks it: the mouse in the view then leaves it alone"),
             .takes_clicks = true}};
}

bool CReportListControl::accepts_drop_at(void* item) const
{
    return isEnabled() && as_control(item).dialog();
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
