#include "dxut_progress.h"

#include "draw_context.h"
#include "gui_core.h"

#include <QPainter>

using tarn::ProgressState;

namespace {

QString number(double value, bool integer)
{
    return integer ? QString::number(qint64(value)) : QString::number(value, 'f', 2);
}

} // namespace

CDXUTProgress::CDXUTProgress(tarn::Journal& journal, CGuiCore& core) : CDXUTStatic(journal, core, new ProgressState) {}

QString CDXUTProgress::shown_text() const
{
    const auto& s = state<ProgressState>();
    const QString percent = number(double(s.percent), s.integer_display) + QLatin1Char('%');
    if (!s.info_display)
        return s.percent_display ? percent : s.text;
    QString message = s.message;
    message.replace(QLatin1String("<num>"), number(double(s.percent) * s.total / 100, s.integer_display));
    message.replace(QLatin1String("<total>"), QString::number(s.total));
    message.replace(QLatin1String("<percent>"), percent);
    return message;
}

void CDXUTProgress::draw(tarn::DrawContext& context, const QRectF& area) const
{
    const auto& s = state<ProgressState>();
    context.draw_element(tarn::Element::ProgressFrame, tarn::VisualState::Normal, area);
    const QRectF inside = area.adjusted(s.border, s.border, -s.border, -s.border);
    const QRectF filled(inside.x(), inside.y(), inside.width() * double(s.percent) / 100, inside.height());
    if (filled.width() >= 1) {
        // Uncovering shows a part of the full picture; growing squeezes the whole of it into the filled part.
        const bool uncover = !s.render_state || !s.texture_stretch;
        context.painter.save();
        context.painter.setClipRect(filled, Qt::IntersectClip);
        const QRectF target = uncover ? inside : filled;
        if (s.image.isEmpty() || !context.draw_picture(s.image, target))
            context.draw_element(tarn::Element::ProgressFill, tarn::VisualState::Normal, target);
        context.painter.restore();
    }
    tarn::TextLook look = text_look();
    look.word_wrap = false;
    m_shown.draw(context.painter, area, shown_text(), look);
}
