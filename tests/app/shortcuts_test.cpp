// The keys of the commands: the author's own, in force and kept.

#include "command_palette.h"
#include "core/language.h"
#include "main_window.h"
#include "settings.h"
#include "shortcut_editor.h"
#include "shortcuts.h"
#include "studio.h"
#include "support/queued_answers.h"

#include <QAction>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace tarn;

namespace {

class ShortcutTest : public testing::Test {
protected:
    ShortcutTest()
    {
        settings::forget_all();
        EXPECT_TRUE(m_studio.load_plug_ins(QFileInfo(QStringLiteral(TARN_SCENE_PLUGIN)).path()).isEmpty());
        start();
    }
    ~ShortcutTest() override
    {
        m_window.reset();
        m_studio.stop();
    }
    void start()
    {
        m_window = std::make_unique<MainWindow>(m_studio);
        m_shortcuts.emplace(*m_window);
    }
    /// The keys as the next start has them, with what the settings say by then.
    QString keys_at_next_start(const char* name)
    {
        for (const Shortcuts::Command& each : m_shortcuts->commands())
            each.action->setShortcuts(each.usual);
        const Shortcuts next(*m_window);
        return keys(name);
    }
    const Shortcuts::Command& command(const char* name)
    {
        const auto& all = m_shortcuts->commands();
        const auto found = std::find_if(all.begin(), all.end(), [name](const Shortcuts::Command& each) {
            return each.action->objectName() == QLatin1String(name);
        });
        EXPECT_NE(found, all.end()) << name;
        return *found;
    }
    QString keys(const char* name)
    {
        return QKeySequence::listToString(command(name).action->shortcuts(), QKeySequence::PortableText);
    }

    Studio m_studio;
    std::unique_ptr<MainWindow> m_window;
    std::optional<Shortcuts> m_shortcuts;
    test::QueuedAnswers m_answers;
};

} // namespace

TEST_F(ShortcutTest, every_command_has_a_name_of_its_own_and_no_two_have_a_key_in_common)
{
    QSet<QString> names;
    QSet<QString> taken;
    for (const NamedAction& named : actions_in_menus(*m_window)) {
        const QString name = named.action->objectName();
        const bool is_file = named.path.startsWith(lang(u"文件 > 最近的文件", u"File > Open Recent"));
        EXPECT_NE(name.isEmpty(), !is_file) << named.path.toStdString();
        EXPECT_FALSE(names.contains(name) && !is_file) << name.toStdString();
        names.insert(name);
        for (const QKeySequence& each : named.action->shortcuts()) {
            EXPECT_FALSE(taken.contains(each.toString())) << named.path.toStdString() << each.toString().toStdString();
            EXPECT_TRUE(reason_against(each).isEmpty()) << each.toString().toStdString();
            taken.insert(each.toString());
        }
    }
    EXPECT_GT(names.size(), 50);
}

TEST_F(ShortcutTest, keys_are_taken_from_who_had_them_and_return_at_the_next_start_until_they_are_reset)
{
    m_shortcuts->set_keys(command("save_as"), Qt::CTRL | Qt::Key_D);
    EXPECT_EQ(keys("save_as"), u"Ctrl+D"_s);
    EXPECT_EQ(keys("duplicate"), QString());
    m_shortcuts->set_keys(command("zoom_in"), {});
    EXPECT_EQ(keys_at_next_start("save_as"), u"Ctrl+D"_s);
    EXPECT_EQ(keys("duplicate"), QString());
    EXPECT_EQ(keys("zoom_in"), QString());
    m_shortcuts->reset(command("duplicate"));
    EXPECT_EQ(keys("duplicate"), u"Ctrl+D"_s);
    EXPECT_EQ(keys("save_as"), QString());
    m_shortcuts->reset_all();
    EXPECT_EQ(keys_at_next_start("zoom_in"), u"Ctrl+=; Ctrl++"_s);
    settings::store().sync();
    EXPECT_TRUE(settings::store().allKeys().filter(u"shortcuts/"_s).isEmpty());
}

TEST_F(ShortcutTest, settings_that_are_not_keys_or_clash_leave_a_program_that_works)
{
    settings::store().setValue(u"shortcuts/undo"_s, u"Esc"_s);
    settings::store().setValue(u"shortcuts/open"_s, u"certainly not a key"_s);
    settings::store().setValue(u"shortcuts/save"_s, u"F7; Ctrl+Z"_s);
    settings::store().setValue(u"shortcuts/quit"_s, u"F7"_s);
    settings::store().setValue(u"shortcuts/no_such_command"_s, u"F6"_s);
    EXPECT_EQ(keys_at_next_start("undo"), QString());
    EXPECT_EQ(keys("open"), QString());
    QSet<QString> taken;
    for (const Shortcuts::Command& each : m_shortcuts->commands())
        for (const QKeySequence& one : each.action->shortcuts()) {
            EXPECT_FALSE(taken.contains(one.toString())) << one.toString().toStdString();
            taken.insert(one.toString());
        }
    EXPECT_TRUE(taken.contains(u"F7"_s));
}

TEST_F(ShortcutTest, the_editor_finds_a_command_takes_what_is_pressed_and_asks_about_a_clash)
{
    ShortcutEditor editor(m_window.get(), *m_shortcuts);
    auto& search = *editor.findChild<QLineEdit*>(u"search"_s);
    auto& field = *editor.findChild<QLineEdit*>(u"keys"_s);
    auto& list = *editor.findChild<QTreeWidget*>(u"commands"_s);
    const auto click = [&](const char* name) { editor.findChild<QPushButton*>(QLatin1String(name))->click(); };
    search.setText(lang(u"另存", u"save as"));
    ASSERT_TRUE(list.currentItem());
    EXPECT_EQ(field.text(), command("save_as").action->shortcut().toString(QKeySequence::NativeText));
    QTest::keyClick(&field, Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(keys("save_as"), u"Ctrl+Shift+S"_s) << "a modifier alone is no key";
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(keys("save_as"), u"Ctrl+Shift+S"_s);
    QTest::keyClick(&field, Qt::Key_F8, Qt::ControlModifier);
    EXPECT_EQ(keys("save_as"), u"Ctrl+F8"_s);
    EXPECT_TRUE(m_answers.texts.isEmpty());

    m_answers.buttons = {boxes::Button::No, boxes::Button::Yes};
    QTest::keyClick(&field, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(keys("save_as"), u"Ctrl+F8"_s);
    EXPECT_TRUE(m_answers.texts.value(0).contains(command("duplicate").path)) << m_answers.texts.value(0).toStdString();
    QTest::keyClick(&field, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(keys("save_as"), u"Ctrl+D"_s);
    EXPECT_EQ(keys("duplicate"), QString());
    click("none");
    EXPECT_EQ(keys("save_as"), QString());
    click("reset");
    EXPECT_EQ(keys("save_as"), u"Ctrl+Shift+S"_s);
    search.clear();
    search.setText(u"shift+s"_s);
    EXPECT_EQ(field.text(), command("save_as").action->shortcut().toString(QKeySequence::NativeText))
        << "keys are found, too";
    m_answers.buttons = {boxes::Button::Ok};
    click("reset_all");
    EXPECT_EQ(keys("duplicate"), u"Ctrl+D"_s);
    search.setText(u"no such command"_s);
    EXPECT_FALSE(field.isEnabled());
}
