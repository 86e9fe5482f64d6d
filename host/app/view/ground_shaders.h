#pragma once

/// The program of GroundScene that brings its layers together.
namespace tarn::shaders {

/// One triangle that covers the screen, without any vertex data.
inline constexpr char screen[] = R"(#version 330 core
void main()
{
    vec2 corner = vec2(gl_VertexID == 1 ? 3.0 : -1.0, gl_VertexID == 2 ? 3.0 : -1.0);
    gl_Position = vec4(corner, 0.0, 1.0);
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
