#include "menu_picture.h"

#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/gui_core.h"
#include "gui_draw/draw_context.h"
#include "gui_draw/menu_drawing.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

constexpr int margin = 12; ///< pixels around the lists
constexpr int least_height = 64;
constexpr int most_height = 260;
constexpr double overlap = 3;           ///< pixels, as of menus that are open
constexpr double least_seen = 40;       ///< pixels of a list beside a submenu that covers it
constexpr QRgb backdrop = 0xff4a6470;   ///< something like a scene: a menu lies over one
constexpr QRgb backdrop_2 = 0xff2b3d46; ///< at the bottom

double submenu_top(const CDXUTMenu& menu, const tarn::MenuRow& row, double top)
{
    return top + row.area.top() - menu.menu_state().padding;
}

struct Extent {
    QSizeF side_by_side;
    double least_width = 0;
};

/// How far the list of `opener` and all that open beside it reach, when its corner is at `corner` and it is the submenu of so
/// many others.
Extent extent(const CDXUTMenu& menu, int opener, QPointF corner, int depth)
{
    const tarn::MenuList list = tarn::menu_list(menu, opener);
    const double right = corner.x() + list.size.width();
    Extent all{{right, corner.y() + list.size.height()}, depth * least_seen + list.size.width()};
    for (const tarn::MenuRow& row : list.rows) {
        if (!row.opens_submenu)
            continue;
        const Extent inside = extent(menu, row.item, {right - overlap, submenu_top(menu, row, corner.y())}, depth + 1);
        all.side_by_side = all.side_by_side.expandedTo(inside.side_by_side);
        all.least_width = std::max(all.least_width, inside.least_width);
    }
    return all;
}

} // namespace

CMenuPicture::CMenuPicture(QWidget* parent) : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void CMenuPicture::show_menu(const CGuiCore* core, const CDXUTMenu* menu, int item)
{
    m_core = core;
    m_menu = menu;
    m_panels.clear();
    m_extent = {};
    m_least_width = 0;
    std::vector<int> openers; // of the lists, from the outermost on
    if (menu && item >= 0) {
        if (menu->opens_submenu(item))
            openers.push_back(item);
        for (int opener = menu->opener_of(item); opener >= 0; opener = menu->opener_of(opener))
            openers.insert(openers.begin(), opener);
    }
    if (menu && !menu->items().isEmpty()) {
        const Extent all = extent(*menu, -1, {}, 0);
        m_extent = all.side_by_side;
        m_least_width = all.least_width;
        openers.insert(openers.begin(), -1);
        double top = 0;
        for (std::size_t i = 0; i < openers.size(); ++i) {
            Panel panel{tarn::menu_list(*menu, openers[i]), top, -1};
            const int wanted = i + 1 < openers.size() ? openers[i + 1] : item;
            for (std::size_t row = 0; row < panel.list.rows.size(); ++row)
                if (panel.list.rows[row].item == wanted) {
                    panel.highlighted = int(row);
                    top = submenu_top(*menu, panel.list.rows[row], top);
                }
            m_panels.push_back(std::move(panel));
        }
    }
    updateGeometry();
    update();
}

QSizeF CMenuPicture::room() const
{
    return QSizeF(size()).shrunkBy({margin, margin, margin, margin}).expandedTo({1, 1});
}

/// What is too large is shown smaller.
double CMenuPicture::scale() const
{
    return std::min(
        {1.0, room().width() / std::max(1.0, m_least_width), room().height() / std::max(1.0, m_extent.height())});
}

QPointF CMenuPicture::origin() const
{
    const QSizeF content = (m_extent * scale()).boundedTo(room());
    return {std::floor((width() - content.width()) / 2), std::floor((height() - content.height()) / 2)};
}

std::vector<QRectF> CMenuPicture::areas() const
{
    const double right = std::min(m_extent.width(), room().width() / scale());
    std::vector<QRectF> all;
    for (const Panel& panel : m_panels) {
        const double beside = all.empty() ? 0 : all.back().right() - overlap;
        all.emplace_back(QPointF(std::min(beside, right - panel.list.size.width()), panel.top), panel.list.size);
    }
    return all;
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
    const std::vector<QRectF> places = areas();
    for (std::size_t i = 0; i < places.size(); ++i)
        tarn::draw_menu_list(context, *m_menu, m_panels[i].list, places[i], 0, m_panels[i].highlighted);
}

void CMenuPicture::mousePressEvent(QMouseEvent* event)
{
    const QPointF place = (event->position() - origin()) / scale();
    const std::vector<QRectF> places = areas();
    for (std::size_t i = places.size(); i-- > 0;) {
        if (!places[i].contains(place))
            continue;
        const tarn::MenuList& list = m_panels[i].list;
        if (const int row = list.row_at(place - places[i].topLeft()); row >= 0)
            Q_EMIT item_clicked(list.rows[std::size_t(row)].item);
        return;
    }
}
