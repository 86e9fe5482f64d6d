#include "pak_directory.h"

#include <QIODevice>
#include <QtEndian>

#include <algorithm>
#include <limits>

namespace tarn {

namespace {

const QByteArray end_signature("PK\5\6");
const QByteArray entry_signature("PK\1\2");
constexpr qsizetype end_size = 22;
constexpr qsizetype entry_size = 46;
constexpr qsizetype local_size = 30;
constexpr qsizetype longest_comment = 0xffff;
constexpr quint32 elsewhere = std::numeric_limits<quint32>::max(); ///< the number stands in a 64-bit record

template <class T>
T number(const QByteArray& bytes, qsizetype at)
{
    return qFromLittleEndian<T>(bytes.constData() + at);
}

QByteArray read_at(QIODevice& archive, qint64 place, qint64 size)
{
    return archive.seek(place) ? archive.read(size) : QByteArray();
}

} // namespace

std::optional<std::vector<PakEntryPlace>> read_pak_directory(QIODevice& archive)
{
    const qint64 tail_start = std::max<qint64>(0, archive.size() - end_size - longest_comment);
    const QByteArray tail = read_at(archive, tail_start, archive.size() - tail_start);
    const qsizetype end = tail.lastIndexOf(end_signature);
    if (end < 0 || tail.size() - end < end_size)
        return std::nullopt;
    const auto size = number<quint32>(tail, end + 12);
    const auto start = number<quint32>(tail, end + 16);
    if (size == elsewhere || start == elsewhere || qint64(start) + size > tail_start + end)
        return std::nullopt;
    const QByteArray directory = read_at(archive, start, size);
    std::vector<PakEntryPlace> entries;
    for (qsizetype at = 0; directory.size() - at >= entry_size;) {
        if (directory.mid(at, entry_signature.size()) != entry_signature)
            return std::nullopt;
        const auto name_size = number<quint16>(directory, at + 28);
        entries.push_back({directory.mid(at + entry_size, name_size), start + at, number<quint32>(directory, at + 42),
                           number<quint32>(directory, at + 20)});
        at += entry_size + name_size + number<quint16>(directory, at + 30) + number<quint16>(directory, at + 32);
    }
    return entries;
}

std::pair<QByteArray, QByteArray> overlapping_entries(std::vector<PakEntryPlace> entries)
{
    std::sort(entries.begin(), entries.end(),
              [](const PakEntryPlace& a, const PakEntryPlace& b) { return a.local < b.local; });
    for (std::size_t i = 1; i < entries.size(); ++i) {
        const PakEntryPlace& before = entries[i - 1];
        if (before.local + local_size + before.name.size() + before.packed > entries[i].local)
            return {before.name, entries[i].name};
    }
    return {};
}

} // namespace tarn
