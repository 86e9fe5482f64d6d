#pragma once

#include "dxut_static.h"

class CDXUTButton : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    bool is_interactive() const override { return true; }
    void clicked() override { raise(EVENT_BUTTON_CLICKED); }
};
