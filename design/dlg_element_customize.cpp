#include "dlg_element_customize.h"
#include "core/authored.h"

#include "core/field.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/filedlg.h"
#include "frame/menufun.h"
#include "gui_core/control_state.h"
#include "gui_core/control_style.h"
#include "gui_core/dxut_control.h"
#include "gui_core/gui_core.h"
#include "gui_core/look_fields.h"
#include "gui_core/style_look.h"
#include "gui_draw/control_drawing.h"
#include "gui_draw/element_cache.h"
#include "gui_draw/texture_cache.h"
#include "gui_scene/gui_plug_scene.h"
#include "gui_scene/picture_file.h"
#include "gui_scene/picture_release.h"
#include "page_base/font_choices.h"
#include "page_base/value_part.h"
#include "widgets/button_st.h"
#include "widgets/plain_tip.h"

#include <QComboBox>
#include <QEvent>
#include <QLabel>

#include <algorithm>
#include <array>

using tarn::ControlExtras;
using tarn::FieldKey;
using tarn::FieldRow;
using tarn::key;
using tarn::lang;
using tarn::ModelObject;
using tarn::Part;
using tarn::Shows;
using tarn::StaticState;
using tarn::Value;
using tarn::VisualState;

namespace {

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
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

constexpr FieldKey style_images = key<&ControlExtras::style_images>;
constexpr FieldKey style_colors = key<&ControlExtras::style_colors>;
constexpr FieldKey style_text_colors = key<&ControlExtras::style_text_colors>;

bool has_elements(const ModelObject& current)
{
    return !tarn::style_elements(static_cast<const CDXUTControl&>(current).GetType()).empty();
}

bool has_text(const ModelObject& current)
{
    return tarn::has_styled_text(static_cast<const CDXUTControl&>(current).GetType());
}

/// The colour that is all zeros means that none is chosen; what is as transparent can stand for it.
Value chosen_color(const ModelObject&, const Value& picked, Part)
{
    return tarn::number_of(picked) != 0 ? picked : Value(qint64(0x00ffffff));
}

/// The colour that is seen where none is chosen for the state that the part names.
Value seen_text_color(const ModelObject& object, const Value& chosen, Part part)
{
    if (tarn::number_of(chosen) != 0)
        return chosen;
    const tarn::FieldBase* own = object.fields().find(key<&StaticState::text_color>);
    const auto authored = quint32(own ? tarn::number_of(object.property(*own)) : 0);
    int state = 0;
    while (state + 1 < tarn::style_state_count && tarn::state_name(VisualState(state)) != QLatin1String(part.name))
        ++state;
    return qint64(tarn::text_color_in(static_cast<const CDXUTControl&>(object), VisualState(state), authored));
}

Value seen_font_size(const ModelObject& object, const Value& chosen, Part)
{
    const auto& control = static_cast<const CDXUTControl&>(object);
    return tarn::number_of(chosen) != 0 ? chosen : Value(qint64(control.core().look().font_size(control.GetType())));
}

constexpr FieldRow rows[] = {
    {.control = id_tint,
     .field = style_colors,
     .shows = Shows::Current,
     .part = tarn::entry(""),
     .conversion = {.stored = chosen_color},
     .enabled_if = has_elements,
     .blank_color = 0xffffffff},
    {.control = id_text_color,
     .field = style_text_colors,
     .shows = Shows::Current,
     .part = tarn::entry(""),
     .conversion = {.shown = seen_text_color, .stored = chosen_color},
     .enabled_if = has_text,
     .blank_color = 0xffffffff},
    {.control = id_family,
     .field = key<&ControlExtras::font_family>,
     .shows = Shows::Current,
     .enabled_if = has_text,
     .choices = tarn::font_choices},
    {.control = id_size,
     .field = key<&StaticState::font_size>,
     .shows = Shows::Current,
     .number = {.format = "%.0f", .minimum = 1, .maximum = largest_font},
     .conversion = {.shown = seen_font_size},
     .enabled_if = has_text},
    {.control = id_bold, .field = key<&StaticState::bold>, .shows = Shows::Current, .enabled_if = has_text},
    {.control = id_italic, .field = key<&ControlExtras::font_italic>, .shows = Shows::Current, .enabled_if = has_text},
};

QString reading_pictures()
{
    return lang(u"正在读取图片", u"Taking In a Picture");
}

} // namespace

