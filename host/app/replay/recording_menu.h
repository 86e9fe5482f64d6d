#pragma once

#include "core/status.h"

#include <QObject>

#include <memory>

class CView3D;
class QAction;
class QMainWindow;
class QMenu;
class Studio;

namespace tarn {

class InputRecorder;

/// The commands that record what is done in a preview, and keep it in a file when the preview ends.
class RecordingMenu : public QObject {
    Q_OBJECT

public:
    /// Appends to `menu`.
    RecordingMenu(Studio& studio, CView3D& view, QMainWindow& window, QMenu& menu);
    ~RecordingMenu() override;

    /// What is needed while the interface has the keyboard.
    QList<QAction*> actions() const { return {m_record, m_expect}; }
    /// Ends what is being recorded and asks at once where to keep it.
    void finish();

private:
    void toggle();
    void expect();
    void follow_preview();
    void save();

    Studio& m_studio;
    CView3D& m_view;
    QMainWindow& m_window;
    QAction* m_record;
    QAction* m_expect;
    std::unique_ptr<InputRecorder> m_recorder; ///< while input is recorded
    std::unique_ptr<InputRecorder> m_recorded; ///< until it is kept
};

/// Writes what was recorded into a file.
Status save_recording(InputRecorder& recorder, const QString& path);

} // namespace tarn
