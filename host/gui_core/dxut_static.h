#pragma once

#include "dxut_control.h"

/// The static text; the base of the types that show a text.
class CDXUTStatic : public CDXUTControl {
public:
    using CDXUTControl::CDXUTControl;

    const QString& text() const { return state<tarn::StaticState>().text; }
    bool SetText(const QString& text);
};
