#pragma once

#include "dxut_static.h"

/// A button that is a picture in each of its states.
class CDXUTButtonST : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    /// `slot` 0 normal, 1 mouse over, 2 pressed; empty for another one.
    QString image(int slot) const;

    /// The bubble with the caption, in annotation mode while the mouse is over the button.
    QRectF raised_area() const override;
    static constexpr double bubble_margin = 10; ///< pixels beside its text
    bool is_interactive() const override { return true; }
    void clicked() override { raise(EVENT_BUTTON_CLICKED); }
};
