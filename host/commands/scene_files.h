#pragma once

#include "core/scene_snapshot.h"
#include "core/status.h"
#include "engine/base_world.h"
#include "gui_scene/gui_plug_scene.h"

#include <QByteArray>
#include <QMap>
#include <QString>

namespace tarn {

/// The model of scenes without windows, for what reads their files and writes them.
class SceneTables {
public:
    SceneTables() { m_scene.join(m_world.document()); }

    /// Reads a package, or a folder that one was unpacked into; nothing of it comes into the document.
    Result<SceneSnapshot> read(const QString& path);
    Result<SceneSnapshot> read_entries(QMap<QString, QByteArray> entries);
    const Document& document() { return m_world.document(); }

private:
    CBaseWorld m_world;
    CGuiPlugScene m_scene;
};

/// A scene from all entries of a package.
Result<SceneSnapshot> read_scene(CGuiCore& core, QMap<QString, QByteArray> entries);

/// The entries of a package by their names. One that cannot be unpacked is a failure.
Result<QMap<QString, QByteArray>> read_package_entries(const QString& path);
/// The files of a folder as entries. Links, devices, names and sizes that no package may have are refused. What belongs to
/// git at the top of the folder does not count.
Result<QMap<QString, QByteArray>> read_folder_entries(const QString& folder);
/// Writes entries as a package: those of the scene first, as a save does.
Status write_package_entries(const Document& document, const QString& path, const QMap<QString, QByteArray>& entries);
/// Writes entries as files of a folder, which is not there yet or is empty. With `replace` it may hold an older version,
/// whose other files go. A failure leaves no half of a new folder.
Status write_folder_entries(const QString& folder, const QMap<QString, QByteArray>& entries, bool replace);

/// `what` failed: "FILE: why".
Status failed_at(const QString& path, const QString& why);

} // namespace tarn
