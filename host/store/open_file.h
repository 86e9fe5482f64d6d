#pragma once

#include <QString>

#include <memory>
#include <optional>

class QLockFile;

namespace tarn {

/// What tells whether a file was written since.
struct FileStamp {
    qint64 size = -1;    ///< bytes; -1: there is no such file
    qint64 modified = 0; ///< milliseconds since 1970

    static FileStamp of(const QString& path);
    bool exists() const { return size >= 0; }
    bool operator==(const FileStamp&) const = default;
};

/// The program that has a file open.
struct FileHolder {
    qint64 process = 0;
    QString computer;
};

/// The file that a scene was opened from or saved to last. Other programs of this user are told by a lock in a folder of
/// the user's data, which goes with this program however it ends.
class OpenFile {
public:
    /// A null `lock_folder`: nobody is told, and nobody else is asked for.
    explicit OpenFile(QString lock_folder = {});
    ~OpenFile();
    OpenFile(OpenFile&&) noexcept;
    OpenFile& operator=(OpenFile&&) noexcept;

    /// Another program that has the file open; none when it is free or open here.
    std::optional<FileHolder> other_holder(const QString& path) const;

    /// The file is the scene's from now on. `stamp` is the one it had before it was read. As a copy it stays others': the
    /// scene is not to be saved there unasked.
    void take(const QString& path, const FileStamp& stamp, bool as_copy = false);
    /// The scene has no file.
    void leave();

    const QString& path() const { return m_path; } ///< empty without a file
    const FileStamp& stamp() const { return m_stamp; }
    bool is_copy() const { return m_is_copy; }
    /// Whether `path` is this file and somebody else has written it since.
    bool was_changed_outside(const QString& path) const;

private:
    QString lock_path(const QString& path) const;

    QString m_lock_folder;
    QString m_path;
    FileStamp m_stamp;
    bool m_is_copy = false;
    std::unique_ptr<QLockFile> m_lock;
};

} // namespace tarn
