#pragma once

#include "core/model_changes.h"
#include "engine/orbit_camera.h"
#include "engine/overlay.h"

#include <QList>

class CBaseWorld;
class CGuiPlugScene;
class CTimebar;

namespace tarn {

class Document;
class ViewProjection;
class WorldObject;

/// The objects of the world in the views, as shaded outlines. In a preview cameras and paths, which are an author's aids,
/// are not drawn.
class WorldLayer : public Overlay, private ModelListener {
public:
    explicit WorldLayer(CGuiPlugScene& scene);
    ~WorldLayer() override;

    void set_screen_size(QSize size) override;
    void paint(QPainter& painter, const QRectF& clip, double scale) override;
    QRectF take_damage() override;

private:
    /// What the picture depends on beside the objects themselves.
    struct Look {
        QMatrix4x4 camera;
        std::vector<WorldObject*> selected;
        const CTimebar* timebar = nullptr; ///< whose motion paths are shown; null for none
        quint64 models = 0;                ///< that were read
        bool playing = false;
        bool empty = true;
        bool operator==(const Look&) const = default;
    };

    void model_changed(const ModelChange& change) override;
    Look look() const;
    std::vector<const WorldObject*> shown_objects(const ViewProjection& view) const;
    void paint_object(QPainter& painter, const ViewProjection& view, const WorldObject& object, double scale) const;
    void paint_picture(QPainter& painter, const ViewProjection& view, const WorldObject& object, double scale) const;

    CGuiPlugScene& m_scene;
    QSize m_size;
    Look m_painted;
    bool m_changed = true;
};

/// The object that is seen at `place` and that the mouse may take; null for none.
WorldObject* world_object_at(const CBaseWorld& world, const ViewProjection& view, QPointF place);

} // namespace tarn