CDlgElementCustomize::CDlgElementCustomize(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgElementCustomize"), tarn::selected_like_current, parent)
{
}

void CDlgElementCustomize::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    m_elements = control_as<QComboBox>(id_element);
    m_states = control_as<QComboBox>(id_state);
    for (int state = 0; state < tarn::style_state_count; ++state)
        m_states->addItem(tarn::visual_state_caption(VisualState(state)));
    control(id_tint)->setToolTip(lang(u"图片着色", u"Picture Color"));
    control(id_text_color)->setToolTip(lang(u"文字颜色", u"Text Color"));
    bind(rows);
    buffer_edits(id_ok, id_cancel, lang(u"自定义风格", u"Custom Style"));
    control(id_picture_name)->installEventFilter(this);
    on_choose(id_element, [this](int) { refresh(); });
    on_choose(id_state, [this](int) { refresh(); });
    on_click(id_choose_picture, [this] { on_choose_picture(); });
    on_click(id_reset_state, [this] { on_reset_state(); });
    on_click(id_reset_all, [this] { on_reset_all(); });
    refresh();
}

const tarn::StyleElement* CDlgElementCustomize::element() const
{
    const auto elements = tarn::style_elements(m_listed_type);
    const int row = m_elements->currentIndex();
    return row >= 0 && row < int(elements.size()) ? &elements[std::size_t(row)] : nullptr;
}

VisualState CDlgElementCustomize::state() const
{
    return VisualState(std::max(0, m_states->currentIndex()));
}

Part CDlgElementCustomize::look_part() const
{
    return tarn::entry(m_look_name.constData());
}

Part CDlgElementCustomize::state_part() const
{
    return tarn::entry(m_state_name.constData());
}

void CDlgElementCustomize::refresh()
{
    const auto* shown = static_cast<const CDXUTControl*>(current());
    fill_elements(shown ? shown->GetType() : -1);
    m_look_name = element() ? tarn::look_name(*element(), state()).toLatin1() : QByteArray();
    m_state_name = tarn::state_name(state()).toLatin1();
    set_part(id_tint, look_part());
    set_part(id_text_color, state_part());
    CBoundPage::refresh();
    enable_parts(shown);
    if (shown)
        show_picture(*shown);
}

void CDlgElementCustomize::fill_elements(int control_type)
{
    if (control_type == m_listed_type)
        return;
    m_listed_type = control_type;
    m_elements->clear();
    for (const tarn::StyleElement& element : tarn::style_elements(control_type))
        m_elements->addItem(element.caption());
}

QString CDlgElementCustomize::picture_name(const CDXUTControl& control) const
{
    return tarn::value_as<QString>(part_of(value_of(control, style_images), look_part()));
}

QImage CDlgElementCustomize::picture(const QString& name) const
{
    const auto file = m_chosen_files.find(name);
    return file != m_chosen_files.end() ? *file : name.isEmpty() ? QImage() : tarn::texture(*core(), name);
}

/// The control's state with the edits that wait.
tarn::StatePtr CDlgElementCustomize::awaited_state(const CDXUTControl& control) const
{
    tarn::StatePtr awaited(tarn::Authored::state(control).clone());
    for (const FieldKey field : {style_images, style_colors})
        (void)control.fields().find(field)->set(*awaited, value_of(control, field));
    return awaited;
}

void CDlgElementCustomize::show_picture(const CDXUTControl& shown)
{
    auto* preview = control_as<QLabel>(id_preview);
    if (!element()) {
        preview->setPixmap({});
        show_picture_name({});
        return;
    }
    const tarn::StatePtr awaited = awaited_state(shown);
    const tarn::ElementLook look = tarn::element_look(core()->look(), static_cast<const tarn::ControlState&>(*awaited),
                                                      element()->element, state(), state());
    const QString& name = look.picture;
    const QImage own = picture(name);
    tarn::ElementCache cache;
    preview->setPixmap(
        QPixmap::fromImage(cache.image(tarn::element_source(core()->look(), element()->element, state(), look, own),
                                       preview_size, preview->devicePixelRatioF())));
    const QString text = name.isEmpty() ? lang(u"风格图片", u"The style's picture")
        : own.isNull()                  ? lang(u"%1（缺失）", u"%1 (missing)").arg(name)
                                        : name;
    show_picture_name(text);
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
    return CBoundPage::eventFilter(watched, event);
}

