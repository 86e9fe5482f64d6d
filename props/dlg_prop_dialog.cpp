#include "dlg_prop_dialog.h"
#include "core/authored.h"

#include "anchor_rows.h"
#include "core/language.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "gui_core/dialog_state.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/tex_file_man.h"
#include "widgets/button_st.h"

#include <QCheckBox>

using tarn::Default;
using tarn::DialogState;
using tarn::FieldKey;
using tarn::FieldRow;
using tarn::Follows;
using tarn::key;
using tarn::NumberLook;
using tarn::Scope;
using tarn::Shows;
using tarn::Value;

namespace {

constexpr int keep_ratio_icon = 5;

enum Id : int {
    id_width = 6026,
    id_height = 6341,
    id_keep_ratio = 6345,
    id_scale = 6593,
    id_bind = 6201,
    id_unbind = 6202,
    id_bind_color_label = 6589,
    id_bind_color = 6587,
    id_bind_mouse = 6595,
};

constexpr int all_together = 1; ///< an edit of any writes them all
constexpr NumberLook pixels{.step = 1, .format = "%.0f", .minimum = 0, .maximum = 9999};

constexpr FieldRow shared_row(int control, FieldKey field, Default reset = Default::Offered)
{
    return {.control = control, .field = field, .shows = Shows::Current, .reset = reset, .together = all_together};
}

constexpr FieldRow place_row(int control, FieldKey field, Default reset = Default::None)
{
    return {.control = control,
            .field = field,
            .scope = Scope::Current,
            .reset = reset,
            .together = all_together,
            .number = pixels};
}

bool is_bound(const tarn::ModelObject& dialog);
bool keeps_anchor(const tarn::ModelObject& dialog);

constexpr FieldRow rows[] = {
    shared_row(6335, key<&DialogState::visible>),
    shared_row(6019, key<&DialogState::caption_shown>),
    shared_row(6333, key<&DialogState::frame_shown>),
    shared_row(6031, key<&DialogState::minimize_button>),
    shared_row(6020, key<&DialogState::movable>),
    shared_row(6021, key<&DialogState::close_button>),
    shared_row(6018, key<&DialogState::name>, Default::None),
    shared_row(6362, key<&DialogState::caption>, Default::None),
    place_row(6337, key<&DialogState::x>),
    place_row(6339, key<&DialogState::y>),
    place_row(id_width, key<&DialogState::width>),
    place_row(id_height, key<&DialogState::height>),
    place_row(6343, key<&DialogState::caption_height>, Default::Offered),
    {.control = 6030,
     .field = key<&DialogState::border_width>,
     .shows = Shows::Current,
     .follows = Follows::Redraw,
     .number = pixels},
    {.control = 6892, .field = key<&DialogState::transparency>, .number = {.step = 0.05}},
    {.control = 6893, .field = key<&DialogState::color>},
    {.control = 6508,
     .field = key<&DialogState::minimize_to_bottom>,
     .scope = Scope::Current,
     .follows = Follows::Nothing},
    {.control = 6033, // not shown yet
     .field = key<&DialogState::always_on_top>,
     .scope = Scope::Current,
     .follows = Follows::Redraw},
    {.control = id_bind_mouse,
     .field = key<&DialogState::bind_mouse>,
     .scope = Scope::Current,
     .follows = Follows::Nothing,
     .enabled_if = is_bound},
    {.control = id_bind_color,
     .field = key<&DialogState::bind_color>,
     .scope = Scope::Current,
     .follows = Follows::Nothing,
     .enabled_if = is_bound},
};

constexpr auto anchors = [] {
    auto all = tarn::anchor_rows(key<&DialogState::align_type>, Scope::Current, Follows::Redraw);
    for (FieldRow& row : all)
        row.enabled_if = keeps_anchor;
    return all;
}();

CDXUTDialog* as_dialog(tarn::ModelObject* object)
{
    return static_cast<CDXUTDialog*>(object);
}

bool is_bound(const tarn::ModelObject& dialog)
{
    return !static_cast<const DialogState&>(tarn::Authored::state(dialog)).bind_texture.isEmpty();
}

/// Not while the dialog scales with the window.
bool keeps_anchor(const tarn::ModelObject& dialog)
{
    return static_cast<const CDXUTDialog&>(dialog).align_type() != tarn::anchor_scale;
}

} // namespace

