#pragma once

#include <QDockWidget>

/// A docked bar that remembers how wide it wants to be at a side of the window and how tall at the top or bottom.
class CSizingControlBar : public QDockWidget {
    Q_OBJECT

public:
    explicit CSizingControlBar(const QString& title, QWidget* parent = nullptr);

    /// The preferred width at the left or right and the preferred height at the top or bottom, in device-independent
    /// pixels; 0 or less leaves that one to the contents. A docked bar takes the size on at once, a hidden one when it
    /// is shown.
    void set_stored_sizes(int horz, int vert);
    /// The window has given the bar another size, which it keeps when it is shown.
    void keep_size() { m_has_new_size = false; }
    /// Goes back to the stored sizes.
    void take_size_back();
    /// Shows the bar, in front of those that share its place, or hides it.
    void show_bar(bool show);

    QSize sizeHint() const override;

Q_SIGNALS:
    void resized_to(QSize size);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    Qt::DockWidgetArea area() const;
    void take_stored_size();

    QSize m_stored{0, 0};
    bool m_has_new_size = false;
};
