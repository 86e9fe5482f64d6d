#include "rollup.h"

#include "child_dlg.h"

#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

CRollupCtrl::CRollupCtrl(QWidget* parent) : QScrollArea(parent)
{
    auto* inside = new QWidget(this);
    m_layout = new QVBoxLayout(inside);
    m_layout->setContentsMargins({});
    m_layout->setSpacing(1);
    m_layout->addStretch();
    setWidget(inside);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

int CRollupCtrl::InsertPage(const QString& title, CChildDlg* page)
{
    auto* heading = new QToolButton(widget());
    heading->setText(title);
    heading->setCheckable(true);
    heading->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    heading->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    const int index = page_count();
    m_sections.push_back({.heading = heading, .page = page});
    m_layout->insertWidget(m_layout->count() - 1, heading);
    m_layout->insertWidget(m_layout->count() - 1, page);
    connect(heading, &QToolButton::clicked, this, [this, index](bool checked) { ExpandPage(index, checked); });
    ExpandPage(index, true);
    return index;
}

void CRollupCtrl::ExpandPage(int index, bool expand)
{
    if (index < 0 || index >= page_count())
        return;
    const Section& section = m_sections[std::size_t(index)];
    section.heading->setChecked(expand);
    section.heading->setArrowType(expand ? Qt::DownArrow : Qt::RightArrow);
    section.page->setVisible(expand && section.filtered != Filtered::Out);
}

void CRollupCtrl::filter_page(int index, Filtered filtered, bool unfold)
{
    if (index < 0 || index >= page_count())
        return;
    Section& section = m_sections[std::size_t(index)];
    const Filtered before = std::exchange(section.filtered, filtered);
    if (before == Filtered::No)
        section.was_expanded = is_expanded(index);
    section.heading->setVisible(filtered != Filtered::Out);
    const bool unfolds = filtered == Filtered::In && (unfold || before != Filtered::In);
    const bool ends = filtered == Filtered::No && before != Filtered::No;
    ExpandPage(index, unfolds || (ends ? section.was_expanded : is_expanded(index)));
}

void CRollupCtrl::ExpandAllPages(bool expand)
{
    for (int i = 0; i < page_count(); ++i)
        ExpandPage(i, expand);
}

bool CRollupCtrl::is_expanded(int index) const
{
    return index >= 0 && index < page_count() && m_sections[std::size_t(index)].heading->isChecked();
}

CChildDlg* CRollupCtrl::page(int index) const
{
    return index >= 0 && index < page_count() ? m_sections[std::size_t(index)].page : nullptr;
}

QToolButton* CRollupCtrl::heading_of(const CChildDlg* page) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [page](const Section& s) { return s.page == page; });
    return found == m_sections.end() ? nullptr : found->heading;
}

void CMyRollup::on_world_created(CBaseWorld* world)
{
    for (int i = 0; i < page_count(); ++i)
        page(i)->on_world_created(world);
}

void CMyRollup::update_ui(int code)
{
    for (int i = 0; i < page_count(); ++i)
        page(i)->update_ui(code);
}
