#include "dlg_element_customize.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/menufun.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/element_cache.h"
#include "gui_core/gui_core.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_file.h"
#include "gui_scene/picture_release.h"
#include "pop_dlg_color.h"
#include "widgets/button_st.h"
#include "widgets/color_swatch.h"
#include "widgets/plain_tip.h"
#include "widgets/super_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFontDatabase>
#include <QLabel>

#include <algorithm>

using tarn::key;
using tarn::lang;
using tarn::StaticState;
using tarn::VisualState;

namespace {

enum Id : int {
    id_element = 6621,
    id_state = 6622,
    id_preview = 6623,
    id_picture_name = 6624,
    id_choose_picture = 6625,
    id_tint = 6626,
    id_text_color = 6627,
    id_family = 6628,
    id_size = 6629,
    id_bold = 6630,
    id_italic = 6631,
    id_reset_state = 6632,
    id_reset_all = 6633,
};

enum Command : int { command_none = 1, command_file = 2, command_first_picture = 10 };

constexpr QSize preview_size(96, 36); ///< pixels
constexpr int largest_font = 500;     ///< pixels

tarn::Value property_of(const CDXUTControl& control, tarn::FieldKey key)
{
    const tarn::FieldBase* field = control.fields().find(key);
    return field ? control.property(*field) : tarn::Value();
}

void set_property(CDXUTControl& control, tarn::FieldKey key, const tarn::Value& value)
{
    if (const tarn::FieldBase* field = control.fields().find(key))
        (void)control.set_property(*field, value);
}

/// A number that not every type has; 0 for those without it.
qint64 number_of(const CDXUTControl& control, tarn::FieldKey key)
{
    const tarn::Value value = property_of(control, key);
    const auto* number = std::get_if<qint64>(&value);
    return number ? *number : 0;
}

quint32 shown_text_color(const CDXUTControl& control, VisualState look)
{
    const quint32 chosen = control.style_text_color(look);
    return chosen ? chosen : tarn::Skin::text_color(look, quint32(number_of(control, key<&StaticState::text_color>)));
}

} // namespace

CDlgElementCustomize::CDlgElementCustomize(QWidget* parent)
    : CGuiChildDlg(QStringLiteral("CDlgElementCustomize"), parent)
{
}

void CDlgElementCustomize::OnInitDialog()
{
    CGuiChildDlg::OnInitDialog();
    m_elements = control_as<QComboBox>(id_element);
    m_states = control_as<QComboBox>(id_state);
    m_families = control_as<QComboBox>(id_family);
    set_up_pictures();
    set_up_texts();
    on_click(id_reset_state, [this] { on_reset_state(); });
    on_click(id_reset_all, [this] { apply([](CDXUTControl& control) { control.reset_style(); }); });
    enable_parts(nullptr);
}

void CDlgElementCustomize::set_up_pictures()
{
    for (int state = 0; state < tarn::style_state_count; ++state)
        m_states->addItem(tarn::visual_state_name(VisualState(state)));
    control(id_picture_name)->installEventFilter(this);
    on_choose(id_element, [this](int) { refresh(); });
    on_choose(id_state, [this](int) { refresh(); });
    on_click(id_choose_picture, [this] { on_choose_picture(); });
    control(id_tint)->setToolTip(lang(u"图片着色", u"Picture Colour"));
    on_click(id_tint, [this] {
        on_choose_color(id_tint, [this](CDXUTControl& target, quint32 argb) { target.set_style_color(slot(), argb); });
    });
}

void CDlgElementCustomize::set_up_texts()
{
    control(id_text_color)->setToolTip(lang(u"文字颜色", u"Text Colour"));
    on_click(id_text_color, [this] {
        on_choose_color(id_text_color,
                        [this](CDXUTControl& target, quint32 argb) { target.set_style_text_color(look(), argb); });
    });
    m_families->addItem(lang(u"（风格字体）", u"(The style's)"));
    m_families->addItems(QFontDatabase::families());
    on_choose(id_family, [this](int row) {
        const QString family = row == 0 ? QString() : m_families->itemText(row);
        apply([&](CDXUTControl& target) { target.set_font_family(family); });
    });
    auto* size = control_as<CSuperEdit>(id_size);
    size->set_range(1, largest_font, 1);
    size->set_format_string(QStringLiteral("%0.0f"));
    on_number(id_size, [this](double pixels) {
        apply([&](CDXUTControl& target) { set_property(target, key<&StaticState::font_size>, qint64(pixels)); });
    });
    on_click(id_bold, [this] {
        const bool bold = control_as<QCheckBox>(id_bold)->isChecked();
        apply([&](CDXUTControl& target) { set_property(target, key<&StaticState::bold>, bold); });
    });
    on_click(id_italic, [this] {
        const bool italic = control_as<QCheckBox>(id_italic)->isChecked();
        apply([&](CDXUTControl& target) { target.set_font_italic(italic); });
    });
}

