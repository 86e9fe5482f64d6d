#include "world_layer.h"

#include "animation/animation_scene.h"
#include "animation/t_var.h"
#include "animation/timer_object.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/camera_view.h"
#include "engine/scene_selection.h"
#include "engine/view_projection.h"
#include "engine/world_edit.h"
#include "engine/world_models.h"
#include "engine/world_renderer.h"
#include "gui_draw/texture_cache.h"
#include "gui_scene/gui_plug_scene.h"
#include "motion_path.h"
#include "selection_overlay.h"
#include "world/world_scene.h"
#include "world_shape.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tarn {

namespace {

constexpr double reach = 5;                     ///< pixels beside a line that still hit it
constexpr QRectF eye_label_place(16, 40, 1, 1); ///< says through which camera the view looks
const QColor selected_color(0x2f, 0xb5, 0xc9);
const QColor current_color(0xff, 0xb0, 0x3a);

QColor faded(QColor color, double opacity)
{
    color.setAlphaF(float(std::clamp(opacity, 0.0, 1.0)));
    return color;
}

double distance_from(const CBaseWorld& world, const ViewProjection& view, const WorldObject& object)
{
    return double((bounds_of(world, object).centre - view.eye()).length());
}

/// Metres from the eye to where the object is seen at `place`; none when it is not.
std::optional<double> seen_at(const CBaseWorld& world, const ViewProjection& view, const WorldObject& object,
                              QPointF place)
{
    if (world.models().pose(object)) {
        const auto hit = world.models().pick(object, view.ray(place));
        return hit ? std::optional(double(hit->distance)) : std::nullopt;
    }
    return distance_to(world_shape(world, object), view, place) > reach
        ? std::nullopt
        : std::optional(distance_from(world, view, object));
}

} // namespace

WorldLayer::WorldLayer(CGuiPlugScene& scene) : m_scene(scene)
{
    m_scene.document().changes().add_listener(this);
}

WorldLayer::~WorldLayer()
{
    m_scene.document().changes().remove_listener(this);
}

void WorldLayer::set_screen_size(QSize size)
{
    m_changed |= size != m_size;
    m_size = size;
}

void WorldLayer::model_changed(const ModelChange& change)
{
    m_changed |= change.everything
        || std::any_of(change.objects.begin(), change.objects.end(), [](const ModelChange::Object& changed) {
                     return dynamic_cast<const WorldObject*>(changed.object)
                         || dynamic_cast<const CTimerObject*>(changed.object)
                         || dynamic_cast<const CTVar*>(changed.object);
                 });
}

WorldLayer::Look WorldLayer::look() const
{
    CBaseWorld& world = *m_scene.world();
    if (world.objects().objects().empty())
        return {};
    return {.camera = world.camera().view_matrix(),
            .selected = world.selection().objects(),
            .timebar = m_scene.animation().is_editing() ? m_scene.animation().current_bar() : nullptr,
            .models = world.models().library().revision(),
            .playing = m_scene.is_playing(),
            .empty = false};
}

QRectF WorldLayer::take_damage()
{
    // An empty world costs nothing, wherever one looks at it from.
    if (look() == m_painted && (!m_changed || m_painted.empty)) {
        m_changed = false;
        return {};
    }
    m_changed = false;
    m_painted = look();
    return QRectF(QPointF(), QSizeF(m_size));
}

