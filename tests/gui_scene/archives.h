#pragma once

#include <QByteArray>
#include <QtEndian>

#include <gtest/gtest.h>
#include <zip.h>

#include <utility>
#include <vector>

namespace tarn::test {

using Entries = std::vector<std::pair<QByteArray, QByteArray>>;

/// A zip with any names at all.
inline QByteArray archive_of(const Entries& entries, bool deflate = true)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &error);
    zip_t* archive = zip_open_from_source(target, ZIP_CREATE | ZIP_TRUNCATE, &error);
    zip_source_keep(target);
    for (const auto& [name, content] : entries) {
        zip_source_t* source = zip_source_buffer(archive, content.constData(), zip_uint64_t(content.size()), 0);
        const auto index = zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8);
        EXPECT_GE(index, 0) << name.toStdString();
        zip_set_file_compression(archive, zip_uint64_t(index), deflate ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 9);
    }
    EXPECT_EQ(zip_close(archive), 0);
    zip_stat_t stat;
    zip_source_stat(target, &stat);
    QByteArray bytes(qsizetype(stat.size), Qt::Uninitialized);
    zip_source_open(target);
    zip_source_read(target, bytes.data(), stat.size);
    zip_source_close(target);
    zip_source_free(target);
    return bytes;
}

/// Writes `value` into the headers of the entry `name`: `local` and `central` are the field's offsets in them.
template <class T>
QByteArray patched(QByteArray bytes, const QByteArray& name, int local, int central, T value)
{
    for (qsizetype at = bytes.indexOf(name); at >= 0; at = bytes.indexOf(name, at + 1)) {
        if (at >= 30 && bytes.mid(at - 30, 4) == QByteArray("PK\3\4"))
            qToLittleEndian(value, bytes.data() + at - 30 + local);
        if (at >= 46 && bytes.mid(at - 46, 4) == QByteArray("PK\1\2"))
            qToLittleEndian(value, bytes.data() + at - 46 + central);
    }
    return bytes;
}

inline QByteArray replaced(QByteArray bytes, const QByteArray& from, const QByteArray& to)
{
    return bytes.replace(from, to);
}

} // namespace tarn::test
