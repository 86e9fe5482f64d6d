#pragma once

/// The programs of GroundScene. ground_raster.cpp draws the same ground; both have to change together.
namespace tarn::shaders {

/// One triangle that covers the screen, without any vertex data.
inline constexpr char screen[] = R"(#version 330 core
void main()
{
    vec2 corner = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    gl_Position = vec4(corner, 0.0, 1.0);
}
)";

inline constexpr char ground[] = R"(#version 330 core
uniform sampler2D rows;
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

void main()
{
    vec2 pixel = vec2(gl_FragCoord.x, size.y - gl_FragCoord.y) - 0.5;
    vec3 value = texelFetch(rows, ivec2(0, int(pixel.y)), 0).rgb;
    vec3 ray = ray_origin + ray_step_x * pixel.x + ray_step_y * pixel.y;
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

/// The world and what lies over it, pixel by pixel: pictures of the interface must not be filtered.
inline constexpr char compose[] = R"(#version 330 core
uniform sampler2D world;
uniform sampler2D overlay;
uniform sampler2D tool;
uniform sampler2D objects;
uniform int height;
out vec4 color;

void main()
{
    ivec2 up = ivec2(gl_FragCoord.xy);
    ivec2 down = ivec2(up.x, height - 1 - up.y);
    vec4 upper = texelFetch(tool, down, 0);
    vec4 lower = texelFetch(overlay, down, 0);
    vec4 behind = texelFetch(objects, down, 0);
    vec3 value = texelFetch(world, up, 0).rgb * (1.0 - behind.a) + behind.rgb;
    value = value * (1.0 - lower.a) + lower.rgb;
    color = vec4(value * (1.0 - upper.a) + upper.rgb, 1.0);
}
)";

} // namespace tarn::shaders
