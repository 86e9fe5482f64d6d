#include "dxut_media.h"

#include "core/language.h"
#include "gui_core.h"
#include "swf_header.h"

#include <array>

using tarn::lang;
using tarn::MapState;

QString CDXUTFlash::description() const
{
    const auto& s = state<tarn::FlashState>();
    if (s.source.isEmpty())
        return lang(u"没有影片", u"No movie");
    if (!s.source_local)
        return s.source;
    const auto& files = core().document().files();
    const auto movie = files.find(QStringLiteral("movies/") + s.source);
    if (movie == files.end())
        return s.source + QLatin1Char('\n') + lang(u"文件包中没有该影片", u"the movie is not in the package");
    const auto header = tarn::read_swf_header(*movie);
    if (!header)
        return s.source + QLatin1Char('\n') + header.status().message();
    const tarn::SwfHeader& h = header.value();
    return lang(u"%1\n%2 × %3 像素\n%4 帧，每秒 %5 帧\n版本 %6，%7",
                u"%1\n%2 × %3 pixels\n%4 frames, %5 a second\nversion %6, %7")
        .arg(s.source)
        .arg(h.size.width())
        .arg(h.size.height())
        .arg(h.frame_count)
        .arg(h.frame_rate)
        .arg(h.version)
        .arg(h.compressed ? lang(u"已压缩", u"compressed") : lang(u"未压缩", u"not compressed"));
}
