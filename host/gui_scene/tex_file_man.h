#pragma once

#include <QString>

class CBaseWorld;
class CGuiCore;

/// Finds the textures that models and panels of the world use.
class CTexFileMan {
public:
    CTexFileMan(CGuiCore& core, const CBaseWorld& world) : m_core(core), m_world(world) {}

    /// The name in the scene's textures of the one that the file `path` is: by its content, otherwise by its file name. A
    /// texture that only a model has is taken into the scene for it. Null when nothing in the world uses it.
    QString find_tex_file_from_absolute_filename(const QString& path);

private:
    QString find_of_panels(const QByteArray& encoded, const QString& file_name) const;
    bool is_of_model(const QByteArray& encoded) const;

    CGuiCore& m_core;
    const CBaseWorld& m_world;
};
