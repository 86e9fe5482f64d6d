#pragma once

#include "atomic_file.h"
#include "core/progress.h"
#include "core/status.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>

/// A package file: a zip archive of named entries. A package is either being written, in memory until close() puts it
/// in place as a whole, or being read.
class CPakFile {
public:
    explicit CPakFile(tarn::FileIo& io = tarn::FileIo::system());
    ~CPakFile();
    CPakFile(const CPakFile&) = delete;
    CPakFile& operator=(const CPakFile&) = delete;

    /// Starts a new package that will stand at `path`; nothing is touched before close().
    tarn::Status create(const QString& path);
    /// Opens a package for reading. Its whole directory is checked first: names that leave the folder or appear twice,
    /// sizes over the limits of PakLimits and archives that are cut off are refused with the entry's name. `mode` is 0.
    tarn::Status open(const QString& path, int mode = 0);
    /// Of a package being written: writes it in place of the old file. Does nothing otherwise.
    tarn::Status close(tarn::ReadOnly read_only = tarn::ReadOnly::Keep, const tarn::Progress& progress = {});

    /// Adds an entry to a package being written. Entries that are compressed already (pictures) are stored as they are.
    tarn::Status add_file(const QString& name, const QByteArray& content);
    /// The content of an entry; fails with the entry's name when it is missing or its checksum is wrong.
    tarn::Result<QByteArray> read_file(const QString& name, const tarn::Progress& progress = {}) const;
    /// Bytes of an entry once it is unpacked; 0 when it is missing.
    qint64 size_of(const QString& name) const;
    /// An entry as it lies in the package, for one that cannot be unpacked; add_packed() takes it.
    tarn::Result<QByteArray> read_packed(const QString& name) const;
    /// Adds an entry that stands in the package afterwards as it stood in the one that read_packed() took it from,
    /// however damaged that is.
    tarn::Status add_packed(const QString& name, const QByteArray& packed);
    /// Whether reading an entry has failed because memory was short: the entry may be whole then.
    bool is_memory_short() const { return m_memory_short; }
    bool has_file(const QString& name) const;
    QStringList names() const; ///< of a package being read, in the order of the archive

    const QString& path() const { return m_path; }

private:
    struct Reader;
    struct Writer;

    tarn::Result<QByteArray> read_entry(const QString& name, bool packed, const tarn::Progress& progress) const;

    tarn::FileIo& m_io;
    QString m_path;
    mutable bool m_memory_short = false;
    std::unique_ptr<Reader> m_reader;
    std::unique_ptr<Writer> m_writer;
};
