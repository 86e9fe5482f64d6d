// A person who cannot see the program hears what each control is called.

#include "command_palette.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "main_window.h"
#include "studio.h"
#include "support/printing.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTabBar>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace tarn;

namespace {

class WholeProgram : public testing::Test {
protected:
    WholeProgram()
    {
        m_failures = m_studio.load_plug_ins(QFileInfo(QStringLiteral(TARN_SCENE_PLUGIN)).path());
        m_window = std::make_unique<MainWindow>(m_studio);
        m_studio.start_world();
        (void)m_studio.open_file(QStringLiteral(TARN_SAMPLE));
        m_window->show();
    }
    ~WholeProgram() override
    {
        m_window.reset();
        m_studio.stop();
    }

    Studio m_studio;
    QStringList m_failures;
    std::unique_ptr<MainWindow> m_window;
};

/// Where a widget is: "CDlgPropEdit/id_6120 (CSuperEdit)".
std::string place_of(const QWidget& widget)
{
    QString path;
    for (const QWidget* w = &widget; w && path.count(u'/') < 4; w = w->parentWidget())
        if (!w->objectName().isEmpty())
            path.prepend(u'/' + w->objectName());
    return (path + u" (%1)"_s.arg(QLatin1String(widget.metaObject()->className()))).toStdString();
}

/// Parts that a control is made of are told with it.
bool is_part(const QWidget& widget)
{
    // Bars one behind the other are chosen by tabs that have names of their own.
    if (qobject_cast<const QTabBar*>(&widget) || qobject_cast<const QScrollBar*>(&widget)
        || widget.objectName().startsWith(u"qt_"_s))
        return true;
    const QWidget* parent = widget.parentWidget();
    return parent && widget.focusProxy() == nullptr && parent->focusProxy() == &widget;
}

} // namespace

TEST_F(WholeProgram, names_every_control_that_takes_the_keyboard)
{
    ASSERT_TRUE(m_failures.isEmpty());
    int controls = 0;
    for (const QWidget* widget : m_window->findChildren<QWidget*>()) {
        if (!(widget->focusPolicy() & Qt::TabFocus) || is_part(*widget))
            continue;
        ++controls;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
        ASSERT_TRUE(told) << place_of(*widget);
        EXPECT_FALSE(told->text(QAccessible::Name).isEmpty()) << place_of(*widget);
    }
    EXPECT_GT(controls, 200);
}

TEST_F(WholeProgram, offers_all_that_its_menus_have_in_the_palette)
{
    const auto actions = actions_in_menus(*m_window);
    QStringList paths;
    for (const NamedAction& named : actions)
        paths << named.path;
    EXPECT_TRUE(paths.contains(lang(u"视图 > 主题 > 深色", u"View > Theme > Dark"))) << paths.join(u'\n').toStdString();
    EXPECT_FALSE(paths.filter(u"&"_s).size()) << paths.join(u'\n').toStdString();
    CommandPalette palette(nullptr, actions);
    auto* filter = palette.findChild<QLineEdit*>();
    filter->setText(lang(u"主题 深", u"theme dark"));
    ASSERT_TRUE(palette.chosen());
    EXPECT_EQ(palette.chosen()->action->text(), lang(u"深色", u"Dark"));
    QTest::keyClick(filter, Qt::Key_Return);
    EXPECT_EQ(palette.result(), QDialog::Accepted);
    filter->setText(lang(u"编辑 撤销", u"edit undo"));
    EXPECT_FALSE(palette.chosen()) << "there is nothing to undo";
    auto* none = palette.findChild<QLabel*>();
    EXPECT_TRUE(none->isHidden());
    filter->setText(u"no such command"_s);
    EXPECT_FALSE(none->isHidden());

    CommandPalette with_buttons(nullptr, buttons_in_view(*m_window));
    with_buttons.findChild<QLineEdit*>()->setText(lang(u"导出", u"export"));
    ASSERT_TRUE(with_buttons.chosen());
    EXPECT_EQ(with_buttons.chosen()->path, lang(u"对象面板 > 导出界面", u"Objects > Export..."));
    EXPECT_TRUE(with_buttons.chosen()->button);
}
