#pragma once

#include <QScrollArea>

/// Lets what stands in a panel scroll up and down where there is no room for it: on a low screen the window must not grow
/// beyond it. As wide as its content needs.
class CScrolledPanel : public QScrollArea {
    Q_OBJECT

public:
    explicit CScrolledPanel(QWidget* content, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int bar_width() const; ///< pixels that the scroll bar takes now
};
