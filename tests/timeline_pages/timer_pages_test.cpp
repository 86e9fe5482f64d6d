#include "support/attributes.h"
// The pages of the current timebar, its objects and its script keys, in the property bar of a real editor.

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "frame/dlg_group.h"
#include "script/config_scene.h"
#include "shell/prop_bar.h"
#include "support/editor_fixture.h"
#include "support/gui_fixture.h"
#include "timeline_pages/timer_lists.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QTest>

namespace tarn::test {

namespace {

class TimerPages : public Editor {
protected:
    void SetUp() override
    {
        VLCMsgIniW::set_language(Language::English);
        start();
        m_frame.resize(700, 1600);
        m_ui.control_bars().front()->show();
        m_frame.show();
        m_button = core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(5, 5, 50, 20));
        m_bar = animation().create_bar(10, u"Intro"_s);
        m_header = page(u"CDlgPropTimer"_s);
        m_animation = page(u"CDlgPropTimerAnimation"_s);
        m_scripts = page(u"CDlgPropTimerScript"_s);
        dynamic_cast<CPropBar*>(m_ui.control_bars().front())->group().show_wnd_by_id(CPropBar::page_timer);
        tell();
        m_scene->journal().clear();
    }
    CAnimationScene& animation() { return m_scene->animation(); }
    void tell()
    {
        m_world.broadcast(ui_timebar_content);
        m_codes.clear();
    }
    template <class Widget>
    static Widget& in(const CChildDlg* page, int id)
    {
        return *qobject_cast<Widget*>(page->control(id));
    }
    static void click(const CChildDlg* page, int id) { in<QAbstractButton>(page, id).click(); }
    static bool enabled(const CChildDlg* page, int id) { return page->control(id)->isEnabledTo(page->window()); }
    static QStringList rows(const CReportList& list)
    {
        QStringList rows;
        for (int row = 0; row < list.row_count(); ++row) {
            QStringList cells;
            for (int column = 0; column < list.column_captions().size(); ++column)
                cells << list.item_caption(row, column);
            rows << cells.join(u'|');
        }
        return rows;
    }
    static void click_row(CReportList& list, int row)
    {
        const QRect cell = list.visualRect(list.model()->index(row, 0));
        const QPoint place = row < list.row_count() ? cell.center() : QPoint(5, list.viewport()->height() - 3);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    }
    QString length() { return in<QAbstractButton>(m_header, 6177).text(); }
    CReportListTimerCmd& objects() { return in<CReportListTimerCmd>(m_animation, 6187); }
    CReportListTimerVar& variables() { return in<CReportListTimerVar>(m_animation, 6186); }
    CReportListTimerScript& keys() { return in<CReportListTimerScript>(m_scripts, 6567); }
    /// A new script key at what is typed; its script editor is left.
    void add_key(const QString& typed)
    {
        m_answers.prompts.push_back(typed);
        m_answers.dialogs.push_back([](QDialog& editor) { editor.reject(); });
        click(m_scripts, 6184);
    }

    CTimebar* m_bar = nullptr;
    CDXUTControl* m_button = nullptr;
    CChildDlg* m_header = nullptr;
    CChildDlg* m_animation = nullptr;
    CChildDlg* m_scripts = nullptr;
};

} // namespace

TEST_F(TimerPages, the_length_is_asked_and_shown_in_the_unit_of_the_timebar)
{
    struct Case {
        int mode, rate;
        std::optional<QString> answer;
        float seconds;
        QString shown;
    };
    const Case cases[] = {
        {1, 25, u"12.5"_s, 12.5f, u"12.5S"_s},
        {1, 25, u"36000"_s, 36000, u"36000.0S"_s},
        {1, 25, u"36000.5"_s, 36000, u"36000.0S"_s},
        {2, 25, u"250"_s, 10, u"250Frame"_s},
        {2, 0, u"7"_s, 7, u"7Frame"_s},
        {2, 25, u"-1"_s, 7, u"175Frame"_s},
        {2, 25, u"0"_s, 7, u"175Frame"_s},
        {2, 25, u"many"_s, 7, u"175Frame"_s},
        {2, 25, std::nullopt, 7, u"175Frame"_s},
        {2, 24, u"0.96"_s, 0.04f, u"Frame"_s},
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(set(*m_bar, "display_mode", qint64(c.mode)));
        ASSERT_TRUE(set(*m_bar, "frame_rate", qint64(c.rate)));
        tell();
        m_answers.prompts.push_back(c.answer);
        const float before = m_bar->get_total_length();
        m_codes.clear();
        click(m_header, 6177);
        EXPECT_EQ(m_answers.texts.last(), c.mode == 1 ? u"Total time in second:"_s : u"Total frame Number:"_s);
        EXPECT_FLOAT_EQ(m_bar->get_total_length(), c.seconds);
        EXPECT_EQ(length(), c.shown);
        EXPECT_EQ(m_codes.empty(), before == c.seconds) << c.shown.toStdString();
    }
}

