#pragma once

#include "core/status.h"
#include "engine/base_world.h"
#include "store/open_file.h"
#include "store/recovery_file.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

class Autosave;
class CBasePlugUi;
class CScenePlug;

/// The running program apart from its windows: the world, the plug-ins and the file that is open.
class Studio : public QObject {
    Q_OBJECT

public:
    explicit Studio(QObject* parent = nullptr);
    ~Studio() override;

    enum class Windows { All, None };
    /// Loads the plug-ins of a folder, those that bring windows or not; answers a message for each that could not be loaded.
    QStringList load_plug_ins(const QString& folder, Windows windows = Windows::All);
    /// Tells the plug-ins, whose windows exist, that the world runs.
    void start_world();
    /// Ends the plug-ins; their windows are gone already.
    void stop();

    CBaseWorld& world() { return m_world; }
    CScenePlug* scene() const { return m_scene; } ///< null without a scene plug-in
    const std::vector<CBasePlugUi*>& ui_plug_ins() const { return m_ui_plug_ins; }

    /// The file that is open; empty while the scene was never saved.
    const QString& file_name() const { return m_file.path(); }
    bool is_changed() const;
    /// Whether the file was opened as a copy: it is to be saved elsewhere.
    bool is_copy() const { return m_file.is_copy(); }
    bool was_changed_outside(const QString& path) const { return m_file.was_changed_outside(path); }
    /// Another program that has the file open; none when the program keeps no data.
    std::optional<tarn::FileHolder> other_holder(const QString& path) const { return m_file.other_holder(path); }

    tarn::Status new_file();
    tarn::Status open_file(const QString& path, bool as_copy = false);
    tarn::Status save_file(const QString& path, bool replace_read_only = false);

    /// From now on the program keeps what is not saved in that folder, and tells other programs there what it has open.
    /// Comes before a file is opened.
    void keep_data(const QString& folder);
    /// What programs that are gone did not save, newest first.
    std::vector<std::unique_ptr<tarn::RecoveryFile>> left_behind() const;
    /// Opens what was left behind: a changed scene of its file, which is not touched. `file` stays, for the next start, on
    /// failure.
    tarn::Status recover(std::unique_ptr<tarn::RecoveryFile> file);
    /// Keeps what is not saved now, because the program is ended from outside.
    void keep_unsaved();

    /// True when there was a step.
    bool undo();
    bool redo();
    /// Undoes or redoes until the first `count` steps of the journal are done.
    bool go_to_step(int count);
    void set_playing(bool on);
    bool is_playing() const;
    /// How long the preview has run, seconds; 0 without one.
    double played_seconds() const { return is_playing() ? double(m_clock.nsecsElapsed()) / 1e9 : 0; }

    /// The files opened or saved last, newest first.
    QStringList recent_files() const;

Q_SIGNALS:
    /// File name, changed mark, undo names or the preview changed.
    void document_changed();
    /// What is not saved cannot be kept.
    void autosave_failed(const QString& message);

private:
    void follow_journal();
    void file_changed();
    void after_undo();
    void tick();
    void remember_file(const QString& path);

    CBaseWorld m_world;
    CScenePlug* m_scene = nullptr;
    std::vector<CBasePlugUi*> m_ui_plug_ins;
    tarn::OpenFile m_file;
    QString m_data_folder;                ///< null: nothing is kept
    std::unique_ptr<Autosave> m_autosave; ///< null when nothing is kept
    QElapsedTimer m_clock;                ///< since the scene began to run
    QTimer m_ticks;
};
