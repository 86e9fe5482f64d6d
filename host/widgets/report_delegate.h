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

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

private:
    QRect text_rect(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    CReportList* m_list;
};

} // namespace tarn
