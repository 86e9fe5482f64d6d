#pragma once

#include "core/status.h"
#include "open_file.h"

#include <QDateTime>
#include <QString>

#include <memory>
#include <vector>

class QLockFile;

namespace tarn {

/// What a recovery file was made of.
struct RecoveryInfo {
    QString file;    ///< that the scene belongs to; empty for one that was never saved
    FileStamp stamp; ///< of `file` when it was opened or saved last
    QDateTime when;
};

/// A package with the unsaved scene of one running program, and a text beside it that tells what it is. Both have a name
/// of their own and stay when the program is killed; a lock tells whether it still runs.
class RecoveryFile {
public:
    /// A name in `folder` that nobody has; null when the folder cannot be written. No file is there yet.
    static std::unique_ptr<RecoveryFile> make(const QString& folder);
    /// What programs that are gone left in `folder`, newest first. It is this program's from now on, and no other one
    /// finds it, until it is let go.
    static std::vector<std::unique_ptr<RecoveryFile>> left_behind(const QString& folder);

    ~RecoveryFile();
    RecoveryFile(const RecoveryFile&) = delete;
    RecoveryFile& operator=(const RecoveryFile&) = delete;

    QString package() const { return m_stem + QStringLiteral(".tarn"); }
    RecoveryInfo info() const;
    /// To be called before the package is written.
    Status write_info(const RecoveryInfo& info) const;
    /// Removes the package and everything that belongs to it; it can be written again.
    void remove() const;

private:
    RecoveryFile(QString stem, std::unique_ptr<QLockFile> lock);
    static std::unique_ptr<RecoveryFile> locked(const QString& stem);
    QString info_path() const { return m_stem + QStringLiteral(".json"); }

    QString m_stem; ///< path without extension
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace tarn
