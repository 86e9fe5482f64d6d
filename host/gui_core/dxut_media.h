#pragma once

#include "dxut_control.h"

/// A Flash movie. Movies are not played: a card shows what the movie's header says, or why it cannot be read.
class CDXUTFlash : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    /// The package entry that holds the local movie `name`.
    static QString movie_entry(const QString& name) { return QStringLiteral("movies/") + name; }
    /// The lines of the card.
    QString description() const;
};

/// A view into the world through another camera; a frame until there is one.
class CDXUTPictureInPicture : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;
};

/// A navigation map: a base, the map's picture and a surface over it, with two buttons that zoom the picture.
class CDXUTMap : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    enum class Zoom { None, In, Out };

    /// Where a button is, pixels from the map's corner.
    QRectF button_area(Zoom zoom) const;
    tarn::VisualState button_state(Zoom zoom) const;
    /// How many times as large as the map its picture is drawn about the map's middle; the author's until the user zooms.
    double scale() const;

    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override;
    bool wheel_turned(double steps) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    void reset_run_state() override;

private:
    /// Zooms in by so many steps; negative ones zoom out.
    void zoom_by(double steps);

    double m_zoom = 1; ///< what the user made of the author's scale
    Zoom m_pressed = Zoom::None;
};
