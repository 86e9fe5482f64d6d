#pragma once

#include "core/model_changes.h"
#include "engine/world_renderer.h"
#include "gui_core/world_link.h"
#include "gui_draw/gui_painter.h"

#include <QSet>

#include <map>
#include <optional>

class CBaseWorld;

namespace tarn {

struct ModelHit;

/// Where the interface and the world meet: dialogs that are drawn on the textures of models and panels, and controls that
/// show the world.
class SceneInWorld : public WorldLink, public WorldPictures, private ModelListener {
public:
    SceneInWorld(CGuiCore& core, CBaseWorld& world);
    ~SceneInWorld() override;

    /// A part of the screen was drawn anew: dialogs that have their place there are drawn anew in the world, too.
    void damaged(const QRectF& area);
    /// What shows the world is drawn anew when that changed.
    void update();
    /// Runs for so many seconds; true when something in the world moves.
    bool advance(double now);
    /// Whether the interface runs.
    void play(bool on);

    /// What of the running interface something in the world shows at a place of the screen.
    struct Spot {
        const CDXUTDialog* dialog;
        QPointF place; ///< where that is on the dialog's own place of the screen
    };
    std::optional<Spot> spot_at(QPointF place) const;

    // WorldLink
    QImage view(const CDXUTControl& control, QSize pixels) override;
    bool is_in_world(const CDXUTDialog& dialog) const override;
    QPointF looked_at() const override;
    void look_at(QPointF place, quint32 ground) override;
    std::vector<MapSpot> spots() const override;

    // WorldPictures
    QImage picture(const QString& name) override;
    std::vector<Live> live_pictures() override;

private:
    /// A dialog on a texture.
    struct Bound {
        const CDXUTDialog* dialog;
        QString texture;
        QByteArray content; ///< the SHA-256 of the texture's file
    };

    void model_changed(const ModelChange& change) override;
    const std::vector<Bound>& bound_dialogs() const;
    bool is_loaded(const Bound& bound) const;
    QByteArray content_of(const QString& texture) const;
    const Bound* bound_at(const WorldObject& object, const ModelHit& hit) const;
    const QImage& picture_of(const CDXUTDialog& dialog);
    static bool shows_world(const CDXUTDialog& dialog);
    void each_view(const std::function<void(CDXUTControl&)>& visit) const;

    CGuiCore& m_core;
    CBaseWorld& m_world;
    GuiPainter m_painter;
    bool m_playing = false;
    bool m_draws = false; ///< the dialogs; what they show of the world is as it was meanwhile
    bool m_changed = true;
    int m_frames_due = 0; ///< in which views are drawn anew, since something changed
    int m_turn = 0;       ///< of the views that are drawn in a frame
    mutable bool m_stale = true;
    mutable std::vector<Bound> m_bound;
    mutable quint64 m_bound_models = 0;                                   ///< what was read of models then
    mutable QHash<QString, std::pair<QByteArray, QByteArray>> m_contents; ///< files and their SHA-256, by textures
    std::map<quint32, QImage> m_pictures;                                 ///< of dialogs, by id; null: to be drawn anew
    std::map<quint32, QImage> m_views;                                    ///< what controls showed of the world, by id
    QMatrix4x4 m_seen_from;
    quint64 m_models = 0;
};

} // namespace tarn
