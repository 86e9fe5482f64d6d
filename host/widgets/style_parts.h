#pragma once

#include <QIcon>

class QPainter;
class QStyleOption;
class QStyleOptionDockWidget;
class QStyleOptionHeader;
class QStyleOptionTab;
class QRect;
class QRectF;

// How the parts of controls look that StudioStyle draws itself.
namespace tarn {

void draw_header_section(const QStyleOptionHeader& header, QPainter& painter);
void draw_dock_title(const QStyleOptionDockWidget& dock, const QRect& text, QPainter& painter);
void draw_check_box(const QStyleOption& option, QPainter& painter);
void draw_radio_button(const QStyleOption& option, QPainter& painter);
void draw_tab(const QStyleOptionTab& tab, QPainter& painter);
void draw_tab_frame(const QStyleOption& option, QPainter& painter);
void draw_tool_bar(const QStyleOption& option, QPainter& painter);
void draw_scroll_bar_slider(const QStyleOption& option, const QRectF& slider, bool held, bool hovered,
                            QPainter& painter);
QIcon close_icon();
QIcon float_icon();

} // namespace tarn
