#include "child_element_text.h"

#include "core/language.h"
#include "engine/base_world.h"
#include "gui_core/control_style.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "gui_scene/gui_plug_scene.h"
#include "look_choices.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

using tarn::lang;
using tarn::LookPart;
using tarn::VisualState;

namespace {

enum Id : int {
    id_size = 7205,
    id_bold = 7206,
    id_italic = 7207,
    id_shadow = 7208,
    id_first_swatch = 7210, ///< one for each state
    id_first_source = 7220,
    id_first_caption = 7230,
};

constexpr int largest_font = 500; ///< pixels

} // namespace

void CChildElementText::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    auto* size = control_as<CSuperEdit>(id_size);
    size->set_range(1, largest_font, 1);
    size->set_format_string(QStringLiteral("%.0f"));
    connect(size, &CSuperEdit::text_changed_by_user, this, [this](double pixels) { on_size(pixels); });
    connect(size, &CSuperEdit::editing_finished, this, [this] { end_typing(); });
    for (const int id : {id_bold, id_italic, id_shadow})
        connect(control_as<QCheckBox>(id), &QAbstractButton::clicked, this,
                [this, id] { run_action([this] { on_style(); }, control_as<QCheckBox>(id)->text()); });
    for (int i = 0; i < tarn::style_state_count; ++i) {
        const auto state = VisualState(i);
        control_as<QLabel>(id_first_caption + i)->setText(tarn::visual_state_caption(state));
        on_choose(id_first_source + i, [this, state](int row) { on_source(state, row); });
        connect(control_as<CColorSwatch>(id_first_swatch + i), &QAbstractButton::clicked, this,
                [this, state] { run_action([this, state] { on_swatch(state); }, lang(u"文字颜色", u"Text Color")); });
    }
}

/// Texts come first among an owner's colours.
LookPart CChildElementText::text_part(VisualState state) const
{
    return {m_owner, int(tarn::look_owner(m_owner)->elements.size()), state};
}

bool CChildElementText::can_edit() const
{
    return core() && m_owner >= 0 && is_editing();
}

void CChildElementText::show_owner(int owner)
{
    m_owner = owner;
    if (!core())
        return;
    const tarn::StyleLook& look = core()->look();
    control_as<CSuperEdit>(id_size)->set_pos(look.font_size(owner));
    const tarn::FontStyle style = look.font_style(owner);
    control_as<QCheckBox>(id_bold)->setChecked(style.bold);
    control_as<QCheckBox>(id_italic)->setChecked(style.italic);
    control_as<QCheckBox>(id_shadow)->setChecked(style.shadow);
    for (int i = 0; i < tarn::style_state_count; ++i)
        tarn::show_color(*core(), text_part(VisualState(i)), *control_as<CColorSwatch>(id_first_swatch + i),
                         *control_as<QComboBox>(id_first_source + i));
}

void CChildElementText::changed()
{
    scene()->update_all_ctrl_element();
    Q_EMIT look_edited();
}

/// The first letter that is typed may make the style that the next ones change: all of them are one step.
void CChildElementText::on_size(double pixels)
{
    if (!can_edit())
        return;
    const tarn::UserAction action(*journal(), lang(u"字号", u"Font Size"), "font size");
    core()->set_look_font_size(m_owner, int(pixels));
    scene()->update_all_ctrl_element();
}

void CChildElementText::on_style()
{
    const auto is_checked = [this](int id) { return control_as<QCheckBox>(id)->isChecked(); };
    if (can_edit())
        core()->set_look_font_style(
            m_owner, {.bold = is_checked(id_bold), .italic = is_checked(id_italic), .shadow = is_checked(id_shadow)});
    if (core())
        changed();
}

void CChildElementText::on_swatch(VisualState state)
{
    if (!can_edit())
        return;
    if (const auto color = tarn::ask_color(this, *control_as<CColorSwatch>(id_first_swatch + int(state)))) {
        core()->set_element_color(text_part(state), tarn::color_text(*color));
        changed();
    }
}

void CChildElementText::on_source(VisualState state, int row)
{
    if (!can_edit())
        return;
    core()->set_element_color(text_part(state),
                              tarn::color_source(*control_as<CColorSwatch>(id_first_swatch + int(state)),
                                                 *control_as<QComboBox>(id_first_source + int(state)), row));
    changed();
}
