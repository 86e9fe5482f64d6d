#pragma once

#include <QString>

class CGuiCore;

/// Finds the textures of the scene.
class CTexFileMan {
public:
    explicit CTexFileMan(const CGuiCore& core) : m_core(core) {}

    /// The name of the texture that the file `path` is: the one with the same content, otherwise one with the same file
    /// name. Null when there is none.
    QString find_tex_file_from_absolute_filename(const QString& path) const;

private:
    const CGuiCore& m_core;
};
