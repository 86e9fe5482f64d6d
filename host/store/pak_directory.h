#pragma once

#include <QByteArray>

#include <optional>
#include <vector>

class QIODevice;

namespace tarn {

/// What an archive's own directory says of an entry and the zip library does not tell.
struct PakEntryPlace {
    QByteArray name;    ///< in full, also beyond a zero byte
    qint64 central = 0; ///< where its header in the directory starts
    qint64 local = 0;   ///< where the header before its content is said to start
    qint64 packed = 0;  ///< bytes of its content

    // Offsets of the checksum in both kinds of header.
    static constexpr int central_crc = 16;
    static constexpr int local_crc = 14;
};

/// The entries of an archive in the order of its directory; nothing when there is no directory, or one for archives over
/// 4 GB.
std::optional<std::vector<PakEntryPlace>> read_pak_directory(QIODevice& archive);

/// The first two entries that claim the same bytes; two null names when there are none.
std::pair<QByteArray, QByteArray> overlapping_entries(std::vector<PakEntryPlace> entries);

} // namespace tarn
