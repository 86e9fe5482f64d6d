#pragma once

#include "ground_look.h"

#include <memory>

namespace tarn {

/// Draws the ground and the sky with OpenGL 3.3, over all of the bound framebuffer. Lives in one context, which is current
/// in every call, the destructor too. ground_raster.cpp of the views draws the same; both have to change together.
class GroundPass {
public:
    GroundPass();
    ~GroundPass();

    /// False when the driver does not accept the program; then nothing else may be called.
    bool initialize();
    /// Depth test and blending are off.
    void draw(const GroundLook& look);

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};

} // namespace tarn
