#include "dxut_media.h"

#include "core/language.h"
#include "draw_context.h"
#include "gui_core.h"
#include "swf_header.h"

#include <QPainter>

#include <array>

using tarn::Element;
using tarn::lang;
using tarn::MapState;
using tarn::VisualState;

CDXUTFlash::CDXUTFlash(tarn::Journal& journal, CGuiCore& core) : CDXUTControl(journal, core, new tarn::FlashState) {}

QString CDXUTFlash::description() const
{
    const auto& s = state<tarn::FlashState>();
    if (s.source.isEmpty())
        return lang(u"没有影片", u"No movie");
    if (!s.source_local)
        return s.source;
    const auto& files = core().core_state().files;
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

void CDXUTFlash::draw(tarn::DrawContext& context, const QRectF& area) const
{
    context.draw_element(Element::InfoPanel, VisualState::Normal, area);
    const double side = std::min({48.0, area.width() / 2, area.height() / 2});
    context.draw_element(Element::MoviePlaceholder, VisualState::Normal,
                         QRectF(area.x() + 8, area.y() + 8, side, side));
    m_text.draw(context.painter, area.adjusted(8, side + 12, -8, -4), description(),
                {.color = 0xffe8eef0, .font_size = 12, .word_wrap = true});
}

CDXUTPictureInPicture::CDXUTPictureInPicture(tarn::Journal& journal, CGuiCore& core)
    : CDXUTControl(journal, core, new tarn::PictureInPictureState)
{
}

void CDXUTPictureInPicture::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<tarn::PictureInPictureState>();
    context.painter.fillRect(area.adjusted(2, 2, -2, -2), QColor::fromRgba(s.background_color));
    if (s.frame_shown)
        context.draw_element(Element::Field, VisualState::Normal, area);
    const double side = std::min({48.0, area.width() - 8, area.height() - 8});
    if (side > 4)
        context.draw_element(Element::CameraPlaceholder, VisualState::Normal,
                             QRectF(area.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
}

CDXUTMap::CDXUTMap(tarn::Journal& journal, CGuiCore& core) : CDXUTControl(journal, core, new MapState) {}

void CDXUTMap::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<MapState>();
    bool drawn = context.draw_picture(s.image_base, area);
    drawn |= context.draw_picture(s.image_map, area);
    drawn |= context.draw_picture(s.image_surface, area);
    if (drawn)
        return;
    context.draw_element(Element::Field, VisualState::Normal, area);
    const double side = std::min({96.0, area.width() - 8, area.height() - 8});
    if (side > 4)
        context.draw_element(Element::MapPlaceholder, VisualState::Normal,
                             QRectF(area.center() - QPointF(side / 2, side / 2), QSizeF(side, side)));
}
