#include "dxut_radio_button.h"

#include "core/field.h"
#include "dxut_dialog.h"
#include "gui_core.h"
#include "tab_order.h"

#include <QSet>

#include <algorithm>

using tarn::key;

std::vector<CDXUTRadioButton*> CDXUTRadioButton::checked_others() const
{
    std::vector<CDXUTRadioButton*> others;
    if (!dialog())
        return others;
    for (CDXUTControl* control : dialog()->controls()) {
        if (control == this || control->GetType() != DXUT_CONTROL_RADIOBUTTON)
            continue;
        auto* other = static_cast<CDXUTRadioButton*>(control);
        if (other->GetChecked() && other->group() == group())
            others.push_back(other);
    }
    return others;
}

/// Whoever is checked clears the others. Who comes to a group that has a checked one is no longer checked: only what was
/// written changes, and typing a group's number passes others.
void CDXUTRadioButton::after_write(const tarn::WrittenFields& written)
{
    CDXUTControl::after_write(written);
    if (!GetChecked())
        return;
    const std::vector<CDXUTRadioButton*> others = checked_others();
    const bool came = written.contains(key<&tarn::RadioButtonState::group>)
        || written.contains(key<&tarn::ObjectState::parent>);
    if (came && !others.empty())
        SetChecked(false);
    else
        for (CDXUTRadioButton* other : others)
            other->SetChecked(false);
}

void CDXUTRadioButton::clicked()
{
    const auto others = checked_others();
    const bool changed = SetChecked(true);
    raise(EVENT_RADIOBUTTON_CLICKED);
    if (!changed)
        return;
    for (CDXUTRadioButton* other : others)
        other->raise(EVENT_RADIOBUTTON_UNCHECKED);
    raise(EVENT_RADIOBUTTON_CHECKED);
}

bool CDXUTRadioButton::key_pressed(int key, Qt::KeyboardModifiers)
{
    const bool forward = key == Qt::Key_Down || key == Qt::Key_Right;
    if (!dialog() || (!forward && key != Qt::Key_Up && key != Qt::Key_Left))
        return false;
    std::vector<CDXUTRadioButton*> members;
    for (CDXUTControl* stop : tarn::tab_stops(*dialog()))
        if (auto* member = dynamic_cast<CDXUTRadioButton*>(stop); member && member->group() == group())
            members.push_back(member);
    const auto now = std::size_t(std::find(members.begin(), members.end(), this) - members.begin());
    CDXUTRadioButton* next = members[(now + (forward ? 1 : members.size() - 1)) % members.size()];
    if (next != this) {
        core().set_focused(next);
        next->clicked();
    }
    return true;
}

void tarn::keep_one_checked(std::vector<StatePtr>& controls)
{
    QSet<std::pair<quint32, int>> taken;
    for (StatePtr& control : controls) {
        const auto* s = dynamic_cast<const RadioButtonState*>(control.constData());
        if (!s || !s->checked)
            continue;
        const std::pair group(s->parent.id, s->group);
        if (taken.contains(group))
            SceneSnapshot::edit<RadioButtonState>(control).checked = false;
        else
            taken.insert(group);
    }
}
