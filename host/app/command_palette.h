#pragma once

#include <QAbstractButton>
#include <QDialog>
#include <QIcon>
#include <QKeySequence>
#include <QList>
#include <QPointer>
#include <QString>

#include <vector>

class QAction;
class QLabel;
class QLineEdit;
class QMainWindow;
class QTreeWidget;
class QWidget;

namespace tarn {

/// An action of a window's menus, or a button that is seen in it.
struct NamedAction {
    QString path; ///< what the author chooses: "View > Theme > Dark"
    QAction* action = nullptr;
    QPointer<QAbstractButton> button{}; ///< where there is no action
};

/// All that the menu bar of `window` has, in its order.
std::vector<NamedAction> actions_in_menus(const QWidget& window);
/// The buttons of its panels and bars that are seen.
std::vector<NamedAction> buttons_in_view(const QMainWindow& window);
void run(const NamedAction& action);

// How a list shows an action.

/// "Ctrl+C, Ctrl+Ins"
QString text_of_keys(const QList<QKeySequence>& keys);
/// Clear for an action without an icon, so that all names begin at the same place.
QIcon row_icon(const QIcon& icon);

/// A list of actions that is narrowed by typing parts of their names; those that rest now are dim. Accepted, it has a chosen
/// one.
class CommandPalette : public QDialog {
    Q_OBJECT

public:
    CommandPalette(QWidget* parent, const std::vector<NamedAction>& actions);

    const NamedAction* chosen() const; ///< null when the filter leaves none
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void narrow(const QString& text);

    std::vector<NamedAction> m_actions;
    QLineEdit* m_filter;
    QTreeWidget* m_list;
    QLabel* m_none; ///< says that no name fits
};

} // namespace tarn
