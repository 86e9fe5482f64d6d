#pragma once

#include <QPointF>
#include <QRectF>

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiCore;

namespace tarn {

/// Where the selected objects stood when it was made, and what moves and resizes them from there. Controls that are
/// locked or hidden are not among them.
class SelectionPlaces {
public:
    explicit SelectionPlaces(const CGuiCore& core);

    /// The frame around all objects, pixels of the screen.
    QRectF frame() const;
    bool empty() const { return m_objects.empty(); }
    /// Moves the objects from their first places by `offset`, whole pixels of the screen.
    void move_by(QPointF offset);
    /// Gives the objects the place in `frame` that they had in `from`, both pixels of the screen.
    void fit(const QRectF& from, const QRectF& frame);

private:
    struct Start {
        CDXUTDialog* dialog;
        CDXUTControl* control;
        QRectF rect; ///< of a control in its client area, of a dialog on the screen
    };

    void fit_control(const Start& start, const QRectF& from, const QRectF& frame);

    std::vector<Start> m_objects;
};

} // namespace tarn
