#pragma once

#include "core/progress.h"
#include "import_cache.h"

#include <QMap>
#include <QStringList>

#include <chrono>

namespace tarn {

/// Makes models of files that other programs wrote: glTF, OBJ, FBX, Collada and STL. The work is done by a program of its
/// own, which a damaged file may end, with limits of time, memory and output. What was imported once comes from a cache.
/// Can be used in any thread; the calling thread waits.
class ModelImporter {
public:
    /// The program beside this one, the user's cache.
    ModelImporter();
    /// `program`: tarn-import; `cache`: a folder, empty for no cache.
    ModelImporter(QString program, const QString& cache) : m_program(std::move(program)), m_cache(cache) {}

    void set_time_limit(std::chrono::milliseconds most) { m_time_limit = most; } ///< otherwise 20 s

    /// Endings of the names of files that can be imported, in lower case, without the dot.
    static QStringList layouts();

    /// What the file shows. Only files in its folder are read. A failure names the file.
    Result<ModelPtr> import_file(const QString& path, const Progress& progress = {}) const;
    /// The same of a file in memory; `files` has it by its name, and those beside it by names relative to it.
    Result<ModelPtr> import_files(const QString& name, const QMap<QString, QByteArray>& files,
                                  const Progress& progress = {}) const;

private:
    Result<ModelPtr> import_anew(const QString& path, const QByteArray& content, const Progress& progress) const;
    Status run(const QString& in, const QString& out, const Progress& progress) const;

    QString m_program;
    ImportCache m_cache;
    std::chrono::milliseconds m_time_limit{20'000};
};

} // namespace tarn
