#pragma once

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timebar.h"
#include "animation/timer_object.h"
#include "store/scene_text.h"
#include "support/editor_fixture.h"
#include "timeline/static_timer.h"

#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>

namespace tarn::test {

/// A timeline of its own in an editor: ten seconds at 40 pixels a second, a dialog whose place has keys at 0, 1, 2 and 4
/// seconds, and script keys at 3 and 5. It is used with real mouse and key events, which have times of their own.
class TimelineTest : public Editor {
protected:
    void SetUp() override
    {
        start();
        VLCMsgIniW::set_language(Language::English);
        m_world.on_always_refresh = [this](bool on) { m_refreshing.push_back(on); };
        m_animation = &m_scene->animation();
        m_animation->set_editing(true);
        m_dialog = core().create_dialog({10, 10, 200, 100}, u"Bag"_s);
        m_bar = m_animation->create_bar(10, u"Intro"_s);
        m_object = m_bar->create_object(TimerObjectType::Dialog, {m_dialog->id()});
        m_place = m_object->create_channel_var(Channel::Position);
        for (const float time : {0.f, 1.f, 2.f, 4.f})
            m_place->set_key_value(time, KeyValue::vec(100 * time, 0, 0));
        m_bar->insert_script_key(3, u"open"_s);
        m_bar->insert_script_key(5, u"close"_s);
        m_scene->document().forget_history();
        m_timeline.set_scene(m_animation, &m_world);
        m_timeline.resize(800, 300);
        m_timeline.show();
    }
    void TearDown() override
    {
        m_timeline.set_scene(nullptr, nullptr);
        Editor::TearDown();
    }

    // Mouse and keys
    void mouse(QEvent::Type type, int x, int y, Qt::KeyboardModifiers modifiers = {},
               Qt::MouseButton button = Qt::LeftButton)
    {
        const bool is_move = type == QEvent::MouseMove;
        const Qt::MouseButtons held = is_move ? m_held : type == QEvent::MouseButtonRelease ? Qt::NoButton : button;
        m_held = held;
        QMouseEvent event(type, QPointF(x, y), m_timeline.mapToGlobal(QPointF(x, y)), is_move ? Qt::NoButton : button,
                          held, modifiers);
        event.setTimestamp(m_now);
        QApplication::sendEvent(&m_timeline, &event);
    }
    void press(int x, int y, Qt::KeyboardModifiers modifiers = {}) { mouse(QEvent::MouseButtonPress, x, y, modifiers); }
    void move(int x, int y, Qt::KeyboardModifiers modifiers = {}) { mouse(QEvent::MouseMove, x, y, modifiers); }
    void release(int x, int y, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(QEvent::MouseButtonRelease, x, y, modifiers);
    }
    void wait(int milliseconds) { m_now += ulong(milliseconds); }
    void click(int x, int y, Qt::KeyboardModifiers modifiers = {})
    {
        press(x, y, modifiers);
        release(x, y);
    }
    void drag(QPoint from, QPoint to, Qt::KeyboardModifiers at_press = {}, Qt::KeyboardModifiers during = {})
    {
        press(from.x(), from.y(), at_press);
        wait(101);
        move(to.x(), to.y(), during);
        release(to.x(), to.y(), during);
    }
    void double_click(int x, int y)
    {
        click(x, y);
        mouse(QEvent::MouseButtonDblClick, x, y);
        release(x, y);
    }
    /// Answers the menu of a right click with that command.
    void choose(int command, int x, int y = 70)
    {
        m_answers.commands.push_back(command);
        mouse(QEvent::MouseButtonPress, x, y, {}, Qt::RightButton);
        mouse(QEvent::MouseButtonRelease, x, y, {}, Qt::RightButton);
    }
    void wheel(int x, int y, int delta, Qt::KeyboardModifiers modifiers = {})
    {
        QWheelEvent event(QPointF(x, y), m_timeline.mapToGlobal(QPointF(x, y)), {}, {0, delta}, m_held, modifiers,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&m_timeline, &event);
    }
    void key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        QKeyEvent event(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&m_timeline, &event);
    }
    void answer_box(boxes::Button button) { m_answers.buttons.push_back(button); }
    void answer_prompt(const QString& text) { m_answers.prompts.push_back(text); }

    // What there is
    static std::vector<float> times(const CTVar* variable)
    {
        std::vector<float> times;
        variable->keys().each_time(0, max_time, [&](qsizetype, float time) { times.push_back(time); });
        return times;
    }
    using Times = std::vector<float>;
    const TimelineView& view() const { return m_timeline.view(); }
    /// All of the timebars that would be saved.
    QByteArray text() const
    {
        const Document& document = m_scene->document();
        QByteArray all;
        for (const PackagePart& part : document.parts())
            all += part_text(document, part, document.snapshot());
        return all;
    }
    Journal& journal() { return m_scene->journal(); }
    int undo_all()
    {
        int steps = 0;
        while (journal().undo())
            ++steps;
        return steps;
    }

    CAnimationScene* m_animation = nullptr;
    CDXUTDialog* m_dialog = nullptr;
    CTimebar* m_bar = nullptr;
    CTimerObject* m_object = nullptr;
    CTVar* m_place = nullptr;
    CStaticTimer m_timeline;
    std::vector<bool> m_refreshing; ///< what the views were told
    ulong m_now = 1'000'000;
    Qt::MouseButtons m_held;
};

} // namespace tarn::test
