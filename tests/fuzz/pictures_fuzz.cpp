// Pictures and movies' headers: whatever the file says, no more is decoded than pictures may have.

#include "fuzz.h"

#include "gui_core/swf_header.h"
#include "gui_draw/texture_cache.h"

#include <QImage>

void fuzz(FuzzInput input)
{
    const QSize shown(1 << input.byte() % 14, 1 << input.byte() % 14);
    const QByteArray file = input.rest();
    const QImage image = tarn::TextureCache().image(QStringLiteral("picture"), file, shown);
    constexpr int most = tarn::TextureCache::max_side;
    require(image.width() <= most && image.height() <= most, "a picture is no larger than pictures may be");
    (void)tarn::read_swf_header(file);
}
