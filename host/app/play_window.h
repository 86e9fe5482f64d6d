#pragma once

#include "core/model_changes.h"
#include "script_messages.h"

#include <QWidget>

#include <memory>

class CView3D;
class Studio;

namespace tarn {
class InputRecorder;
}

/// The interface as its players see it: a view and nothing else, which runs. F11 changes between the window and the full
/// screen. While input is recorded, F7 expects what the mouse is over.
class PlayWindow : public QWidget, private tarn::ModelListener {
    Q_OBJECT

public:
    /// The studio has a scene. `size` is that of the view, pixels; empty takes the scene's own.
    PlayWindow(Studio& studio, QSize size);
    /// Before it is shown: from then on what is done is recorded.
    void record_input() { m_records = true; }
    /// What was recorded, which ends there; null when nothing was.
    std::unique_ptr<tarn::InputRecorder> take_recorded();
    ~PlayWindow() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void model_changed(const tarn::ModelChange&) override;
    /// `expected` is what was added to the recording just now; null for nothing.
    void show_title(const QString& expected);

    Studio& m_studio;
    ScriptMessages m_messages;
    CView3D* m_view = nullptr;
    bool m_records = false;
    std::unique_ptr<tarn::InputRecorder> m_recorder; ///< while input is recorded
};
