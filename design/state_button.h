#pragma once

#include "gui_core/gui_core.h"

#include <QAbstractButton>

#include <vector>

/// Shows parts of the interface's look in one state, as they are drawn, with the state's name below; a click chooses it.
class CStateButton : public QAbstractButton {
    Q_OBJECT

public:
    explicit CStateButton(QWidget* parent = nullptr);

    /// The parts lie over each other, the last on top. `core` may be null.
    void show_parts(const CGuiCore* core, std::vector<tarn::LookPart> parts);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const CGuiCore* m_core = nullptr;
    std::vector<tarn::LookPart> m_parts;
};
