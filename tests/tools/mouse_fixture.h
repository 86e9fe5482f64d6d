#pragma once

#include "support/scene_fixture.h"

#include "tools/gui_scene_editor.h"

namespace tarn::test {

/// A scene under the mouse and keyboard of a view.
class MouseToolsTest : public SceneTest {
protected:
    using Kind = MouseEvent::Kind;

    void mouse(Kind kind, QPointF place, Qt::KeyboardModifiers modifiers = {})
    {
        m_world.mouse_tool()->mouse({kind, place, kind == Kind::Move ? Qt::NoButton : Qt::LeftButton, modifiers});
    }
    void drag(QPointF from, QPointF to, bool release = true, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(Kind::Press, from, modifiers);
        for (int i = 1; i <= 4; ++i)
            mouse(Kind::Move, from + (to - from) * i / 4, modifiers);
        if (release)
            mouse(Kind::Release, to, modifiers);
    }
    void click(QPointF place, Qt::KeyboardModifiers modifiers = {})
    {
        mouse(Kind::Press, place, modifiers);
        mouse(Kind::Release, place, modifiers);
    }
    bool key(int key, Qt::KeyboardModifiers modifiers = {}) { return m_world.mouse_tool()->key(key, modifiers); }
    bool escape() { return m_world.mouse_tool()->key(Qt::Key_Escape, {}); }
    int undo_all()
    {
        int steps = 0;
        while (m_scene.journal().undo())
            ++steps;
        return steps;
    }
    CDXUTControl* button(CDXUTDialog* home, const QRectF& rect)
    {
        CDXUTControl* made = control(DXUT_CONTROL_BUTTON, home, rect);
        core().document().forget_history();
        return made;
    }
    const std::vector<CDXUTControl*>& selected() { return core().selection().controls; }
    Status run(int command) { return m_scene.editor().run(command); }
    CDXUTDialog* home()
    {
        CDXUTDialog* made = dialog({100, 100, 400, 300}, u"home"_s);
        core().document().forget_history();
        return made;
    }
};

} // namespace tarn::test
