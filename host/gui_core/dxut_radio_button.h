#pragma once

#include "dxut_check_box.h"

#include <vector>

/// One of a group: checking it clears the others of its dialog that have the same group number.
class CDXUTRadioButton : public CDXUTCheckBox {
public:
    CDXUTRadioButton(tarn::Journal& journal, CGuiCore& core);

    int group() const { return state<tarn::RadioButtonState>().group; }
    bool set_group(int group);
    /// Checking clears the others of the group.
    bool SetChecked(bool checked);

    void clicked() override;
    tarn::Status set_property(const tarn::FieldBase& field, const tarn::Value& value) override;

private:
    /// The other checked ones of the group; one at most, unless the author made it so.
    std::vector<CDXUTRadioButton*> checked_others() const;
};
