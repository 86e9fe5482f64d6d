#include "dxut_picture.h"

#include "draw_context.h"
#include "gui_core.h"

#include <QPainter>

CDXUTPicture::CDXUTPicture(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new tarn::PictureState)
{
}

void CDXUTPicture::draw(tarn::DrawContext& context, const QRectF& area) const
{
    bool drawn = false;
    if (state<tarn::PictureState>().stretch) {
        drawn = context.draw_picture(image(), area);
    } else if (const QImage picture = context.core.texture(image()); !picture.isNull()) {
        const QRectF shown(QPointF(), area.size().boundedTo(QSizeF(picture.size())));
        context.painter.drawImage(area.topLeft(), picture, shown);
        drawn = true;
    }
    if (!drawn && context.editing) {
        context.draw_element(tarn::Element::Field, tarn::VisualState::Normal, area);
        context.draw_element(tarn::Element::PicturePlaceholder, tarn::VisualState::Normal, area.adjusted(4, 4, -4, -4));
    }
    draw_text(context, area);
}
