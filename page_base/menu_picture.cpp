#include "menu_picture.h"

#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/gui_core.h"
#include "gui_draw/draw_context.h"
#include "gui_draw/menu_drawing.h"
#include "gui_draw/skin.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int margin = 12; ///< pixels around the lists
constexpr int least_height = 64;
constexpr int most_height = 260;
constexpr double overlap = 3;           ///< pixels, as of menus that are open
constexpr QRgb backdrop = 0xff4a6470;   ///< something like a scene: a menu lies over one
constexpr QRgb backdrop_2 = 0xff2b3d46; ///< at the bottom

QPointF submenu_corner(const CDXUTMenu& menu, const tarn::MenuList& list, const tarn::MenuRow& row, QPointF corner)
{
    return corner + QPointF(list.size.width() - overlap, row.area.top() - menu.menu_state().padding);
}

/// How far the list of `opener` at `corner` and all that open beside it reach.
QSizeF extent(const CDXUTMenu& menu, int opener, QPointF corner)
{
    const tarn::MenuList list = tarn::menu_list(menu, opener);
    QSizeF reach(corner.x() + list.size.width(), corner.y() + list.size.height());
    for (const tarn::MenuRow& row : list.rows)
        if (row.opens_submenu)
            reach = reach.expandedTo(extent(menu, row.item, submenu_corner(menu, list, row, corner)));
    return reach;
}

} // namespace

CMenuPicture::CMenuPicture(QWidget* parent) : QWidget(parent), m_elements(tarn::Skin::default_skin())
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CMenuPicture::show_menu(const CGuiCore* core, const CDXUTMenu* menu, int item)
{
    m_core = core;
    m_menu = menu;
    m_panels.clear();
    m_extent = {};
    std::vector<int> openers; // of the lists, from the outermost on
    if (menu && item >= 0) {
        if (menu->opens_submenu(item))
            openers.push_back(item);
        for (int opener = menu->opener_of(item); opener >= 0; opener = menu->opener_of(opener))
            openers.insert(openers.begin(), opener);
    }
    if (menu && !menu->items().isEmpty()) {
        m_extent = extent(*menu, -1, {});
        openers.insert(openers.begin(), -1);
        QPointF corner;
        for (std::size_t i = 0; i < openers.size(); ++i) {
            Panel panel{tarn::menu_list(*menu, openers[i]), corner, -1};
            const int wanted = i + 1 < openers.size() ? openers[i + 1] : item;
            for (std::size_t row = 0; row < panel.list.rows.size(); ++row)
                if (panel.list.rows[row].item == wanted) {
                    panel.highlighted = int(row);
                    corner = submenu_corner(*menu, panel.list, panel.list.rows[row], corner);
                }
            m_panels.push_back(std::move(panel));
        }
    }
    updateGeometry();
    update();
}

/// What is too large is shown smaller.
double CMenuPicture::scale() const
{
    const QSizeF room(std::max(1, width() - 2 * margin), std::max(1, height() - 2 * margin));
    return std::min(
        {1.0, room.width() / std::max(1.0, m_extent.width()), room.height() / std::max(1.0, m_extent.height())});
}

QPointF CMenuPicture::origin() const
{
    const QSizeF content = m_extent * scale();
    return {std::floor((width() - content.width()) / 2), std::floor((height() - content.height()) / 2)};
}

QSize CMenuPicture::sizeHint() const
{
    return {0, std::clamp(int(std::ceil(m_extent.height())) + 2 * margin, least_height, most_height)};
}

void CMenuPicture::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient ground(0, 0, 0, height());
    ground.setColorAt(0, QColor::fromRgba(backdrop));
    ground.setColorAt(1, QColor::fromRgba(backdrop_2));
    painter.fillRect(rect(), ground);
    if (!m_menu)
        return;
    if (m_panels.empty()) {
        painter.setPen(Qt::white);
        painter.drawText(rect(), Qt::AlignCenter, tarn::lang(u"还没有菜单项", u"No items yet"));
        return;
    }
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    painter.translate(origin());
    painter.scale(scale(), scale());
    const tarn::DrawContext context{painter, m_elements, *m_core, devicePixelRatioF() * scale(), false, nullptr};
    for (const Panel& panel : m_panels)
        tarn::draw_menu_list(context, *m_menu, panel.list, QRectF(panel.corner, panel.list.size), 0, panel.highlighted);
}

void CMenuPicture::mousePressEvent(QMouseEvent* event)
{
    const QPointF place = (event->position() - origin()) / scale();
    for (auto panel = m_panels.rbegin(); panel != m_panels.rend(); ++panel) {
        if (!QRectF(panel->corner, panel->list.size).contains(place))
            continue;
        const int row = panel->list.row_at(place - panel->corner);
        if (row >= 0)
            Q_EMIT item_clicked(panel->list.rows[std::size_t(row)].item);
        return;
    }
}