TEST_F(TimerPages, the_header_shows_the_timebar_and_takes_the_name_with_enter_from_anywhere)
{
    auto& name = in<QLineEdit>(m_header, 6396);
    name.setText(u"Outro"_s);
    EXPECT_EQ(m_bar->name(), u"Intro"_s);
    QTest::keyClick(&in<QComboBox>(m_header, 6439), Qt::Key_Return);
    EXPECT_EQ(m_bar->name(), u"Outro"_s);
    EXPECT_EQ(m_codes, std::vector{int(ui_timebar_content)});
    m_codes.clear();
    auto& mode = in<QComboBox>(m_header, 6439);
    EXPECT_EQ(mode.itemText(3) + mode.itemText(4), u"Reverse onceReverse repeat"_s);
    QTest::keyClick(&mode, Qt::Key_Down);
    click(m_header, 6601);
    EXPECT_EQ(m_bar->play_mode(), PlayMode::Repeat);
    EXPECT_TRUE(m_bar->auto_play());
    EXPECT_TRUE(m_codes.empty()) << "neither is told";
    while (m_scene->journal().undo())
        ;
    m_scene->document().changes().tell();
    EXPECT_EQ(name.text(), u"Intro"_s);
    EXPECT_EQ(mode.currentIndex(), 0);

    animation().set_current_bar(nullptr);
    m_world.broadcast(ui_timebars_changed);
    for (const CChildDlg* page : {m_header, m_animation, m_scripts})
        for (auto widget = page->controls().begin(); widget != page->controls().end(); ++widget)
            EXPECT_FALSE(widget.value()->isEnabled()) << page->page_name().toStdString() << widget.key();
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(m_bar->name(), u"Intro"_s);
}

TEST_F(TimerPages, mode_rate_and_channels_go_both_ways)
{
    m_bar->record_selection({m_button});
    tell();
    EXPECT_EQ(rows(objects()), QStringList{u"Control|"_s + m_button->name()});
    EXPECT_TRUE(in<QRadioButton>(m_animation, 6228).isChecked());
    click(m_animation, 6229);
    EXPECT_EQ(m_bar->time_unit().is_frames(), true);
    EXPECT_EQ(length(), u"250Frame"_s);
    auto& rate = in<CSuperEdit>(m_animation, 6600);
    rate.setFocus();
    QTest::keySequence(&rate, QKeySequence::SelectAll);
    QTest::keyClicks(&rate, u"0"_s);
    EXPECT_EQ(m_bar->frame_rate(), 1);
    QTest::keySequence(&rate, QKeySequence::SelectAll);
    QTest::keyClicks(&rate, u"30.9"_s);
    EXPECT_EQ(m_bar->frame_rate(), 30);

    CTimerObject* object = m_bar->current_object();
    ASSERT_TRUE(object);
    m_codes.clear();
    click(m_animation, 6225);
    click(m_animation, 6093);
    EXPECT_EQ(object->flags(), chosen_channels & ~(bit(Channel::Position) | bit(Channel::Show)));
    EXPECT_TRUE(m_codes.empty());
    m_scene->journal().undo();
    m_scene->document().changes().tell();
    EXPECT_TRUE(in<QCheckBox>(m_animation, 6093).isChecked());
    EXPECT_EQ(in<QCheckBox>(m_animation, 6225).toolTip(), u"1 keys"_s);
    EXPECT_FALSE(in<QCheckBox>(m_animation, 6225).icon().isNull());
    EXPECT_TRUE(in<QCheckBox>(m_animation, 6091).icon().isNull() == !object->channel_variable(Channel::Color));
    EXPECT_TRUE(rows(variables()).first().startsWith(u"Position|VEC|1"_s));
    click(m_animation, 6196);
    EXPECT_EQ(variables().row_count(), 0);
    EXPECT_FALSE(object->variables().empty());
}

