#pragma once

#include <QImage>
#include <QMargins>
#include <QPointF>
#include <QWidget>

#include <optional>

/// An element's picture, magnified, with its edges as lines that can be dragged. The wheel zooms, dragging beside the
/// lines moves the picture.
class CElementPicture : public QWidget {
    Q_OBJECT

public:
    explicit CElementPicture(QWidget* parent = nullptr);

    /// Straight alpha; a null picture shows nothing. Edges are pixels of the picture. `fixed` edges cannot be dragged.
    void show_picture(const QImage& picture, const QMargins& edges, bool fixed);
    const QImage& picture() const { return m_picture; }
    const QMargins& edges() const { return m_edges; }
    double zoom() const { return m_zoom; } ///< pixels of the widget for one of the picture

    /// Where the line of an edge is, pixels of the widget; `edge` 0 left, 1 top, 2 right, 3 bottom.
    double line_of(int edge) const;

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user drags a line; the edges fit into the picture.
    void edges_dragged(const QMargins& edges);
    /// He let it go.
    void drag_ended();

protected:
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    QPointF corner() const;
    int edge_at(QPointF place) const; ///< -1 beside all lines
    void fit();
    void drag_edge(QPointF place);

    QImage m_picture;
    QMargins m_edges;
    bool m_is_fixed = false;
    double m_zoom = 1;
    bool m_was_zoomed = false; ///< by the user
    QPointF m_offset;          ///< of the picture's middle from the widget's
    int m_edge = -1;           ///< that is dragged
    std::optional<QPointF> m_moved_from;
};