CDlgPropDialog::CDlgPropDialog(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropDialog"), tarn::selected_dialogs, parent)
{
}

void CDlgPropDialog::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    bind(anchors);
    for (const FieldRow& row : anchors)
        button(row.control)->SetIcon(tarn::anchor_icon(*row.option));
    button(id_keep_ratio)->SetIcon(keep_ratio_icon);
    on_click(id_keep_ratio, [this] { on_keep_ratio(); });
    on_click(id_scale, [this] { on_scale_with_window(); });
    connect(button(id_bind), &QAbstractButton::clicked, this,
            [this] { run_action([this] { on_bind(); }, tarn::lang(u"绑定贴图", u"Bind Texture")); });
    on_click(id_unbind, [this] { on_unbind(); });
}

void CDlgPropDialog::refresh()
{
    CBoundPage::refresh();
    const CDXUTDialog* dialog = as_dialog(current());
    auto* scale = control_as<QCheckBox>(id_scale);
    scale->setEnabled(dialog);
    button(id_keep_ratio)->setEnabled(dialog);
    scale->setChecked(dialog && !keeps_anchor(*dialog));
    if (!is_writing())
        on_keep_ratio();
    show_binding();
}

void CDlgPropDialog::on_keep_ratio()
{
    const CDXUTDialog* dialog = as_dialog(current());
    const QRect rect = dialog ? dialog->rect() : QRect();
    m_aspect = rect.height() != 0 ? double(rect.width()) / rect.height() : 0;
}

void CDlgPropDialog::row_edited(int id, const Value& value)
{
    const auto* number = std::get_if<double>(&value);
    if (!number || !button(id_keep_ratio)->isChecked())
        return;
    if (id == id_width && m_aspect != 0)
        write(key<&DialogState::height>, *number / m_aspect, Scope::Current);
    else if (id == id_height)
        write(key<&DialogState::width>, *number * m_aspect, Scope::Current);
}

void CDlgPropDialog::on_scale_with_window()
{
    const bool scale = control_as<QCheckBox>(id_scale)->isChecked();
    for (tarn::ModelObject* object : selected()) {
        CDXUTDialog* dialog = as_dialog(object);
        dialog->set_scaled(scale);
        dialog->on_pos_scale_changed();
    }
    refresh();
    update_all_views();
}

void CDlgPropDialog::show_binding()
{
    const CDXUTDialog* dialog = as_dialog(current());
    const auto binding = dialog ? scene()->SearchTexbindByDialog(dialog) : std::nullopt;
    button(id_bind)->setEnabled(dialog);
    button(id_bind)->setText(binding ? tarn::picture_caption(binding->texture)
                                     : tarn::lang(u"未绑定贴图", u"No texture bound"));
    for (const int id : {id_unbind, id_bind_color_label})
        control(id)->setEnabled(binding.has_value());
}

void CDlgPropDialog::on_bind()
{
    CDXUTDialog* dialog = as_dialog(current());
    if (!dialog)
        return;
    const QString path = filedlg::pop_open_dlg_img(window());
    if (path.isEmpty())
        return;
    const tarn::UserAction action(scene()->journal(), tarn::lang(u"绑定贴图", u"Bind Texture"));
    const QString texture = CTexFileMan(*core(), *scene()->world()).find_tex_file_from_absolute_filename(path);
    if (texture.isNull()) {
        tarn::boxes::message(this, {.text = QStringLiteral("无模型绑定到该贴图，绑定失败！"), .title = {}});
        return;
    }
    scene()->create_texture_dialog_bind(dialog, texture);
    refresh();
    update_all_views();
}

void CDlgPropDialog::on_unbind()
{
    if (CDXUTDialog* dialog = as_dialog(current()))
        scene()->remove_tex_binder(dialog);
    refresh();
}
