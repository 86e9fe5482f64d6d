#pragma once

#include "gui_core/look.h"

#include <QtGlobal>

class CDXUTControl;
class CDXUTDialog;
class QRectF;

namespace tarn {

struct DrawContext;

/// Draws a control into `area`, pixels of its dialog's client area.
void draw_control(DrawContext& context, const CDXUTControl& control, const QRectF& area);
/// Draws what a control shows above all others in its raised_area(): a list that is dropped down, an annotation.
void draw_raised(DrawContext& context, const CDXUTControl& control);
/// Draws a dialog's frame and caption bar, in pixels of the screen.
void draw_dialog(DrawContext& context, const CDXUTDialog& dialog);
/// The frame and caption bar of a dialog that is being minimised and fills `frame` at the moment, pixels of the screen.
void draw_shrinking_dialog(DrawContext& context, const CDXUTDialog& dialog, const QRectF& frame);
/// The colour, ARGB, of a control's text in that state; `authored` is the control's own one, 0 for none.
quint32 text_color_in(const CDXUTControl& control, VisualState look, quint32 authored);

} // namespace tarn
