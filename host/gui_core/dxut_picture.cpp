#include "dxut_picture.h"

#include "draw_context.h"
#include "gui_core.h"

#include <QPainter>

CDXUTPicture::CDXUTPicture(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::PictureState)
{
}

bool CDXUTPicture::set_image(const QString& name)
{
    return change<tarn::PictureState>(&tarn::PictureState::image, name);
}

void CDXUTPicture::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const QImage picture = context.core.texture(image());
    if (!picture.isNull() && state<tarn::PictureState>().stretch) {
        context.painter.drawImage(area, picture);
    } else if (!picture.isNull()) {
        const QRectF shown(QPointF(), area.size().boundedTo(QSizeF(picture.size())));
        context.painter.drawImage(area.topLeft(), picture, shown);
    } else if (context.editing) {
        context.draw_element(tarn::Element::Field, tarn::VisualState::Normal, area);
        context.draw_element(tarn::Element::PicturePlaceholder, tarn::VisualState::Normal, area.adjusted(4, 4, -4, -4));
    }
    draw_text(context, area);
}
