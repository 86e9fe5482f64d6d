#include "dxut_button_st.h"

#include "control_style.h"
#include "core/text_part.h"
#include "dxut_dialog.h"
#include "gui_core.h"

#include <QFontMetricsF>

#include <algorithm>
#include <array>
#include <cmath>

using tarn::ImageButtonState;

namespace {

constexpr std::array image_slots{&ImageButtonState::image_normal, &ImageButtonState::image_hover,
                                 &ImageButtonState::image_pressed};

constexpr qsizetype longest_annotation = 500; ///< UTF-16 units; more leave the screen

bool is_slot(int slot)
{
    return slot >= 0 && slot < int(image_slots.size());
}

} // namespace

QString CDXUTButtonST::image(int slot) const
{
    return is_slot(slot) ? state<ImageButtonState>().*image_slots[std::size_t(slot)] : QString();
}

QRectF CDXUTButtonST::raised_area() const
{
    const auto& s = state<ImageButtonState>();
    if (!s.annotation_mode || s.text.isEmpty() || core().live().hovered != this || !can_be_reached())
        return {};
    const QFontMetricsF metrics(font_of(core().look(), s));
    const QSizeF text = metrics.size(0, tarn::text_part(s.text, longest_annotation, 0));
    const QSizeF size(std::ceil(text.width()) + 1 + 2 * bubble_margin, std::ceil(text.height()) + bubble_margin);
    const QRectF bubble(bounds().topLeft() + QPointF(s.annotation_x, s.annotation_y), size);
    // It stays on the screen as far as it fits.
    const QRectF screen(dialog()->to_client({0, 0}),
                        dialog()->to_client(QPointF(core().screen_size().width(), core().screen_size().height())));
    return bubble.translated(std::max(screen.left() - bubble.left(), std::min(0.0, screen.right() - bubble.right())),
                             std::max(screen.top() - bubble.top(), std::min(0.0, screen.bottom() - bubble.bottom())));
}
