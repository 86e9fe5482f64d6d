#include "dlg_history.h"

#include "engine/scene_plug.h"
#include "history_model.h"
#include "studio.h"

#include <QListView>

namespace {

constexpr int id_steps = 7001;

} // namespace

CDlgHistory::CDlgHistory(Studio& studio) : CChildDlg(QStringLiteral("CDlgHistory")), m_studio(studio)
{
    m_pending.setSingleShot(true);
    connect(&m_pending, &QTimer::timeout, this, &CDlgHistory::refresh);
}

void CDlgHistory::OnInitDialog()
{
    CChildDlg::OnInitDialog();
    setEnabled(m_studio.scene());
    if (!m_studio.scene())
        return;
    m_list = control_as<QListView>(id_steps);
    m_model = new tarn::HistoryModel(m_studio.scene()->journal(), this);
    m_list->setModel(m_model);
    const auto go = [this](const QModelIndex& step) { m_studio.go_to_step(step.row()); };
    connect(m_list, &QListView::clicked, this, go);
    connect(m_list, &QListView::activated, this, go);
    connect(&m_studio, &Studio::document_changed, this, [this] {
        if (isVisible())
            m_pending.start();
    });
}

void CDlgHistory::showEvent(QShowEvent*)
{
    if (m_model)
        refresh();
}

void CDlgHistory::refresh()
{
    setEnabled(!m_studio.is_playing());
    m_model->refresh();
    const QModelIndex current = m_model->index(m_model->current_row());
    m_list->setCurrentIndex(current);
    m_list->scrollTo(current);
}
