#include "file_io.h"

#include "core/language.h"

#include <QFile>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>

#ifdef Q_OS_WIN
#include <io.h>
#include <windows.h>
#else
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <ctime>
#endif

namespace tarn {

#ifdef Q_OS_WIN

namespace {
const wchar_t* wide(const QString& path)
{
    return reinterpret_cast<const wchar_t*>(path.utf16());
}
} // namespace

int FileIo::create(const QString& path, const QString&)
{
    // Nobody else may write it, which is the lock; it may be renamed while it is open.
    const HANDLE file = ::CreateFileW(wide(path), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, nullptr,
                                      CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        const DWORD error = ::GetLastError();
        errno = error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS ? EEXIST : EACCES;
        return -1;
    }
    return ::_open_osfhandle(reinterpret_cast<intptr_t>(file), _O_WRONLY | _O_BINARY);
}

bool FileIo::write(int handle, const char* data, qint64 size)
{
    while (size > 0) {
        const int done = ::_write(handle, data, static_cast<unsigned>(qMin<qint64>(size, 1 << 30)));
        if (done <= 0)
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
    if (::MoveFileExW(wide(from), wide(to), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return true;
    errno = EACCES;
    return false;
}

bool FileIo::sync_folder(const QString&)
{
    return true; // MOVEFILE_WRITE_THROUGH has done it.
}

void FileIo::remove_abandoned(const QString& path)
{
    const HANDLE file = ::CreateFileW(wide(path), DELETE, 0, nullptr, OPEN_EXISTING,
                                      FILE_FLAG_DELETE_ON_CLOSE | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
    if (file != INVALID_HANDLE_VALUE)
        ::CloseHandle(file);
}

#else

namespace {

constexpr time_t abandoned_after = 24 * 60 * 60; ///< seconds; where the file system has no locks

/// Locks a file that was just made. Whoever takes it for abandoned until then removes it: its name is no good.
bool lock_new(int handle)
{
    struct stat info {};
    const bool looked_at = ::flock(handle, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!looked_at && ::fstat(handle, &info) == 0 && info.st_nlink > 0)
        return true;
    errno = EEXIST;
    return false;
}

bool give_modes(int handle, const struct stat& model)
{
    mode_t modes = model.st_mode & 0777;
    if (::fchown(handle, model.st_uid, model.st_gid) != 0 && ::fchown(handle, uid_t(-1), model.st_gid) != 0)
        modes &= ~mode_t(070) | ((modes & 07) << 3); // Another group gets no more than everybody does.
    return ::fchmod(handle, modes) == 0;
}

bool is_abandoned(int handle, const struct stat& info)
{
    if (::flock(handle, LOCK_EX | LOCK_NB) == 0)
        return true;
    return errno != EWOULDBLOCK && ::time(nullptr) - info.st_mtime > abandoned_after;
}

} // namespace

int FileIo::create(const QString& path, const QString& like)
{
    struct stat model {};
    const bool has_model = !like.isNull() && ::stat(QFile::encodeName(like).constData(), &model) == 0;
    const QByteArray name = QFile::encodeName(path);
    const mode_t modes = has_model ? model.st_mode & 0777 : 0666;
    const int handle = ::open(name.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, modes);
    if (handle < 0 || (lock_new(handle) && (!has_model || give_modes(handle, model))))
        return handle;
    const int error = errno;
    ::unlink(name.constData());
    ::close(handle);
    errno = error;
    return -1;
}

bool FileIo::write(int handle, const char* data, qint64 size)
{
    while (size > 0) {
        const auto done = ::write(handle, data, static_cast<std::size_t>(size));
        if (done < 0 && errno == EINTR)
            continue;
        if (done == 0)
            errno = ENOSPC;
        if (done <= 0)
            return false;
        data += done;
        size -= done;
    }
    return true;
}

bool FileIo::sync(int handle)
{
    int result = 0;
    do
        result = ::fsync(handle);
    while (result != 0 && errno == EINTR);
    return result == 0;
}

bool FileIo::close(int handle)
{
    return ::close(handle) == 0 || errno == EINTR; // Interrupted, it is closed all the same.
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
    const bool synced = FileIo::sync(handle) || errno == EINVAL;
    return ::close(handle) == 0 && synced;
}

void FileIo::remove_abandoned(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    const int handle = ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
    if (handle < 0)
        return;
    struct stat info {};
    const uid_t user = ::geteuid();
    if (::fstat(handle, &info) == 0 && S_ISREG(info.st_mode) && (info.st_uid == user || user == 0)
        && is_abandoned(handle, info))
        ::unlink(name.constData());
    ::close(handle);
}

#endif

bool FileIo::remove(const QString& path)
{
    return QFile::remove(path);
}

bool FileIo::is_taken() const
{
    return errno == EEXIST;
}

QString FileIo::error_text() const
{
    return errno == 0 ? lang(u"原因未知", u"nobody told why") : QString::fromLocal8Bit(std::strerror(errno));
}

FileIo& FileIo::system()
{
    static FileIo io;
    return io;
}

} // namespace tarn
