#include "file_io.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>

#ifdef Q_OS_WIN
#include <io.h>
#include <sys/stat.h>
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace tarn {

#ifdef Q_OS_WIN

namespace {
const wchar_t* wide(const QString& path)
{
    return reinterpret_cast<const wchar_t*>(path.utf16());
}
} // namespace

int FileIo::open_for_writing(const QString& path)
{
    return _wopen(wide(path), _O_WRONLY | _O_CREAT | _O_TRUNC | _O_BINARY, _S_IREAD | _S_IWRITE);
}

bool FileIo::write(int handle, const char* data, qint64 size)
{
    while (size > 0) {
        const int done = ::_write(handle, data, static_cast<unsigned>(qMin<qint64>(size, 1 << 30)));
        if (done < 0)
            return false;
        data += done;
        size -= done;
    }
    return true;
}

bool FileIo::sync(int handle)
{
    return ::_commit(handle) == 0;
}

bool FileIo::close(int handle)
{
    return ::_close(handle) == 0;
}

bool FileIo::rename(const QString& from, const QString& to)
{
    return ::MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool FileIo::sync_folder(const QString&)
{
    return true; // MOVEFILE_WRITE_THROUGH has done it.
}

#else

int FileIo::open_for_writing(const QString& path)
{
    return ::open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
}

bool FileIo::write(int handle, const char* data, qint64 size)
{
    while (size > 0) {
        const auto done = ::write(handle, data, static_cast<std::size_t>(size));
        if (done < 0 && errno == EINTR)
            continue;
        if (done < 0)
            return false;
        data += done;
        size -= done;
    }
    return true;
}

bool FileIo::sync(int handle)
{
    return ::fsync(handle) == 0;
}

bool FileIo::close(int handle)
{
    return ::close(handle) == 0;
}

bool FileIo::rename(const QString& from, const QString& to)
{
    return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool FileIo::sync_folder(const QString& path)
{
    const int handle = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (handle < 0)
        return false;
    // Some file systems cannot sync a folder and say so; there is nothing more to be done on them.
    const bool synced = ::fsync(handle) == 0 || errno == EINVAL;
    return ::close(handle) == 0 && synced;
}

#endif

bool FileIo::remove(const QString& path)
{
    return QFile::remove(path);
}

QString FileIo::error_text() const
{
    return QString::fromLocal8Bit(std::strerror(errno));
}

FileIo& FileIo::system()
{
    static FileIo io;
    return io;
}

} // namespace tarn
