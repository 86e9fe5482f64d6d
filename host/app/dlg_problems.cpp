#include "dlg_problems.h"

#include "core/language.h"
#include "core/model_object.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "screen_size_menu.h"
#include "settings.h"
#include "studio.h"

#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>

#include <algorithm>

using tarn::lang;
using Problem = tarn::SceneModel::Problem;

namespace {

using namespace std::chrono_literals;

enum Id : int { id_check = 7022, id_sizes = 7023 };

constexpr const char* sizes_key = "check/sizes";
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
    auto* check = control_as<QPushButton>(id_check);
    check->setText(lang(u"检查布局", u"Check Layout"));
    check->setToolTip(
        lang(u"放不下的文字、屏幕之外和互相重叠的控件，也包括每个时间轴的各个时刻",
             u"Texts that do not fit, controls off the screen or over each other, at all times of the timebars, "
             u"too"));
    connect(check, &QPushButton::clicked, this, &CDlgProblems::check_layout);
    auto* sizes = control_as<QLineEdit>(id_sizes);
    sizes->setAccessibleName(lang(u"屏幕尺寸", u"Screen sizes"));
    sizes->setPlaceholderText(lang(u"屏幕尺寸，例如 1280x720 390x844；空：界面自己的尺寸",
                                   u"Screen sizes, such as 1280x720 390x844; empty: the interface's own"));
    sizes->setText(tarn::settings::store().value(QLatin1String(sizes_key)).toString());
    connect(sizes, &QLineEdit::returnPressed, this, &CDlgProblems::check_layout);
}

void CDlgProblems::check_layout()
{
    const QString text = control_as<QLineEdit>(id_sizes)->text();
    std::vector<QSize> sizes;
    for (const QString& part : text.split(QRegularExpression(QStringLiteral("[\\s,;]+")), Qt::SkipEmptyParts)) {
        const auto size = ScreenSizeMenu::parsed(part);
        if (!size)
            return tarn::boxes::error(
                this,
                lang(u"“%1”不是屏幕尺寸（例如 1280x720）。", u"\"%1\" is not the size of a screen (such as 1280x720).")
                    .arg(part));
        sizes.push_back(*size);
    }
    tarn::settings::store().setValue(QLatin1String(sizes_key), text);
    if (sizes.empty())
        sizes.push_back(m_studio.scene()->design_size());
    const auto status = m_studio.world().work(
        lang(u"正在检查布局", u"Checking the layout"),
        [&](const tarn::Progress& progress) { return m_studio.scene()->model().check_layout(sizes, progress); });
    if (!status)
        return tarn::boxes::error(this, status.message());
    refresh();
    m_studio.world().broadcast(tarn::ui_timebars_changed);
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
    const quint32 timebar = problem->timebar;
    const float time = problem->time;
    if (!select(problem->object))
        return refresh();
    m_studio.world().broadcast(tarn::ui_selection_changed);
    if (timebar)
        Q_EMIT time_wanted(timebar, time);
    m_studio.world().update_all_views();
}

/// The object may have gone since the list was filled.
bool CDlgProblems::select(tarn::ModelObject* object)
{
    const auto now = m_studio.scene()->model().problems();
    const bool there = std::any_of(now.begin(), now.end(),
                                   [object](const Problem& each) { return each.object == object; });
    return there && m_studio.scene()->model().select({object});
}
