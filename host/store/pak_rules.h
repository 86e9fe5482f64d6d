#pragma once

#include "core/status.h"

#include <QString>

namespace tarn {

/// What a package may hold. Far above anything an author makes, low enough to keep a hostile file from filling the
/// memory or the disk.
struct PakLimits {
    static constexpr qint64 max_entries = 100'000;
    static constexpr quint64 max_entry_size = quint64(1) << 30; ///< bytes, unpacked
    static constexpr quint64 max_total_size = quint64(2) << 30; ///< bytes, unpacked
    static constexpr quint64 unsuspicious_size = quint64(16) << 20;
    static constexpr quint64 max_ratio = 400; ///< unpacked : packed, for entries over unsuspicious_size
    static constexpr quint64 unsuspicious_total = quint64(64) << 20;
    static constexpr quint64 max_total_ratio = 100; ///< the same for all together, over unsuspicious_total
};

/// Whether `name` may be an entry's name: relative, with forward slashes, staying inside its folder, usable on every
/// platform. The message names it otherwise.
Status check_entry_name(const QString& name);

/// Whether an entry of these sizes (bytes) may be unpacked.
Status check_entry_size(const QString& name, quint64 packed, quint64 unpacked);

/// Whether all entries of a package of `packed` bytes may be unpacked, which gives `unpacked`; `largest` is named if not.
Status check_total_size(const QString& largest, quint64 packed, quint64 unpacked);

} // namespace tarn
