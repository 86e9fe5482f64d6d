#include "report_list_timer.h"

#include "animation/timebar.h"
#include "core/language.h"

#include <QHeaderView>
#include <QKeyEvent>

using tarn::lang;

namespace {

enum Column { column_name, column_time, column_script, column_object };

} // namespace

CReportListTimer::CReportListTimer(QWidget* parent) : CReportList(parent)
{
    insert_column(column_name, lang(u"名称", u"Name"), 2);
    insert_column(column_time, lang(u"时间", u"Time"), 1, Number);
    insert_column(column_script, lang(u"脚本", u"Script"), 1, Number);
    insert_column(column_object, lang(u"对象", u"Object"), 1, Number);
    set_use_match_info(false);
    horizontalHeader()->setSectionsClickable(false); // The rows stand in the order in which the timebars win.
    set_empty_hint(lang(u"还没有时间轴。请点击“新建时间轴”。", u"There are no timebars yet. Click \"New Timebar\"."));
}

CTimebar* CReportListTimer::bar(int row) const
{
    return static_cast<CTimebar*>(get_binded_ptr(row));
}

QString CReportListTimer::get_item_caption(void* item, int column) const
{
    const auto& bar = *static_cast<const CTimebar*>(item);
    switch (column) {
    case column_name: return bar.name();
    case column_time: return QString::number(double(bar.get_total_length()), 'f', 1) + QLatin1String("Sec");
    case column_script: return QString::number(bar.script_keys().size());
    case column_object: return QString::number(bar.objects().size());
    default: return {};
    }
}

void CReportListTimer::keyPressEvent(QKeyEvent* event)
{
    const int before = get_last_sel_index();
    if (event->key() == Qt::Key_F2 && before >= 0) {
        Q_EMIT rename_pressed();
        return;
    }
    CReportList::keyPressEvent(event);
    if (get_last_sel_index() != before)
        Q_EMIT navigated();
}
