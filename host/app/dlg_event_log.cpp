#include "dlg_event_log.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "frame/cmd_test.h"
#include "script/config_scene.h"
#include "studio.h"

#include <algorithm>
#include <utility>

using tarn::lang;
using tarn::ScriptLogEntry;

namespace {

using namespace std::chrono_literals;

constexpr auto refresh_delay = 50ms;

enum Column { column_time, column_object, column_event, column_function, column_result };

} // namespace

CReportListLog::CReportListLog(QWidget* parent) : CReportList(parent)
{
    insert_column(column_time, lang(u"时间", u"Time"), 2, Number);
    insert_column(column_object, lang(u"对象", u"Object"), 3);
    insert_column(column_event, lang(u"事件", u"Event"), 3);
    insert_column(column_function, lang(u"函数", u"Function"), 4);
    insert_column(column_result, lang(u"结果", u"Result"), 8);
    set_empty_hint(lang(u"预览（F5）时，这里列出调用脚本的事件。",
                        u"Events that call scripts are listed here while the preview (F5) runs."));
}

QString CReportListLog::get_item_caption(void* item, int column) const
{
    const auto& entry = *static_cast<const ScriptLogEntry*>(item);
    switch (column) {
    case column_time: return QString::number(entry.time, 'f', 2);
    case column_object: return entry.object;
    case column_event: return entry.event;
    case column_function: return entry.function;
    default: break;
    }
    switch (entry.kind) {
    case ScriptLogEntry::Kind::Error: return lang(u"错误：", u"Error: ") + entry.text;
    case ScriptLogEntry::Kind::Print: return lang(u"输出：", u"Print: ") + entry.text;
    case ScriptLogEntry::Kind::Result: break;
    }
    return entry.text.isEmpty() ? lang(u"完成", u"done") : entry.text;
}

CDlgEventLog::CDlgEventLog(Studio& studio) : CChildDlg(QStringLiteral("CDlgEventLog")), m_studio(studio)
{
    m_pending.setSingleShot(true);
    m_pending.setInterval(refresh_delay);
    connect(&m_pending, &QTimer::timeout, this, &CDlgEventLog::refresh);
    studio.world().script_log().on_changed = [this] {
        const tarn::ScriptLog& log = m_studio.world().script_log();
        const bool is_new = std::exchange(m_heard, log.added()) < log.added();
        if (log.added() == 0)
            m_seen = 0;
        else if (is_new && log.entries().back().kind != ScriptLogEntry::Kind::Result)
            Q_EMIT spoken();
        if (!m_pending.isActive())
            m_pending.start();
    };
}

CDlgEventLog::~CDlgEventLog()
{
    m_studio.world().script_log().on_changed = nullptr;
}

QWidget* CDlgEventLog::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListLog"))
        return CChildDlg::create_widget(class_name, parent);
    m_list = new CReportListLog(parent);
    return m_list;
}

void CDlgEventLog::OnInitDialog()
{
    CChildDlg::OnInitDialog();
    connect(m_list, &CReportList::item_double_clicked, this, [this](int row) { open_function(row); });
}

void CDlgEventLog::showEvent(QShowEvent*)
{
    refresh();
}

void CDlgEventLog::refresh()
{
    if (!isVisible())
        return;
    take_new_entries();
    std::vector<void*> items;
    items.reserve(m_shown.size());
    for (ScriptLogEntry& entry : m_shown)
        items.push_back(&entry);
    m_list->refill_list(items);
    if (m_list->sort_column() < 0)
        m_list->scrollToBottom();
}

/// An entry keeps its address, and so its row, as long as it is shown. Calls that waited may have ended since.
void CDlgEventLog::take_new_entries()
{
    const tarn::ScriptLog& log = m_studio.world().script_log();
    const auto fresh = std::min(log.added() - m_seen, log.entries().size());
    m_seen = log.added();
    if (fresh == log.entries().size()) {
        m_list->refill_list({});
        m_shown.clear();
    }
    m_shown.insert(m_shown.end(), log.entries().end() - std::ptrdiff_t(fresh), log.entries().end());
    while (m_shown.size() > log.entries().size())
        m_shown.pop_front();
    std::copy(log.entries().begin(), log.entries().end(), m_shown.begin());
}

void CDlgEventLog::open_function(int row)
{
    const auto* entry = static_cast<const ScriptLogEntry*>(m_list->get_binded_ptr(row));
    if (!entry || entry->function.isEmpty())
        return;
    // The list may be filled anew while the editor is open.
    const QString function = entry->function;
    const int line = entry->line - 1;
    CDlgCmdTest::do_modal(function, &m_studio.world(), window(), line);
}
