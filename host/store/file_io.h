#pragma once

#include <QByteArray>
#include <QString>

namespace tarn {

/// The operations of the file system that writing a package safely needs, one virtual call each, so that tests can let
/// any of them fail. Every operation answers false (or -1) on failure; error_text() then says why.
class FileIo {
public:
    virtual ~FileIo() = default;

    /// Makes the file `path`, opens it for writing and locks it against remove_abandoned() until it is closed; answers a
    /// handle or -1. Whatever has that name already, a link too, is left alone: is_taken() then. Before anything is
    /// written it gets the owner, group and permissions of the file `like`, as far as the user may give them and never
    /// more; with a null text those of a new file.
    virtual int create(const QString& path, const QString& like);
    virtual bool write(int handle, const char* data, qint64 size);
    /// Returns once the file's content is on the disk.
    virtual bool sync(int handle);
    virtual bool close(int handle);
    /// Replaces `to` by `from` in one step. `from` may still be open.
    virtual bool rename(const QString& from, const QString& to);
    /// Returns once the folder's entries are on the disk.
    virtual bool sync_folder(const QString& path);
    virtual bool remove(const QString& path);
    virtual QString error_text() const;

    /// Why create() failed: because of the name, so that another one helps.
    bool is_taken() const;
    /// Removes the user's file `path` unless somebody still has it open from create().
    static void remove_abandoned(const QString& path);
    /// The real file system.
    static FileIo& system();
};

} // namespace tarn
