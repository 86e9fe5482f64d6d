#pragma once

#include <QStyledItemDelegate>

class CReportList;

namespace tarn {

/// Draws one cell of a CReportList. The row under the mouse is lit as a whole, and a caption that does not fit is
/// shown in full as a tooltip.
class ReportDelegate final : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit ReportDelegate(CReportList* list);

    /// Where the icon of that many stands at the right end of a cell; empty in a cell that is too narrow for them.
    static QRect cell_icon_rect(const QRect& cell, int icon, int count);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    void paint_cell_icons(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;
    QString tip_of_icon(const QPoint& place, const QModelIndex& index) const;
    QRect text_rect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    CReportList* m_list;
};

} // namespace tarn
