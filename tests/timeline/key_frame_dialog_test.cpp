#include "engine/world_edit.h"
#include "timeline/dlg_key_frame.h"
#include "timeline_fixture.h"
#include "widgets/super_edit.h"
#include "world/world_scene.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTest>

namespace tarn::test {

namespace {

constexpr double stored_pi = 3.140000104904175;

/// Two models in the current timebar, with keys at 0 and 2 seconds.
class KeyFrameDialog : public TimelineTest {
protected:
    void SetUp() override
    {
        TimelineTest::SetUp();
        m_path = m_world.objects().create(WorldType::Path, u"Way"_s);
        m_path->set_points({{0, 0, 0}, {4, 0, 0}});
        for (CTimerObject*& timer : m_timers) {
            WorldObject* model = m_world.objects().create(WorldType::Model);
            timer = m_bar->create_object(TimerObjectType::Model, {model->id()});
            for (const float time : {0.f, 2.f}) {
                CObjKey(*timer, time).set_value(Channel::Position, KeyValue::vec(time, 0, 0));
                CObjKey(*timer, time).set_value(Channel::PathTurn, KeyValue::number(1.57f));
            }
        }
        m_scene->document().forget_history();
    }
    CObjKey key(int object, float time = 2) { return {*m_timers[object], time}; }
    float turn(int object) { return key(object).value(Channel::PathTurn).part(0); }
    /// Opens the dialog for the keys at two seconds and lets `use` work in it.
    void open(const std::function<void(CChildDlg& page)>& use, bool both = false)
    {
        m_bar->set_current_time(2);
        m_answers.dialogs.push_back([use](QDialog& dialog) {
            use(*dialog.findChild<CChildDlg*>());
            if (dialog.isVisible())
                dialog.reject();
        });
        std::vector<CObjKey> keys{key(0)};
        if (both)
            keys.push_back(key(1));
        CDlgKeyFrame::do_modal(&m_timeline, m_world, keys);
    }
    static CSuperEdit& number(CChildDlg& page, int id) { return *static_cast<CSuperEdit*>(page.control(id)); }
    /// Enter ends the editing; it may close the dialog, too.
    static void type(CChildDlg& page, int id, const QString& text)
    {
        CSuperEdit& edit = number(page, id);
        edit.setFocus();
        edit.selectAll();
        QTest::keyClicks(&edit, text);
        QTest::keyClick(&edit, Qt::Key_Return);
    }
    std::size_t steps() { return m_scene->journal().step_count(); }

