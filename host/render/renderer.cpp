#include "renderer.h"

#include "frustum.h"
#include "ground_pass.h"
#include "model_painter.h"
#include "render_context.h"
#include "render_target.h"
#include "shadows.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace tarn {

namespace {

/// Several samples a pixel take a processor that draws by itself three times as long.
int samples_here()
{
    const auto* name = reinterpret_cast<const char*>(glGetString(GL_RENDERER));
    for (const char* software : {"llvmpipe", "softpipe", "swrast", "SwiftShader", "Software"})
        if (name && std::strstr(name, software))
            return 0;
    return 4;
}

QVector4D vector_of(const QColor& color)
{
    return {color.redF(), color.greenF(), color.blueF(), color.alphaF()};
}

/// What an item's picture depends on.
struct Signature {
    quint64 pose;
    QMatrix4x4 matrix;
    QRgb tint;
    float transparency;
    QRgb highlight;
    bool casts_shadow;
    std::vector<MaterialTexture> textures;

    friend bool operator==(const Signature&, const Signature&) = default;
};

struct Target {
    explicit Target(int samples) : buffer(samples) {}

    RenderTarget buffer;
    RenderView view;
    std::vector<Signature> items;
    quint64 textures = 0;
};

/// An item that is seen.
struct Seen {
    const DrawItem* item;
    const ModelPose* pose;
    float distance; ///< from the eye
};

/// A part that lets something through, to be drawn after all that do not.
struct Clear {
    Seen seen;
    const ModelPart* part;
    float depth; ///< from the camera
};

bool is_clear(const DrawItem& item, const ModelPart& part)
{
    const ModelData& data = item.model->data();
    const ModelMaterial& material = data.materials[data.meshes[part.mesh].material];
    return material.alpha == AlphaMode::Blend || item.transparency > 0 || item.tint.alpha() < 255;
}

} // namespace

GroundLook ground_look(const RenderView& view)
{
    GroundLook look = ground_look(view.view, view.projection, view.pixels, view.dpr);
    look.axes = view.axes ? 1.f : 0.f;
    return look;
}

class Renderer::Parts {
public:
    explicit Parts(std::unique_ptr<RenderContext> made) : context(std::move(made)) {}
    ~Parts()
    {
        const RenderContext::Current current(*context);
        m_own.reset();
    }

    bool initialize()
    {
        const RenderContext::Current current(*context);
        m_own = std::make_unique<Own>();
        m_own->samples = samples_here();
        return m_own->painter.initialize() && m_own->shadows.initialize() && m_own->ground.initialize();
    }

    quint32 draw(int number, const RenderView& view, std::span<const DrawItem> items);
    QImage picture(int number);
    void remove_target(int number);
    void set_texture(quint64 number, const QImage& image);

    std::unique_ptr<RenderContext> context;
    RenderCost cost;

private:
    struct Texture {
        GlTexture name;
        qint64 content = 0; ///< QImage::cacheKey() of what it shows
    };
    /// What lives in the context.
    struct Own {
        ModelPainter painter;
        Shadows shadows;
        GroundPass ground;
        std::map<int, Target> targets;
        std::map<quint64, Texture> textures;
        quint64 textures_version = 0;
        int samples = 0;
    };

    const ModelPose& pose_of(const DrawItem& item) { return item.pose ? *item.pose : m_own->painter.rest(item.model); }
    bool is_shown(Target& target, const RenderView& view, std::span<const DrawItem> items);
    std::vector<Seen> seen(const Frustum& frustum, std::span<const DrawItem> items, const QVector3D& eye);
    void prepare_shadows(const Frustum& frustum, std::span<const DrawItem> items);
    void draw_solid(const std::vector<Seen>& seen);
    void draw_ground(const RenderView& view, const QMatrix4x4& world_to_clip, bool shaded);
    void draw_clear(const RenderView& view, const std::vector<Seen>& seen);
    void draw_part(const Seen& seen, const ModelPart& part);
    PartLook look_of(const DrawItem& item, const ModelMaterial& material) const;

    std::unique_ptr<Own> m_own;
};

