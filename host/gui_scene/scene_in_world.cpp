#include "scene_in_world.h"

#include "core/authored.h"
#include "engine/base_world.h"
#include "engine/view_projection.h"
#include "engine/world_models.h"
#include "gui_core/control_state.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "gui_draw/texture_cache.h"
#include "world/world_scene.h"

#include <QCryptographicHash>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr int frames_in_turn = 2; ///< in which each view of the world is drawn once while the interface runs

constexpr int largest_side = 2048; ///< pixels of a dialog's picture
constexpr float map_height = 500;  ///< metres from which maps look down, and as far under the ground
constexpr float nearest = 0.1f;    ///< metres
constexpr float farthest = 1000;   ///< metres
const QColor map_background(0x2a, 0x3a, 0x3c);

RenderView camera_view(const WorldObject& camera, QSize pixels, bool axes)
{
    RenderView view;
    QMatrix4x4 stands;
    stands.translate(camera.place());
    stands.rotate(QQuaternion::fromEulerAngles(camera.turn()));
    view.view = stands.inverted();
    view.projection.perspective(static_cast<const CameraState&>(camera.object_state()).field_of_view,
                                float(pixels.width()) / float(pixels.height()), nearest, farthest);
    view.pixels = pixels;
    view.axes = axes;
    return view;
}

/// From above, with the z axis pointing down the map.
RenderView map_view(const QRectF& range, QSize pixels)
{
    RenderView view;
    view.view.lookAt({0, map_height, 0}, {0, 0, 0}, {0, 0, -1});
    view.projection.ortho(float(range.left()), float(range.right()), float(range.top()), float(range.bottom()), 0,
                          2 * map_height);
    view.pixels = pixels;
    view.background = map_background;
    return view;
}

/// Whether the control shows the world.
bool is_view(const CDXUTControl* control)
{
    return control->GetType() == DXUT_CONTROL_PIP || control->GetType() == DXUT_CONTROL_MAP;
}

QPointF from_above(const QVector3D& place)
{
    return {double(place.x()), -double(place.z())};
}

} // namespace

SceneInWorld::SceneInWorld(CGuiCore& core, CBaseWorld& world) : m_core(core), m_world(world)
{
    m_core.document().changes().add_listener(this);
    m_core.set_world(this);
    m_world.renderer().set_pictures(this);
}

SceneInWorld::~SceneInWorld()
{
    m_world.renderer().set_pictures(nullptr);
    m_core.set_world(nullptr);
    m_core.document().changes().remove_listener(this);
}

void SceneInWorld::model_changed(const ModelChange& change)
{
    m_stale = true;
    m_changed |= change.everything;
    if (change.everything) { // Another scene's objects have the same ids.
        m_pictures.clear();
        m_views.clear();
    }
    for (const ModelChange::Object& changed : change.objects) {
        m_changed |= dynamic_cast<const WorldObject*>(changed.object) != nullptr;
        if (changed.was_removed() && m_views.erase(changed.object->id()))
            m_world.renderer().remove_target(int(changed.object->id()));
    }
}

// Controls that show the world ------------------------------------------------------------------------------------------

void SceneInWorld::each_view(const std::function<void(CDXUTControl&)>& visit) const
{
    for (CDXUTControl* control : m_core.controls())
        if (is_view(control))
            visit(*control);
}

void SceneInWorld::update()
{
    const QMatrix4x4 seen_from = m_world.camera().view_matrix();
    const quint64 models = m_world.models().library().revision();
    if (std::exchange(m_changed, false) || seen_from != m_seen_from || models != m_models)
        m_frames_due = m_playing ? frames_in_turn : 1;
    m_seen_from = seen_from;
    m_models = models;
    if (m_frames_due == 0)
        return;
    // Each view is a picture of the whole world: while much moves they take turns, every other one a frame.
    const bool all = m_frames_due == 1 && !m_playing;
    int place = m_turn++;
    each_view([&](CDXUTControl& control) {
        if (all || place++ % frames_in_turn == 0)
            control.redraw();
    });
    if (--m_frames_due > 0)
        m_world.update_all_views();
}