TEST_F(TimerPages, a_broken_target_is_marked_and_gets_another_one)
{
    CDXUTControl* other = core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(5, 45, 50, 20));
    CDXUTControl* used = core().create_control(DXUT_CONTROL_BUTTON, core().GetRootDialog(), QRectF(5, 85, 50, 20));
    m_bar->record_selection({used, m_button});
    const qsizetype count = m_bar->current_object()->channel_variable(Channel::Position)->keys().size();
    m_scene->RemoveCtrl(m_button);
    m_scene->document().changes().tell();
    EXPECT_EQ(rows(objects()).last(), u"Control|(target is gone)"_s);
    EXPECT_EQ(objects().cell_icons_at(1, 1).size(), 1u);
    EXPECT_TRUE(objects().cell_icons_at(0, 1).empty());
    m_answers.dialogs.push_back([&](QDialog& dialog) {
        auto* list = dialog.findChild<QListWidget*>();
        ASSERT_EQ(list->count(), 1) << "what the bar animates already is not offered";
        EXPECT_FALSE(dialog.findChild<CButtonST*>(u"id_1"_s)->isEnabled());
        list->setCurrentRow(0);
        dialog.findChild<CButtonST*>(u"id_1"_s)->click();
    });
    click(m_animation, 6940);
    EXPECT_EQ(m_bar->current_object()->target_object(), other);
    EXPECT_EQ(m_bar->current_object()->channel_variable(Channel::Position)->keys().size(), count);
    EXPECT_EQ(rows(objects()).last(), u"Control|"_s + other->name());
    m_scene->journal().undo();
    EXPECT_TRUE(m_bar->current_object()->is_broken());
}

TEST_F(TimerPages, a_script_object_has_a_command_and_variables_of_the_author)
{
    click(m_animation, 6190);
    auto* command = dynamic_cast<CTCommandScript*>(m_bar->current_object());
    ASSERT_TRUE(command);
    EXPECT_EQ(m_codes, std::vector{int(ui_timebar_content)});
    auto& line = in<QLineEdit>(m_animation, 6193);
    line.setText(u"show(life, 1)"_s);
    m_codes.clear();
    QTest::keyClick(&line, Qt::Key_Return);
    EXPECT_TRUE(m_codes.empty()) << "Enter refreshes the page alone";
    EXPECT_EQ(rows(variables()), QStringList{u"life|FLOAT|0"_s});

    m_answers.commands = {32789, 32785, 32784, 0};
    m_answers.prompts = {u"7"_s, std::nullopt, u"wrong"_s};
    m_answers.buttons = {boxes::Button::Ok};
    for (int i = 0; i < 4; ++i)
        click(m_animation, 6188);
    m_scene->document().changes().tell();
    EXPECT_EQ(rows(variables()), (QStringList{u"life|FLOAT|0"_s, u"Var1|INT|1"_s, u"Var2|DWORD|0"_s, u"Var3|VEC|0"_s}));
    EXPECT_EQ(command->current_variable(), command->variables()[1]) << "one without a value does not become current";
    EXPECT_EQ(command->variables()[1]->value_at(0), KeyValue::whole(7));

    click_row(variables(), 0);
    EXPECT_EQ(command->current_variable(), command->variables()[0]);
    auto& name = in<QLineEdit>(m_animation, 6941);
    name.setFocus();
    name.setText(u"mana"_s);
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(command->script(), u"show(mana, 1)"_s);
    EXPECT_EQ(line.text(), u"show(mana, 1)"_s);
    m_answers.buttons = {boxes::Button::Ok};
    name.setText(u"Var1"_s);
    QTest::keyClick(&name, Qt::Key_Return);
    EXPECT_EQ(command->variables()[0]->name(), u"mana"_s);
    EXPECT_EQ(name.text(), u"mana"_s);

    click(m_animation, 6189);
    EXPECT_EQ(command->variables().size(), 3u);
    click(m_animation, 6189);
    EXPECT_EQ(command->variables().size(), 3u) << "no row is selected";
    click_row(variables(), 0);
    click(m_animation, 6195);
    EXPECT_EQ(command->current_variable(), nullptr);

    click_row(objects(), 99);
    EXPECT_EQ(m_bar->current_object(), nullptr);
    for (const int id : {6193, 6192, 6188, 6189, 6186, 6196})
        EXPECT_FALSE(enabled(m_animation, id)) << id;
    EXPECT_TRUE(enabled(m_animation, 6190));
    m_bar->set_current_object(command);
    tell();
    click(m_animation, 6191);
    EXPECT_TRUE(m_bar->objects().empty());
}

