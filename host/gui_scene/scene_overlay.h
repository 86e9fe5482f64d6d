#pragma once

#include "engine/overlay.h"
#include "gui_draw/gui_painter.h"

class CGuiCore;

namespace tarn {

/// The interface as what the views draw over the world.
class SceneOverlay : public Overlay {
public:
    explicit SceneOverlay(CGuiCore& core) : m_core(core) {}

    void set_screen_size(QSize size) override;
    void paint(QPainter& painter, const QRectF& clip, double scale) override;
    QRectF take_damage() override;

private:
    CGuiCore& m_core;
    GuiPainter m_painter;
};

} // namespace tarn
