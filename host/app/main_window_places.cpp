// Where things are in the main window: what returns at the next start, and how the keyboard goes round the panels.

#include "engine/scene_editor.h"
#include "engine/scene_plug.h"
#include "frame/child_dlg.h"
#include "main_window.h"
#include "settings.h"
#include "studio.h"
#include "view/view3d.h"
#include "widgets/report_list.h"
#include "widgets/sizing_control_bar.h"

#include <QApplication>
#include <QDockWidget>
#include <QStackedWidget>
#include <QTabBar>

#include <algorithm>

namespace {

constexpr int usual_side_panel = 340; ///< pixels
constexpr const char* geometry_key = "window/geometry";
constexpr const char* places_key = "window/places";
constexpr QLatin1String view_group("view/");

/// Where the widths of a list's columns are kept; empty for a list of no page.
QString columns_key(const CReportList& list)
{
    const QWidget* page = list.parentWidget();
    while (page && !qobject_cast<const CChildDlg*>(page))
        page = page->parentWidget();
    return page ? QStringLiteral("columns/%1/%2").arg(page->objectName(), list.objectName()) : QString();
}

/// The first widget inside that the keyboard can reach, in the order of Tab; null when there is none.
QWidget* first_focus(QWidget& panel)
{
    for (QWidget* widget = &panel;;) {
        if (widget->focusPolicy() & Qt::TabFocus && widget->isEnabled() && widget->isVisible()
            && (widget == &panel || panel.isAncestorOf(widget)))
            return widget;
        widget = widget->nextInFocusChain();
        if (widget == &panel)
            return nullptr;
    }
}

} // namespace

void MainWindow::restore_places()
{
    gather_bottom_docks();
    for (auto* dock : findChildren<QDockWidget*>())
        m_usual_areas.insert(dock, dockWidgetArea(dock));
    QSettings& store = tarn::settings::store();
    for (auto* list : findChildren<CReportList*>()) {
        QList<int> widths;
        for (const QVariant& width : store.value(columns_key(*list)).toList())
            widths.append(width.toInt());
        if (!widths.isEmpty())
            list->set_chosen_widths(widths);
    }
    if (m_studio.scene()) {
        tarn::SceneEditor& editor = m_studio.scene()->editor();
        for (const tarn::ViewSetting& setting : editor.view_settings()) {
            const QString key = QLatin1String(setting.key);
            editor.set_view_setting(key, store.value(QString(view_group + key), setting.value).toUInt());
        }
    }
    restoreGeometry(store.value(QLatin1String(geometry_key)).toByteArray());
    if (!restoreState(store.value(QLatin1String(places_key)).toByteArray())) {
        resizeDocks({findChild<QDockWidget*>(QStringLiteral("side_panel"))}, {usual_side_panel}, Qt::Horizontal);
        return;
    }
    for (auto* bar : findChildren<CSizingControlBar*>())
        bar->keep_size();
}

void MainWindow::save_places()
{
    QSettings& store = tarn::settings::store();
    store.setValue(QLatin1String(geometry_key), saveGeometry());
    store.setValue(QLatin1String(places_key), saveState());
    for (const auto* list : findChildren<CReportList*>()) {
        const QString key = columns_key(*list);
        QVariantList widths;
        for (const int width : list->chosen_widths())
            widths.append(width);
        if (!key.isEmpty() && widths.isEmpty())
            store.remove(key);
        else if (!key.isEmpty())
            store.setValue(key, widths);
    }
    if (m_studio.scene())
        for (const tarn::ViewSetting& setting : m_studio.scene()->editor().view_settings())
            store.setValue(QString(view_group + QLatin1String(setting.key)), setting.value);
}

/// In one place: beside each other each would be a sliver.
void MainWindow::gather_bottom_docks()
{
    for (auto* bar : findChildren<CSizingControlBar*>())
        if (dockWidgetArea(bar) == Qt::BottomDockWidgetArea)
            tabifyDockWidget(bar, m_event_log);
    tabifyDockWidget(m_event_log, m_problems);
}

/// Docks, columns and sizes as at the first start; the mode stays.
void MainWindow::reset_layout()
{
    for (const auto& [dock, area] : m_usual_areas.asKeyValueRange()) {
        dock->setFloating(false);
        addDockWidget(area, dock);
        dock->setVisible(dock->objectName() == QLatin1String("side_panel"));
    }
    gather_bottom_docks();
    on_mode_chosen(m_mode_strip->currentIndex());
    for (auto* bar : findChildren<CSizingControlBar*>())
        bar->take_size_back();
    resizeDocks({findChild<QDockWidget*>(QStringLiteral("side_panel"))}, {usual_side_panel}, Qt::Horizontal);
    for (auto* list : findChildren<CReportList*>())
        list->set_chosen_widths({});
}

/// Those that are seen, from the left: the side panel, the strip above the view, the view, and the docks beside it.
QList<QWidget*> MainWindow::panels() const
{
    QList<QWidget*> all{findChild<QDockWidget*>(QStringLiteral("side_panel")), m_top_area, m_view};
    for (auto* dock : findChildren<QDockWidget*>())
        if (!all.contains(dock))
            all.append(dock);
    all.removeIf([](const QWidget* panel) {
        // Of docks that share a place those behind count as shown.
        const bool is_behind = qobject_cast<const QDockWidget*>(panel) && panel->visibleRegion().isEmpty();
        return !panel->isVisible() || is_behind;
    });
    return all;
}

void MainWindow::focus_panel(int step)
{
    const QList<QWidget*> all = panels();
    QWidget* focused = QApplication::focusWidget();
    qsizetype now = -1;
    for (qsizetype i = 0; i < all.size() && focused; ++i)
        if (all[i] == focused || all[i]->isAncestorOf(focused))
            now = i;
    if (now >= 0)
        m_last_focus[all[now]] = focused;
    for (qsizetype tried = 1; tried <= all.size(); ++tried) {
        QWidget* panel = all[(std::max<qsizetype>(now, 0) + step * tried + all.size() * tried) % all.size()];
        QWidget* last = m_last_focus.value(panel);
        QWidget* next = last && last->isVisible() && last->isEnabled() ? last : first_focus(*panel);
        if (next) {
            next->setFocus(Qt::ShortcutFocusReason);
            return;
        }
    }
}
