// What the main window remembers, and how the keyboard goes round in it.

#include "core/document.h"
#include "core/journal.h"
#include "core/language.h"
#include "dlg_problems.h"
#include "engine/scene_editor.h"
#include "engine/scene_plug.h"
#include "main_window.h"
#include "settings.h"
#include "studio.h"
#include "view/view3d.h"

#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;
using tarn::ViewSetting;

namespace {

class MainWindowTest : public testing::Test {
protected:
    void SetUp() override
    {
        tarn::settings::forget_all();
        start();
    }
    void TearDown() override { stop(); }
    void start()
    {
        // The scene alone: the windows of the editor have no part in this.
        const QString plug_in = QStringLiteral(TARN_SCENE_PLUGIN);
        QFile::link(plug_in, m_folder.filePath(QFileInfo(plug_in).fileName()));
        m_studio = std::make_unique<Studio>();
        ASSERT_TRUE(m_studio->load_plug_ins(m_folder.path()).isEmpty());
        m_window = std::make_unique<MainWindow>(*m_studio);
        m_studio->start_world();
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
    }
    void stop()
    {
        m_studio->scene()->journal().mark_saved(); // Nothing is asked then.
        m_window->close();
        m_window.reset();
        m_studio->stop();
        m_studio.reset();
    }
    quint32 setting(const QString& key)
    {
        for (const ViewSetting& each : m_studio->scene()->editor().view_settings())
            if (key == QLatin1String(each.key))
                return each.value;
        return 0;
    }
    QAction* action(const QKeySequence& keys)
    {
        for (QAction* each : m_window->findChildren<QAction*>())
            if (each->shortcuts().contains(keys))
                return each;
        return nullptr;
    }
    QDockWidget& dock(const QString& name) { return *m_window->findChild<QDockWidget*>(name); }

    QTemporaryDir m_folder;
    std::unique_ptr<Studio> m_studio;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace

TEST_F(MainWindowTest, switches_and_sizes_return_at_the_next_start_until_the_layout_is_reset)
{
    m_window->resizeDocks({&dock(u"side_panel"_s)}, {410}, Qt::Horizontal);
    dock(u"history"_s).show();
    tarn::SceneEditor& editor = m_studio->scene()->editor();
    for (const QString& key : {u"ruler"_s, u"snap"_s, u"grid"_s})
        editor.set_view_setting(key, 1);
    editor.set_view_setting(u"grid_step"_s, 20);
    QApplication::processEvents();
    const auto columns = [&]() -> CReportList& { return *m_window->findChild<CReportListProblems*>(); };
    columns().set_chosen_widths({70, 300});
    stop();
    start();
    EXPECT_EQ(columns().chosen_widths(), (QList<int>{70, 300}));
    EXPECT_EQ(dock(u"side_panel"_s).width(), 410);
    EXPECT_TRUE(dock(u"history"_s).isVisible());
    EXPECT_EQ(setting(u"ruler"_s), 1U);
    EXPECT_EQ(setting(u"snap"_s), 1U);
    EXPECT_EQ(setting(u"grid_step"_s), 20U);
    for (QAction* each : m_window->findChildren<QAction*>())
        if (each->text() == tarn::lang(u"恢复默认布局(&R)", u"&Reset Layout"))
            each->trigger();
    QApplication::processEvents();
    EXPECT_FALSE(dock(u"history"_s).isVisible());
    EXPECT_EQ(dock(u"side_panel"_s).width(), 340);
    EXPECT_TRUE(columns().chosen_widths().isEmpty());
}

TEST_F(MainWindowTest, the_status_bar_counts_problems_soon_after_they_are_there)
{
    tarn::SceneModel& model = m_studio->scene()->model();
    const tarn::ObjectKind& kind = *m_studio->world().document().kind("controls");
    const auto count = [&] {
        for (const auto* button : m_window->statusBar()->findChildren<QToolButton*>())
            if (!button->isHidden())
                return button->text();
        return QString();
    };
    EXPECT_TRUE(count().isEmpty());
    for (int i = 0; i < 2; ++i)
        ASSERT_TRUE(model.create(kind, {.name = u"Twin"_s, .type = 0}));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !count().isEmpty(); }, 5000));
    EXPECT_EQ(count(), tarn::lang(u"1 个问题", u"1 problem"));
    m_studio->undo();
    EXPECT_TRUE(QTest::qWaitFor([&] { return count().isEmpty(); }, 5000));
}

TEST_F(MainWindowTest, f6_goes_round_the_panels_and_back_to_where_the_keyboard_was)
{
    CView3D& view = m_window->view();
    view.setFocus();
    dock(u"history"_s).show();
    QApplication::processEvents();
    QAction* next = action(Qt::Key_F6);
    QAction* previous = action(Qt::SHIFT | Qt::Key_F6);
    ASSERT_TRUE(next && previous);
    QWidgetList seen;
    for (int i = 0; i < 8; ++i) {
        next->trigger();
        seen.append(QApplication::focusWidget());
        if (QApplication::focusWidget() == &view)
            break;
    }
    EXPECT_EQ(seen.last(), &view) << "all the way round";
    EXPECT_TRUE(std::any_of(seen.begin(), seen.end(),
                            [&](QWidget* widget) { return dock(u"history"_s).isAncestorOf(widget); }));
    previous->trigger();
    EXPECT_EQ(QApplication::focusWidget(), seen.size() > 1 ? seen[seen.size() - 2] : &view);
}
