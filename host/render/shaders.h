#pragma once

/// The programs of the renderer, without the line that tells their version.
namespace tarn::render_shaders {

/// One triangle that covers the screen, without any vertex data.
inline constexpr char screen[] = R"(void main()
{
    vec2 corner = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    gl_Position = vec4(corner, 0.0, 1.0);
}
)";

/// ground_raster.cpp of the views draws the same ground; both have to change together.
inline constexpr char ground[]
    = R"(uniform sampler2D background; // by rows of the picture, or by heights over the horizon
uniform float steps;          // heights in a degree; 0: by rows
uniform vec2 size;
uniform vec3 eye;
uniform vec3 ray_origin;
uniform vec3 ray_step_x;
uniform vec3 ray_step_y;
uniform float reach;
uniform float line;
uniform vec2 spacing; // minor, major
uniform vec2 room;    // crowded, roomy
uniform float axis_width;
uniform vec4 minor_color;
uniform vec4 major_color;
uniform vec4 x_axis_color;
uniform vec4 z_axis_color;
uniform vec3 glow_color;
uniform float glow_radius;
out vec4 color;

float dither(uvec2 p)
{
    uint d = p.x ^ p.y;
    uint rank = (d & 1u) << 5 | (p.y & 1u) << 4 | (d & 2u) << 2 | (p.y & 2u) << 1 | (d & 4u) >> 1 | (p.y & 4u) >> 2;
    return (float(rank) + 0.5) / 64.0 - 0.5;
}

vec2 lines(vec2 place, vec2 pixel, float gap)
{
    vec2 shown = smoothstep(vec2(room.x), vec2(room.y), gap / (pixel * line));
    vec2 away = abs(place - gap * round(place / gap)) / pixel;
    return clamp(line / 2.0 + 0.5 - away, 0.0, 1.0) * shown;
}

vec3 background_at(vec3 ray, float row)
{
    if (steps == 0.0)
        return texelFetch(background, ivec2(0, int(row)), 0).rgb;
    float place = (degrees(asin(ray.y / length(ray))) + 90.0) * steps;
    int below = min(int(place), int(180.0 * steps) - 1);
    return mix(texelFetch(background, ivec2(0, below), 0).rgb, texelFetch(background, ivec2(0, below + 1), 0).rgb,
               place - float(below));
}

void main()
{
    vec2 pixel = vec2(gl_FragCoord.x, size.y - gl_FragCoord.y) - 0.5;
    vec3 ray = ray_origin + ray_step_x * pixel.x + ray_step_y * pixel.y;
    vec3 value = background_at(ray, pixel.y);
    float depth = -eye.y / ray.y;
    vec2 near = depth * ray.xz;
    float fade = max(0.0, 1.0 - dot(near, near) / (reach * reach));
    if (depth > 0.0 && fade > 0.0) {
        fade *= fade;
        vec2 place = near + eye.xz;
        // How far apart two neighbouring pixels are on the ground: from the geometry, as the differences between
        // fragments are wrong where the ground ends.
        vec2 right = depth * ray_step_x.xz;
        vec2 down = depth * (ray_step_y.xz - ray.xz * (ray_step_y.y / ray.y));
        vec2 apart = sqrt(right * right + down * down);
        float bright = 1.0 / (1.0 + dot(place, place) / (glow_radius * glow_radius));
        vec2 minor = lines(place, apart, spacing.x);
        vec2 major = lines(place, apart, spacing.y);
        vec2 axes = clamp(line * axis_width / 2.0 + 0.5 - abs(place) / apart, 0.0, 1.0);
        value += glow_color * (bright * bright * fade);
        value = mix(value, minor_color.rgb, fade * minor_color.a * max(minor.x, minor.y));
        value = mix(value, major_color.rgb, fade * major_color.a * max(major.x, major.y));
        value = mix(value, z_axis_color.rgb, fade * z_axis_color.a * axes.x);
        value = mix(value, x_axis_color.rgb, fade * x_axis_color.a * axes.y);
    }
    color = vec4(value + dither(uvec2(pixel)) / 255.0, 1.0);
}
)";

/// Models. Defined or not: SKINNED, PICTURE, NORMAL_MAP, MASKED, SILHOUETTE, HIGHLIGHT. What is handed from corner to
/// pixel is as little as can be: without a graphics processor that is most of a frame.
inline constexpr char model_vertex[] = R"(
layout(location = 0) in vec3 place;
layout(location = 1) in vec3 normal;
layout(location = 2) in vec2 uv;
layout(location = 3) in vec4 tangent;
layout(location = 4) in uvec4 bone_numbers;
layout(location = 5) in vec4 bone_weights;
uniform mat4 to_world;
uniform mat3 normal_to_world;
uniform mat4 to_clip;
#ifdef SKINNED
layout(std140) uniform Bones { mat4 bones[128]; };
#endif
#ifdef HIGHLIGHT
out vec3 at;
#endif
#ifndef SILHOUETTE
out vec3 face;
#endif
#ifdef NORMAL_MAP
out vec4 along;
#endif
#if defined(PICTURE) || defined(NORMAL_MAP)
out vec2 spot;
#endif

