#pragma once

#include "snapping.h"

#include <QPointF>

class CDXUTDialog;
class CGuiCore;
class QPainter;

namespace tarn {

class AidsLayer;

/// Snapping for the length of one drag: what there is to snap to is collected at its beginning.
class SnapSession {
public:
    enum class Of { Selection, NewObject };

    /// To the controls of `home` that are shown, and to its client area; null `home`: to the dialogs, in the same way,
    /// and to the screen. What is selected does not snap to itself.
    SnapSession(const CGuiCore& core, const AidsLayer& aids, const CDXUTDialog* home, Of what);
    static SnapSession for_selection(const CGuiCore& core, const AidsLayer& aids);

    /// How far a frame has to move for one of these places of it to meet something, each axis on its own; zero where
    /// nothing is near, while Ctrl is held, and while snapping is switched off.
    QPointF pull(std::span<const double> x, std::span<const double> y, Qt::KeyboardModifiers modifiers);
    QPointF pull_frame(const QRectF& frame, Qt::KeyboardModifiers modifiers);
    QPointF pull_point(QPointF point, Qt::KeyboardModifiers modifiers);

    /// What `frame` is aligned with, and how far it is from its neighbours, unless snapping was suspended last.
    void paint(QPainter& painter, const QRectF& frame) const;

private:
    void collect(const CDXUTDialog* home, Of what);
    void add_places();
    void paint_alignments(QPainter& painter, const QRectF& frame) const;

    const CGuiCore& m_core;
    const AidsLayer& m_aids;
    SnapAxis m_x;
    SnapAxis m_y;
    std::vector<QRectF> m_others;
    QRectF m_home;
    QPointF m_unit{1, 1}; ///< pixels of the screen in one of the home's
    bool m_active = false;
};

} // namespace tarn
