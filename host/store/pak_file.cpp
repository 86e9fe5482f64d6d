#include "pak_file.h"

#include "atomic_file.h"
#include "core/language.h"
#include "core/utf8.h"
#include "pak_rules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <zip.h>

#include <ctime>
#include <deque>
#include <utility>

using tarn::lang;
using tarn::Result;
using tarn::Status;

namespace {

struct ZipError {
    zip_error_t error;
    ZipError() { zip_error_init(&error); }
    ~ZipError() { zip_error_fini(&error); }
    QString text() { return QString::fromUtf8(zip_error_strerror(&error)); }
};

/// Level 1: on scene text four times faster than the default for a few per cent of size.
constexpr zip_uint32_t fast_deflate = 1;

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

Status cannot_open(const QString& path, const QString& reason)
{
    return Status::error(lang(u"无法打开文件包 %1：%2。", u"The package %1 cannot be opened: %2.")
                             .arg(QDir::toNativeSeparators(path), reason));
}

} // namespace

struct CPakFile::Reader {
    zip_t* archive = nullptr;
    QStringList names;
    QHash<QString, zip_uint64_t> index;

    ~Reader()
    {
        if (archive)
            zip_discard(archive);
    }
    Status check_directory();
};

struct CPakFile::Writer {
    zip_t* archive = nullptr;
    zip_source_t* target = nullptr;
    std::deque<QByteArray> contents; ///< kept alive until the archive is written
    QHash<QString, bool> names;

    ~Writer()
    {
        if (archive)
            zip_discard(archive);
        if (target)
            zip_source_free(target);
    }
    Result<QByteArray> finish();
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

Status CPakFile::add_file(const QString& name, const QByteArray& content)
{
    if (!m_writer)
        return Status::error(lang(u"文件包没有打开", u"The package is not open for writing."));
    if (auto status = tarn::check_entry_name(name); !status)
        return status;
    if (std::exchange(m_writer->names[name], true))
        return Status::error(lang(u"文件包中“%1”重复", u"\"%1\" is in the package already.").arg(name));
    const QByteArray& kept = m_writer->contents.emplace_back(content);
    zip_t* archive = m_writer->archive;
    zip_source_t* source = zip_source_buffer(archive, kept.constData(), static_cast<zip_uint64_t>(kept.size()), 0);
    const zip_int64_t index = source ? zip_file_add(archive, name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) : -1;
    if (index < 0) {
        if (source)
            zip_source_free(source);
        return Status::error(lang(u"无法加入“%1”：%2", u"\"%1\" cannot be added: %2")
                                 .arg(name, QString::fromUtf8(zip_strerror(archive))));
    }
    const auto entry = static_cast<zip_uint64_t>(index);
    if (is_packed_already(name))
        zip_set_file_compression(archive, entry, ZIP_CM_STORE, 0);
    else
        zip_set_file_compression(archive, entry, ZIP_CM_DEFLATE, fast_deflate);
    zip_file_set_mtime(archive, entry, fixed_date(), 0);
    zip_file_set_external_attributes(archive, entry, 0, ZIP_OPSYS_UNIX, 0100644u << 16);
    return {};
}

Result<QByteArray> CPakFile::Writer::finish()
{
    if (zip_close(archive) != 0)
        return Status::error(QString::fromUtf8(zip_strerror(archive)));
    archive = nullptr;
    zip_stat_t stat;
    if (zip_source_stat(target, &stat) != 0 || zip_source_open(target) != 0)
        return Status::error(QString::fromUtf8(zip_error_strerror(zip_source_error(target))));
    QByteArray bytes(static_cast<qsizetype>(stat.size), Qt::Uninitialized);
    const bool complete = zip_source_read(target, bytes.data(), stat.size) == static_cast<zip_int64_t>(stat.size);
    zip_source_close(target);
    if (!complete)
        return Status::error(QStringLiteral("libzip"));
    return bytes;
}

Status CPakFile::close()
{
    m_reader.reset();
    if (!m_writer)
        return {};
    const auto writer = std::exchange(m_writer, nullptr);
    auto bytes = writer->finish();
    if (!bytes)
        return Status::error(
            lang(u"无法保存 %1：%2。原文件保持不变。", u"%1 could not be saved: %2. The file is as it was before.")
                .arg(m_path, bytes.status().message()));
    return tarn::write_file_atomically(m_path, bytes.value(), m_io);
}

Status CPakFile::open(const QString& path, int)
{
    m_writer.reset();
    m_path = path;
    m_reader.reset();
    const QFileInfo info(path);
    if (!info.exists())
        return cannot_open(path, lang(u"文件不存在", u"there is no such file"));
    if (!info.isFile())
        return cannot_open(path, lang(u"这不是文件", u"it is not a file"));
    int code = 0;
    auto reader = std::make_unique<Reader>();
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
    if (auto status = reader->check_directory(); !status)
        return cannot_open(path, status.message());
    m_reader = std::move(reader);
    return {};
}

Status CPakFile::Reader::check_directory()
{
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    if (count > tarn::PakLimits::max_entries)
        return Status::error(lang(u"条目过多（%1）", u"it has too many entries (%1)").arg(count));
    quint64 total = 0;
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
        total += stat.size;
        index.insert(name, i);
        names.append(name);
    }
    if (total > tarn::PakLimits::max_total_size)
        return Status::error(lang(u"内容过大（%1 字节）", u"its content is too large (%1 bytes)").arg(total));
    return {};
}

QStringList CPakFile::names() const
{
    return m_reader ? m_reader->names : QStringList();
}

bool CPakFile::has_file(const QString& name) const
{
    return m_reader && m_reader->index.contains(name);
}

Result<QByteArray> CPakFile::read_file(const QString& name) const
{
    if (!has_file(name))
        return Status::error(lang(u"文件包 %1 中缺少“%2”。", u"The package %1 has no entry \"%2\".").arg(m_path, name));
    const auto damaged = [&](const QString& reason) {
        return Status::error(lang(u"文件包 %1 中的“%2”已损坏：%3。", u"\"%2\" in the package %1 is damaged: %3.")
                                 .arg(m_path, name, reason));
    };
    const zip_uint64_t entry = m_reader->index.value(name);
    zip_stat_t stat;
    if (zip_stat_index(m_reader->archive, entry, 0, &stat) != 0)
        return damaged(QString::fromUtf8(zip_strerror(m_reader->archive)));
    zip_file_t* file = zip_fopen_index(m_reader->archive, entry, 0);
    if (!file)
        return damaged(QString::fromUtf8(zip_strerror(m_reader->archive)));
    // Room for the parser's padding, so that the text need not be copied once more.
    QByteArray content;
    content.reserve(static_cast<qsizetype>(stat.size) + 64);
    content.resize(static_cast<qsizetype>(stat.size));
    const zip_int64_t got = zip_fread(file, content.data(), stat.size);
    char beyond = 0;
    const bool complete = got == static_cast<zip_int64_t>(stat.size) && zip_fread(file, &beyond, 1) == 0;
    const QString reason = complete ? QString() : QString::fromUtf8(zip_file_strerror(file));
    zip_fclose(file);
    if (!complete)
        return damaged(reason);
    return content;
}
