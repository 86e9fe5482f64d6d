#pragma once

#include "core/model_changes.h"
#include "script_messages.h"

#include <QWidget>

class CView3D;
class Studio;

/// The interface as its players see it: a view and nothing else, which runs. F11 changes between the window and the full
/// screen.
class PlayWindow : public QWidget, private tarn::ModelListener {
    Q_OBJECT

public:
    /// The studio has a scene. `size` is that of the view, pixels; empty takes the scene's own.
    PlayWindow(Studio& studio, QSize size);
    ~PlayWindow() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void model_changed(const tarn::ModelChange&) override;

    Studio& m_studio;
    ScriptMessages m_messages;
    CView3D* m_view = nullptr;
};