TEST_F(TimerPages, script_keys_are_made_moved_and_removed_with_the_questions_that_belong_to_it)
{
    add_key(u"2.5"_s);
    add_key(u"10"_s);
    EXPECT_EQ(m_answers.texts.filter(u"Trigger Time in second:"_s).size(), 2);
    EXPECT_FALSE(m_answers.texts.contains(u"Extend total time?"_s)) << "the end belongs to the bar";
    EXPECT_EQ(rows(keys()), (QStringList{u"2.50Sec"_s, u"10.00Sec"_s}));
    EXPECT_EQ(keys().get_last_sel_index(), 1);
    EXPECT_TRUE(m_scene->functions().find_function(m_bar->get_script_name(10)));
    m_answers.prompts = {u"10.01"_s, u"-1"_s};
    m_answers.buttons = {boxes::Button::Cancel, boxes::Button::Ok};
    click(m_scripts, 6184);
    click(m_scripts, 6184);
    EXPECT_EQ(m_answers.texts.last(), u"Input Error!"_s);
    EXPECT_EQ(keys().row_count(), 2);
    m_answers.buttons = {boxes::Button::Ok};
    add_key(u"12"_s);
    EXPECT_EQ(m_bar->get_total_length(), 12);

    m_answers.prompts = {u"2.5"_s};
    m_answers.buttons = {boxes::Button::Ok};
    click(m_scripts, 6183);
    EXPECT_EQ(m_answers.texts.last(), u"There is a key script already!"_s);
    EXPECT_TRUE(m_answers.texts.contains(u"Trigger time in second:"_s)) << "with a small letter";
    const QString moved = m_bar->get_script_name(12);
    m_answers.prompts = {std::nullopt};
    click(m_scripts, 6183);
    EXPECT_EQ(m_bar->get_script_name(0), moved) << "a prompt given up is 0";
    EXPECT_EQ(keys().get_last_sel_index(), 0);

    click_row(keys(), 2);
    click(m_scripts, 6185);
    EXPECT_EQ(rows(keys()), (QStringList{u"0.00Sec"_s, u"2.50Sec"_s}));
    EXPECT_EQ(keys().get_last_sel_index(), 0);
    ASSERT_TRUE(set(*m_bar, "display_mode", qint64(TimebarState::frames_mode)));
    m_scene->document().changes().tell();
    EXPECT_EQ(rows(keys()), (QStringList{u"0Frame"_s, u"62Frame"_s}));
    add_key(u"100"_s);
    EXPECT_EQ(m_bar->script_key_times().back(), 4.f);
    EXPECT_TRUE(m_answers.prompts.empty() && m_answers.buttons.empty() && m_answers.dialogs.empty());
}

TEST_F(TimerPages, a_script_key_whose_function_is_gone_gets_another_one_or_goes)
{
    add_key(u"1"_s);
    const QString name = m_bar->get_script_name(1);
    for (const boxes::Button answer : {boxes::Button::Ok, boxes::Button::Cancel}) {
        m_scene->functions().del_function(name);
        m_answers.buttons.push_back(answer);
        if (answer == boxes::Button::Ok)
            m_answers.dialogs.push_back([](QDialog& editor) { editor.reject(); });
        click(m_scripts, 6182);
        EXPECT_TRUE(m_answers.texts.filter(u"Press Yes to Create new one."_s).size());
        EXPECT_EQ(m_scene->functions().find_function(name) != nullptr, answer == boxes::Button::Ok);
    }
    EXPECT_EQ(keys().row_count(), 0);
    EXPECT_FALSE(enabled(m_scripts, 6182));
    EXPECT_FALSE(enabled(m_scripts, 6185));
}

TEST_F(TimerPages, all_script_keys_are_shown_and_what_is_typed_or_chosen_stays_while_it_plays)
{
    for (int i = 0; i < 1500; ++i)
        m_bar->insert_script_key(float(i) / 200, u"f"_s);
    m_bar->record_selection({m_button});
    m_bar->set_current_time(5);
    animation().set_editing(true);
    ASSERT_TRUE(set(*m_button, "x", 50.0));
    m_bar->record_selection({m_button});
    tell();
    EXPECT_EQ(keys().row_count(), 1500);
    click_row(keys(), 3);
    auto& name = in<QLineEdit>(m_header, 6396);
    m_frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_frame));
    name.setFocus();
    QTest::keyClicks(&name, u"Half"_s);
    const int scrolled = keys().verticalScrollBar()->value();
    int resets = 0;
    QObject::connect(keys().model(), &QAbstractItemModel::modelReset, &keys(), [&] { ++resets; });
    QObject::connect(objects().model(), &QAbstractItemModel::modelReset, &objects(), [&] { ++resets; });
    m_bar->active_bar(1, 1);
    for (int i = 0; i < 30; ++i) {
        m_bar->frame_move(0.02f);
        m_scene->document().changes().tell();
        tell();
    }
    EXPECT_TRUE(name.text().contains(u"Half"_s));
    EXPECT_EQ(resets, 0);
    EXPECT_EQ(keys().get_last_sel_index(), 3);
    EXPECT_EQ(keys().verticalScrollBar()->value(), scrolled);
}

} // namespace tarn::test
