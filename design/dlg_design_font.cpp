#include "dlg_design_font.h"

#include "child_element_text.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "font_sample.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "gui_core/gui_style.h"
#include "gui_core/interface_font.h"
#include "gui_core/style_look.h"
#include "gui_scene/font_library.h"
#include "gui_scene/gui_plug_scene.h"
#include "look_choices.h"
#include "page_base/font_choices.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QLabel>
#include <QLayout>
#include <QPlainTextEdit>
#include <QSignalBlocker>
#include <QStandardItemModel>

#include <utility>

using tarn::lang;

namespace {

enum Id : int {
    id_owner = 7200,
    id_sample = 7201,
    id_family = 7202,
    id_add = 7203,
    id_remove = 7204,
    id_missing = 7209,
    id_notice = 7240,
};

/// A line that parts the list of families and cannot be chosen.
void add_heading(QComboBox& box, const QString& text)
{
    box.addItem(text);
    static_cast<QStandardItemModel*>(box.model())->item(box.count() - 1)->setEnabled(false);
}

QString notice_text(const tarn::FontNotice& notice)
{
    QStringList parts{notice.copyright, notice.licence, notice.address};
    parts.removeAll(QString());
    return parts.join(QStringLiteral("\n\n"));
}

} // namespace

QWidget* CDlgDesignFont::create_widget(const QString& class_name, QWidget* parent)
{
    return class_name == QLatin1String("CFontSample") ? new CFontSample(parent) : nullptr;
}

void CDlgDesignFont::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_owners = control_as<QComboBox>(id_owner);
    m_families = control_as<QComboBox>(id_family);
    m_sample = control_as<CFontSample>(id_sample);
    for (const tarn::LookOwner& owner : tarn::look_owners())
        if (!owner.colors.empty())
            m_owners->addItem(owner.caption(), owner.number);
    control_as<QLabel>(id_missing)->setTextFormat(Qt::PlainText);
    on_choose(id_owner, [this](int) { refresh(); });
    on_choose(id_family, [this](int row) { on_family(row); });
    on_click(id_add, [this] { on_add(); });
    on_click(id_remove, [this] { on_remove(); });
    m_texts = new CChildElementText(this);
    m_texts->Create(CChildElementText::template_id, this);
    findChild<QWidget*>(QStringLiteral("texts"))->layout()->addWidget(m_texts);
    connect(m_texts, &CChildElementText::look_edited, this, [this] { refresh(); });
}

int CDlgDesignFont::owner() const
{
    return m_owners->currentData().toInt();
}

QString CDlgDesignFont::family() const
{
    return core()->look().family(owner());
}

void CDlgDesignFont::on_world_created(CBaseWorld* world)
{
    CGuiChildDlg::on_world_created(world);
    m_texts->on_world_created(world);
    if (core())
        refresh();
}

/// What another page of the design worked on last goes on here.
void CDlgDesignFont::on_set_active(bool active)
{
    if (active && core())
        choose_owner(core()->current_element().owner);
}

void CDlgDesignFont::update_ui(int code)
{
    if (!core())
        return;
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed || code == tarn::ui_control_selected
        || code == tarn::ui_selection_changed)
        follow_selection();
    if (code == tarn::ui_full_refresh || code == tarn::ui_scene_changed)
        refresh();
}

void CDlgDesignFont::model_changed(const tarn::ModelChange& change)
{
    if (tarn::changes_looks(change) || m_listed_fonts != tarn::fonts_revision())
        refresh();
}

/// A click in the view on something with a text chooses what it is made of.
void CDlgDesignFont::follow_selection()
{
    const tarn::SelectedOwner selected = tarn::selected_owner(*core());
    if (std::exchange(m_followed, selected.object) != selected.object && selected.object)
        choose_owner(selected.owner);
}

