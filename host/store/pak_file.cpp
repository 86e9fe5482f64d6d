#include "pak_file.h"

#include "core/language.h"
#include "core/utf8.h"
#include "enough_memory.h"
#include "pak_directory.h"
#include "pak_rules.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QtEndian>

#include <zip.h>

#include <algorithm>
#include <cstring>
#include <ctime>
#include <deque>
#include <utility>

using tarn::lang;
using tarn::Progress;
using tarn::Result;
using tarn::Status;
using tarn::with_enough_memory;

namespace {

struct ZipError {
    zip_error_t error;
    ZipError() { zip_error_init(&error); }
    ~ZipError() { zip_error_fini(&error); }
    QString text() { return QString::fromUtf8(zip_error_strerror(&error)); }
};

/// Level 1: on scene text four times faster than the default for a few per cent of size.
constexpr zip_uint32_t fast_deflate = 1;
constexpr double progress_steps = 0.01;          ///< of the whole archive, while it is written
constexpr zip_uint64_t block_size = 1024 * 1024; ///< bytes that are unpacked before the progress is asked again

/// Entries carry one fixed date, so that the same content gives the same bytes. A zip keeps local time; mktime makes
/// the stored fields independent of the time zone.
time_t fixed_date()
{
    std::tm date{};
    date.tm_year = 80;
    date.tm_mday = 1;
    date.tm_isdst = -1;
    return std::mktime(&date);
}

bool is_packed_already(const QString& name)
{
    static const QStringList suffixes{QStringLiteral("png"),  QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                      QStringLiteral("webp"), QStringLiteral("ogg"), QStringLiteral("mp4")};
    return suffixes.contains(QFileInfo(name).suffix().toLower());
}

/// What read_packed() puts before an entry's packed bytes, and add_packed() takes from there.
struct PackedHeader {
    quint64_le size; ///< bytes, unpacked, as the package says
    quint32_le crc;
    quint32_le method;
};

/// Hands an entry's packed bytes to the zip library.
struct PackedSource {
    PackedHeader header;
    QByteArray content;
    qsizetype at = 0;
    zip_error_t error{};

    zip_int64_t read(void* data, zip_uint64_t length)
    {
        const auto count = std::min<qsizetype>(qsizetype(length), content.size() - at);
        std::memcpy(data, content.constData() + at, std::size_t(count));
        at += count;
        return count;
    }
    void describe(zip_stat_t& stat) const
    {
        zip_stat_init(&stat);
        stat.valid = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_COMP_METHOD | ZIP_STAT_CRC;
        stat.size = header.method == ZIP_CM_STORE ? zip_uint64_t(content.size()) : zip_uint64_t(header.size);
        stat.comp_size = zip_uint64_t(content.size());
        stat.comp_method = zip_uint16_t(header.method);
        stat.crc = header.crc;
    }
    static zip_int64_t call(void* user, void* data, zip_uint64_t length, zip_source_cmd_t command)
    {
        auto& source = *static_cast<PackedSource*>(user);
        switch (command) {
        case ZIP_SOURCE_OPEN: source.at = 0; return 0;
        case ZIP_SOURCE_READ: return source.read(data, length);
        case ZIP_SOURCE_CLOSE:
        case ZIP_SOURCE_FREE: return 0;
        case ZIP_SOURCE_STAT: source.describe(*static_cast<zip_stat_t*>(data)); return sizeof(zip_stat_t);
        case ZIP_SOURCE_ERROR: return zip_error_to_data(&source.error, data, length);
        case ZIP_SOURCE_SUPPORTS:
            return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE, ZIP_SOURCE_STAT,
                                                  ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE, -1);
        default: zip_error_set(&source.error, ZIP_ER_OPNOTSUPP, 0); return -1;
        }
    }
};

/// A name for a message, with what a name cannot hold made visible.
QString shown_name(const QByteArray& name)
{
    return QString::fromUtf8(name.left(200)).replace(QChar(u'\0'), QStringLiteral("\\0"));
}

