#include "render_target.h"

namespace tarn {

void RenderTarget::storage(const GlRenderbuffer& buffer, GLenum format, GLenum attachment) const
{
    glBindRenderbuffer(GL_RENDERBUFFER, buffer.id());
    glRenderbufferStorageMultisample(GL_RENDERBUFFER, m_samples, format, m_size.width(), m_size.height());
    glFramebufferRenderbuffer(GL_FRAMEBUFFER, attachment, GL_RENDERBUFFER, buffer.id());
}

void RenderTarget::resize(QSize pixels)
{
    if (m_size == pixels)
        return;
    m_size = pixels;
    bind_texture(0, m_texture.id());
    glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA8, pixels.width(), pixels.height(), 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    for (const GLenum filter : {GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER})
        glTexParameteri(GL_TEXTURE_2D, filter, GL_LINEAR);
    for (const GLenum wrap : {GL_TEXTURE_WRAP_S, GL_TEXTURE_WRAP_T})
        glTexParameteri(GL_TEXTURE_2D, wrap, GL_CLAMP_TO_EDGE);
    glBindFramebuffer(GL_FRAMEBUFFER, m_framebuffer.id());
    glFramebufferTexture2D(GL_FRAMEBUFFER, GL_COLOR_ATTACHMENT0, GL_TEXTURE_2D, m_texture.id(), 0);
    if (m_samples > 0) {
        glBindFramebuffer(GL_FRAMEBUFFER, m_sampled.id());
        storage(m_color, GL_RGBA8, GL_COLOR_ATTACHMENT0);
    }
    storage(m_depth, GL_DEPTH_COMPONENT24, GL_DEPTH_ATTACHMENT);
}

void RenderTarget::bind() const
{
    glBindFramebuffer(GL_FRAMEBUFFER, m_samples > 0 ? m_sampled.id() : m_framebuffer.id());
    glViewport(0, 0, m_size.width(), m_size.height());
}

void RenderTarget::finish() const
{
    if (m_samples > 0) {
        glBindFramebuffer(GL_READ_FRAMEBUFFER, m_sampled.id());
        glBindFramebuffer(GL_DRAW_FRAMEBUFFER, m_framebuffer.id());
        glBlitFramebuffer(0, 0, m_size.width(), m_size.height(), 0, 0, m_size.width(), m_size.height(),
                          GL_COLOR_BUFFER_BIT, GL_NEAREST);
    }
    // Whoever shares the texture reads it in another context.
    glFlush();
}

QImage RenderTarget::picture() const
{
    QImage image(m_size, QImage::Format_RGB32);
    glBindFramebuffer(GL_READ_FRAMEBUFFER, m_framebuffer.id());
    glPixelStorei(GL_PACK_ALIGNMENT, 4);
    glReadPixels(0, 0, m_size.width(), m_size.height(), GL_BGRA, GL_UNSIGNED_INT_8_8_8_8_REV, image.bits());
    return std::move(image).mirrored();
}

} // namespace tarn
