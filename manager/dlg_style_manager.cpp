#include "dlg_style_manager.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/str_input.h"
#include "gui_core/gui_style.h"
#include "gui_scene/gui_plug_scene.h"
#include "report_list_style.h"
#include "store/filefun.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

using tarn::lang;

namespace {

enum Id : int {
    id_list = 6340,
    id_apply = 6443,
    id_save = 6066,
    id_reset = 6436,
    id_delete = 6448,
    id_font = 6431,
    id_element = 6437,
    id_speed = 6394,
    id_picture = 6446,
};

// In the property bar.
constexpr int element_page = 2;
constexpr int font_page = 3;

constexpr int longest_name = 300;
constexpr int reset_question = 3918;
constexpr double fastest = 100;

} // namespace

CDlgStyleManager::CDlgStyleManager(QWidget* parent) : CGuiChildDlg(QStringLiteral("CDlgStyleManager"), parent) {}

QWidget* CDlgStyleManager::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name != QLatin1String("CReportListStyle"))
        return nullptr;
    m_list = new CReportListStyle(parent);
    return m_list;
}

void CDlgStyleManager::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    auto* speed = control_as<CSuperEdit>(id_speed);
    speed->set_range(0, fastest, 0.1);
    speed->set_format_string(QStringLiteral("%.1f"));
    control(id_picture)->hide();
    on_click(id_apply, [this] { on_apply(); });
    connect(button(id_save), &QAbstractButton::clicked, this,
            [this] { run_action([this] { on_save(); }, lang(u"保存风格", u"Save Style")); });
    on_click(id_reset, [this] { on_reset(); });
    on_click(id_delete, [this] { on_delete(); });
    on_click(id_font, [this] { Q_EMIT design_page_wanted(font_page); });
    on_click(id_element, [this] { Q_EMIT design_page_wanted(element_page); });
    on_click(id_picture, [this] { on_change_picture(); });
    on_number(id_speed, [this](double value) { on_speed(value); });
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] { update_buttons(); });
    connect(m_list, &CReportList::item_double_clicked, this,
            [this](int row) { run_action([this, row] { on_double_click(row); }, lang(u"应用风格", u"Apply Style")); });
}

void CDlgStyleManager::update_ui(int code)
{
    if (core() && (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed))
        fill_list();
}

void CDlgStyleManager::model_changed(const tarn::ModelChange& change)
{
    if (tarn::changes_looks(change))
        fill_list();
}

/// Files may have come meanwhile.
void CDlgStyleManager::on_set_active(bool active)
{
    if (active && core())
        fill_list();
}

void CDlgStyleManager::fill_list()
{
    const auto styles = scene()->styles();
    m_list->refill_list(std::vector<void*>(styles.cbegin(), styles.cend()));
    m_list->set_worn(core()->worn_style());
    update_buttons();
    show_speed();
}

/// What comes with the program stays.
void CDlgStyleManager::update_buttons()
{
    const CGuiStyle* style = m_list->style_at(m_list->get_last_sel_index());
    control(id_apply)->setEnabled(style);
    control(id_delete)->setEnabled(style && style->origin() != tarn::StyleOrigin::Program);
}

void CDlgStyleManager::show_speed()
{
    control_as<CSuperEdit>(id_speed)->set_pos(double(core()->core_state().animation_speed));
}

void CDlgStyleManager::apply(int row)
{
    if (!core() || !is_editing())
        return;
    CGuiStyle* style = m_list->style_at(row);
    if (!style)
        return;
    if (const auto status = scene()->ChangeStyle(style); !status)
        return tarn::boxes::error(this, status.message());
    fill_list();
    m_list->selecte_item_by_ptr_binded(core()->worn_style());
    update_buttons();
}

void CDlgStyleManager::on_double_click(int row)
{
    tarn::boxes::message(
        this,
        {.text = lang(u"当前编辑的风格将会被覆盖，是否继续？", u"Current style will be lost! continue?"), .title = {}});
    apply(row);
    update_all_views();
}

void CDlgStyleManager::on_apply()
{
    const int row = m_list->get_last_sel_index();
    if (row >= 0
        && tarn::boxes::confirm(this, lang(u"当前编辑的风格将会被覆盖，是否继续？", u"Current style will be lost!")))
        apply(row);
}

void CDlgStyleManager::on_save()
{
    if (!core() || !is_editing())
        return;
    QString name;
    if (!PopDlgStrInput(nullptr, lang(u"风格名称", u"Style Name"), {}, lang(u"我的风格", u"MyStyle"), name,
                        longest_name))
        return;
    const tarn::boxes::Message question{
        .text = lang(u"风格 %1 已存在，是否替换？", u"There is a style %1 already. Replace it?").arg(name),
        .title = {},
        .buttons = {tarn::boxes::Button::Yes, tarn::boxes::Button::No}};
    if (scene()->has_style(name) && tarn::boxes::message(this, question) != tarn::boxes::Button::Yes)
        return;
    if (const auto status = scene()->save_current_style_as(name); !status)
        return tarn::boxes::error(this, status.message());
    fill_list();
    m_list->selecte_item_by_ptr_binded(core()->worn_style());
    update_buttons();
}

/// The style's file is no part of the step: undo brings back the scene's style alone.
void CDlgStyleManager::on_delete()
{
    CGuiStyle* style = m_list->style_at(m_list->get_last_sel_index());
    if (!style || !is_editing() || style->origin() == tarn::StyleOrigin::Program)
        return;
    const QString name = style->name();
    if (!tarn::boxes::confirm(this, lang(u"确定是否删除该风格？", u"Remove the style?")))
        return;
    scene()->remove_style(style);
    if (const QString file = scene()->style_file(name); !file.isEmpty())
        filefun::delete_file_or_dir(file);
    fill_list();
}

void CDlgStyleManager::on_reset()
{
    if (!core() || !is_editing() || !tarn::boxes::confirm(this, VLCMsgIniW::VLoadString(reset_question)))
        return;
    scene()->reset_style();
    fill_list();
}

void CDlgStyleManager::on_speed(double speed)
{
    if (core())
        (void)core()->set_property(*core()->fields().find(tarn::key<&tarn::CoreState::animation_speed>), speed);
}

void CDlgStyleManager::on_change_picture()
{
    if (!core())
        return;
    const QString path = filedlg::pop_open_dlg_img(window());
    if (path.isEmpty())
        return;
    if (const auto status = scene()->SetControlTexture(path, 1); !status)
        tarn::boxes::error(this, status.message());
}
