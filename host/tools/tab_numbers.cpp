#include "tab_numbers.h"

#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_core.h"
#include "gui_core/interface_font.h"
#include "gui_core/tab_order.h"
#include "selection_overlay.h"

#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace tarn {

namespace {

constexpr int font_size = 12; ///< pixels of the view
const QColor given_color(0xff, 0xb0, 0x3a);
const QColor usual_color(0x5a, 0x6a, 0x72);

} // namespace

void paint_tab_numbers(QPainter& painter, const CGuiCore& core)
{
    const CDXUTDialog* dialog = core.selection().current_dialog;
    if (!dialog)
        return;
    const double pixel = view_pixel(painter);
    painter.save();
    painter.scale(pixel, pixel);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(interface_font(font_size, true));
    const QFontMetricsF metrics(painter.font());
    int number = 0;
    for (const CDXUTControl* control : tab_stops(*dialog)) {
        const QString text = QString::number(++number);
        const double width = std::max(metrics.horizontalAdvance(text) + 8, metrics.height());
        const QRectF badge(control->screen_bounds().topLeft() / pixel, QSizeF(width, metrics.height()));
        const bool is_given = control->tab_order() > 0;
        painter.setPen(is_given ? Qt::black : Qt::white);
        painter.setBrush(is_given ? given_color : usual_color);
        painter.drawRoundedRect(badge, 4, 4);
        painter.drawText(badge, Qt::AlignCenter, text);
    }
    painter.restore();
}

} // namespace tarn