bool SceneInWorld::shows_world(const CDXUTDialog& dialog)
{
    return std::ranges::any_of(dialog.controls(), is_view);
}

QImage SceneInWorld::view(const CDXUTControl& control, QSize pixels)
{
    if (pixels.isEmpty())
        return {};
    // A dialog in the world may show the world that it is in.
    if (m_draws)
        return m_views[control.id()];
    RenderView view;
    if (control.GetType() == DXUT_CONTROL_MAP) {
        view = map_view(static_cast<const CDXUTMap&>(control).shown_range(), pixels);
    } else {
        const auto& state = static_cast<const PictureInPictureState&>(control.shown_state());
        const WorldObject* camera = m_world.objects().find(state.camera.id);
        if (!camera || camera->type() != WorldType::Camera)
            return {};
        view = camera_view(*camera, pixels, !m_playing);
    }
    QImage& shown = m_views[control.id()];
    shown = m_world.renderer().picture(int(control.id()), view, WorldRenderer::Eye::Camera);
    return shown;
}

QPointF SceneInWorld::looked_at() const
{
    return from_above(m_world.camera().target());
}

void SceneInWorld::look_at(QPointF place, quint32 ground)
{
    QVector3D target(float(place.x()), 0, -float(place.y()));
    if (const WorldObject* object = m_world.objects().find(ground))
        if (const auto hit = m_world.models().pick(*object, {target + QVector3D(0, map_height, 0), {0, -1, 0}}))
            target = hit->point;
    m_world.camera().look_at(target);
    m_world.update_all_views();
}

std::vector<MapSpot> SceneInWorld::spots() const
{
    std::vector<MapSpot> spots;
    for (const WorldObject* object : m_world.objects().objects())
        if (object->object_state().hot_spot && object->is_visible())
            spots.push_back({object->id(), object->name(), from_above(object->place())});
    return spots;
}

bool SceneInWorld::advance(double now)
{
    m_world.models().set_clock(now);
    const auto& objects = m_world.objects().objects();
    const bool moves = std::any_of(objects.begin(), objects.end(),
                                   [this](const WorldObject* object) { return m_world.models().moves(*object); });
    m_changed |= moves;
    each_view([](CDXUTControl& control) {
        if (control.GetType() == DXUT_CONTROL_MAP)
            static_cast<CDXUTMap&>(control).follow_spots();
    });
    return moves;
}

void SceneInWorld::play(bool on)
{
    m_playing = on;
    m_core.live().in_world = nullptr;
    m_world.models().set_clock(0);
    m_changed = true;
    for (auto& [id, picture] : m_pictures)
        picture = {};
}

// Dialogs in the world --------------------------------------------------------------------------------------------------

QByteArray SceneInWorld::content_of(const QString& texture) const
{
    const QByteArray file = m_core.document().files().value(texture_entry(texture));
    auto& [known, hash] = m_contents[texture];
    if (known.constData() != file.constData() || hash.isEmpty()) {
        known = file;
        hash = QCryptographicHash::hash(file, QCryptographicHash::Sha256);
    }
    return hash;
}

/// Whether a model or panel uses the texture.
bool SceneInWorld::is_loaded(const Bound& bound) const
{
    for (const WorldObject* object : m_world.objects().objects()) {
        if (const auto* panel = dynamic_cast<const PanelState*>(&object->object_state()))
            if (panel->picture == bound.texture)
                return true;
        const ModelPose* pose = object->has_file() ? m_world.models().pose(*object) : nullptr;
        const auto uses = [&](const ModelPicture& picture) { return picture.content == bound.content; };
        if (pose && std::ranges::any_of(pose->model()->data().pictures, uses))
            return true;
    }
    return false;
}

