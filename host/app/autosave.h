#pragma once

#include "core/status.h"
#include "store/recovery_file.h"

#include <QObject>
#include <QTimer>

#include <chrono>
#include <future>
#include <memory>

class CScenePlug;

namespace tarn {
class SceneCopy;
}

/// Keeps what is not saved in a recovery file while the author goes on: another thread writes a copy of the scene.
class Autosave : public QObject {
    Q_OBJECT

public:
    /// What is lost at most when the program is killed: so many edits, or those of so long, where writing takes longer.
    static constexpr int most_edits = 50;
    static constexpr std::chrono::minutes longest{2};

    Autosave(CScenePlug& scene, std::unique_ptr<tarn::RecoveryFile> file);
    /// What is not saved is given up: the program ends as it should.
    ~Autosave() override;

    /// What the scene is from now on; its unsaved changes are given up.
    void set_file(const QString& file, const tarn::FileStamp& stamp);
    /// Goes on with the file from which the scene was recovered.
    void adopt(std::unique_ptr<tarn::RecoveryFile> file, const tarn::RecoveryInfo& info);
    /// The scene was changed, or undone.
    void note_edit();
    /// Everything is saved, or given up.
    void forget();
    /// Writes what is not saved and waits for it.
    tarn::Status save_now();

Q_SIGNALS:
    /// What was not saved cannot be kept. Comes once, until it is possible again.
    void failed(const QString& message);

private:
    void start();
    void finish(int job);
    tarn::Status wait();

    CScenePlug& m_scene;
    std::unique_ptr<tarn::RecoveryFile> m_file;
    tarn::RecoveryInfo m_info;
    QTimer m_longest;
    std::unique_ptr<tarn::SceneCopy> m_copy; ///< that is being written
    std::future<tarn::Status> m_writing;     ///< valid while it is
    int m_job = 0;                           ///< number of that
    int m_edits = 0;                         ///< ever
    int m_copied_at = 0;                     ///< m_edits when the last copy was taken
    int m_kept_at = 0;                       ///< m_edits of what the recovery file has
    bool m_fails = false;
};
