#pragma once

#include "engine/base_world.h"

#include <QObject>
#include <QTimer>

#include <vector>

class CView3D;
class QAction;
class QKeyEvent;
class QMenu;
class Studio;

/// The scene's commands in the Edit menu. Their keys work in the whole window, but in fields of text and lists they
/// stay the fields' own.
class EditMenu : public QObject, public tarn::UiListener {
    Q_OBJECT

public:
    /// Appends to `menu`; does nothing without a scene.
    EditMenu(Studio& studio, CView3D& view, QMenu& menu);
    ~EditMenu() override;

    void update_ui(int) override { m_pending.start(); }
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    void add_commands(QMenu& menu);
    void refresh();
    void run(int command);
    bool creates_armed(const QObject* target, const QKeyEvent& event) const;
    bool cancels_creation(const QObject* target, const QKeyEvent& event) const;

    Studio& m_studio;
    CView3D& m_view;
    std::vector<QAction*> m_actions; ///< in the order of the scene's commands
    QTimer m_pending;                ///< one refresh for any number of changes
};