const std::vector<SceneInWorld::Bound>& SceneInWorld::bound_dialogs() const
{
    // Models are read while the scene is there already.
    const quint64 models = m_world.models().library().revision();
    if (!std::exchange(m_stale, false) && m_bound_models == models)
        return m_bound;
    m_bound_models = models;
    m_bound.clear();
    for (const CDXUTDialog* dialog : m_core.GetDialogs()) {
        const QString& texture = dialog->dialog_state().bind_texture;
        if (texture.isEmpty())
            continue;
        const Bound bound{dialog, texture, content_of(texture)};
        if (is_loaded(bound))
            m_bound.push_back(bound);
    }
    return m_bound;
}

bool SceneInWorld::is_in_world(const CDXUTDialog& dialog) const
{
    if (!m_playing || dialog.dialog_state().bind_texture.isEmpty() || !m_world.renderer().works())
        return false;
    const auto& bound = bound_dialogs();
    return std::ranges::any_of(bound, [&](const Bound& one) { return one.dialog == &dialog; });
}

void SceneInWorld::damaged(const QRectF& area)
{
    if (area.isEmpty())
        return;
    for (const Bound& bound : bound_dialogs())
        if (bound.dialog->drawn_bounds().intersects(area)) {
            m_pictures[bound.dialog->id()] = {};
            m_changed |= !shows_world(*bound.dialog); // One that does would draw itself for ever.
        }
}

const QImage& SceneInWorld::picture_of(const CDXUTDialog& dialog)
{
    QImage& picture = m_pictures[dialog.id()];
    const QSize size = dialog.outer_rect().size().toSize().boundedTo({largest_side, largest_side});
    if (picture.size() == size || size.isEmpty())
        return picture;
    picture = QImage(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(QColor::fromRgba(dialog.dialog_state().bind_color));
    QPainter painter(&picture);
    m_painter.paint_alone(painter, m_core, dialog, 1);
    return picture;
}

std::vector<WorldPictures::Live> SceneInWorld::live_pictures()
{
    std::vector<Live> pictures;
    if (std::exchange(m_draws, true))
        return pictures;
    for (const Bound& bound : bound_dialogs())
        if (bound.dialog->is_seen())
            pictures.push_back({bound.texture, bound.content, picture_of(*bound.dialog)});
    m_draws = false;
    return pictures;
}

QImage SceneInWorld::picture(const QString& name)
{
    return texture(m_core, name);
}

/// The dialog that is shown where an object was hit.
const SceneInWorld::Bound* SceneInWorld::bound_at(const WorldObject& object, const ModelHit& hit) const
{
    const auto* panel = dynamic_cast<const PanelState*>(&object.object_state());
    QByteArray content;
    if (!panel) {
        const ModelData& data = m_world.models().pose(object)->model()->data();
        const qint32 picture = data.materials[data.meshes[hit.mesh].material].picture;
        if (picture < 0)
            return nullptr;
        content = data.pictures[std::size_t(picture)].content;
    }
    for (const Bound& bound : bound_dialogs())
        if (panel ? bound.texture == panel->picture : bound.content == content)
            return &bound;
    return nullptr;
}

std::optional<SceneInWorld::Spot> SceneInWorld::spot_at(QPointF place) const
{
    if (!m_playing || bound_dialogs().empty() || !m_world.renderer().works())
        return {};
    const Ray ray = ViewProjection(m_world.camera(), m_core.screen_size()).ray(place);
    const WorldObject* object = nullptr;
    std::optional<ModelHit> hit;
    for (const WorldObject* one : m_world.objects().objects())
        if (const auto met = one->is_visible() ? m_world.models().pick(*one, ray) : std::nullopt;
            met && (!hit || met->distance < hit->distance)) {
            hit = met;
            object = one;
        }
    const Bound* bound = hit ? bound_at(*object, *hit) : nullptr;
    if (!bound || !bound->dialog->dialog_state().bind_mouse || !bound->dialog->is_seen())
        return {};
    const QRectF outer = bound->dialog->outer_rect();
    const auto within = [](float share) { return double(share) - std::floor(double(share)); };
    return Spot{bound->dialog,
                outer.topLeft() + QPointF(within(hit->uv.x()) * outer.width(), within(hit->uv.y()) * outer.height())};
}

} // namespace tarn
