#pragma once

#include "dxut_static.h"

class CDXUTCheckBox : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    bool GetChecked() const { return state<tarn::CheckBoxState>().checked; }
    bool SetChecked(bool checked);

    bool is_interactive() const override { return true; }
    void clicked() override;
};
