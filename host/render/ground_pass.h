#pragma once

#include "ground_look.h"

#include <memory>

namespace tarn {

/// Draws the ground and the sky with OpenGL 3.3 into the bound framebuffer. Lives in one context, which is current
/// in every call, the destructor too. ground_raster.cpp of the views draws the same; both have to change together.
class GroundPass {
public:
    GroundPass();
    ~GroundPass();

    /// False when the driver does not accept the programs; then nothing else may be called.
    bool initialize();
    /// All of the framebuffer.
    void draw(const GroundLook& look);
    /// The ground alone, where it really is, as far as its lines reach.
    void draw_plane(const GroundLook& look, const QMatrix4x4& world_to_clip);

private:
    struct Parts;

    void prepare(class GlProgram& program, const GroundLook& look);

    std::unique_ptr<Parts> m_parts;
};

} // namespace tarn
