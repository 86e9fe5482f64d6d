#include "dlg_group.h"

#include "child_dlg.h"

#include <algorithm>

CWndGroup::CWndGroup(QWidget* parent) : QStackedWidget(parent)
{
    connect(this, &QStackedWidget::currentChanged, this, &CWndGroup::follow_current);
}

void CWndGroup::add_wnd(QWidget* window, int id)
{
    if (!window)
        return;
    addWidget(window);
    m_ids.push_back(id);
    follow_current();
}

void CWndGroup::follow_current()
{
    for (int i = 0; i < count(); ++i) {
        QSizePolicy policy = widget(i)->sizePolicy();
        policy.setVerticalPolicy(i == currentIndex() ? QSizePolicy::Preferred : QSizePolicy::Ignored);
        widget(i)->setSizePolicy(policy);
    }
}

void CWndGroup::show_wnd_by_id(int id)
{
    if (QWidget* window = find_wnd(id))
        setCurrentWidget(window);
}

void CWndGroup::show_wnd_by_index(int index)
{
    if (index >= 0 && index < int(m_ids.size()))
        show_wnd_by_id(m_ids[std::size_t(index)]);
}

int CWndGroup::shown_id() const
{
    const int index = currentIndex();
    return index >= 0 && index < int(m_ids.size()) ? m_ids[std::size_t(index)] : -1;
}

QWidget* CWndGroup::find_wnd(int id) const
{
    const auto found = std::find(m_ids.begin(), m_ids.end(), id);
    return found == m_ids.end() ? nullptr : widget(int(found - m_ids.begin()));
}

void CWndGroup::destroy_all()
{
    while (QWidget* window = widget(0)) {
        removeWidget(window);
        delete window;
    }
    m_ids.clear();
}

void CDlgGroup::add_wnd(QWidget* window, int id)
{
    CWndGroup::add_wnd(window, id);
    if (auto* page = qobject_cast<CChildDlg*>(window))
        m_pages.push_back(page);
}

void CDlgGroup::destroy_all()
{
    m_pages.clear();
    CWndGroup::destroy_all();
}

void CDlgGroup::show_wnd_by_id(int id)
{
    auto* before = qobject_cast<CChildDlg*>(currentWidget());
    CWndGroup::show_wnd_by_id(id);
    auto* now = qobject_cast<CChildDlg*>(currentWidget());
    if (before == now)
        return;
    if (before)
        before->on_set_active(false);
    if (now)
        now->on_set_active(true);
}

void CDlgGroup::update_ui(int code)
{
    for (CChildDlg* page : m_pages)
        page->update_ui(code);
}

void CDlgGroup::on_world_created(CBaseWorld* world)
{
    for (CChildDlg* page : m_pages)
        page->on_world_created(world);
}
