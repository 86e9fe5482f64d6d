#pragma once

#include "store/file_io.h"

#include <algorithm>
#include <cerrno>
#include <map>

namespace tarn::test {

/// The real file system, of whose operations the `number`th of the kind `kind` fails, or all from it on.
class FailingFileIo : public FileIo {
public:
    enum Kind { Create, Write, Sync, Close, Rename, SyncFolder, Remove, KindCount };

    FailingFileIo() = default;
    FailingFileIo(Kind kind, int number, bool from_then_on = false)
        : m_kind(kind), m_number(number), m_from_then_on(from_then_on)
    {
    }

    int create(const QString& path, const QString& like) override
    {
        return fails(Create) ? -1 : FileIo::create(path, like);
    }
    bool write(int handle, const char* data, qint64 size) override
    {
        if (!fails(Write))
            return FileIo::write(handle, data, size);
        FileIo::write(handle, data, std::min(size, m_fits)); // A full disk takes what still fits.
        errno = ENOSPC;
        return false;
    }
    bool sync(int handle) override { return !fails(Sync) && FileIo::sync(handle); }
    bool close(int handle) override
    {
        const bool closed = FileIo::close(handle);
        return !fails(Close) && closed;
    }
    bool rename(const QString& from, const QString& to) override { return !fails(Rename) && FileIo::rename(from, to); }
    bool sync_folder(const QString& path) override { return !fails(SyncFolder) && FileIo::sync_folder(path); }
    bool remove(const QString& path) override { return !fails(Remove) && FileIo::remove(path); }

    /// How many bytes a write that fails still writes.
    void set_fits(qint64 bytes) { m_fits = bytes; }
    /// How many operations of the kind there were.
    int count(Kind kind) const
    {
        const auto found = m_counts.find(kind);
        return found == m_counts.end() ? 0 : found->second;
    }

private:
    bool fails(Kind kind)
    {
        const int now = m_counts[kind]++;
        const bool failing = kind == m_kind && (m_from_then_on ? now >= m_number : now == m_number);
        errno = failing ? EIO : 0;
        return failing;
    }

    Kind m_kind = KindCount;
    int m_number = 0;
    qint64 m_fits = 100;
    bool m_from_then_on = false;
    std::map<Kind, int> m_counts;
};

} // namespace tarn::test