void CDlgElementCustomize::update_ui(int code)
{
    switch (code) {
    case tarn::ui_full_refresh:
    case tarn::ui_scene_changed:
    case tarn::ui_control_selected:
    case tarn::ui_control_properties:
    case tarn::ui_selection_changed: refresh(); break;
    default: break;
    }
}

CDXUTControl* CDlgElementCustomize::current() const
{
    if (!core())
        return nullptr;
    const tarn::SelectionRecord& selection = core()->selection();
    return selection.editing && selection.controls_selected ? selection.current_control : nullptr;
}

std::vector<CDXUTControl*> CDlgElementCustomize::targets() const
{
    const CDXUTControl* shown = current();
    std::vector<CDXUTControl*> all;
    if (shown)
        std::copy_if(core()->selection().controls.begin(), core()->selection().controls.end(), std::back_inserter(all),
                     [&](const CDXUTControl* control) { return control->GetType() == shown->GetType(); });
    return all;
}

int CDlgElementCustomize::slot() const
{
    const int element = m_elements->currentIndex();
    return element < 0 ? -1 : tarn::style_slot(element, look());
}

VisualState CDlgElementCustomize::look() const
{
    return VisualState(std::max(0, m_states->currentIndex()));
}

void CDlgElementCustomize::apply(const std::function<void(CDXUTControl&)>& change)
{
    const auto all = targets();
    if (all.empty())
        return;
    {
        const tarn::PictureRelease release(*core(), scene()->functions(), all);
        for (CDXUTControl* target : all)
            change(*target);
    }
    broadcast(tarn::ui_control_properties);
    update_all_views();
}

void CDlgElementCustomize::refresh()
{
    const CDXUTControl* shown = current();
    fill_elements(shown ? shown->GetType() : -1);
    enable_parts(shown);
    if (!shown)
        return;
    show_picture(*shown);
    show_text(*shown);
}

void CDlgElementCustomize::fill_elements(int control_type)
{
    if (control_type == m_listed_type)
        return;
    m_listed_type = control_type;
    m_elements->clear();
    for (const tarn::StyleElement& element : tarn::style_elements(control_type))
        m_elements->addItem(element.name());
}

void CDlgElementCustomize::show_picture(const CDXUTControl& shown)
{
    auto* preview = control_as<QLabel>(id_preview);
    const auto elements = tarn::style_elements(shown.GetType());
    if (slot() < 0 || slot() >= int(elements.size()) * tarn::style_state_count) {
        preview->setPixmap({});
        show_picture_name({});
        return;
    }
    const QString name = shown.style_image(slot());
    tarn::ElementCache cache(tarn::Skin::default_skin());
    const tarn::ElementChoice choice{name.isEmpty() ? QImage() : core()->texture(name), shown.style_color(slot())};
    const tarn::Element element = elements[std::size_t(m_elements->currentIndex())].element;
    preview->setPixmap(
        QPixmap::fromImage(cache.image(element, look(), preview_size, preview->devicePixelRatioF(), choice)));
    const QString text = name.isEmpty() ? lang(u"风格图片", u"The style's picture")
        : choice.picture.isNull()       ? lang(u"%1（缺失）", u"%1 (missing)").arg(name)
                                        : name;
    show_picture_name(text);
    control_as<CColorSwatch>(id_tint)->set_color(shown.style_color(slot()));
}

void CDlgElementCustomize::show_picture_name(const QString& name)
{
    m_picture_name = name;
    auto* label = control_as<QLabel>(id_picture_name);
    label->setTextFormat(Qt::PlainText);
    label->setText(label->fontMetrics().elidedText(name, Qt::ElideMiddle, label->width()));
    label->setToolTip(tarn::plain_tip(name));
}

bool CDlgElementCustomize::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && watched == control(id_picture_name))
        show_picture_name(m_picture_name);
    return CGuiChildDlg::eventFilter(watched, event);
}

