#pragma once

#include "core/model_changes.h"
#include "gui_core/movie_link.h"
#include "movies/movie_downloads.h"
#include "movies/movie_player.h"

#include <QTimer>

#include <deque>
#include <functional>
#include <map>
#include <vector>

class CBaseWorld;
class CDXUTControl;
class CGuiCore;

namespace tarn {

class AddressGate;
class FontLibrary;

/// The movies of a scene: which of them are to be seen, what happens to them, and what they call.
class SceneMovies : public MovieLink, private ModelListener {
public:
    SceneMovies(CBaseWorld& world, CGuiCore& core, FontLibrary& fonts);
    ~SceneMovies() override;

    /// The views are to draw.
    std::function<void()> on_redraw;
    /// A movie of the running interface called `name` with those arguments. Comes from the event loop.
    std::function<void(CDXUTFlash&, const QString& name, const std::vector<Value>& given)> on_call;

    /// Whether the interface runs: movies play from their beginning, those of the network are loaded as far as the world's
    /// gate lets them. Otherwise movies show their first frames, those of the network nothing.
    void play(bool on);
    /// The views draw: movies that came to be seen get turns, hidden ones get none any more.
    void update();
    /// Whether the first frame of a movie that was drawn is still to come.
    bool awaits_picture() const;

    // What scripts ask of a movie. False when it does not play.
    bool call(const CDXUTFlash& control, const QString& name, const std::vector<Value>& given);
    bool run(const CDXUTFlash& control, bool on);
    bool go_to_frame(const CDXUTFlash& control, int frame);

    // MovieLink
    QImage picture(const CDXUTFlash& control, QSize pixels) override;
    QString failure(const CDXUTFlash& control) const override;
    bool is_played(const CDXUTFlash& control) const override;
    void mouse(const CDXUTFlash& control, Mouse what, QPointF inside) override;
    void wheel(const CDXUTFlash& control, double steps) override;
    void key(const CDXUTFlash& control, bool down, const QString& key, const QString& code) override;

private:
    struct Shown {
        MoviePlayer::Id movie = 0;
        QSize asked; ///< the largest picture that was asked for since the views drew last
        bool seen = false;
    };
    /// A control whose movie is at an address.
    struct Remote {
        QString source;  ///< as it is written there
        QString address; ///< as it is loaded; empty when it cannot be
        QString refusal; ///< why not
        QString told;    ///< what its card said last
    };
    struct Call {
        quint32 control;
        QString name;
        std::vector<Value> given;
    };

    void model_changed(const ModelChange& change) override;
    void follow_all();
    void follow(const CDXUTFlash& control);
    void note_remote(const CDXUTFlash& control);
    void load_remote();
    bool is_allowed(const QString& address) const;
    QByteArray file_of(const CDXUTFlash& control) const;
    MovieSetup setup_of(const CDXUTFlash& control) const;
    AddressGate* gate() const;
    QString failure_of_remote(const CDXUTFlash& control) const;
    void see(const CDXUTFlash& control, Shown& shown);
    bool is_seen(const CDXUTFlash& control) const;
    const Shown* find(const CDXUTFlash& control) const;
    MovieDeeds* deeds(const CDXUTFlash& control);
    CDXUTFlash* control_of(MoviePlayer::Id movie) const;
    void take_sizes();
    void deliver();
    void hand_in_fonts();

    CBaseWorld& m_world;
    CGuiCore& m_core;
    FontLibrary& m_fonts;
    MoviePlayer m_player;
    std::map<quint32, Shown> m_shown; ///< by the ids of their controls
    MovieDownloads m_downloads;
    std::map<quint32, Remote> m_remote; ///< likewise
    int m_gate_revision = 0;            ///< that was followed
    std::deque<Call> m_calls;
    QTimer m_sizes;
    QTimer m_delivery;
    bool m_playing = false;
    bool m_stale = true;
};

} // namespace tarn