Status cannot_open(const QString& path, const QString& reason)
{
    return Status::error(lang(u"无法打开文件包 %1：%2。", u"The package %1 cannot be opened: %2.")
                             .arg(QDir::toNativeSeparators(path), reason));
}

} // namespace

struct CPakFile::Reader {
    zip_t* archive = nullptr;
    quint64 file_size = 0; ///< bytes
    QStringList names;
    QHash<QString, zip_uint64_t> index;

    ~Reader()
    {
        if (archive)
            zip_discard(archive);
    }
    Status check_directory(const QString& path);
    Status check_places(const QString& path) const;
    static Status failure(zip_error_t* error);
    Result<QByteArray> read(zip_uint64_t entry, zip_flags_t how, zip_uint64_t size, qsizetype before, qsizetype after,
                            const Progress& progress) const;
};

struct CPakFile::Writer {
    zip_t* archive = nullptr;
    zip_source_t* target = nullptr;
    std::deque<QByteArray> contents;      ///< kept alive until the archive is written
    std::deque<PackedSource> packed;      ///< the same
    QHash<QByteArray, quint32> checksums; ///< of damaged entries, for which the zip library works out new ones
    QHash<QString, bool> names;

    ~Writer()
    {
        if (archive)
            zip_discard(archive);
        if (target)
            zip_source_free(target);
    }
    Result<QByteArray> finish(const Progress& progress);
    Status claim_name(const QString& name);
    Result<zip_uint64_t> add(const QString& name, zip_source_t* source);
    void put_checksums(QByteArray& bytes) const;
};

CPakFile::CPakFile(tarn::FileIo& io) : m_io(io) {}

CPakFile::~CPakFile() = default;

Status CPakFile::create(const QString& path)
{
    m_reader.reset();
    m_path = path;
    m_writer = std::make_unique<Writer>();
    ZipError error;
    m_writer->target = zip_source_buffer_create(nullptr, 0, 0, &error.error);
    if (m_writer->target)
        m_writer->archive = zip_open_from_source(m_writer->target, ZIP_CREATE | ZIP_TRUNCATE, &error.error);
    if (m_writer->archive) {
        zip_source_keep(m_writer->target);
        return {};
    }
    const QString reason = error.text();
    m_writer.reset();
    return Status::error(lang(u"无法创建文件包：%1", u"A package cannot be made: %1").arg(reason));
}

Status CPakFile::Writer::claim_name(const QString& name)
{
    if (auto status = tarn::check_entry_name(name); !status)
        return status;
    if (std::exchange(names[name], true))
        return Status::error(lang(u"文件包中“%1”重复", u"\"%1\" is in the package already.").arg(name));
    return {};
}

Result<zip_uint64_t> CPakFile::Writer::add(const QString& name, zip_source_t* source)
{
    const zip_int64_t index = source ? zip_file_add(archive, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        if (source)
            zip_source_free(source);
        return Status::error(lang(u"无法加入“%1”：%2", u"\"%1\" cannot be added: %2")
                                 .arg(name, QString::fromUtf8(zip_strerror(archive))));
    }
    const auto entry = static_cast<zip_uint64_t>(index);
    zip_file_set_mtime(archive, entry, fixed_date(), 0);
    zip_file_set_external_attributes(archive, entry, 0, ZIP_OPSYS_UNIX, 0100644u << 16);
    return entry;
}

Status CPakFile::add_file(const QString& name, const QByteArray& content)
{
    if (!m_writer)
        return Status::error(lang(u"文件包没有打开", u"The package is not open for writing."));
    return with_enough_memory([&]() -> Status {
        if (auto status = m_writer->claim_name(name); !status)
            return status;
        const QByteArray& kept = m_writer->contents.emplace_back(content);
        const auto entry = m_writer->add(
            name, zip_source_buffer(m_writer->archive, kept.constData(), static_cast<zip_uint64_t>(kept.size()), 0));
        if (!entry)
            return entry.status();
        if (is_packed_already(name))
            zip_set_file_compression(m_writer->archive, entry.value(), ZIP_CM_STORE, 0);
        else
            zip_set_file_compression(m_writer->archive, entry.value(), ZIP_CM_DEFLATE, fast_deflate);
        return {};
    });
}

