#pragma once

#include <QPushButton>

/// A compact button with an icon from the program's icon table and, optionally, a colour of its own for its text.
/// A text that does not fit is cut short and shown in full as the tooltip.
class CButtonST : public QPushButton {
    Q_OBJECT

public:
    /// The only colour index that SetColor() knows.
    static constexpr int normal_text_color = 3;

    explicit CButtonST(QWidget* parent = nullptr);

    /// 0 or less takes the icon away.
    void SetIcon(int icon_number);
    void SetTooltipText(const QString& text);
    /// Sets the text's colour as 0x00BBGGRR; 0 is the theme's text colour. Indexes other than 3 do nothing. A colour
    /// that could hardly be read on the button is drawn lighter or darker.
    void SetColor(int index, quint32 colorref, bool repaint = true);
    /// The text's colour as 0x00RRGGBB as it was set; 0 for the theme's.
    quint32 text_color() const { return m_text_color; }

    /// Shows the button as pressed in, without clicked(). On a button that is not checkable this is a mere display:
    /// clicks do not toggle it.
    void SetCheck(bool checked);
    bool GetCheck() const { return isChecked(); }

    /// What the tooltip says: the full text when it is cut short, then the tooltip's own text.
    QString shown_tooltip() const;
    /// Whether the text does not fit the button's width.
    bool is_elided() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void nextCheckState() override;

private:
    struct Parts {
        QRect icon;
        QRect text;
    };

    Parts parts() const;
    QString plain_text() const;
    int contents_width() const;
    void paint_frame(QPainter& painter) const;
    void paint_label(QPainter& painter) const;

    int m_icon_number = 0;
    quint32 m_text_color = 0;
    bool m_check_is_display = false;
};
