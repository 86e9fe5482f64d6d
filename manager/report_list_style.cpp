#include "report_list_style.h"

#include "core/language.h"
#include "gui_core/gui_style.h"

#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>

#include <utility>

using tarn::lang;

namespace {

// Of the icon table, in the order of tarn::StyleOrigin.
constexpr int icons[] = {6955, 6956, 6957};
constexpr int mark_side = 8; ///< pixels

constexpr std::pair<const char16_t*, const char16_t*> program_styles[] = {{u"Light", u"明亮"}, {u"Tavern", u"酒馆"}};

} // namespace

CReportListStyle::CReportListStyle(QWidget* parent) : CReportList(parent)
{
    insert_column(0, lang(u"名称", u"Name"));
    horizontalHeader()->setSectionsClickable(false); // The scene's own come first.
    set_icon_list({std::begin(icons), std::end(icons)});
    set_empty_hint(lang(u"还没有风格。点击“保存方案”可保存当前外观。",
                        u"There are no styles yet. \"Save\" keeps the present look as one."));
}

CGuiStyle* CReportListStyle::style_at(int row) const
{
    return static_cast<CGuiStyle*>(get_binded_ptr(row));
}

void CReportListStyle::set_worn(const CGuiStyle* style)
{
    m_worn = style;
    refresh_all_item_caption();
}

/// Those that come with the program are called in its language; their files have the English names.
QString CReportListStyle::get_item_caption(void* item, int) const
{
    const auto* style = static_cast<const CGuiStyle*>(item);
    if (style->origin() == tarn::StyleOrigin::Program)
        for (const auto& [english, chinese] : program_styles)
            if (style->name() == QStringView(english))
                return lang(chinese, english);
    return style->name();
}

int CReportListStyle::get_item_icon(void* item) const
{
    return int(static_cast<const CGuiStyle*>(item)->origin());
}

void CReportListStyle::draw_additional(QPainter& painter, const QRect& cell, int row, int) const
{
    if (!m_worn || style_at(row) != m_worn)
        return;
    const QRectF mark(cell.right() - 2 * mark_side, cell.center().y() - mark_side / 2.0, mark_side, mark_side);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({{mark.left(), mark.center().y()},
                                    {mark.left() + mark.width() * 0.4, mark.bottom()},
                                    {mark.right(), mark.top()}}));
}

void CReportListStyle::mouseDoubleClickEvent(QMouseEvent* event)
{
    CReportList::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && !indexAt(event->position().toPoint()).isValid())
        Q_EMIT item_double_clicked(-1, -1);
}