    CTimerObject* m_timers[2] = {};
    WorldObject* m_path = nullptr;
};

} // namespace

TEST_F(KeyFrameDialog, ninety_degrees_are_shown_and_nothing_is_written_without_a_change)
{
    open([&](CChildDlg& page) {
        EXPECT_NEAR(number(page, 6252).get_pos(), 90, 0.001);
        EXPECT_EQ(number(page, 6247).get_pos(), 2);
        EXPECT_EQ(number(page, 6247).get_max(), 10);
        EXPECT_EQ(number(page, 6248).get_pos(), -1);
        EXPECT_EQ(static_cast<QComboBox*>(page.control(6603))->currentText(), u"No path"_s);
        static_cast<QAbstractButton*>(page.control(6249))->click();
    });
    EXPECT_EQ(steps(), 0u);
}

TEST_F(KeyFrameDialog, a_typed_turn_is_stored_with_its_own_pi_and_other_fields_leave_it)
{
    open([&](CChildDlg& page) { type(page, 6252, u"180"_s); });
    EXPECT_EQ(turn(0), float(stored_pi));
    EXPECT_EQ(steps(), 1u) << "what is typed in one go is one step";
    open([&](CChildDlg& page) {
        EXPECT_NEAR(number(page, 6252).get_pos(), 180.000006, 1e-6);
        type(page, 6248, u"7"_s);
    });
    EXPECT_EQ(turn(0), float(stored_pi));
    EXPECT_EQ(key(0).group(), 7);
}

TEST_F(KeyFrameDialog, only_what_changed_goes_to_the_keys_that_are_edited_together)
{
    key(1).set_value(Channel::PathTurn, KeyValue::number(0.5f));
    open(
        [&](CChildDlg& page) {
            static_cast<QCheckBox*>(page.control(6246))->click();
            type(page, 6602, u"0.25"_s);
        },
        true);
    for (const int object : {0, 1}) {
        EXPECT_EQ(key(object).value(Channel::PathShare).part(0), 0.25f);
        EXPECT_EQ(key(object).value(Channel::Show).as_int(), 0);
    }
    EXPECT_EQ(turn(1), 0.5f);
}

TEST_F(KeyFrameDialog, a_path_is_chosen_and_cleared_and_cancelling_keeps_it)
{
    open([&](CChildDlg& page) {
        QTest::keyClick(page.control(6603), Qt::Key_Down);
        static_cast<QCheckBox*>(page.control(6251))->click();
        static_cast<QAbstractButton*>(page.control(6250))->click();
    });
    EXPECT_EQ(m_timers[0]->path().id, m_path->id());
    EXPECT_TRUE(m_timers[0]->follows_direction());
    EXPECT_EQ(m_timers[1]->path().id, 0u);
    EXPECT_EQ(key(0).value(Channel::PathShare).part(0), 0.5f) << "the place became a share of the way";
    open([&](CChildDlg& page) { QTest::keyClick(page.control(6603), Qt::Key_Up); });
    EXPECT_EQ(m_timers[0]->path().id, 0u);
}

TEST_F(KeyFrameDialog, a_typed_time_moves_the_key_but_not_the_first_one)
{
    open([&](CChildDlg& page) { type(page, 6247, u"3.5"_s); });
    EXPECT_TRUE(m_timers[0]->has_key(3.5f));
    EXPECT_FALSE(m_timers[0]->has_key(2));
    m_answers.dialogs.push_back([&](QDialog& dialog) {
        m_answers.buttons.push_back(boxes::Button::Ok);
        type(*dialog.findChild<CChildDlg*>(), 6247, u"1"_s);
        dialog.reject();
    });
    CDlgKeyFrame::do_modal(&m_timeline, m_world, {key(1, 0)});
    EXPECT_TRUE(m_timers[1]->has_key(0));
    EXPECT_EQ(m_answers.texts.last(), u"First key can not be moved!"_s);
}

TEST_F(KeyFrameDialog, a_double_click_on_a_key_of_a_model_opens_it_and_one_of_a_dialog_asks_for_the_value)
{
    m_bar->set_current_object(m_timers[0]);
    m_timeline.set_scene(m_animation, &m_world);
    QString opened;
    m_answers.dialogs.push_back([&](QDialog& dialog) {
        opened = dialog.findChild<CChildDlg*>()->page_name();
        dialog.reject();
    });
    double_click(2 * 40, 15);
    EXPECT_EQ(opened, u"CDlgPropTimerModelKeyFrameProperties"_s);
    m_bar->set_current_object(m_object);
    m_answers.prompts.push_back(std::nullopt);
    double_click(2 * 40, 15);
    EXPECT_TRUE(m_answers.dialogs.empty() && m_answers.prompts.empty());
}

TEST_F(KeyFrameDialog, each_kind_of_model_has_its_form)
{
    struct Case {
        WorldType type;
        TimerObjectType timer;
        const char* page;
        int loops;
    };
    for (const Case& row :
         {Case{WorldType::AnimatedModel, TimerObjectType::AniModel, "CDlgPropTimerAniModelKeyFrameProperties", 6607},
          Case{WorldType::Skeleton, TimerObjectType::Skeleton, "CDlgPropTimerSekletonKeyFrameProperties", 6596}}) {
        CTimerObject* timer = m_bar->create_object(row.timer, {m_world.objects().create(row.type)->id()});
        CObjKey(*timer, 0).set_value(Channel::Position, KeyValue::vec(0, 0, 0));
        m_answers.dialogs.push_back([&](QDialog& dialog) {
            CChildDlg& page = *dialog.findChild<CChildDlg*>();
            EXPECT_EQ(page.page_name(), QLatin1String(row.page));
            type(page, row.loops, u"3"_s);
            if (auto* by_camera = static_cast<QAbstractButton*>(page.control(6297)))
                by_camera->click();
            dialog.reject();
        });
        CDlgKeyFrame::do_modal(&m_timeline, m_world, {CObjKey(*timer, 0)});
        EXPECT_EQ(CObjKey(*timer, 0).value(Channel::Loops).as_int(), 3);
        EXPECT_EQ(timer->is_led_by_camera(), row.type == WorldType::Skeleton);
    }
}

} // namespace tarn::test
