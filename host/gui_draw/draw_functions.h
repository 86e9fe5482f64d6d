#pragma once

#include "text_cache.h"

#include <QRectF>

class CDXUTButton;
class CDXUTButtonST;
class CDXUTCheckBox;
class CDXUTComboBox;
class CDXUTControl;
class CDXUTEditBox;
class CDXUTFlash;
class CDXUTInfoBox;
class CDXUTListBox;
class CDXUTMap;
class CDXUTPicture;
class CDXUTPictureInPicture;
class CDXUTProgress;
class CDXUTRadioButton;
class CDXUTScrollBar;
class CDXUTSlider;
class CDXUTStatic;

namespace tarn {

struct DrawContext;
class StyleLook;

// How each type of control is drawn into `area`, pixels of its dialog's client area.
void draw_button(DrawContext& context, const CDXUTButton& button, const QRectF& area);
void draw_image_button(DrawContext& context, const CDXUTButtonST& button, const QRectF& area);
void draw_annotation(DrawContext& context, const CDXUTButtonST& button);
void draw_check_box(DrawContext& context, const CDXUTCheckBox& check_box, const QRectF& area);
void draw_radio_button(DrawContext& context, const CDXUTRadioButton& radio_button, const QRectF& area);
void draw_static(DrawContext& context, const CDXUTStatic& control, const QRectF& area);
void draw_edit_box(DrawContext& context, const CDXUTEditBox& edit_box, const QRectF& area);
void draw_info_box(DrawContext& context, const CDXUTInfoBox& info_box, const QRectF& area);
void draw_combo_box(DrawContext& context, const CDXUTComboBox& combo_box, const QRectF& area);
void draw_combo_list(DrawContext& context, const CDXUTComboBox& combo_box);
void draw_list_box(DrawContext& context, const CDXUTListBox& list_box, const QRectF& area);
void draw_slider(DrawContext& context, const CDXUTSlider& slider, const QRectF& area);
void draw_scroll_bar(DrawContext& context, const CDXUTScrollBar& scroll_bar, const QRectF& area);
void draw_progress(DrawContext& context, const CDXUTProgress& progress, const QRectF& area);
void draw_picture(DrawContext& context, const CDXUTPicture& picture, const QRectF& area);
void draw_flash(DrawContext& context, const CDXUTFlash& flash, const QRectF& area);
void draw_picture_in_picture(DrawContext& context, const CDXUTPictureInPicture& picture, const QRectF& area);
void draw_map(DrawContext& context, const CDXUTMap& map, const QRectF& area);

/// How the style has the texts of `owner` drawn, but for their colour.
TextLook style_text_look(const StyleLook& style, int owner);
TextLook text_look(const CDXUTStatic& control);
/// The text of a control that shows its own one and no other.
void draw_text(DrawContext& context, const CDXUTStatic& control, const QRectF& area);

} // namespace tarn
