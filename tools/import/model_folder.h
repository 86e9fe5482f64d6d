#pragma once

#include "models/model.h"

#include <QByteArray>
#include <QMap>
#include <QString>

#include <assimp/IOSystem.hpp>

namespace tarn {

/// The folder of a model's file. Nothing outside it is read, nothing but ordinary files, and in all no more than a limit.
/// What was asked for is remembered.
class ModelFolder {
public:
    static constexpr qint64 max_bytes = qint64(256) << 20;

    /// `path` names the model's file.
    explicit ModelFolder(const QString& path);

    const QString& main_name() const { return m_main; }
    /// The content of a file by the name that a model uses for it; null when there is none. Where the named folder is not
    /// there, as with a model that was made on another computer, the file's bare name counts.
    QByteArray read(const QString& name);
    /// The files beside the model's own that were asked for.
    std::vector<ModelSource> sources() const;

private:
    QByteArray read_one(const QString& name);

    QString m_folder;
    QString m_main;
    QMap<QString, QByteArray> m_files;
    qint64 m_left = max_bytes;
};

/// The folder as the importing library sees it.
class ModelFolderSystem : public Assimp::IOSystem {
public:
    explicit ModelFolderSystem(ModelFolder& folder) : m_folder(folder) {}

    bool Exists(const char* name) const override;
    char getOsSeparator() const override { return '/'; }
    Assimp::IOStream* Open(const char* name, const char* mode) override;
    void Close(Assimp::IOStream* stream) override;

private:
    ModelFolder& m_folder;
};

} // namespace tarn
