#include "dlg_element_editor.h"

#include "core/language.h"
#include "dlg_design_button.h"
#include "element_picture.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/str_input.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_style.h"
#include "gui_core/interface_font.h"
#include "gui_core/style_look.h"
#include "gui_scene/gui_plug_scene.h"
#include "page_base/pop_dlg_color.h"
#include "state_button.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/super_edit.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QLayout>
#include <QSignalBlocker>

#include <algorithm>

using tarn::lang;
using tarn::LookPart;
using tarn::VisualState;

namespace {

enum Id : int {
    id_owner = 6960,
    id_part = 6961,
    id_color = 6963,
    id_source = 6964,
    id_family = 6965,
    id_size = 6966,
    id_token = 6967,
    id_token_color = 6968,
    id_new_token = 6969,
    id_reset = 6970,
    id_first_state = 6971,
};

constexpr int template_texture = 6209;
constexpr int largest_font = 500; ///< pixels
constexpr int longest_token = 60;

// Of the sources of a colour; named ones follow.
enum Source : int { source_none, source_own, source_first_token };

QString token_caption(const QString& name)
{
    const auto tokens = tarn::style_tokens();
    const auto known = std::find_if(tokens.begin(), tokens.end(),
                                    [&](const tarn::StyleToken& token) { return name == QLatin1String(token.name); });
    return known == tokens.end() ? name : known->caption();
}

} // namespace

CDlgElementEditor::CDlgElementEditor(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgElementEditor"), parent) {}

QWidget* CDlgElementEditor::create_widget(const QString& class_name, QWidget* parent)
{
    return class_name == QLatin1String("CStateButton") ? new CStateButton(parent) : nullptr;
}

void CDlgElementEditor::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_owners = control_as<QComboBox>(id_owner);
    m_parts = control_as<QComboBox>(id_part);
    m_sources = control_as<QComboBox>(id_source);
    m_tokens = control_as<QComboBox>(id_token);
    m_texture = new CDlgDesignButton(this);
    m_texture->Create(template_texture, this);
    findChild<QWidget*>(QStringLiteral("texture"))->layout()->addWidget(m_texture);
    connect(m_texture, &CDlgDesignButton::look_edited, this, [this] { refresh(); });
    for (int state = 0; state < tarn::style_state_count; ++state) {
        control_as<CStateButton>(id_first_state + state)->setText(tarn::visual_state_caption(VisualState(state)));
        connect(control_as<CStateButton>(id_first_state + state), &QAbstractButton::clicked, this, [this, state] {
            m_state = VisualState(state);
            refresh();
        });
    }
    auto* size = control_as<CSuperEdit>(id_size);
    size->set_range(0, largest_font, 1);
    size->set_format_string(QStringLiteral("%.0f"));
    fill_owners();
    on_choose(id_owner, [this](int) {
        fill_parts();
        refresh();
    });
    on_choose(id_part, [this](int) { refresh(); });
    on_choose(id_source, [this](int row) { on_source(row); });
    on_choose(id_token, [this](int) { refresh(); });
    on_choose(id_family, [this](int row) { on_family(row); });
    on_number(id_size, [this](double pixels) { on_size(pixels); });
    on_click(id_new_token, [this] { on_new_token(); });
    on_click(id_reset, [this] { on_reset(); });
    const auto on_swatch = [this](int id, const QString& name, void (CDlgElementEditor::*handler)()) {
        connect(control_as<CColorSwatch>(id), &QAbstractButton::clicked, this,
                [this, name, handler] { run_action([this, handler] { (this->*handler)(); }, name); });
    };
    on_swatch(id_color, lang(u"元素颜色", u"Element Color"), &CDlgElementEditor::on_color);
    on_swatch(id_token_color, lang(u"色板颜色", u"Named Color"), &CDlgElementEditor::on_token_color);
}