void CDlgElementCustomize::enable_parts(const CDXUTControl* shown)
{
    const bool elements = shown && has_elements(*shown);
    for (const int id : {id_element, id_preview, id_picture_name, id_choose_picture})
        control(id)->setEnabled(elements);
    control(id_state)->setEnabled(elements || (shown && has_text(*shown)));
    const auto all = selected();
    button(id_reset_state)
        ->setEnabled(differs_from_default(style_images, look_part(), all)
                     || differs_from_default(style_colors, look_part(), all)
                     || differs_from_default(style_text_colors, state_part(), all));
    button(id_reset_all)
        ->setEnabled(std::any_of(tarn::look_fields.begin(), tarn::look_fields.end(),
                                 [&](FieldKey field) { return differs_from_default(field, {}, all); }));
}

void CDlgElementCustomize::on_choose_picture()
{
    const auto* shown = static_cast<const CDXUTControl*>(current());
    if (!shown || !element())
        return;
    const QStringList names = core()->texture_names();
    const QString present = picture_name(*shown);
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
        choose_picture_file();
    else if (command != 0)
        put_picture(names.value(command - command_first_picture));
}

void CDlgElementCustomize::choose_picture_file()
{
    const QString path = filedlg::pop_open_dlg_img(this);
    if (path.isEmpty())
        return;
    const auto status = scene()->world()->work(reading_pictures(), [&](const tarn::Progress& progress) {
        const auto loaded = tarn::load_picture(path, progress);
        if (loaded)
            m_chosen_files.insert(path, loaded.value());
        return loaded.status();
    });
    if (!status)
        return tarn::boxes::error(this, status.message());
    put_picture(path);
}

void CDlgElementCustomize::put_picture(const QString& name)
{
    change([&] { write(style_images, name, tarn::Scope::EverySelected, look_part()); }, {});
    refresh();
}

void CDlgElementCustomize::on_reset_state()
{
    const auto reset = [this] {
        write_default(style_images, look_part());
        write_default(style_colors, look_part());
        write_default(style_text_colors, state_part());
    };
    change(reset, {});
    refresh();
}

void CDlgElementCustomize::on_reset_all()
{
    const auto reset = [this] {
        for (const FieldKey field : tarn::look_fields)
            write_default(field);
    };
    change(reset, {});
    refresh();
}

tarn::Status CDlgElementCustomize::write_buffered(const std::function<tarn::Status()>& write)
{
    const tarn::PictureRelease release(*core(), scene()->functions(), selected());
    const tarn::Status taken = scene()->world()->work(
        reading_pictures(), [this](const tarn::Progress& progress) { return take_chosen_files(progress); });
    return taken ? write() : taken;
}

/// The pictures that wait with the edits come into the scene, and the edits get their names there.
tarn::Status CDlgElementCustomize::take_chosen_files(const tarn::Progress& progress)
{
    QStringList files;
    for (const ModelObject* object : selected())
        for (const QString& name : tarn::value_as<tarn::TextMap>(value_of(*object, style_images)))
            if (m_chosen_files.contains(name) && !files.contains(name))
                files.append(name);
    QHash<QString, QString> names;
    for (const QString& file : files) {
        const double done = double(names.size()) / double(files.size());
        const auto taken = tarn::take_picture(*core(), file, progress.part(done, done + 1.0 / double(files.size())));
        if (!taken)
            return taken.status();
        names.insert(file, taken.value());
    }
    const auto renamed = [&](const ModelObject& object, const tarn::FieldBase&) -> Value {
        auto images = tarn::value_as<tarn::TextMap>(value_of(object, style_images));
        for (QString& name : images)
            name = names.value(name, name);
        return images;
    };
    if (!names.isEmpty())
        write_each(style_images, tarn::Scope::EverySelected, renamed);
    return {};
}
