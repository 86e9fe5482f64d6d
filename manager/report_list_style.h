#pragma once

#include "widgets/report_list.h"

class CGuiStyle;

/// The styles that an author can choose from, with icons that tell where they come from.
class CReportListStyle : public CReportList {
    Q_OBJECT

public:
    explicit CReportListStyle(QWidget* parent = nullptr);

    CGuiStyle* style_at(int row) const; ///< null when there is no such row
    /// The one that is in force is marked; null for none.
    void set_worn(const CGuiStyle* style);

    QString get_item_caption(void* item, int column) const override;
    int get_item_icon(void* item) const override;
    void draw_additional(QPainter& painter, const QRect& cell, int row, int column) const override;

protected:
    /// One beside all rows is told too.
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    const CGuiStyle* m_worn = nullptr; ///< only compared
};
