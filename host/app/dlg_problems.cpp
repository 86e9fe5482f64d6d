#include "dlg_problems.h"

#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "frame/cmd_test.h"
#include "studio.h"

#include <algorithm>

using tarn::lang;
using Problem = tarn::SceneModel::Problem;

namespace {

using namespace std::chrono_literals;

constexpr auto refresh_delay = 300ms; ///< of the list while it is seen
constexpr auto count_delay = 1200ms;  ///< once the author pauses

} // namespace

CReportListProblems::CReportListProblems(QWidget* parent) : CReportList(parent)
{
    insert_column(0, lang(u"对象", u"Object"), 1);
    insert_column(1, lang(u"问题", u"Problem"), 4);
    set_empty_hint(lang(u"没有问题。", u"There are no problems."));
}

QString CReportListProblems::get_item_caption(void* item, int column) const
{
    const auto& problem = *static_cast<const Problem*>(item);
    return column == 0 ? problem.place : problem.text;
}

CDlgProblems::CDlgProblems(Studio& studio) : CChildDlg(QStringLiteral("CDlgProblems")), m_studio(studio)
{
    m_pending.setSingleShot(true);
    connect(&m_pending, &QTimer::timeout, this, &CDlgProblems::refresh);
    studio.world().document().changes().add_listener(this);
}

CDlgProblems::~CDlgProblems()
{
    m_studio.world().document().changes().remove_listener(this);
}

QWidget* CDlgProblems::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListProblems"))
        return CChildDlg::create_widget(class_name, parent);
    m_list = new CReportListProblems(parent);
    return m_list;
}

void CDlgProblems::OnInitDialog()
{
    CChildDlg::OnInitDialog();
    setEnabled(m_studio.scene());
    connect(m_list, &CReportList::item_double_clicked, this, [this](int row) { go_to(row); });
}

void CDlgProblems::model_changed(const tarn::ModelChange&)
{
    // A list that is seen follows every change; otherwise the count waits until nothing more comes.
    if (!isVisible())
        m_pending.start(count_delay);
    else if (!m_pending.isActive() || m_pending.remainingTimeAsDuration() > refresh_delay)
        m_pending.start(refresh_delay);
}

void CDlgProblems::showEvent(QShowEvent*)
{
    refresh();
}

void CDlgProblems::refresh()
{
    if (!m_studio.scene() || (m_studio.is_playing() && !isVisible()))
        return;
    auto problems = m_studio.scene()->model().problems();
    std::vector<void*> items;
    items.reserve(problems.size());
    for (Problem& problem : problems)
        items.push_back(&problem);
    m_list->refill_list(items);
    m_problems = std::move(problems); // The rows' addresses stay.
    if (!m_studio.is_playing())
        Q_EMIT counted(int(m_problems.size()));
}

/// The name comes by value: the list may be filled anew while the editor is open.
void CDlgProblems::open_function(QString name, int line)
{
    CDlgCmdTest::do_modal(name, &m_studio.world(), window(), line - 1);
    refresh();
}

void CDlgProblems::go_to(int row)
{
    const auto* problem = static_cast<const Problem*>(m_list->get_binded_ptr(row));
    if (!problem)
        return;
    if (!problem->function.isEmpty())
        return open_function(problem->function, problem->line);
    if (!problem->object || m_studio.is_playing())
        return;
    // The object may have gone since the list was filled.
    const auto now = m_studio.scene()->model().problems();
    const bool there = std::any_of(now.begin(), now.end(),
                                   [&](const Problem& each) { return each.object == problem->object; });
    if (!there || !m_studio.scene()->model().select({problem->object}))
        return refresh();
    m_studio.world().broadcast(tarn::ui_selection_changed);
    m_studio.world().update_all_views();
}