/// Nothing happens for one without texts.
void CDlgDesignFont::choose_owner(int wanted)
{
    const int row = m_owners->findData(wanted);
    if (row < 0)
        return;
    m_owners->setCurrentIndex(row);
    refresh();
}

void CDlgDesignFont::refresh()
{
    if (!core())
        return;
    if (std::exchange(m_listed_fonts, tarn::fonts_revision()) != tarn::fonts_revision())
        list_families();
    show_family();
    m_texts->show_owner(owner());
    m_sample->show_owner(core(), owner());
}

void CDlgDesignFont::list_families()
{
    const QSignalBlocker quiet(m_families);
    m_families->clear();
    m_families->addItem(lang(u"（默认字体）", u"(The usual one)"), QString());
    const auto add = [this](const QString& heading, const QStringList& families) {
        if (!families.isEmpty())
            add_heading(*m_families, heading);
        for (const QString& family : families)
            m_families->addItem(family, family);
    };
    add(lang(u"—— 文件包中的字体 ——", u"— In the package —"), tarn::package_font_families(*scene()));
    add(lang(u"—— 系统字体 ——", u"— Of the system —"), tarn::system_font_families(*scene()));
}

void CDlgDesignFont::show_family()
{
    const QSignalBlocker quiet(m_families);
    const bool is_known = family().isEmpty() || tarn::has_font_family(family());
    if (m_families->findData(family()) < 0)
        m_families->addItem(is_known ? family() : lang(u"%1（缺失）", u"%1 (missing)").arg(family()), family());
    m_families->setCurrentIndex(m_families->findData(family()));
    auto* missing = control_as<QLabel>(id_missing);
    missing->setVisible(!is_known);
    if (!is_known)
        missing->setText(lang(u"字体 %1 既未安装，也不在文件包中，将以 %2 代替。",
                              u"The font %1 is neither installed nor in the package; %2 is shown instead.")
                             .arg(family(), tarn::drawn_font_family(family())));
    button(id_remove)->setEnabled(scene()->fonts().find(family()));
    show_notice();
}

/// What the maker of a font that travels with the package wants to be read.
void CDlgDesignFont::show_notice()
{
    const tarn::FontLibrary::Font* font = scene()->fonts().find(family());
    const QString text = font ? notice_text(tarn::FontLibrary::notice(*font)) : QString();
    auto* notice = control_as<QPlainTextEdit>(id_notice);
    notice->parentWidget()->setVisible(font);
    if (notice->toPlainText() != text)
        notice->setPlainText(text);
    notice->setPlaceholderText(lang(u"字体文件没有许可说明。", u"The font says nothing of its licence."));
}

void CDlgDesignFont::changed()
{
    scene()->update_all_ctrl_element();
    refresh();
}

void CDlgDesignFont::on_family(int row)
{
    if (!core() || !is_editing())
        return;
    scene()->set_look_font(owner(), m_families->itemData(row).toString());
    changed();
}

void CDlgDesignFont::on_add()
{
    if (!core() || !is_editing())
        return;
    filter_man filter;
    filter.add_filter(lang(u"字体", u"Fonts"), QStringLiteral("(*.ttf;*.otf;*.ttc)|*.ttf;*.otf;*.ttc||"));
    const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_open, this);
    if (path.isEmpty())
        return;
    if (const auto status = scene()->take_look_font(owner(), path); !status)
        return tarn::boxes::error(this, status.message());
    changed();
}

void CDlgDesignFont::on_remove()
{
    const tarn::FontLibrary::Font* font = core() && is_editing() ? scene()->fonts().find(family()) : nullptr;
    if (!font
        || !tarn::boxes::confirm(this,
                                 lang(u"将从文件包中移除字体 %1，使用它的文字改用默认字体。",
                                      u"The font %1 leaves the package. Texts in it take the usual one.")
                                     .arg(family())))
        return;
    scene()->remove_font(font->entry);
    changed();
    m_families->setFocus(); // Not in the field of the size, whose letters Undo would take.
}