Status CPakFile::add_packed(const QString& name, const QByteArray& packed)
{
    if (!m_writer || packed.size() < qsizetype(sizeof(PackedHeader)))
        return Status::error(lang(u"无法加入“%1”", u"\"%1\" cannot be added.").arg(name));
    return with_enough_memory([&]() -> Status {
        if (auto status = m_writer->claim_name(name); !status)
            return status;
        PackedSource& source = m_writer->packed.emplace_back();
        std::memcpy(&source.header, packed.constData(), sizeof source.header);
        source.content = packed.mid(sizeof source.header);
        m_writer->checksums.insert(name.toUtf8(), source.header.crc);
        const auto entry = m_writer->add(name, zip_source_function(m_writer->archive, &PackedSource::call, &source));
        if (entry && source.header.method == ZIP_CM_STORE) // Any other one is kept without asking.
            zip_set_file_compression(m_writer->archive, entry.value(), ZIP_CM_STORE, 0);
        return entry.status();
    });
}

Result<QByteArray> CPakFile::Writer::finish(const Progress& progress)
{
    struct Watch {
        const Progress& progress;
        bool goes_on = true;
    } watch{progress};
    if (progress.is_watched()) {
        const auto tell = [](zip_t*, double share, void* user) {
            auto& w = *static_cast<Watch*>(user);
            w.goes_on = w.progress.go_on(share) && w.goes_on;
        };
        const auto is_stopped = [](zip_t*, void* user) { return static_cast<Watch*>(user)->goes_on ? 0 : 1; };
        zip_register_progress_callback_with_state(archive, progress_steps, tell, nullptr, &watch);
        zip_register_cancel_callback_with_state(archive, is_stopped, nullptr, &watch);
    }
    const bool closed = zip_close(archive) == 0;
    if (!watch.goes_on) {
        if (closed)
            archive = nullptr;
        return tarn::stopped();
    }
    if (!closed)
        return Status::error(QString::fromUtf8(zip_strerror(archive)));
    archive = nullptr;
    zip_stat_t stat;
    if (zip_source_stat(target, &stat) != 0 || zip_source_open(target) != 0)
        return Status::error(QString::fromUtf8(zip_error_strerror(zip_source_error(target))));
    QByteArray bytes(static_cast<qsizetype>(stat.size), Qt::Uninitialized);
    const bool complete = zip_source_read(target, bytes.data(), stat.size) == static_cast<zip_int64_t>(stat.size);
    zip_source_close(target);
    if (!complete)
        return Status::error(QString::fromUtf8(zip_error_strerror(zip_source_error(target))));
    put_checksums(bytes);
    return bytes;
}

/// A damaged entry has the checksum that it had, so that it does not pass for whole.
void CPakFile::Writer::put_checksums(QByteArray& bytes) const
{
    if (checksums.isEmpty())
        return;
    QBuffer archived(&bytes);
    archived.open(QIODevice::ReadOnly);
    const auto entries = tarn::read_pak_directory(archived);
    archived.close();
    for (const auto& entry : entries.value_or(std::vector<tarn::PakEntryPlace>())) {
        const auto crc = checksums.constFind(entry.name);
        if (crc == checksums.constEnd())
            continue;
        qToLittleEndian(*crc, bytes.data() + entry.central + tarn::PakEntryPlace::central_crc);
        qToLittleEndian(*crc, bytes.data() + entry.local + tarn::PakEntryPlace::local_crc);
    }
}

Status CPakFile::close(tarn::ReadOnly read_only, const Progress& progress)
{
    m_reader.reset();
    if (!m_writer)
        return {};
    const auto writer = std::exchange(m_writer, nullptr);
    auto bytes = with_enough_memory([&] { return writer->finish(progress); });
    if (!bytes && tarn::is_stopped(bytes.status()))
        return bytes.status();
    if (!bytes)
        return tarn::not_saved(m_path, bytes.status().message());
    return tarn::write_file_atomically(m_path, bytes.value(), m_io, read_only);
}

