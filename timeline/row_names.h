#pragma once

#include "timeline_rows.h"

#include <QWidget>

class CStaticTimer;

namespace tarn {

/// The names of a timeline's rows, in a column beside it: folded and locked by clicks, and where a row's menu is.
class RowNames : public QWidget {
    Q_OBJECT

public:
    explicit RowNames(QWidget* parent = nullptr);

    /// The timeline stands in the same window and outlives this.
    void set_timeline(CStaticTimer& timeline);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool event(QEvent* event) override;

private:
    /// What is added to a height here for the timeline's.
    int offset() const;
    std::optional<RowNameHit> name_at(const QPoint& place) const;

    CStaticTimer* m_timeline = nullptr;
};

} // namespace tarn
