#pragma once

#include <QObject>
#include <QSize>

#include <optional>

class CView3D;
class QAction;
class QActionGroup;
class QMenu;

/// View > Screen Size: the interface is laid out as on another device. Nothing of it is saved.
class ScreenSizeMenu : public QObject {
    Q_OBJECT

public:
    static constexpr int largest = 16384; ///< pixels; of either side

    ScreenSizeMenu(CView3D& view, QMenu& menu);

    /// "1280x720", also with other signs between the numbers; none for what is no size of a screen.
    static std::optional<QSize> parsed(const QString& text);

private:
    QAction* add_choice(QMenu& menu, const QString& text, QSize size);
    /// An empty size is the view's own.
    void choose(QSize size);
    void ask();

    CView3D& m_view;
    QActionGroup* m_choices;
    QAction* m_other;
};
