#include "world_renderer.h"

#include "base_world.h"
#include "scene_selection.h"
#include "world/world_scene.h"
#include "world_models.h"

#include <algorithm>

namespace tarn {

namespace {

const QColor selected_tint(0x2f, 0xb5, 0xc9, 70);
const QColor current_tint(0xff, 0xb0, 0x3a, 70);
const QString panel_material = QStringLiteral("panel");

/// A rectangle of one metre that stands upright, seen from both sides.
ModelPtr make_panel(AlphaMode alpha)
{
    ModelMesh mesh;
    mesh.places = {{-0.5f, -0.5f, 0}, {0.5f, -0.5f, 0}, {0.5f, 0.5f, 0}, {-0.5f, 0.5f, 0}};
    mesh.normals.assign(4, {0, 0, 1});
    mesh.uvs = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    mesh.indices = {0, 1, 2, 0, 2, 3};
    ModelMaterial material;
    material.name = panel_material;
    material.alpha = alpha;
    material.two_sided = true;
    ModelNode node;
    node.meshes = {0};
    ModelData data;
    data.meshes.push_back(std::move(mesh));
    data.materials.push_back(std::move(material));
    data.nodes.push_back(std::move(node));
    return Model::make(std::move(data)).value();
}

} // namespace

WorldRenderer::WorldRenderer(CBaseWorld& world) : m_world(world) {}

WorldRenderer::~WorldRenderer() = default;

/// Made when there is something to draw: it takes a fifth of a second.
Renderer* WorldRenderer::renderer()
{
    if (!std::exchange(m_tried, true))
        m_renderer = Renderer::create();
    return m_renderer.get();
}

bool WorldRenderer::draws(const WorldObject& object)
{
    const bool has_faces = object.type() == WorldType::Panel || (object.has_file() && m_world.models().pose(object));
    return has_faces && renderer();
}

bool WorldRenderer::draws_any()
{
    const auto& objects = m_world.objects().objects();
    return std::any_of(objects.begin(), objects.end(), [this](const WorldObject* object) { return draws(*object); });
}

const WorldPictures::Live* WorldRenderer::live(const QString& name) const
{
    const auto found = std::find_if(m_live.begin(), m_live.end(), [&](const auto& live) { return live.name == name; });
    return found == m_live.end() ? nullptr : &*found;
}

const WorldPictures::Live* WorldRenderer::live(const QByteArray& content) const
{
    const auto found = std::find_if(m_live.begin(), m_live.end(),
                                    [&](const auto& live) { return live.content == content; });
    return found == m_live.end() || content.isEmpty() ? nullptr : &*found;
}

MaterialTexture WorldRenderer::texture_of(const QString& material, const QString& name, const QImage& image, bool glows)
{
    const quint64 number = m_textures.value(name, quint64(m_textures.size()) + 1);
    m_textures.insert(name, number);
    m_renderer->set_texture(number, image);
    return {material, number, glows};
}

void WorldRenderer::add_model(std::vector<DrawItem>& items, const WorldObject& object, DrawItem item)
{
    item.pose = m_world.models().pose(object);
    if (!item.pose)
        return;
    item.model = item.pose->model();
    const ModelData& data = item.model->data();
    if (!m_live.empty())
        for (const ModelMaterial& material : data.materials)
            if (const auto* shown = material.picture < 0 ? nullptr
                                                         : live(data.pictures[std::size_t(material.picture)].content))
                item.textures.push_back(texture_of(material.name, u'*' + shown->name, shown->image, true));
    items.push_back(std::move(item));
}

void WorldRenderer::add_panel(std::vector<DrawItem>& items, const WorldObject& object, DrawItem item)
{
    const auto& panel = static_cast<const PanelState&>(object.object_state());
    const auto* shown = live(panel.picture);
    const QImage image = shown                   ? shown->image
        : m_pictures && !panel.picture.isEmpty() ? m_pictures->picture(panel.picture)
                                                 : QImage();
    item.model = image.hasAlphaChannel() ? m_clear_panel : m_solid_panel;
    item.matrix.scale(panel.width, panel.height);
    if (!image.isNull())
        item.textures.push_back(texture_of(panel_material, shown ? u'*' + shown->name : panel.picture, image, true));
    items.push_back(std::move(item));
}

std::vector<DrawItem> WorldRenderer::items(Eye eye)
{
    m_live = m_pictures ? m_pictures->live_pictures() : std::vector<WorldPictures::Live>();
    if (!m_solid_panel) {
        m_solid_panel = make_panel(AlphaMode::Opaque);
        m_clear_panel = make_panel(AlphaMode::Blend);
    }
    const CSelection& selection = m_world.selection();
    std::vector<DrawItem> items;
    for (const WorldObject* object : m_world.objects().objects()) {
        const WorldObjectState& state = object->object_state();
        if (!state.visible)
            continue;
        DrawItem item;
        item.matrix = object->transform();
        item.tint = QColor::fromRgba(state.color);
        item.transparency = state.transparency;
        if (eye == Eye::Author && selection.contains(object))
            item.highlight = selection.get_last() == object ? current_tint : selected_tint;
        if (object->type() == WorldType::Panel)
            add_panel(items, *object, std::move(item));
        else if (object->has_file())
            add_model(items, *object, std::move(item));
    }
    return items;
}

/// A world without objects is left to who draws the ground otherwise, but for cameras, who have nobody else.
bool WorldRenderer::draw(int target, const RenderView& view, Eye eye)
{
    if (eye == Eye::Author ? !draws_any() : !works())
        return false;
    m_drawn = m_renderer->draw(target, view, items(eye));
    return m_drawn != 0;
}

quint32 WorldRenderer::texture(int target, const RenderView& view, Eye eye)
{
    return draw(target, view, eye) && m_renderer->shares_with_widgets() ? m_drawn : 0;
}

QImage WorldRenderer::picture(int target, const RenderView& view, Eye eye)
{
    return draw(target, view, eye) ? m_renderer->picture(target) : QImage();
}

void WorldRenderer::remove_target(int target)
{
    if (m_renderer)
        m_renderer->remove_target(target);
}

} // namespace tarn
