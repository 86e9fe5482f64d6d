#pragma once

#include <QDialog>

class CColorSwatch;

/// The modal dialog in which a colour with alpha is chosen, by numbers or with the system's colour chooser.
class CPopDlgColor : public QDialog {
    Q_OBJECT

public:
    /// `argb` is the colour to begin with, 0xAARRGGBB.
    explicit CPopDlgColor(quint32 argb);

    /// Runs the dialog over `parent`, which may be null. 1 is OK; after any other result the caller keeps its colour.
    int do_modal(QWidget* parent);
    /// 0xAARRGGBB; means something only after OK.
    quint32 color() const { return m_argb; }

    void reject() override;

private:
    class Page;

    void show_numbers();
    void recompute();
    void on_pick();

    quint32 m_argb;
    Page* m_page;
    CColorSwatch* m_swatch;
};
