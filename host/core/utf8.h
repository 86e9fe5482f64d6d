#pragma once

#include <QString>

#include <string_view>

namespace tarn {

/// The text of these bytes, a U+FEFF at their begin included. QString::fromUtf8() takes that for the mark of a file and
/// drops it, and a name that comes back as another name may be one that is taken.
inline QString from_utf8(std::string_view bytes)
{
    const QString text = QString::fromUtf8(bytes.data(), qsizetype(bytes.size()));
    return bytes.starts_with("\xEF\xBB\xBF") ? QChar(QChar::ByteOrderMark) + text : text;
}

} // namespace tarn
