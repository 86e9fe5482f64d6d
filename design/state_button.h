#pragma once

#include "gui_core/gui_core.h"

#include <QAbstractButton>

/// Shows a part of the interface's look in one state, as it is drawn, with the state's name below; a click chooses it.
class CStateButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit CStateButton(QWidget* parent = nullptr);

    /// `core` may be null.
    void show_part(const CGuiCore* core, const tarn::LookPart& part);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const CGuiCore* m_core = nullptr;
    tarn::LookPart m_part;
};
