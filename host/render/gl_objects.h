#pragma once

#include <QMatrix4x4>
#include <QSize>
#include <QVector2D>
#include <QVector3D>
#include <QVector4D>

#include <epoxy/gl.h>

#include <string>
#include <unordered_map>
#include <utility>

class QImage;

namespace tarn {

/// An object of OpenGL by its name. Its context is current whenever it is made, used or destroyed.
template <class Kind>
class GlObject {
public:
    GlObject() { Kind::make(&m_id); }
    ~GlObject()
    {
        if (m_id)
            Kind::destroy(&m_id);
    }
    GlObject(GlObject&& other) noexcept : m_id(std::exchange(other.m_id, 0)) {}
    GlObject& operator=(GlObject&& other) noexcept
    {
        std::swap(m_id, other.m_id);
        return *this;
    }
    GLuint id() const { return m_id; }

private:
    GLuint m_id = 0;
};

struct TextureKind {
    static void make(GLuint* id) { glGenTextures(1, id); }
    static void destroy(const GLuint* id) { glDeleteTextures(1, id); }
};
struct BufferKind {
    static void make(GLuint* id) { glGenBuffers(1, id); }
    static void destroy(const GLuint* id) { glDeleteBuffers(1, id); }
};
struct VertexArrayKind {
    static void make(GLuint* id) { glGenVertexArrays(1, id); }
    static void destroy(const GLuint* id) { glDeleteVertexArrays(1, id); }
};
struct FramebufferKind {
    static void make(GLuint* id) { glGenFramebuffers(1, id); }
    static void destroy(const GLuint* id) { glDeleteFramebuffers(1, id); }
};
struct RenderbufferKind {
    static void make(GLuint* id) { glGenRenderbuffers(1, id); }
    static void destroy(const GLuint* id) { glDeleteRenderbuffers(1, id); }
};

using GlTexture = GlObject<TextureKind>;
using GlBuffer = GlObject<BufferKind>;
using GlVertexArray = GlObject<VertexArrayKind>;
using GlFramebuffer = GlObject<FramebufferKind>;
using GlRenderbuffer = GlObject<RenderbufferKind>;

inline void bind_texture(int unit, GLuint texture)
{
    glActiveTexture(GLenum(GL_TEXTURE0 + unit));
    glBindTexture(GL_TEXTURE_2D, texture);
}

/// Fills the texture with a picture and its smaller copies.
void upload(const GlTexture& texture, const QImage& image);

/// A program of two shaders. Uniforms are named by literals.
class GlProgram {
public:
    GlProgram() = default;
    ~GlProgram();
    GlProgram(const GlProgram&) = delete;
    GlProgram& operator=(const GlProgram&) = delete;

    /// `defines`: lines that come first in both. False when the driver does not accept them.
    bool build(const char* vertex, const char* fragment, const std::string& defines = {});
    void use() const { glUseProgram(m_id); }
    GLuint id() const { return m_id; }

    // Of the program in use:
    void set(const char* name, int value) { glUniform1i(at(name), value); }
    void set(const char* name, float value) { glUniform1f(at(name), value); }
    void set(const char* name, const QVector2D& value) { glUniform2f(at(name), value.x(), value.y()); }
    void set(const char* name, const QVector3D& value) { glUniform3f(at(name), value.x(), value.y(), value.z()); }
    void set(const char* name, const QVector4D& value)
    {
        glUniform4f(at(name), value.x(), value.y(), value.z(), value.w());
    }
    void set(const char* name, const QMatrix3x3& value)
    {
        glUniformMatrix3fv(at(name), 1, GL_FALSE, value.constData());
    }
    void set(const char* name, const QMatrix4x4& value)
    {
        glUniformMatrix4fv(at(name), 1, GL_FALSE, value.constData());
    }

private:
    GLint at(const char* name);

    GLuint m_id = 0;
    std::unordered_map<const char*, GLint> m_places; ///< a literal's address stands for its text
};

} // namespace tarn
