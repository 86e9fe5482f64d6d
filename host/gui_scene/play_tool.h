#pragma once

#include "engine/mouse_tool.h"
#include "gui_core/gui_input.h"

class CGuiCore;

namespace tarn {

/// Hands mouse and keyboard to the interface while it runs.
class PlayTool : public MouseTool {
public:
    explicit PlayTool(CGuiCore& core) : m_input(core) {}

    bool mouse(const MouseEvent& event) override;
    bool key(int key, Qt::KeyboardModifiers modifiers) override;
    bool text(const QString& text, const QString& preedit) override;
    QRectF text_caret() const override { return m_input.caret(); }
    bool wheel(QPointF place, double steps) override;
    void paint(QPainter&) override {}
    void cancel() override { m_input.cancel(); }

private:
    GuiInput m_input;
};

} // namespace tarn