Status CPakFile::open(const QString& path, int)
{
    m_writer.reset();
    m_path = path;
    m_reader.reset();
    m_memory_short = false;
    const QFileInfo info(path);
    if (!info.exists())
        return cannot_open(path, lang(u"文件不存在", u"there is no such file"));
    if (!info.isFile())
        return cannot_open(path, lang(u"这不是文件", u"it is not a file"));
    int code = 0;
    auto reader = std::make_unique<Reader>();
    reader->file_size = quint64(info.size());
    reader->archive = zip_open(QFile::encodeName(path).constData(), ZIP_RDONLY, &code);
    if (!reader->archive) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const QString reason = code == ZIP_ER_NOZIP
            ? lang(u"它不是 TARN 文件包，或者已被截断", u"it is not a TARN package, or it is cut off")
            : QString::fromUtf8(zip_error_strerror(&error));
        zip_error_fini(&error);
        return cannot_open(path, reason);
    }
    if (auto status = with_enough_memory([&] { return reader->check_directory(path); }); !status)
        return cannot_open(path, status.message());
    m_reader = std::move(reader);
    return {};
}

Status CPakFile::Reader::check_directory(const QString& path)
{
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    if (count > tarn::PakLimits::max_entries)
        return Status::error(lang(u"条目过多（%1）", u"it has too many entries (%1)").arg(count));
    quint64 total = 0;
    quint64 largest = 0;
    QString largest_name;
    for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
        zip_stat_t stat;
        if (zip_stat_index(archive, i, 0, &stat) != 0)
            return Status::error(QString::fromUtf8(zip_strerror(archive)));
        const QString name = tarn::from_utf8(stat.name);
        if (auto status = tarn::check_entry_name(name); !status)
            return status;
        if (auto status = tarn::check_entry_size(name, stat.comp_size, stat.size); !status)
            return status;
        if (stat.encryption_method != ZIP_EM_NONE)
            return Status::error(lang(u"条目“%1”已加密", u"the entry \"%1\" is encrypted").arg(name));
        if (index.contains(name))
            return Status::error(lang(u"条目“%1”出现了两次", u"the entry \"%1\" appears twice").arg(name));
        if (stat.size > largest)
            largest_name = name;
        largest = std::max<quint64>(largest, stat.size);
        total += stat.size;
        index.insert(name, i);
        names.append(name);
    }
    if (auto status = tarn::check_total_size(largest_name, quint64(QFileInfo(path).size()), total); !status)
        return status;
    return check_places(path);
}

/// What the zip library does not look at: names that go on beyond a zero byte, and entries made of the same bytes.
Status CPakFile::Reader::check_places(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Status::error(file.errorString());
    auto entries = tarn::read_pak_directory(file);
    if (!entries)
        return {};
    for (const auto& entry : *entries)
        if (entry.name.contains('\0'))
            return Status::error(
                lang(u"条目名称“%1”含有零字节", u"the entry name \"%1\" has a zero byte").arg(shown_name(entry.name)));
    const auto [one, other] = tarn::overlapping_entries(std::move(*entries));
    if (other.isNull())
        return {};
    return Status::error(
        lang(u"条目“%1”和“%2”重叠", u"the entries \"%1\" and \"%2\" overlap").arg(shown_name(one), shown_name(other)));
}

QStringList CPakFile::names() const
{
    return m_reader ? m_reader->names : QStringList();
}

bool CPakFile::has_file(const QString& name) const
{
    return m_reader && m_reader->index.contains(name);
}

/// Why an entry could not be read.
Status CPakFile::Reader::failure(zip_error_t* error)
{
    switch (zip_error_code_zip(error)) {
    case ZIP_ER_MEMORY: return tarn::memory_is_short();
    case ZIP_ER_OK: return Status::error(lang(u"它的长度与目录不符", u"it is not as long as the directory says"));
    default: return Status::error(QString::fromUtf8(zip_error_strerror(error)));
    }
}

