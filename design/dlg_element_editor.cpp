#include "dlg_element_editor.h"

#include "child_element_text.h"
#include "core/language.h"
#include "dlg_design_button.h"
#include "dlg_design_check.h"
#include "element_picture.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/str_input.h"
#include "gui_core/control_style.h"
#include "gui_core/gui_style.h"
#include "gui_core/style_look.h"
#include "gui_scene/gui_plug_scene.h"
#include "look_choices.h"
#include "state_button.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"

#include <QComboBox>
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
    id_font = 6965,
    id_token = 6967,
    id_token_color = 6968,
    id_new_token = 6969,
    id_reset = 6970,
    id_first_state = 6971,
};

constexpr int template_texture = 6209;
constexpr int longest_token = 60;

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
    const auto add_page = [this](CGuiChildDlg* page, int template_id, const char* room) {
        page->Create(template_id, this);
        findChild<QWidget*>(QLatin1String(room))->layout()->addWidget(page);
    };
    add_page(m_texture = new CDlgDesignButton(this), template_texture, "texture");
    add_page(m_check = new CDlgDesignCheck(this), CDlgDesignCheck::template_id, "check");
    add_page(m_texts = new CChildElementText(this), CChildElementText::template_id, "texts");
    connect(m_texture, &CDlgDesignButton::look_edited, this, [this] { refresh(); });
    connect(m_texts, &CChildElementText::look_edited, this, [this] { refresh(); });
    connect(m_check, &CDlgDesignCheck::part_chosen, this, [this](const LookPart& part) { choose(part); });
    for (int state = 0; state < tarn::style_state_count; ++state) {
        control_as<CStateButton>(id_first_state + state)->setText(tarn::visual_state_caption(VisualState(state)));
        connect(control_as<CStateButton>(id_first_state + state), &QAbstractButton::clicked, this, [this, state] {
            m_state = VisualState(state);
            refresh();
        });
    }
    fill_owners();
    on_choose(id_owner, [this](int) {
        fill_parts();
        refresh();
    });
    on_choose(id_part, [this](int) { refresh(); });
    on_choose(id_source, [this](int row) { on_source(row); });
    on_choose(id_token, [this](int) { refresh(); });
    on_click(id_font, [this] { Q_EMIT font_page_wanted(); });
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
    for (CGuiChildDlg* page : std::initializer_list<CGuiChildDlg*>{m_texture, m_check, m_texts})
        page->on_world_created(world);
    if (core())
        refresh();
}

void CDlgElementEditor::update_ui(int code)
{
    if (!core())
        return;
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed || code == tarn::ui_control_selected
        || code == tarn::ui_selection_changed) {
        follow_selection();
        follow_click();
    }
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed)
        refresh();
}

void CDlgElementEditor::model_changed(const tarn::ModelChange& change)
{
    if (tarn::changes_looks(change))
        refresh();
}

/// A click in the view on a part of what is selected chooses that part, in the state that the page shows.
void CDlgElementEditor::follow_click()
{
    LookPart clicked = core()->current_element();
    clicked.state = m_state;
    if (isVisible() && tarn::look_owner(clicked.owner)
        && (clicked.owner != part().owner || clicked.part != part().part))
        choose(clicked);
}

void CDlgElementEditor::showEvent(QShowEvent* event)
{
    CGuiChildDlg::showEvent(event);
    if (core())
        core()->view_aids().picks_elements = true;
}

void CDlgElementEditor::hideEvent(QHideEvent* event)
{
    CGuiChildDlg::hideEvent(event);
    if (core())
        core()->view_aids().picks_elements = false;
}

/// A click in the view on a control, or on a dialog, chooses what it is made of.
void CDlgElementEditor::follow_selection()
{
    const tarn::SelectedOwner selected = tarn::selected_owner(*core());
    if (std::exchange(m_followed, selected.object) == selected.object || !selected.object)
        return;
    if (selected.owner != owner().number && tarn::look_owner(selected.owner))
        choose({selected.owner, 0, m_state});
}

void CDlgElementEditor::choose(const LookPart& part)
{
    const QSignalBlocker quiet(m_owners);
    m_owners->setCurrentIndex(m_owners->findData(part.owner));
    fill_parts();
    m_parts->setCurrentIndex(part.part);
    m_state = part.state;
    refresh();
}

void CDlgElementEditor::refresh()
{
    if (!core())
        return;
    core()->set_current_element(part());
    show_sub_pages();
    fill_tokens();
    tarn::show_color(*core(), part(), *control_as<CColorSwatch>(id_color), *m_sources);
    control(id_font)->setEnabled(!owner().colors.empty());
    control(id_reset)->setEnabled(core()->is_element_changed(part()));
}

void CDlgElementEditor::show_sub_pages()
{
    const bool has_mark = CDlgDesignCheck::suits(part());
    const bool is_text = tarn::is_text_part(owner(), part().part);
    const auto show_room = [this](const char* room, bool on) {
        findChild<QWidget*>(QLatin1String(room))->setVisible(on);
    };
    show_room("states", !has_mark);
    show_room("check", has_mark);
    show_room("texture", !is_text);
    show_room("colors", !is_text);
    show_room("texts", is_text);
    m_texture->show_element();
    if (has_mark)
        m_check->show_part(part());
    else
        show_states();
    if (is_text)
        m_texts->show_owner(owner().number);
}

void CDlgElementEditor::show_states()
{
    const LookPart shown = part();
    const bool has_states = tarn::part_has_states(owner(), shown.part);
    for (int state = 0; state < tarn::style_state_count; ++state) {
        auto* button = control_as<CStateButton>(id_first_state + state);
        button->show_parts(core(), {{shown.owner, shown.part, VisualState(state)}});
        button->setEnabled(has_states || state == 0);
        button->setChecked(state == int(shown.state));
    }
}

void CDlgElementEditor::fill_tokens()
{
    const QSignalBlocker quiet(m_tokens);
    const QString chosen = m_tokens->currentData().toString();
    m_tokens->clear();
    const auto& tokens = core()->look().tokens();
    for (auto token = tokens.begin(); token != tokens.end(); ++token)
        m_tokens->addItem(tarn::token_caption(token.key()), token.key());
    const int usual = m_tokens->findData(QStringLiteral("text"));
    const int row = m_tokens->findData(chosen);
    m_tokens->setCurrentIndex(row < 0 ? usual : row);
    control_as<CColorSwatch>(id_token_color)->set_color(tokens.value(m_tokens->currentData().toString()));
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
    if (const auto color = tarn::ask_color(this, *control_as<CColorSwatch>(id_color))) {
        core()->set_element_color(part(), tarn::color_text(*color));
        changed();
    }
}

void CDlgElementEditor::on_source(int row)
{
    if (!core() || !is_editing())
        return;
    core()->set_element_color(part(), tarn::color_source(*control_as<CColorSwatch>(id_color), *m_sources, row));
    changed();
}

void CDlgElementEditor::on_token_color()
{
    if (!core() || !is_editing() || m_tokens->currentIndex() < 0)
        return;
    if (const auto color = tarn::ask_color(this, *control_as<CColorSwatch>(id_token_color))) {
        core()->set_token(m_tokens->currentData().toString(), *color);
        changed();
    }
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

void CDlgElementEditor::on_reset()
{
    if (!core() || !is_editing())
        return;
    core()->reset_element(part());
    changed();
}
