#pragma once

#include <QObject>
#include <QRect>
#include <QSize>

class QLabel;
class QWidget;

namespace tarn {

/// What a view tells of itself above its picture: a badge in the corner with the zoom and the size of the screen, and a
/// coloured frame while a preview runs. The mouse goes through both.
class ViewMarks : public QObject {
public:
    explicit ViewMarks(QWidget& view);

    /// `shown` is the part of the view that shows the screen.
    void show(const QRect& shown, double zoom, QSize screen, bool preview);

private:
    QLabel* m_badge;
    QWidget* m_frame;
};

} // namespace tarn
