#pragma once

class CGuiCore;
class QPainter;

namespace tarn {

/// Draws onto the controls of the current dialog when Tab comes to them, counted from 1. Numbers that an author gave stand
/// out from those that follow from where the controls lie.
void paint_tab_numbers(QPainter& painter, const CGuiCore& core);

} // namespace tarn