/// From the farthest to the nearest.
std::vector<const WorldObject*> WorldLayer::shown_objects(const ViewProjection& view) const
{
    std::vector<std::pair<double, const WorldObject*>> order;
    for (const WorldObject* object : m_scene.world()->objects().objects()) {
        const bool is_aid = object->type() == WorldType::Camera || object->type() == WorldType::Path;
        const bool is_eye = object->id() == m_scene.world()->camera().looks_through();
        if (object->is_visible() && !is_eye && !(is_aid && m_scene.is_playing()))
            order.emplace_back(-distance_from(*m_scene.world(), view, *object), object);
    }
    std::stable_sort(order.begin(), order.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<const WorldObject*> objects;
    for (const auto& [distance, object] : order)
        objects.push_back(object);
    return objects;
}

void WorldLayer::paint(QPainter& painter, const QRectF&, double scale)
{
    const ViewProjection view(m_scene.world()->camera(), m_size);
    painter.setRenderHint(QPainter::Antialiasing);
    const std::vector<const WorldObject*> objects = shown_objects(view);
    for (const WorldObject* object : objects)
        paint_object(painter, view, *object, scale);
    if (m_scene.is_playing())
        return;
    paint_motion_paths(painter, view, m_scene);
    if (const WorldObject* camera = m_scene.world()->camera_view().camera())
        paint_label(painter, eye_label_place, lang(u"相机：%1", u"Camera: %1").arg(camera->name()));
}

void WorldLayer::paint_object(QPainter& painter, const ViewProjection& view, const WorldObject& object,
                              double scale) const
{
    const CSelection& selection = m_scene.world()->selection();
    const bool selected = !m_scene.is_playing() && selection.contains(&object);
    const double opacity = 1 - double(object.object_state().transparency);
    const QColor own = QColor::fromRgba(object.object_state().color);
    const WorldShape shape = world_shape(*m_scene.world(), object);
    const bool drawn = m_scene.world()->renderer().draws(object);
    if (drawn && !selected)
        return;
    painter.setPen(Qt::NoPen);
    const double filled = object.type() == WorldType::Camera ? 0.12 : 0.35;
    for (const WorldShape::Face& face : drawn ? std::vector<WorldShape::Face>() : shape.faces) {
        const QColor lit = QColor::fromRgbF(own.redF() * face.light, own.greenF() * face.light,
                                            own.blueF() * face.light);
        painter.setBrush(faded(lit, filled * opacity * own.alphaF()));
        painter.drawPolygon(view.face(face.corners));
    }
    if (!drawn)
        paint_picture(painter, view, object, scale);
    const QColor line = !selected         ? faded(own, 0.9 * opacity * own.alphaF())
        : selection.get_last() == &object ? current_color
                                          : selected_color;
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(line, selected ? 2 : 1.2, Qt::SolidLine, Qt::RoundCap));
    for (const WorldShape::Line& edge : shape.lines)
        if (const auto shown = view.line(edge.from, edge.to))
            painter.drawLine(*shown);
}

/// A panel's picture, as far as the whole panel lies before the eye.
void WorldLayer::paint_picture(QPainter& painter, const ViewProjection& view, const WorldObject& object,
                               double scale) const
{
    const auto* panel = dynamic_cast<const PanelState*>(&object.object_state());
    if (!panel || panel->picture.isEmpty())
        return;
    const WorldShape shape = world_shape(*m_scene.world(), object);
    const QPolygonF corners = view.face(shape.faces.front().corners);
    const QImage picture = texture(m_scene.gui_core(), panel->picture,
                                   (corners.boundingRect().size() * scale).toSize());
    QTransform onto;
    if (picture.isNull() || corners.size() != 4
        || !QTransform::quadToQuad(QPolygonF(QRectF(picture.rect())).mid(0, 4), corners, onto))
        return;
    painter.save();
    painter.setOpacity(1 - double(panel->transparency));
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(onto, true);
    painter.drawImage(0, 0, picture);
    painter.restore();
}

WorldObject* world_object_at(const CBaseWorld& world, const ViewProjection& view, QPointF place)
{
    WorldObject* found = nullptr;
    double nearest = far_away;
    for (WorldObject* object : world.objects().objects()) {
        if (!object->is_visible() || object->is_locked() || object->id() == world.camera().looks_through())
            continue;
        if (const auto distance = seen_at(world, view, *object, place); distance && *distance < nearest) {
            nearest = *distance;
            found = object;
        }
    }
    return found;
}

} // namespace tarn