/// The bytes of an entry, unpacked or (with ZIP_FL_COMPRESSED as `how`) as they are, `size` of them, with room before
/// and after.
Result<QByteArray> CPakFile::Reader::read(zip_uint64_t entry, zip_flags_t how, zip_uint64_t size, qsizetype before,
                                          qsizetype after, const Progress& progress) const
{
    zip_file_t* file = zip_fopen_index(archive, entry, how);
    if (!file)
        return failure(zip_get_error(archive));
    const std::unique_ptr<zip_file_t, int (*)(zip_file_t*)> closing(file, zip_fclose);
    QByteArray content;
    content.reserve(before + static_cast<qsizetype>(size) + after);
    content.resize(before + static_cast<qsizetype>(size));
    zip_uint64_t done = 0;
    while (done < size) {
        const zip_int64_t count = zip_fread(file, content.data() + before + done, std::min(block_size, size - done));
        if (count <= 0)
            break;
        done += zip_uint64_t(count);
        if (!progress.go_on(double(done) / double(size)))
            return tarn::stopped();
    }
    char beyond = 0;
    if (done == size
        && ((how & ZIP_FL_COMPRESSED) || zip_fread(file, &beyond, 1) == 0)) // The last one checks the checksum.
        return content;
    return failure(zip_file_get_error(file));
}

qint64 CPakFile::size_of(const QString& name) const
{
    zip_stat_t stat;
    const bool found = has_file(name) && zip_stat_index(m_reader->archive, m_reader->index.value(name), 0, &stat) == 0;
    return found ? qint64(stat.size) : 0;
}

Result<QByteArray> CPakFile::read_entry(const QString& name, bool packed, const Progress& progress) const
{
    if (!has_file(name))
        return Status::error(lang(u"文件包 %1 中缺少“%2”。", u"The package %1 has no entry \"%2\".").arg(m_path, name));
    const zip_uint64_t entry = m_reader->index.value(name);
    zip_stat_t stat;
    auto content = with_enough_memory([&]() -> Result<QByteArray> {
        if (zip_stat_index(m_reader->archive, entry, 0, &stat) != 0)
            return Status::error(QString::fromUtf8(zip_strerror(m_reader->archive)));
        if (packed && stat.comp_size > m_reader->file_size) // What a directory claims is not to be believed.
            return Status::error(lang(u"它比整个文件还大", u"it is larger than the whole file"));
        if (packed)
            return m_reader->read(entry, ZIP_FL_COMPRESSED, stat.comp_size, sizeof(PackedHeader), 0, progress);
        constexpr qsizetype padding = 64; // The parser's, so that a text need not be copied once more.
        return m_reader->read(entry, 0, stat.size, 0, padding, progress);
    });
    if (!content && tarn::is_stopped(content.status()))
        return content;
    if (!content) {
        const QString& reason = content.status().message();
        const bool short_now = reason == tarn::memory_is_short().message();
        m_memory_short = m_memory_short || short_now;
        const QString what = short_now
            ? lang(u"无法读取文件包 %1 中的“%2”：%3。", u"\"%2\" in the package %1 cannot be read: %3.")
            : lang(u"文件包 %1 中的“%2”已损坏：%3。", u"\"%2\" in the package %1 is damaged: %3.");
        return Status::error(what.arg(m_path, name, reason));
    }
    if (packed) {
        const PackedHeader header{quint64_le(stat.size), quint32_le(stat.crc), quint32_le(stat.comp_method)};
        std::memcpy(content.value().data(), &header, sizeof header);
    }
    return content;
}

Result<QByteArray> CPakFile::read_file(const QString& name, const Progress& progress) const
{
    return read_entry(name, false, progress);
}

Result<QByteArray> CPakFile::read_packed(const QString& name) const
{
    return read_entry(name, true, {});
}
