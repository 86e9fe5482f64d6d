#pragma once

#include "render/renderer.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>

#include <memory>
#include <vector>

class CBaseWorld;

namespace tarn {

class WorldObject;

/// What the world's objects show that is not the world's own.
class WorldPictures {
public:
    virtual ~WorldPictures() = default;

    /// A picture of the package by its name; null for one that there is not.
    virtual QImage picture(const QString& name) = 0;

    /// A picture in whose place something else is shown.
    struct Live {
        QString name;       ///< of the package's picture
        QByteArray content; ///< the SHA-256 of its file, to find it in models
        QImage image;       ///< what is shown; another cacheKey() when it changed
    };
    virtual std::vector<Live> live_pictures() = 0;
};

/// Draws the models and panels of the world, where OpenGL is there for it.
class WorldRenderer {
public:
    explicit WorldRenderer(CBaseWorld& world);
    ~WorldRenderer();

    /// Null: panels show none. It has to outlive its use.
    void set_pictures(WorldPictures* pictures) { m_pictures = pictures; }

    /// Whether OpenGL is there.
    bool works() { return renderer() != nullptr; }
    /// Whether the object is drawn here; otherwise outlines stand for it.
    bool draws(const WorldObject& object);
    /// Whether there is anything to be drawn here.
    bool draws_any();

    /// Who looks: the author, to whom what is selected is marked, or a camera of the interface.
    enum class Eye { Author, Camera };
    /// The name of a texture that widgets can draw, with the world as `view` sees it; 0 where that cannot be had.
    /// `target` is a number for each camera.
    quint32 texture(int target, const RenderView& view, Eye eye);
    /// The same picture as an image; null where it cannot be had.
    QImage picture(int target, const RenderView& view, Eye eye);
    void remove_target(int target);
    /// What the last picture took.
    RenderCost cost() const { return m_renderer ? m_renderer->cost() : RenderCost(); }

private:
    Renderer* renderer();
    bool draw(int target, const RenderView& view, Eye eye);
    std::vector<DrawItem> items(Eye eye);
    void add_model(std::vector<DrawItem>& items, const WorldObject& object, DrawItem item);
    void add_panel(std::vector<DrawItem>& items, const WorldObject& object, DrawItem item);
    const WorldPictures::Live* live(const QString& name) const;
    const WorldPictures::Live* live(const QByteArray& content) const;
    MaterialTexture texture_of(const QString& material, const QString& name, const QImage& image, bool glows);

    CBaseWorld& m_world;
    WorldPictures* m_pictures = nullptr;
    bool m_tried = false;
    std::unique_ptr<Renderer> m_renderer; ///< null before it is needed, and where there is no OpenGL
    ModelPtr m_solid_panel;
    ModelPtr m_clear_panel;
    std::vector<WorldPictures::Live> m_live;
    QHash<QString, quint64> m_textures; ///< numbers of pictures that were given to the renderer
    quint32 m_drawn = 0;
};

} // namespace tarn
