#pragma once

#include "dxut_control.h"
#include "gui_event.h"
#include "movie_link.h"
#include "world_link.h"

#include <QMap>

#include <vector>

/// A Flash movie. Where it is not played, a card shows what its header says, or why it cannot be read.
class CDXUTFlash : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    /// The package entry that holds the local movie `name`.
    static QString movie_entry(const QString& name) { return QStringLiteral("movies/") + name; }
    /// The lines of the card.
    QString description() const;
    /// The file of a local movie; null for others, and for one that is not in the package.
    QByteArray file() const;

    // What the user does goes to the movie as far as the control's flags let it.
    bool is_interactive() const override;
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    void mouse_released(QPointF inside) override;
    void mouse_over(QPointF inside) override;
    void mouse_left() override;
    bool wheel_turned(double steps) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    bool text_typed(const QString& text, const QString& preedit) override;
    void key_released(int key) override;
    /// Lets all keys go: another control has the keyboard.
    void release_keys();
    QRectF caret_rect() const override;
    void reset_run_state() override;

private:
    QString header_lines() const;
    bool is_played() const;
    void tell_mouse(tarn::MovieLink::Mouse what, QPointF inside);

    struct HeldKey {
        QString key;
        QString code;
    };
    void press_key(int key, const HeldKey& names);

    bool m_under_mouse = false;
    int m_last_key = 0;             ///< that went down; 0: what is typed comes from an input method
    QMap<int, HeldKey> m_held_keys; ///< by Qt's numbers
};

/// A view into the world through another camera; a frame where there is none.
class CDXUTPictureInPicture : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;
};

/// A navigation map: a base, a picture of the world from above and a surface over it, with two buttons that zoom. Without
/// an author's picture the world itself is shown.
class CDXUTMap : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    enum class Zoom { None, In, Out };

    /// Where a button is, pixels from the map's corner.
    QRectF button_area(Zoom zoom) const;
    tarn::VisualState button_state(Zoom zoom) const;
    /// How many times as large as the map its picture is drawn; the author's until the user zooms.
    double scale() const;
    /// The part of the world that the whole map shows, metres seen from above; y points to the top, so `y()` is the lower
    /// edge. Everything is as far from the middle as it is from the range's, or from where one looks.
    QRectF shown_range() const;
    /// The part that the author's picture shows.
    QRectF range() const;
    /// From metres to pixels of a map of the size `size`.
    QPointF on_map(QPointF metres, QSizeF size) const;
    /// What the map shows of the world's spots.
    std::vector<tarn::MapSpot> shown_spots() const;
    /// The spot that came, went or was clicked last, for the functions of these events.
    const QString& last_spot() const { return m_last_spot; }
    /// Raises the events of spots that came into what the map shows, or went.
    void follow_spots();

    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    bool wheel_turned(double steps) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    void reset_run_state() override;

private:
    /// Zooms in by so many steps; negative ones zoom out.
    void zoom_by(double steps);
    /// With the eagle's eye the views look where one presses.
    bool look_at(QPointF inside);
    void tell_spot(GuiEventType event, const QString& name);

    double m_zoom = 1; ///< what the user made of the author's scale
    Zoom m_pressed = Zoom::None;
    bool m_looks = false;                ///< what is pressed moves the eagle's eye
    QMap<quint32, QString> m_seen_spots; ///< names of those that are shown, by id
    QString m_last_spot;
};
