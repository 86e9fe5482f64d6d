#pragma once

#include "gui_core/gui_core.h"

#include <QWidget>

/// The texts of a look as the interface writes them, in both languages and in every state, on a ground against which
/// it stands out.
class CFontSample : public QWidget {
    Q_OBJECT

public:
    explicit CFontSample(QWidget* parent = nullptr);

    /// `owner` is one with texts, see tarn::look_owner(); `core` may be null.
    void show_owner(const CGuiCore* core, int owner);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const CGuiCore* m_core = nullptr;
    int m_owner = -1;
};
