#include "dlg_prop_flash.h"

#include "core/language.h"
#include "engine/address_gate.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "frame/filedlg.h"
#include "frame/str_input.h"
#include "gui_core/dxut_media.h"
#include "gui_core/gui_event.h"
#include "gui_scene/gui_plug_scene.h"
#include "movies/movie_address.h"
#include "page_base/value_part.h"
#include "script/config_scene.h"
#include "widgets/button_st.h"

#include <QLabel>
#include <QListWidget>
#include <QSignalBlocker>

#include <algorithm>

using tarn::FieldRow;
using tarn::FlashState;
using tarn::key;
using tarn::lang;
using tarn::Scope;
using tarn::Value;

const tarn::SelectedControls tarn::flash_controls{DXUT_CONTROL_FLASH};

namespace {

enum Id : int {
    id_local_file = 6468,
    id_url = 6473,
    id_permission = 7310,
    id_take_back = 7311,
    id_transparent = 6139,
    id_chinese = 6565,
    id_callbacks = 6553,
    id_create = 6167,
    id_remove = 6559,
};

constexpr int max_name = 300; ///< UTF-16 units

constexpr FieldRow setting_row(int control, tarn::FieldKey field)
{
    return {.control = control, .field = field, .scope = Scope::Current, .follows = tarn::Follows::Redraw};
}

/// Nothing of it is to be seen.
constexpr FieldRow chinese_row()
{
    FieldRow row = setting_row(id_chinese, key<&FlashState::chinese_input>);
    row.follows = tarn::Follows::Nothing;
    return row;
}

constexpr FieldRow translucency_row()
{
    FieldRow row = setting_row(6907, key<&FlashState::translucency>);
    row.number = {.format = "%.0f"};
    return row;
}

constexpr FieldRow rows[] = {
    setting_row(6545, key<&FlashState::high_priority>),
    setting_row(6546, key<&FlashState::script_download>),
    setting_row(6542, key<&FlashState::keep_size>),
    setting_row(id_transparent, key<&FlashState::transparent>),
    setting_row(6563, key<&FlashState::keep_global>),
    setting_row(6140, key<&FlashState::mouse_input>),
    setting_row(6144, key<&FlashState::keyboard_input>),
    chinese_row(),
    translucency_row(),
};

/// What was entered last, in whichever page.
QString& last_callback()
{
    static QString name;
    return name;
}

QString shown_name(const QString& source)
{
    return QString(source).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

CDlgPropFlash::CDlgPropFlash(QWidget* parent)
    : CBoundPage(QStringLiteral("CDlgPropFlash"), tarn::flash_controls, parent)
{
    last_callback().clear();
}

CDlgPropFlash::~CDlgPropFlash()
{
    last_callback().clear();
}

void CDlgPropFlash::OnInitDialog()
{
    CBoundPage::OnInitDialog();
    bind(rows);
    // They say what is shown; the step of undo has a name of its own.
    connect(button(id_local_file), &QAbstractButton::clicked, this, &CDlgPropFlash::load_file);
    connect(button(id_url), &QAbstractButton::clicked, this, &CDlgPropFlash::load_url);
    on_click(id_take_back, [this] { take_back_permission(); });
    on_click(id_create, [this] { create_callback(); });
    on_click(id_remove, [this] { remove_callback(); });
    m_callbacks = control_as<QListWidget>(id_callbacks);
    connect(m_callbacks, &QListWidget::currentRowChanged, this,
            [this](int row) { control(id_remove)->setEnabled(row >= 0); });
    connect(m_callbacks, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem* item) { open_callback(item->text()); });
}

CDXUTFlash* CDlgPropFlash::flash() const
{
    return static_cast<CDXUTFlash*>(current());
}

void CDlgPropFlash::refresh()
{
    CBoundPage::refresh();
    const CDXUTFlash* shown = flash();
    const QString source = shown ? tarn::value_as<QString>(value_of(*shown, key<&FlashState::source>)) : QString();
    const bool is_local = shown && tarn::number_of(value_of(*shown, key<&FlashState::source_local>)) != 0;
    const auto show_source = [&](int id, bool here, const QString& caption) {
        const bool has_movie = here && !source.isEmpty();
        button(id)->setText(has_movie ? shown_name(source) : caption);
        button(id)->SetTooltipText(has_movie ? source : caption);
        button(id)->setEnabled(shown);
    };
    show_source(id_local_file, is_local, lang(u"添加本地文件", u"Add a local file"));
    show_source(id_url, !is_local, lang(u"添加网络文件", u"Add from the network"));
    show_permission(is_local ? QString() : source);

    const QSignalBlocker quiet(m_callbacks);
    const QStringList callbacks = shown ? tarn::value_as<QStringList>(value_of(*shown, key<&FlashState::callbacks>))
                                        : QStringList();
    const int row = m_callbacks->currentRow();
    m_callbacks->clear();
    m_callbacks->addItems(callbacks);
    m_callbacks->setCurrentRow(std::min(std::max(row, 0), int(callbacks.size()) - 1));
    m_callbacks->setEnabled(shown);
    control(id_create)->setEnabled(shown);
    control(id_remove)->setEnabled(m_callbacks->currentRow() >= 0);
}

/// The line below the address.
void CDlgPropFlash::show_permission(const QString& url)
{
    const auto address = tarn::movie_address(url);
    const tarn::AddressGate* gate = world() ? world()->address_gate() : nullptr;
    m_address = address ? address.value() : QString();
    const bool is_allowed = gate && address && gate->is_allowed(m_address);
    auto* line = control_as<QLabel>(id_permission);
    line->setText(!address         ? address.status().message()
                      : is_allowed ? lang(u"本机已允许。", u"Allowed on this machine.")
                                   : lang(u"尚未允许，预览时会询问。", u"Not allowed yet; a preview asks."));
    line->setVisible(!url.isEmpty());
    control(id_take_back)->setVisible(is_allowed);
}

void CDlgPropFlash::take_back_permission()
{
    if (tarn::AddressGate* gate = world()->address_gate())
        gate->set_allowed({m_address}, false);
    refresh();
}

// A transparent movie takes no Chinese characters. The page sees to it and asks; the state allows both.

bool CDlgPropFlash::confirm_edit(int id, const Value& value)
{
    const auto is_on = [this](tarn::FieldKey field) { return tarn::number_of(value_of(*current(), field)) != 0; };
    if (tarn::number_of(value) == 0)
        return true;
    if (id == id_transparent && is_on(key<&FlashState::chinese_input>))
        return tarn::boxes::confirm(this,
                                    lang(u" 开启透明背景后将失去对中文输入的支持，是否继续？ ",
                                         u"Non-unicode input in flash cannot be used with Transparent."),
                                    lang(u"中文输入警告", u"Non-unicode Input Warning!"));
    if (id == id_chinese && is_on(key<&FlashState::transparent>))
        return tarn::boxes::confirm(this, QStringLiteral(" 开启中文输入后将失去FLASH背景透明的效果，是否继续？ "),
                                    QStringLiteral("透明背景警告"));
    return true;
}

void CDlgPropFlash::row_edited(int id, const Value& value)
{
    write(key<&FlashState::reload>, false, Scope::Current);
    if (tarn::number_of(value) == 0)
        return;
    if (id == id_transparent)
        write(key<&FlashState::chinese_input>, false, Scope::Current);
    if (id != id_chinese)
        return;
    write(key<&FlashState::transparent>, false, Scope::Current);
    write(key<&FlashState::keyboard_input>, true, Scope::Current);
    write(key<&FlashState::translucency>, qint64(0), Scope::Current);
}

void CDlgPropFlash::load_file()
{
    if (!flash())
        return;
    filter_man filter;
    filter.add_filter(lang(u"FLASH文件", u"FLASH files"), QStringLiteral("*.swf"));
    const QString path = filedlg::pop_file_dlg(filter, filedlg::mode_open, window());
    if (!path.isEmpty())
        load(path, true);
}

void CDlgPropFlash::load_url()
{
    const QString title = VLCMsgIniW::switch_lang(QStringLiteral("输入FLASH文件URL地址"),
                                                  QStringLiteral("Flash url address"));
    QString url;
    if (flash() && PopDlgStrInput(window(), title, title, {}, url) && !url.trimmed().isEmpty())
        load(url.trimmed(), false);
}

void CDlgPropFlash::load(const QString& source, bool is_local)
{
    CDXUTFlash* shown = flash(); // The box may have changed what is selected.
    if (!shown)
        return;
    tarn::Status status;
    run_action(
        [&] {
            status = scene()->set_Flashctrl_swf(*shown, source, is_local);
            if (status)
                write(key<&FlashState::reload>, false, Scope::Current);
        },
        lang(u"设置影片", u"Set Movie"));
    if (!status)
        tarn::boxes::error(this, status.message());
    refresh();
}

/// A movie with a click event calls that event's function, whatever was entered.
QString CDlgPropFlash::callback_name(const QString& entered) const
{
    const CGuiEvent* click = scene()->events().GetFunc(flash()->id(), EVENT_BUTTON_CLICKED);
    return click ? click->function() : flash()->name() + QLatin1Char('_') + entered;
}

void CDlgPropFlash::create_callback()
{
    if (!flash())
        return;
    const QString title = VLCMsgIniW::switch_lang(QStringLiteral("创建 TARN_CallBack 函数"),
                                                  QStringLiteral("Create TARN_CallBack Function"));
    QString entered;
    if (!PopDlgStrInput(window(), title, title, last_callback(), entered, max_name, 1) || !flash())
        return;
    last_callback() = entered;
    const QString function = callback_name(entered);
    CConfigScene& functions = scene()->functions();
    if (!functions.find_function(function))
        if (const auto added = functions.add_function(IFunc::create_func(functions, function), true); !added)
            return tarn::boxes::error(this, added.message());
    QStringList callbacks = tarn::value_as<QStringList>(value_of(*flash(), key<&FlashState::callbacks>));
    if (!callbacks.contains(function))
        write_callbacks(callbacks << function, title);
    m_callbacks->setCurrentRow(int(callbacks.indexOf(function)));
    open_callback(function);
}

void CDlgPropFlash::open_callback(const QString& function)
{
    if (scene()->functions().find_function(function))
        CDlgCmdTest::do_modal(function, world(), this, -1);
    refresh();
}

void CDlgPropFlash::remove_callback()
{
    const QListWidgetItem* chosen = m_callbacks->currentItem();
    if (!flash() || !chosen)
        return;
    const QString function = chosen->text();
    const QString question = lang(u"删除 TARN_CallBack 函数", u"Remove TARN_CallBack function?");
    const QString title = lang(u"删除TARN_CallBack 函数", u"Remove TARN_CallBack function");
    const QString which = lang(u"是否删除该函数： ", u"Remove Script:") + function;
    if (!tarn::boxes::confirm(this, question + QLatin1Char('\n') + which, title) || !flash())
        return;
    QStringList callbacks = tarn::value_as<QStringList>(value_of(*flash(), key<&FlashState::callbacks>));
    callbacks.removeOne(function);
    write_callbacks(callbacks, title);
    scene()->functions().del_function(function);
    refresh();
}

void CDlgPropFlash::write_callbacks(const QStringList& callbacks, const QString& step)
{
    change([&] { write(key<&FlashState::callbacks>, callbacks, Scope::Current); }, step);
    refresh();
}
