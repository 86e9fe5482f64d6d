#pragma once

#include "engine/overlay.h"
#include "gui_draw/gui_painter.h"

class CGuiCore;

namespace tarn {

class SceneInWorld;
class SceneMovies;

/// The interface as what the views draw over the world.
class SceneOverlay : public Overlay {
public:
    SceneOverlay(CGuiCore& core, SceneInWorld& in_world, SceneMovies& movies)
        : m_core(core), m_in_world(in_world), m_movies(movies)
    {
    }

    void set_screen_size(QSize size) override;
    void paint(QPainter& painter, const QRectF& clip, double scale) override;
    QRectF take_damage() override;

private:
    CGuiCore& m_core;
    SceneInWorld& m_in_world;
    SceneMovies& m_movies;
    GuiPainter m_painter;
};

} // namespace tarn
