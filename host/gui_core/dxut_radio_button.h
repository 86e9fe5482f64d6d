#pragma once

#include "dxut_check_box.h"

#include <memory>
#include <vector>

/// One of a group: checking it clears the others of its dialog that have the same group number.
class CDXUTRadioButton : public CDXUTCheckBox {
public:
    using CDXUTCheckBox::CDXUTCheckBox;

    int group() const { return state<tarn::RadioButtonState>().group; }

    void clicked() override;
    /// Arrows go on in the group.
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    void after_write(const tarn::WrittenFields& written) override;

private:
    /// The other checked ones of the group; one at most, but while a rule is being put in force.
    std::vector<CDXUTRadioButton*> checked_others() const;
};

namespace tarn {

/// Of the checked radio buttons of a dialog and group the first one stays so. For what was read and is not part of the
/// scene yet; there the buttons see to it themselves.
void keep_one_checked(std::vector<StatePtr>& controls);

} // namespace tarn
