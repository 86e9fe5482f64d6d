#include "prop_bar.h"

#include "animation/animation_scene.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "design/dlg_design_font.h"
#include "design/dlg_element_editor.h"
#include "engine/base_world.h"
#include "frame/dlg_group.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/form_filter.h"
#include "props/dlg_prop_control.h"
#include "props/dlg_prop_dialog_all.h"
#include "props/dlg_prop_menu.h"
#include "timeline_pages/dlg_prop_timer.h"
#include "widgets/scrolled_panel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

#include <utility>

using tarn::lang;

namespace {

constexpr QMargins search_margins(4, 4, 4, 4);

} // namespace

CPropBar::~CPropBar()
{
    if (m_group)
        m_group->destroy_all();
}

void CPropBar::create_pages()
{
    const CResHandleMan guard(tarn::gui_ui_resources());
    m_group = new CDlgGroup(this);
    make_search();
    // The order is that of the group's indices.
    m_group->create_page<CDlgPropDialogAll>(page_dialog);
    m_group->create_page<CDlgPropControl>(page_control);
    m_group->create_page<CDlgElementEditor>(page_element_editor);
    m_group->create_page<CDlgDesignFont>(page_font_design);
    m_group->create_page<CDlgPropMenu>(page_menu);
    m_group->create_page<CDlgPropTimer>(page_timer);
    const auto* elements = qobject_cast<CDlgElementEditor*>(m_group->find_wnd(page_element_editor));
    connect(elements, &CDlgElementEditor::font_page_wanted, this,
            [this] { m_group->show_wnd_by_id(page_font_design); });
    m_group->show_wnd_by_index(0);
    connect(m_group, &QStackedWidget::currentChanged, this, &CPropBar::filter);
}

void CPropBar::make_search()
{
    auto* inside = new QWidget(this);
    m_search = new QLineEdit(inside);
    m_search->setObjectName(QStringLiteral("property_search"));
    m_search->setPlaceholderText(lang(u"查找属性", u"Find a property"));
    m_search->setAccessibleName(m_search->placeholderText());
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    m_nothing_found = new QLabel(lang(u"没有这样的属性", u"There is no such property"), inside);
    m_nothing_found->setObjectName(QStringLiteral("nothing_found"));
    m_nothing_found->setAlignment(Qt::AlignCenter);
    m_nothing_found->hide();
    auto* layout = new QVBoxLayout(inside);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    auto* line = new QHBoxLayout;
    line->setContentsMargins(search_margins);
    line->addWidget(m_search);
    layout->addLayout(line);
    layout->addWidget(m_nothing_found);
    layout->addWidget(new CScrolledPanel(m_group, inside), 1);
    setWidget(inside);
    connect(m_search, &QLineEdit::textChanged, this, &CPropBar::filter);
}

/// The design pages are pictures and lists rather than lines.
bool CPropBar::can_search() const
{
    const int shown = m_group->shown_id();
    return shown != page_element_editor && shown != page_font_design;
}

void CPropBar::filter()
{
    m_search->setVisible(can_search());
    const QString text = m_search->text().trimmed();
    const bool found = !can_search() || !m_group->currentWidget() || tarn::filter_form(*m_group->currentWidget(), text);
    m_nothing_found->setVisible(!found);
}

void CPropBar::search()
{
    show_bar(true);
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

/// Escape first empties the line; Enter and Down go on to what was found.
bool CPropBar::key_in_search(int key)
{
    if (key == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
        return true;
    }
    if (key != Qt::Key_Return && key != Qt::Key_Enter && key != Qt::Key_Down)
        return false;
    if (QWidget* editor = tarn::first_editor(*m_group->currentWidget()))
        editor->setFocus(Qt::TabFocusReason);
    return true;
}

bool CPropBar::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress
        && key_in_search(static_cast<QKeyEvent*>(event)->key()))
        return true;
    if (watched == m_search && event->type() == QEvent::ShortcutOverride
        && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
        event->accept();
        return true;
    }
    return CMyControlBar::eventFilter(watched, event);
}

void CPropBar::on_world_created(CBaseWorld* world)
{
    m_group->on_world_created(world);
    m_scene = tarn::find_gui_scene(*world);
}

void CPropBar::update_ui(int code)
{
    if (!m_scene)
        return;
    // Undo and previews leave an author of timebars where he is; what he selects in the view comes to the front.
    const tarn::SelectionRecord& selection = m_scene->gui_core().selection();
    const std::pair<const void*, const void*> selected(
        selection.current_dialog, selection.controls_selected ? selection.current_control : nullptr);
    const bool selects = std::exchange(m_selected, selected) != selected;
    const bool stays = code == tarn::ui_scene_changed && !selects && m_group->shown_id() == page_timer
        && m_scene->animation().is_editing();
    const bool chooses = code == tarn::ui_full_refresh || code == tarn::ui_scene_changed
        || code == tarn::ui_control_selected || code == tarn::ui_selection_changed;
    if (chooses && !stays)
        choose_page();
    // What shows a timebar belongs to its mode, which brings it to the front again when it is entered.
    if (code == tarn::ui_mode_entered && m_group->shown_id() == page_timer)
        choose_page();
    m_group->update_ui(code);
    if (chooses && !m_search->text().isEmpty())
        filter(); // Other objects have other attributes.
}

void CPropBar::choose_page()
{
    const tarn::SelectionRecord& selection = m_scene->gui_core().selection();
    if (selection.menu_editing) {
        m_group->show_wnd_by_id(page_menu);
        return;
    }
    // The two design pages are left only by their own actions.
    const int shown = m_group->shown_id();
    if (shown == page_element_editor || shown == page_font_design)
        return;
    m_group->show_wnd_by_id(selection.controls_selected && selection.current_control ? page_control : page_dialog);
}
