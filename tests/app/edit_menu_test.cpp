// The keys of the Edit menu in a real window, with the real scene.

#include "core/model_object.h"
#include "engine/scene_plug.h"
#include "gui_scene/gui_plug_scene.h"
#include "main_window.h"
#include "studio.h"
#include "view/view3d.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class EditMenuTest : public testing::Test {
protected:
    EditMenuTest()
    {
        // The scene alone: the windows of the editor have no part in this.
        const QString plug_in = QStringLiteral(TARN_SCENE_PLUGIN);
        QFile::link(plug_in, m_folder.filePath(QFileInfo(plug_in).fileName()));
        EXPECT_TRUE(m_studio.load_plug_ins(m_folder.path()).isEmpty());
        m_window = std::make_unique<MainWindow>(m_studio);
        m_studio.start_world();
        m_window->show();
        QApplication::setActiveWindow(m_window.get());
        m_button = model().create(kind(), {.rect = {200, 200, 100, 40}, .type = 0}).value();
    }

    tarn::SceneModel& model() { return m_studio.scene()->model(); }
    void select_button()
    {
        ASSERT_TRUE(model().select({m_button}).ok());
        m_studio.world().broadcast(tarn::ui_selection_changed);
        QCoreApplication::processEvents();
    }
    tarn::Document& document() { return m_studio.world().document(); }
    const tarn::ObjectKind& kind() { return *document().kind("controls"); }
    std::size_t controls() { return document().objects_of(kind()).size(); }
    QString text() { return std::get<QString>(m_button->property(*m_button->fields().find("text"))); }

    QTemporaryDir m_folder;
    Studio m_studio;
    std::unique_ptr<MainWindow> m_window;
    tarn::ModelObject* m_button = nullptr;
};

} // namespace

TEST_F(EditMenuTest, keys_work_in_the_whole_window_but_not_in_fields_of_text_nor_in_the_preview)
{
    QLineEdit field(QStringLiteral("abc"), m_window.get());
    QListWidget list(m_window.get());
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list.addItems({QStringLiteral("a"), QStringLiteral("b")});
    field.show();
    list.show();
    select_button();
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(controls(), 2u);
    QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list.selectedItems().size(), 2);

    select_button();
    field.setFocus();
    field.setReadOnly(true);
    QTest::keyClick(&field, Qt::Key_Delete);
    QTest::keyClick(&field, Qt::Key_D, Qt::ControlModifier);
    field.setReadOnly(false);
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&field, Qt::Key_Delete);
    EXPECT_EQ(field.text(), QString());
    EXPECT_EQ(controls(), 2u);

    m_window->view().setFocus();
    m_studio.set_playing(true);
    QCoreApplication::processEvents();
    QTest::keyClick(&m_window->view(), Qt::Key_Delete);
    m_studio.set_playing(false);
    EXPECT_EQ(controls(), 2u);
    select_button();
    QTest::keyClick(&m_window->view(), Qt::Key_Delete);
    EXPECT_EQ(controls(), 1u);
}

TEST_F(EditMenuTest, a_text_in_place_is_stored_when_the_focus_goes_and_dropped_by_escape)
{
    CView3D& view = m_window->view();
    const QPoint place = view.surface_rect().topLeft() + QPoint(250, 220);
    const QString before = text();
    const auto type = [&](const QString& typed) {
        QTest::mouseDClick(&view, Qt::LeftButton, {}, place);
        auto* field = view.findChild<QLineEdit*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_NE(field, nullptr);
        EXPECT_EQ(field->selectedText(), text());
        QTest::keyClicks(field, typed);
    };
    const auto settle = [] { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); };
    type(QStringLiteral("one"));
    QTest::keyClick(view.focusProxy(), Qt::Key_Escape);
    EXPECT_EQ(text(), before);
    EXPECT_TRUE(view.hasFocus());
    settle();
    type(QStringLiteral("two"));
    QTest::keyClick(view.focusProxy(), Qt::Key_Left);
    QTest::keyClick(view.focusProxy(), Qt::Key_Return);
    EXPECT_EQ(text(), QStringLiteral("two"));
    settle();
    type(QStringLiteral("three"));
    QLineEdit other(m_window.get());
    other.show();
    other.setFocus();
    EXPECT_EQ(text(), QStringLiteral("three"));
    EXPECT_TRUE(other.hasFocus()) << "the focus stays where it went";
    settle();
    type(QStringLiteral("four"));
    EXPECT_TRUE(m_window->save_file(m_folder.filePath(QStringLiteral("a.tarn"))));
    EXPECT_EQ(text(), QStringLiteral("four")) << "saving takes what was typed";
}

TEST_F(EditMenuTest, escape_gives_up_a_creation_wherever_the_focus_is)
{
    QLineEdit field(m_window.get());
    QListWidget list(m_window.get());
    CView3D& view = m_window->view();
    const tarn::MouseTool* const usual = m_studio.world().mouse_tool();
    for (QWidget* focused :
         {static_cast<QWidget*>(&field), static_cast<QWidget*>(&list), static_cast<QWidget*>(&view)}) {
        focused->show();
        dynamic_cast<CGuiPlugScene*>(m_studio.scene())->SetMTFunction(2, 0);
        EXPECT_NE(m_studio.world().mouse_tool(), usual);
        focused->setFocus();
        QTest::keyClick(focused, Qt::Key_Escape);
        EXPECT_EQ(m_studio.world().mouse_tool(), usual);
    }
}

TEST_F(EditMenuTest, a_command_that_was_given_other_keys_has_these_alone_in_the_view_too)
{
    QAction* remove = m_window->findChild<QAction*>(QStringLiteral("delete"));
    ASSERT_TRUE(remove);
    remove->setShortcut(Qt::CTRL | Qt::Key_K);
    select_button();
    m_window->view().setFocus();
    QTest::keyClick(&m_window->view(), Qt::Key_Delete);
    EXPECT_EQ(controls(), 1u);
    QTest::keyClick(&m_window->view(), Qt::Key_K, Qt::ControlModifier);
    EXPECT_EQ(controls(), 0u);
}
