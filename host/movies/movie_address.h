#pragma once

#include "core/status.h"

#include <QString>
#include <QUrl>

namespace tarn {

constexpr int longest_movie_address = 1000; ///< letters

/// The address of a movie in the one form in which it is allowed, shown and requested: complete, of ASCII letters, without
/// its fragment. Only http and https are addresses, and only without a user's name and password.
Result<QString> movie_address(const QString& written);

/// Whether both are on the same server: scheme, host and port.
bool is_same_server(const QUrl& one, const QUrl& other);

} // namespace tarn
