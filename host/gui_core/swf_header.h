#pragma once

#include "core/status.h"

#include <QByteArray>
#include <QSizeF>

namespace tarn {

/// What the header of a Flash movie says.
struct SwfHeader {
    int version = 0;
    bool compressed = false;
    QSizeF size;           ///< pixels; empty for a movie compressed in a way that is not read
    double frame_rate = 0; ///< frames a second
    int frame_count = 0;
};

/// Reads the header of an SWF file: signature FWS (plain), CWS (zlib) or ZWS (LZMA), version, length, then the frame
/// rectangle in twentieths of a pixel, the rate in 8.8 fixed point and the number of frames.
Result<SwfHeader> read_swf_header(const QByteArray& file);

} // namespace tarn