void CDlgElementEditor::fill_owners()
{
    for (const tarn::LookOwner& owner : tarn::look_owners())
        m_owners->addItem(owner.caption(), owner.number);
    fill_parts();
    auto* families = control_as<QComboBox>(id_family);
    families->addItem(lang(u"（默认字体）", u"(The usual one)"), QString());
    const QStringList installed = QFontDatabase::families();
    for (const QString& family : installed)
        families->addItem(family, family);
}

const tarn::LookOwner& CDlgElementEditor::owner() const
{
    return tarn::look_owners()[std::size_t(std::max(0, m_owners->currentIndex()))];
}

void CDlgElementEditor::fill_parts()
{
    const QSignalBlocker quiet(m_parts);
    m_parts->clear();
    for (int part = 0; part < tarn::part_count(owner()); ++part)
        m_parts->addItem(tarn::part_caption(owner(), part));
}

LookPart CDlgElementEditor::part() const
{
    const int part = std::max(0, m_parts->currentIndex());
    return {owner().number, part, tarn::part_has_states(owner(), part) ? m_state : VisualState::Normal};
}

void CDlgElementEditor::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_texture->on_world_created(world);
    if (core())
        refresh();
}

void CDlgElementEditor::update_ui(int code)
{
    if (!core())
        return;
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed || code == tarn::ui_control_selected
        || code == tarn::ui_selection_changed)
        follow_selection();
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed)
        refresh();
}

void CDlgElementEditor::model_changed(const tarn::ModelChange& change)
{
    if (tarn::changes_looks(change))
        refresh();
}

/// A click in the view on a control, or on a dialog, chooses what it is made of.
void CDlgElementEditor::follow_selection()
{
    const tarn::SelectionRecord& selection = core()->selection();
    const bool is_control = selection.controls_selected && selection.current_control;
    const void* now = is_control ? static_cast<const void*>(selection.current_control) : selection.current_dialog;
    if (std::exchange(m_followed, now) == now || !now)
        return;
    const int wanted = is_control ? selection.current_control->GetType() : tarn::look_owner_dialog;
    if (wanted != owner().number && tarn::look_owner(wanted))
        choose({wanted, 0, m_state});
}

void CDlgElementEditor::choose(const LookPart& part)
{
    const QSignalBlocker quiet(m_owners);
    m_owners->setCurrentIndex(m_owners->findData(part.owner));
    fill_parts();
    m_parts->setCurrentIndex(part.part);
    refresh();
}

void CDlgElementEditor::refresh()
{
    if (!core())
        return;
    core()->set_current_element(part());
    m_texture->show_element();
    show_states();
    fill_tokens();
    fill_sources();
    show_text();
    control(id_reset)->setEnabled(core()->is_element_changed(part()));
}

void CDlgElementEditor::show_states()
{
    const LookPart shown = part();
    const bool has_states = tarn::part_has_states(owner(), shown.part);
    for (int state = 0; state < tarn::style_state_count; ++state) {
        auto* button = control_as<CStateButton>(id_first_state + state);
        button->show_part(core(), {shown.owner, shown.part, VisualState(state)});
        button->setEnabled(has_states || state == 0);
        button->setChecked(state == int(shown.state));
    }
}

void CDlgElementEditor::fill_sources()
{
    const QString text = core()->element_color(part());
    const tarn::StyleValue value = tarn::style_value(text);
    const QSignalBlocker quiet(m_sources);
    m_sources->clear();
    m_sources->addItem(lang(u"（默认）", u"(Usual)"));
    m_sources->addItem(lang(u"自定颜色", u"A color of its own"));
    const auto& tokens = core()->look().tokens();
    for (auto token = tokens.begin(); token != tokens.end(); ++token)
        m_sources->addItem(token_caption(token.key()), token.key());
    const int named = value.token.isEmpty() ? -1 : m_sources->findData(value.token);
    m_sources->setCurrentIndex(named >= 0 ? named : value.color ? source_own : source_none);
    const auto& look = core()->look();
    const LookPart shown = part();
    const quint32 seen = tarn::element_part(owner(), shown.part) ? look.element(owner(), shown.part, shown.state).color
                                                                 : look.color(owner(), shown.part, shown.state);
    control_as<CColorSwatch>(id_color)->set_color(seen ? seen : 0xffffffff);
}