bool Renderer::Parts::is_shown(Target& target, const RenderView& view, std::span<const DrawItem> items)
{
    std::vector<Signature> signatures;
    signatures.reserve(items.size());
    for (const DrawItem& item : items)
        signatures.push_back({pose_of(item).revision(), item.matrix, item.tint.rgba(), item.transparency,
                              item.highlight.rgba(), item.casts_shadow, item.textures});
    const bool same = target.view == view && target.items == signatures && target.textures == m_own->textures_version
        && target.buffer.size() == view.pixels;
    target.view = view;
    target.items = std::move(signatures);
    target.textures = m_own->textures_version;
    return same;
}

/// The nearest first: what they cover is not drawn again.
std::vector<Seen> Renderer::Parts::seen(const Frustum& frustum, std::span<const DrawItem> items, const QVector3D& eye)
{
    std::vector<Seen> all;
    for (const DrawItem& item : items) {
        if (item.transparency >= 1)
            continue;
        const ModelPose& pose = pose_of(item);
        const ModelBox box = pose.box().moved(item.matrix);
        if (frustum.sees(box))
            all.push_back({&item, &pose, box.centre().distanceToPoint(eye)});
    }
    std::stable_sort(all.begin(), all.end(), [](const Seen& a, const Seen& b) { return a.distance < b.distance; });
    return all;
}

void Renderer::Parts::prepare_shadows(const Frustum& frustum, std::span<const DrawItem> items)
{
    for (const DrawItem& item : items)
        if (item.casts_shadow && item.transparency < 0.5f)
            if (const ModelPose& pose = pose_of(item); frustum.sees(Shadows::area(pose, item.matrix)))
                m_own->shadows.prepare(m_own->painter, pose, item.matrix);
}

/// After the solid models: pixels that they cover cost nothing. `shaded`: the opacity that is there is the light.
void Renderer::Parts::draw_ground(const RenderView& view, const QMatrix4x4& world_to_clip, bool shaded)
{
    const GroundLook look = ground_look(view);
    (shaded ? glEnable : glDisable)(GL_BLEND);
    glBlendFuncSeparate(GL_DST_ALPHA, GL_ZERO, GL_ONE, GL_ZERO);
    glDisable(GL_CULL_FACE);
    if (look.eye.y() > 0) {               // Seen from above it hides what is below.
        glEnable(GL_POLYGON_OFFSET_FILL); // But not what lies on it.
        glPolygonOffset(1, 8);
        m_own->ground.draw_plane(look, world_to_clip);
        glDisable(GL_POLYGON_OFFSET_FILL);
    }
    glDepthRange(1, 1); // Where nothing is.
    m_own->ground.draw(look);
    glDepthRange(0, 1);
    glDisable(GL_BLEND);
}

PartLook Renderer::Parts::look_of(const DrawItem& item, const ModelMaterial& material) const
{
    PartLook look;
    look.tint = vector_of(item.tint);
    look.tint.setW(look.tint.w() * (1 - std::clamp(item.transparency, 0.f, 1.f)));
    look.highlight = vector_of(item.highlight);
    for (const MaterialTexture& own : item.textures)
        if (own.material == material.name)
            if (const auto texture = m_own->textures.find(own.texture); texture != m_own->textures.end()) {
                look.picture = texture->second.name.id();
                look.glows = own.glows;
            }
    return look;
}

void Renderer::Parts::draw_part(const Seen& seen, const ModelPart& part)
{
    const ModelData& data = seen.item->model->data();
    const ModelMesh& mesh = data.meshes[part.mesh];
    m_own->painter.draw(*seen.pose, part, seen.item->matrix, look_of(*seen.item, data.materials[mesh.material]));
    cost.triangles += qsizetype(mesh.indices.size() / 3);
}

void Renderer::Parts::draw_solid(const std::vector<Seen>& seen)
{
    // The opacity belongs to the shadows.
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_FALSE);
    for (const Seen& one : seen)
        for (const ModelPart& part : one.item->model->parts())
            if (!is_clear(*one.item, part))
                draw_part(one, part);
    glColorMask(GL_TRUE, GL_TRUE, GL_TRUE, GL_TRUE);
}

