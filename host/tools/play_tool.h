#pragma once

#include "engine/mouse_tool.h"
#include "gui_core/gui_input.h"

#include <functional>

class CGuiCore;

namespace tarn {

class Document;
class SceneInWorld;

/// Hands mouse and keyboard to the interface while it runs.
class PlayTool : public MouseTool {
public:
    /// `after_input` is called when the interface has done with an input.
    PlayTool(CGuiCore& core, std::function<void()> after_input);
    /// Where things in the world show dialogs; without it none do.
    void set_world(const SceneInWorld* world) { m_world = world; }

    bool mouse(const MouseEvent& event) override;
    bool key(int key, Qt::KeyboardModifiers modifiers) override;
    void key_released(int key) override;
    bool takes_all_keys() const override { return true; }
    bool text(const QString& text, const QString& preedit) override;
    QRectF text_caret() const override { return m_input.caret(); }
    bool covers(QPointF place) const override;
    bool wheel(QPointF place, double steps) override;
    void paint(QPainter&) override {}
    void cancel() override { m_input.cancel(); }

private:
    bool hand_mouse(MouseEvent event);
    QPointF find_dialog(QPointF place);
    bool done(bool taken) const;

    Document& m_document;
    CGuiCore& m_core;
    const SceneInWorld* m_world = nullptr;
    GuiInput m_input;
    std::function<void()> m_after_input;
};

} // namespace tarn
