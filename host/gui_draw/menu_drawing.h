#pragma once

class QRectF;
class CDXUTMenu;

namespace tarn {

class OpenMenu;
struct DrawContext;
struct MenuList;

/// Draws a list of a menu's items into `area`, from `scrolled` pixels below its top on, with the row `highlighted` (-1 for
/// none) standing out. A list that is drawn alone has no shadow.
void draw_menu_list(const DrawContext& context, const CDXUTMenu& menu, const MenuList& list, const QRectF& area,
                    double scrolled = 0, int highlighted = -1);
/// Draws all lists of an open menu, in pixels of the screen.
void draw_open_menu(const DrawContext& context, const OpenMenu& menu);

} // namespace tarn