void main()
{
    vec4 posed = vec4(place, 1.0);
    vec3 posed_normal = normal;
#ifdef SKINNED
    mat4 skin = bones[bone_numbers.x] * bone_weights.x + bones[bone_numbers.y] * bone_weights.y
        + bones[bone_numbers.z] * bone_weights.z + bones[bone_numbers.w] * bone_weights.w;
    posed = vec4((skin * posed).xyz, 1.0);
    posed_normal = mat3(skin) * normal;
#endif
#ifdef HIGHLIGHT
    at = (to_world * posed).xyz;
#endif
#ifndef SILHOUETTE
    face = normal_to_world * posed_normal;
#endif
#ifdef NORMAL_MAP
    vec3 posed_tangent = tangent.xyz;
#ifdef SKINNED
    posed_tangent = mat3(skin) * posed_tangent;
#endif
    along = vec4(mat3(to_world) * posed_tangent, tangent.w);
#endif
#if defined(PICTURE) || defined(NORMAL_MAP)
    spot = uv;
#endif
    gl_Position = to_clip * posed;
}
)";

inline constexpr char model_fragment[] = R"(
#ifdef HIGHLIGHT
in vec3 at;
#endif
#ifndef SILHOUETTE
in vec3 face;
#endif
#ifdef NORMAL_MAP
in vec4 along;
#endif
#if defined(PICTURE) || defined(NORMAL_MAP)
in vec2 spot;
#endif
uniform vec4 color;
uniform sampler2D picture;
uniform sampler2D normal_map;
uniform float cutoff;
uniform vec3 eye;
uniform vec3 to_light;
uniform vec3 light_color;
uniform vec3 sky_color;
uniform vec3 ground_color;
uniform vec4 highlight;
out vec4 value;

void main()
{
    vec4 base = color;
#ifdef PICTURE
    base *= texture(picture, spot);
#endif
#ifdef MASKED
    if (base.a < cutoff)
        discard;
    base.a = color.a;
#endif
#ifdef SILHOUETTE
    value = vec4(1.0);
#else
    vec3 n = normalize(gl_FrontFacing ? face : -face);
#ifdef NORMAL_MAP
    vec3 t = normalize(along.xyz - n * dot(n, along.xyz));
    vec3 bump = texture(normal_map, spot).xyz * 2.0 - 1.0;
    n = normalize(t * bump.x + cross(n, t) * along.w * bump.y + n * bump.z);
#endif
#ifdef GLOWS
    vec3 light = vec3(1.0);
#else
    vec3 light = mix(ground_color, sky_color, n.y * 0.5 + 0.5) + light_color * max(dot(n, to_light), 0.0);
#endif
    vec3 lit = base.rgb * light;
#ifdef HIGHLIGHT
    float rim = 1.0 - abs(dot(n, normalize(eye - at)));
    lit = mix(lit, highlight.rgb, highlight.a * (0.22 + 0.78 * rim * rim));
#endif
    value = vec4(lit, base.a);
#endif
}
)";

/// A rectangle of the ground, without any vertex data.
inline constexpr char ground_vertex[] = R"(
uniform mat4 to_clip;
uniform vec4 area; // x and z from, x and z to
out vec2 spot;

void main()
{
    spot = vec2(gl_VertexID & 1, gl_VertexID >> 1);
    vec2 place = mix(area.xy, area.zw, spot);
    gl_Position = to_clip * vec4(place.x, 0.0, place.y, 1.0);
}
)";

/// Leaves as opacity how much light reaches the ground.
inline constexpr char shadow_fragment[] = R"(
in vec2 spot;
uniform sampler2D shadow;
uniform float strength;
out vec4 value;

void main()
{
    value = vec4(1.0 - strength * texture(shadow, spot).r);
}
)";

/// Softens a silhouette.
inline constexpr char soften_fragment[] = R"(
uniform sampler2D shadow;
out vec4 value;

void main()
{
    ivec2 middle = ivec2(gl_FragCoord.xy);
    ivec2 last = textureSize(shadow, 0) - 1;
    float sum = 0.0;
    float weights = 0.0;
    for (int y = -5; y <= 5; ++y)
        for (int x = -5; x <= 5; ++x) {
            float weight = exp(-float(x * x + y * y) / 10.0);
            sum += weight * texelFetch(shadow, clamp(middle + ivec2(x, y), ivec2(0), last), 0).r;
            weights += weight;
        }
    value = vec4(sum / weights);
}
)";

} // namespace tarn::render_shaders
