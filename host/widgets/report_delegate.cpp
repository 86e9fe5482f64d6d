#include "widgets/report_delegate.h"

#include "widgets/plain_tip.h"
#include "widgets/report_list.h"

#include <QHelpEvent>
#include <QLineEdit>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tarn {
namespace {

constexpr int text_margin = 5;
constexpr int icon_size = 16;
constexpr int cell_icon_step = icon_size + 2;
constexpr int least_text = 16;        ///< pixels beside the icons of a cell, which otherwise has none
constexpr int narrowest_editor = 150; ///< pixels
constexpr int widest_column = 2000;   ///< pixels, of those that fit their contents

QColor hover_color(const QPalette& palette)
{
    QColor color = palette.color(QPalette::Highlight);
    color.setAlpha(38);
    return color;
}

// What is beyond this cannot show in `width`, and measuring a text of a million letters would take seconds.
QString head_of(const QString& text, int width)
{
    return text.left(std::max(0, width) + 64);
}

// Measuring a text costs as much as drawing it; one of few letters is known to fit without.
QString shortened(const QString& full, const QFontMetrics& metrics, int width)
{
    const QString text = head_of(full, width);
    const bool is_latin = std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 256; });
    const int widest_letter = is_latin ? metrics.horizontalAdvance(QLatin1Char('W')) : metrics.height() + 2;
    return text.size() * widest_letter <= width ? text : metrics.elidedText(text, Qt::ElideRight, width);
}

// Icons of the desktop's theme know no colours for selected rows, and what Qt makes of them can hardly be seen.
QPixmap tinted(const QIcon& icon, const QColor& color, qreal ratio)
{
    QPixmap pixmap = icon.pixmap(QSize(icon_size, icon_size), ratio);
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), color);
    return pixmap;
}

void paint_icon(QPainter& painter, const QIcon& icon, const QRect& place, bool enabled, bool selected,
                const QColor& selected_color)
{
    if (selected && enabled && !icon.name().isEmpty())
        painter.drawPixmap(place, tinted(icon, selected_color, painter.device()->devicePixelRatio()));
    else
        icon.paint(&painter, place, Qt::AlignCenter,
                   !enabled       ? QIcon::Disabled
                       : selected ? QIcon::Selected
                                  : QIcon::Normal);
}

} // namespace

ReportDelegate::ReportDelegate(CReportList* list) : QStyledItemDelegate(list), m_list(list) {}

QRect ReportDelegate::text_rect(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const bool icon_column = index.column() == 0 && m_list->has_icons();
    auto icons = int(m_list->cell_icons_at(index.row(), index.column()).size());
    if (cell_icon_rect(option.rect, 0, icons).isEmpty())
        icons = 0;
    return option.rect.adjusted(text_margin + (icon_column ? icon_size + 3 : 0), 0,
                                -text_margin - icons * cell_icon_step, 0);
}

QRect ReportDelegate::cell_icon_rect(const QRect& cell, int icon, int count)
{
    if (cell.width() < count * cell_icon_step + least_text)
        return {};
    return {cell.right() - 1 - (count - icon) * cell_icon_step, cell.center().y() - icon_size / 2 + 1, icon_size,
            icon_size};
}

void ReportDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool selected = option.state & QStyle::State_Selected;
    const bool active = option.state & QStyle::State_Active;
    const QPalette::ColorGroup group = !enabled ? QPalette::Disabled : active ? QPalette::Active : QPalette::Inactive;

    if (selected)
        painter->fillRect(option.rect, option.palette.brush(group, QPalette::Highlight));
    else if (index.row() == m_list->hovered_row() && enabled)
        painter->fillRect(option.rect, hover_color(option.palette));

    if (index.column() == 0) {
        const QIcon icon = m_list->row_icon(index.row());
        if (!icon.isNull()) {
            const QRect place(option.rect.left() + text_margin - 1, option.rect.center().y() - icon_size / 2 + 1,
                              icon_size, icon_size);
            paint_icon(*painter, icon, place, enabled, selected,
                       option.palette.color(group, QPalette::HighlightedText));
        }
    }

    const QString caption = m_list->item_caption(index.row(), index.column());
    const QRect place = text_rect(option, index);
    if (!caption.isEmpty() && place.width() > 0) {
        const int side = m_list->is_number_column(index.column()) ? Qt::AlignRight : Qt::AlignLeft;
        painter->setPen(option.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
        painter->setFont(option.font);
        painter->drawText(place, side | Qt::AlignVCenter | Qt::TextSingleLine,
                          shortened(caption, option.fontMetrics, place.width()));
    }

    paint_cell_icons(*painter, option, index);
    painter->save();
    m_list->draw_additional(*painter, option.rect, index.row(), index.column());
    painter->restore();
}

void ReportDelegate::paint_cell_icons(QPainter& painter, const QStyleOptionViewItem& option,
                                      const QModelIndex& index) const
{
    const auto icons = m_list->cell_icons_at(index.row(), index.column());
    const bool enabled = option.state & QStyle::State_Enabled;
    const bool selected = option.state & QStyle::State_Selected;
    const QPalette::ColorGroup group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    const bool has_room = !cell_icon_rect(option.rect, 0, int(icons.size())).isEmpty();
    for (std::size_t i = 0; i < icons.size() && has_room; ++i)
        paint_icon(painter, m_list->icon_of(icons[i]), cell_icon_rect(option.rect, int(i), int(icons.size())), enabled,
                   selected, option.palette.color(group, QPalette::HighlightedText));
}

QString ReportDelegate::tip_of_icon(const QPoint& place, const QModelIndex& index) const
{
    const auto icons = m_list->cell_icons_at(index.row(), index.column());
    for (std::size_t i = 0; i < icons.size(); ++i)
        if (m_list->cell_icon_rect(index.row(), index.column(), int(i)).contains(place))
            return icons[i].tip;
    return {};
}

QSize ReportDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const int margins = option.rect.width() - text_rect(option, index).width();
    const QString caption = m_list->item_caption(index.row(), index.column());
    return {option.fontMetrics.horizontalAdvance(head_of(caption, widest_column)) + margins + 1,
            option.fontMetrics.height() + 4};
}

QWidget* ReportDelegate::createEditor(QWidget* parent, const QStyleOptionViewItem&, const QModelIndex&) const
{
    auto* line = new QLineEdit(parent);
    line->setMaxLength(m_list->longest_edit());
    return line;
}

void ReportDelegate::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                                          const QModelIndex& index) const
{
    // Columns may be narrower than what one wants to see of a name that is typed.
    const QRect text = text_rect(option, index).adjusted(-text_margin, 0, text_margin, 0);
    const int room = m_list->viewport()->width();
    QRect place(text.topLeft(),
                QSize(std::min(std::max(text.width(), narrowest_editor), room),
                      std::max(text.height(), editor->sizeHint().height())));
    place.moveLeft(std::min(place.left(), room - place.width()));
    editor->setGeometry(place);
}

bool ReportDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                               const QModelIndex& index)
{
    if (event->type() != QEvent::ToolTip || !index.isValid())
        return QStyledItemDelegate::helpEvent(event, view, option, index);
    if (const QString tip = tip_of_icon(event->pos(), index); !tip.isEmpty()) {
        QToolTip::showText(event->globalPos(), plain_tip(tip), view->viewport(), option.rect);
        return true;
    }
    const QString caption = m_list->item_caption(index.row(), index.column());
    const int width = text_rect(option, index).width();
    const bool fits = option.fontMetrics.horizontalAdvance(head_of(caption, width)) <= width;
    QToolTip::showText(event->globalPos(), fits ? QString() : plain_tip(caption), view->viewport(), option.rect);
    return true;
}

} // namespace tarn