void CDlgElementCustomize::show_text(const CDXUTControl& shown)
{
    control_as<CColorSwatch>(id_text_color)->set_color(shown_text_color(shown, look()));
    show_family(shown.font_family());
    const qint64 size = number_of(shown, key<&StaticState::font_size>);
    control_as<CSuperEdit>(id_size)->set_pos(size ? double(size) : tarn::Skin::font_size);
    control_as<QCheckBox>(id_bold)->setChecked(property_of(shown, key<&StaticState::bold>) == tarn::Value(true));
    control_as<QCheckBox>(id_italic)->setChecked(shown.font_italic());
}

void CDlgElementCustomize::show_family(const QString& family)
{
    if (m_missing_family >= 0)
        m_families->removeItem(m_missing_family);
    m_missing_family = -1;
    int row = family.isEmpty() ? 0 : m_families->findText(family, Qt::MatchFixedString);
    if (row < 0) {
        row = m_missing_family = m_families->count();
        m_families->addItem(family);
    }
    m_families->setCurrentIndex(row);
}

void CDlgElementCustomize::enable_parts(const CDXUTControl* shown)
{
    const bool elements = shown && !tarn::style_elements(shown->GetType()).empty();
    const bool text = shown && tarn::has_styled_text(shown->GetType());
    const auto enable = [this](std::initializer_list<int> ids, bool on) {
        for (const int id : ids)
            control(id)->setEnabled(on);
    };
    enable({id_state}, elements || text);
    enable({id_element, id_preview, id_picture_name, id_choose_picture, id_tint}, elements);
    enable({id_text_color, id_family, id_italic}, text);
    enable({id_size}, text && shown->fields().find(key<&StaticState::font_size>));
    enable({id_bold}, text && shown->fields().find(key<&StaticState::bold>));
    const auto all = targets();
    enable({id_reset_state}, std::any_of(all.begin(), all.end(), [this](const CDXUTControl* target) {
               return !target->style_image(slot()).isEmpty() || target->style_color(slot())
                   || target->style_text_color(look());
           }));
    enable({id_reset_all},
           std::any_of(all.begin(), all.end(), [](const CDXUTControl* target) { return target->has_style(); }));
}

void CDlgElementCustomize::on_choose_picture()
{
    const CDXUTControl* shown = current();
    if (!shown || slot() < 0)
        return;
    const QStringList names = core()->texture_names();
    const QString present = shown->style_image(slot());
    std::vector<tarn::boxes::MenuItem> items{
        {.id = command_none, .text = lang(u"风格图片", u"The style's picture"), .checked = present.isEmpty()},
        {.id = command_file, .text = lang(u"从文件...", u"From file...")},
    };
    if (!names.isEmpty())
        items.push_back({});
    for (int i = 0; i < int(names.size()); ++i)
        items.push_back({.id = command_first_picture + i, .text = names[i], .checked = names[i] == present});
    const int command = menufun::pop_menu(this, items);
    if (command == command_file)
        take_picture_from_file();
    else if (command == command_none)
        apply([this](CDXUTControl& target) { target.set_style_image(slot(), {}); });
    else if (command >= command_first_picture)
        apply([&](CDXUTControl& target) {
            target.set_style_image(slot(), names.value(command - command_first_picture));
        });
}

void CDlgElementCustomize::take_picture_from_file()
{
    const QString path = filedlg::pop_open_dlg_img(this);
    if (path.isEmpty())
        return;
    const auto name = tarn::take_picture(*core(), path);
    if (!name) {
        tarn::boxes::error(this, name.status().message());
        return;
    }
    apply([&](CDXUTControl& target) { target.set_style_image(slot(), name.value()); });
}

void CDlgElementCustomize::on_choose_color(int swatch_id, const std::function<void(CDXUTControl&, quint32)>& put)
{
    const quint32 start = control_as<CColorSwatch>(swatch_id)->argb();
    CPopDlgColor picker(start ? start : 0xffffffffu);
    if (picker.do_modal(this) != 1)
        return;
    // The colour that is all zeros means that none is chosen; what is as transparent can stand for it.
    const quint32 argb = picker.color() ? picker.color() : 0x00ffffffu;
    apply([&](CDXUTControl& target) { put(target, argb); });
}

void CDlgElementCustomize::on_reset_state()
{
    apply([this](CDXUTControl& target) {
        target.set_style_image(slot(), {});
        target.set_style_color(slot(), 0);
        target.set_style_text_color(look(), 0);
    });
}