void CDlgElementEditor::fill_tokens()
{
    const QSignalBlocker quiet(m_tokens);
    const QString chosen = m_tokens->currentData().toString();
    m_tokens->clear();
    const auto& tokens = core()->look().tokens();
    for (auto token = tokens.begin(); token != tokens.end(); ++token)
        m_tokens->addItem(token_caption(token.key()), token.key());
    const int usual = m_tokens->findData(QStringLiteral("text"));
    const int row = m_tokens->findData(chosen);
    m_tokens->setCurrentIndex(row < 0 ? usual : row);
    control_as<CColorSwatch>(id_token_color)->set_color(tokens.value(m_tokens->currentData().toString()));
}

void CDlgElementEditor::show_text()
{
    auto* families = control_as<QComboBox>(id_family);
    auto* size = control_as<CSuperEdit>(id_size);
    const bool has_text = !owner().colors.empty();
    const QString family = core()->look().family(owner().number);
    const QSignalBlocker quiet(families);
    int row = families->findData(family);
    if (row < 0) { // It is not installed here.
        families->addItem(family, family);
        row = families->count() - 1;
    }
    families->setCurrentIndex(row);
    size->set_pos(core()->look().font_size(owner().number));
    families->setEnabled(has_text);
    size->setEnabled(has_text);
}

void CDlgElementEditor::changed()
{
    scene()->update_all_ctrl_element();
    refresh();
}

void CDlgElementEditor::on_color()
{
    if (!core() || !is_editing())
        return;
    CPopDlgColor dialog(control_as<CColorSwatch>(id_color)->argb());
    if (dialog.do_modal(this) != 1)
        return;
    // The colour that is all zeros means none; what is as transparent can stand for it.
    core()->set_element_color(part(), tarn::color_text(dialog.color() ? dialog.color() : 0x00ffffff));
    changed();
}

void CDlgElementEditor::on_source(int row)
{
    if (!core() || !is_editing())
        return;
    QString text;
    if (row == source_own)
        text = tarn::color_text(control_as<CColorSwatch>(id_color)->argb());
    else if (row >= source_first_token)
        text = m_sources->itemData(row).toString();
    core()->set_element_color(part(), text);
    changed();
}

void CDlgElementEditor::on_token_color()
{
    if (!core() || !is_editing() || m_tokens->currentIndex() < 0)
        return;
    CPopDlgColor dialog(control_as<CColorSwatch>(id_token_color)->argb());
    if (dialog.do_modal(this) != 1)
        return;
    core()->set_token(m_tokens->currentData().toString(), dialog.color() ? dialog.color() : 0x00ffffff);
    changed();
}

void CDlgElementEditor::on_new_token()
{
    if (!core() || !is_editing())
        return;
    QString name;
    if (!PopDlgStrInput(this, lang(u"颜色名称", u"Name of the color"), {}, QString(), name, longest_token)
        || name.trimmed().isEmpty())
        return;
    if (name.startsWith(QLatin1Char('#')) || core()->look().tokens().contains(name))
        return tarn::boxes::error(this, lang(u"这个名称不能使用。", u"This name cannot be used."));
    core()->set_token(name, control_as<CColorSwatch>(id_color)->argb());
    changed();
    m_tokens->setCurrentIndex(m_tokens->findData(name));
    refresh();
}

void CDlgElementEditor::on_family(int row)
{
    if (!core() || !is_editing())
        return;
    core()->set_look_font(owner().number, control_as<QComboBox>(id_family)->itemData(row).toString());
    changed();
}

void CDlgElementEditor::on_size(double pixels)
{
    if (!core() || !is_editing())
        return;
    core()->set_look_font_size(owner().number, int(pixels));
    scene()->update_all_ctrl_element();
}

void CDlgElementEditor::on_reset()
{
    if (!core() || !is_editing())
        return;
    core()->reset_element(part());
    changed();
}
