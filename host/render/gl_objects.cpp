#include "gl_objects.h"

#include <QDebug>
#include <QImage>

namespace tarn {

namespace {

constexpr char version[] = "#version 330 core\n";

bool attach(GLuint program, GLenum type, const std::string& source)
{
    const GLuint shader = glCreateShader(type);
    const char* text = source.c_str();
    glShaderSource(shader, 1, &text, nullptr);
    glCompileShader(shader);
    GLint works = GL_FALSE;
    glGetShaderiv(shader, GL_COMPILE_STATUS, &works);
    if (works) {
        glAttachShader(program, shader);
    } else {
        char log[1024] = {};
        glGetShaderInfoLog(shader, sizeof log, nullptr, log);
        qWarning("a shader is refused: %s", log);
    }
    glDeleteShader(shader); // Once it is detached.
    return works;
}

} // namespace

void upload(const GlTexture& texture, const QImage& image)
{
    bind_texture(0, texture.id());
    const bool bytes = image.format() == QImage::Format_RGBA8888;
    const bool words = image.format() == QImage::Format_ARGB32 || image.format() == QImage::Format_RGB32;
    const QImage fit = bytes || words ? image : image.convertToFormat(QImage::Format_ARGB32);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 4);
    glPixelStorei(GL_UNPACK_ROW_LENGTH, GLint(fit.bytesPerLine() / 4));
    // A QRgb is one number whatever the byte order of the machine.
    glTexImage2D(GL_TEXTURE_2D, 0, image.hasAlphaChannel() ? GL_RGBA8 : GL_RGB8, fit.width(), fit.height(), 0,
                 bytes ? GL_RGBA : GL_BGRA, bytes ? GL_UNSIGNED_BYTE : GL_UNSIGNED_INT_8_8_8_8_REV, fit.constBits());
    glPixelStorei(GL_UNPACK_ROW_LENGTH, 0);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);
    glGenerateMipmap(GL_TEXTURE_2D);
}

GlProgram::~GlProgram()
{
    if (m_id)
        glDeleteProgram(m_id);
}

bool GlProgram::build(const char* vertex, const char* fragment, const std::string& defines)
{
    m_id = glCreateProgram();
    if (!attach(m_id, GL_VERTEX_SHADER, version + defines + vertex)
        || !attach(m_id, GL_FRAGMENT_SHADER, version + defines + fragment))
        return false;
    glLinkProgram(m_id);
    GLint works = GL_FALSE;
    glGetProgramiv(m_id, GL_LINK_STATUS, &works);
    return works;
}

GLint GlProgram::at(const char* name)
{
    const auto known = m_places.find(name);
    return known != m_places.end() ? known->second
                                   : m_places.emplace(name, glGetUniformLocation(m_id, name)).first->second;
}

} // namespace tarn
