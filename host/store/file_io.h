#pragma once

#include <QByteArray>
#include <QString>

namespace tarn {

/// The operations of the file system that writing a package safely needs, one virtual call each, so that tests can let
/// any of them fail. Every operation answers false (or -1) on failure; error_text() then says why.
class FileIo {
public:
    virtual ~FileIo() = default;

    /// Opens `path` for writing, empty; answers a handle or -1.
    virtual int open_for_writing(const QString& path);
    virtual bool write(int handle, const char* data, qint64 size);
    /// Returns once the file's content is on the disk.
    virtual bool sync(int handle);
    virtual bool close(int handle);
    /// Replaces `to` by `from` in one step.
    virtual bool rename(const QString& from, const QString& to);
    /// Returns once the folder's entries are on the disk.
    virtual bool sync_folder(const QString& path);
    virtual bool remove(const QString& path);
    virtual QString error_text() const;

    /// The real file system.
    static FileIo& system();
};

} // namespace tarn
