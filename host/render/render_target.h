#pragma once

#include "gl_objects.h"

#include <QImage>

namespace tarn {

/// What a camera's picture is drawn into.
class RenderTarget {
public:
    /// `samples` of a pixel; 0: one.
    explicit RenderTarget(int samples) : m_samples(samples) {}

    void resize(QSize pixels);
    const QSize& size() const { return m_size; }
    void bind() const;
    /// The picture is complete.
    void finish() const;
    GLuint texture() const { return m_texture.id(); }
    QImage picture() const;

private:
    void storage(const GlRenderbuffer& buffer, GLenum format, GLenum attachment) const;

    int m_samples;
    QSize m_size;
    GlTexture m_texture;
    GlFramebuffer m_framebuffer;
    GlFramebuffer m_sampled; ///< what is drawn into where a pixel has several samples
    GlRenderbuffer m_color;
    GlRenderbuffer m_depth;
};

} // namespace tarn
