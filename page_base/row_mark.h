#pragma once

#include <QPolygon>
#include <QString>
#include <QWidget>

#include <functional>

namespace tarn {

/// What stands beside a control of a form and tells of its value: a bar at the left edge where it differs from the
/// default, a diamond in the corner where a timebar drives it, a hollow one where the author changed that and did not
/// record it, a badge there where the selected objects disagree although the control shows one of their values. It lies over
/// the gap between the controls, so no form makes room for it.
class RowMark : public QWidget {
    Q_OBJECT

public:
    /// `page` holds the control, not always at once.
    RowMark(QWidget& control, QWidget& page);

    enum class Drive { None, Keys, Unrecorded };
    struct State {
        bool changed = false;
        bool mixed = false;
        Drive drive = Drive::None;
        QString driver{}; ///< the name of the timebar
        bool operator==(const State&) const = default;
    };
    void show_state(const State& state);
    bool tells_changed() const { return m_state.changed; }
    bool tells_mixed() const { return m_state.mixed; }
    Drive tells_drive() const { return m_state.drive; }

Q_SIGNALS:
    void clicked();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void follow_control();
    QRect bar() const;
    QPolygon diamond() const;

    QWidget& m_control;
    State m_state;
};

/// What a control's own menu and its keys for undo become when it shows an attribute: the menu offers the default beside
/// what it has of the clipboard, and the keys are the program's.
class RowInput : public QObject {
    Q_OBJECT

public:
    explicit RowInput(QWidget& control);

    /// Whether the control has the keys for undo itself now.
    std::function<bool()> keeps_undo;
    /// Whether the menu can give the default back; null: the menu does not speak of it.
    std::function<bool()> can_reset;
    std::function<void()> reset;
    /// Tells why the value is what it is; null: the menu does not offer it.
    std::function<void()> explain;

    /// Opens the menu and does what was chosen.
    void open_menu();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool takes_key(QEvent& event) const;

    QWidget& m_control;
};

} // namespace tarn