void Renderer::Parts::draw_clear(const RenderView& view, const std::vector<Seen>& seen)
{
    std::vector<Clear> clear;
    for (const Seen& one : seen)
        for (const ModelPart& part : one.item->model->parts())
            if (is_clear(*one.item, part)) {
                const QVector3D centre = one.item->matrix.map(one.pose->box(part).centre());
                clear.push_back({one, &part, -view.view.map(centre).z()});
            }
    std::stable_sort(clear.begin(), clear.end(), [](const Clear& a, const Clear& b) { return a.depth > b.depth; });
    glEnable(GL_BLEND);
    glBlendFuncSeparate(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA, GL_ZERO, GL_ONE);
    glDepthMask(GL_FALSE);
    for (const Clear& part : clear)
        draw_part(part.seen, *part.part);
    glDepthMask(GL_TRUE);
    glDisable(GL_BLEND);
}

quint32 Renderer::Parts::draw(int number, const RenderView& view, std::span<const DrawItem> items)
{
    cost = {};
    if (view.pixels.isEmpty())
        return 0;
    const RenderContext::Current current(*context);
    m_own->painter.forget_unused();
    Target& target = m_own->targets.try_emplace(number, m_own->samples).first->second;
    if (is_shown(target, view, items))
        return target.buffer.texture();
    const QMatrix4x4 world_to_clip = view.projection * view.view;
    const QVector3D eye = view.view.inverted().column(3).toVector3D();
    const Frustum frustum(world_to_clip);
    const bool ground = view.ground && view.projection(3, 3) == 0;
    const bool casts = ground && eye.y() > 0;
    if (casts)
        prepare_shadows(frustum, items);
    target.buffer.resize(view.pixels);
    target.buffer.bind();
    for (const GLenum state : {GL_BLEND, GL_DEPTH_TEST, GL_CULL_FACE, GL_SCISSOR_TEST})
        glDisable(state);
    glClearColor(view.background.redF(), view.background.greenF(), view.background.blueF(), 1);
    glClear(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT);
    const bool shaded = casts && m_own->shadows.draw(world_to_clip);
    const std::vector<Seen> visible = seen(frustum, items, eye);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    m_own->painter.begin(world_to_clip, eye, false);
    draw_solid(visible);
    if (ground)
        draw_ground(view, world_to_clip, shaded);
    m_own->painter.begin(world_to_clip, eye, false);
    draw_clear(view, visible);
    target.buffer.finish();
    cost.items = int(visible.size());
    cost.drawn = true;
    return target.buffer.texture();
}

QImage Renderer::Parts::picture(int number)
{
    const RenderContext::Current current(*context);
    const auto target = m_own->targets.find(number);
    return target == m_own->targets.end() ? QImage() : target->second.buffer.picture();
}

void Renderer::Parts::remove_target(int number)
{
    const RenderContext::Current current(*context);
    m_own->targets.erase(number);
}

void Renderer::Parts::set_texture(quint64 number, const QImage& image)
{
    const RenderContext::Current current(*context);
    if (image.isNull()) {
        m_own->textures_version += m_own->textures.erase(number);
        return;
    }
    Texture& texture = m_own->textures[number];
    if (texture.content == image.cacheKey())
        return;
    upload(texture.name, image);
    texture.content = image.cacheKey();
    ++m_own->textures_version;
}

Renderer::Renderer(std::unique_ptr<Parts> parts) : m_parts(std::move(parts)) {}

Renderer::~Renderer() = default;

std::unique_ptr<Renderer> Renderer::create()
{
    auto context = RenderContext::create();
    if (!context)
        return nullptr;
    auto parts = std::make_unique<Parts>(std::move(context));
    if (!parts->initialize())
        return nullptr;
    return std::unique_ptr<Renderer>(new Renderer(std::move(parts)));
}

bool Renderer::shares_with_widgets() const
{
    return m_parts->context->shares_with_widgets();
}

quint32 Renderer::draw(int target, const RenderView& view, std::span<const DrawItem> items)
{
    return m_parts->draw(target, view, items);
}

QImage Renderer::picture(int target)
{
    return m_parts->picture(target);
}

void Renderer::remove_target(int target)
{
    m_parts->remove_target(target);
}

void Renderer::set_texture(quint64 number, const QImage& image)
{
    m_parts->set_texture(number, image);
}

const RenderCost& Renderer::cost() const
{
    return m_parts->cost;
}

} // namespace tarn
