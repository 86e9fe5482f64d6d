#pragma once

#include "engine/base_world.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class CBasePlugUi;
class CScenePlug;

/// The running program apart from its windows: the world, the plug-ins and the file that is open.
class Studio : public QObject {
    Q_OBJECT

public:
    explicit Studio(QObject* parent = nullptr);
    ~Studio() override;

    /// Loads the plug-ins of a folder; answers a message for each that could not be loaded.
    QStringList load_plug_ins(const QString& folder);
    /// Tells the plug-ins, whose windows exist, that the world runs.
    void start_world();
    /// Ends the plug-ins; their windows are gone already.
    void stop();

    CBaseWorld& world() { return m_world; }
    CScenePlug* scene() const { return m_scene; } ///< null without a scene plug-in
    const std::vector<CBasePlugUi*>& ui_plug_ins() const { return m_ui_plug_ins; }

    /// The file that is open; empty while the scene was never saved.
    const QString& file_name() const { return m_file_name; }
    bool is_changed() const;

    // Each answers a message for the user, or an empty text when it went well.
    QString new_file();
    QString open_file(const QString& path);
    QString save_file(const QString& path, bool replace_read_only = false);

    /// True when there was a step.
    bool undo();
    bool redo();
    /// Undoes or redoes until the first `count` steps of the journal are done.
    bool go_to_step(int count);
    void set_playing(bool on);
    bool is_playing() const;

    /// The files opened or saved last, newest first.
    QStringList recent_files() const;

Q_SIGNALS:
    /// File name, changed mark, undo names or the preview changed.
    void document_changed();

private:
    void after_undo();
    void tick();
    void remember_file(const QString& path);

    CBaseWorld m_world;
    CScenePlug* m_scene = nullptr;
    std::vector<CBasePlugUi*> m_ui_plug_ins;
    QString m_file_name;
    QElapsedTimer m_clock; ///< since the scene began to run
    QTimer m_ticks;
};
