#include "timer_lists.h"

#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "core/language.h"

#include <QHeaderView>

using tarn::lang;

namespace {

constexpr int broken_icon = 6953;

} // namespace

CReportListTimerRows::CReportListTimerRows(QWidget* parent) : CReportList(parent)
{
    set_use_match_info(false);
    horizontalHeader()->setSectionsClickable(false);
}

void CReportListTimerRows::show_rows(const std::vector<void*>& rows, void* current)
{
    if (!refill_list(rows))
        refresh_all_item_caption();
    if (selected_row() != current)
        selecte_item_by_ptr_binded(current);
}

void CReportListTimerRows::keyPressEvent(QKeyEvent* event)
{
    const void* before = selected_row();
    CReportList::keyPressEvent(event);
    if (selected_row() != before)
        Q_EMIT navigated();
}

CReportListTimerCmd::CReportListTimerCmd(QWidget* parent) : CReportListTimerRows(parent)
{
    insert_column(0, lang(u"类型", u"Type"), 1);
    insert_column(1, lang(u"目标", u"Object"), 2);
    set_empty_hint(lang(u"还没有动画对象。记录控件、窗口或三维物体的关键帧，或添加脚本对象。",
                        u"There are no timer objects yet. Record a key of a control, a dialog or an object of the "
                        u"world, or add a script object."));
}

QString CReportListTimerCmd::get_item_caption(void* item, int column) const
{
    const auto* object = static_cast<const CTimerObject*>(item);
    if (column == 0)
        return object->get_type_name();
    return object->is_broken() ? lang(u"（目标已丢失）", u"(target is gone)") : object->name();
}

std::vector<CReportList::CellIcon> CReportListTimerCmd::cell_icons(void* item, int column) const
{
    if (column != 1 || !static_cast<const CTimerObject*>(item)->is_broken())
        return {};
    return {{.number = broken_icon,
             .tip = lang(u"目标已删除；用“重新指定”给它另一个", u"The target is gone; Retarget gives it another one")}};
}

CReportListTimerVar::CReportListTimerVar(QWidget* parent) : CReportListTimerRows(parent)
{
    insert_column(0, lang(u"名称", u"Name"));
    insert_column(1, lang(u"类型", u"Type"));
    insert_column(2, lang(u"关键字数", u"Num Keys"), 1, Number);
}

QString CReportListTimerVar::get_item_caption(void* item, int column) const
{
    const auto* variable = static_cast<const CTVar*>(item);
    switch (column) {
    case 0: {
        const auto channel = variable->channel();
        return channel ? lang(tarn::channel_row(*channel).chinese, tarn::channel_row(*channel).english)
                       : variable->name();
    }
    case 1: return variable->get_type_name(0);
    default: return QString::number(variable->keys().size());
    }
}

CReportListTimerScript::CReportListTimerScript(QWidget* parent) : CReportListTimerRows(parent)
{
    insert_column(0, lang(u"时间", u"Time"));
}

QString CReportListTimerScript::get_item_caption(void* item, int) const
{
    const auto* key = static_cast<const tarn::CScriptKey*>(item);
    const auto* bar = static_cast<const CTimebar*>(key->parent());
    return bar ? bar->time_unit().key_text(key->time()) : QString();
}
