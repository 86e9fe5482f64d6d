#include "child_dlg.h"

#include "accessible_names.h"
#include "boxes.h"
#include "core/journal.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "form_loader.h"
#include "widgets/button_st.h"
#include "widgets/super_edit.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QVBoxLayout>

#include <optional>

using tarn::lang;

namespace {

constexpr QLatin1String control_prefix("id_");

QString action_name(const QAbstractButton* button)
{
    QString name = button->text().isEmpty() ? button->toolTip() : button->text();
    name.remove(QStringLiteral("..."));
    return name;
}

} // namespace

CChildDlg::CChildDlg(const QString& page_name, QWidget* parent) : QWidget(parent), m_page_name(page_name)
{
    setObjectName(page_name);
}

CChildDlg::~CChildDlg() = default;

int CChildDlg::control_number(const QWidget* widget)
{
    const QString name = widget->objectName();
    if (!name.startsWith(control_prefix))
        return -1;
    bool ok = false;
    const int number = name.mid(control_prefix.size()).toInt(&ok);
    return ok ? number : -1;
}

bool CChildDlg::Create(int template_id, QWidget* parent)
{
    setParent(parent);
    const QString path = CResHandleMan::find(QStringLiteral("templates"), template_id);
    const auto maker = [this](const QString& class_name, QWidget* holder) { return create_widget(class_name, holder); };
    const auto form = tarn::load_form(path, this, maker);
    if (!form) {
        tarn::boxes::error(parent, form.status().message());
        return false;
    }
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(form.value());
    const auto children = form.value()->findChildren<QWidget*>();
    for (QWidget* child : children)
        if (const int number = control_number(child); number >= 0)
            m_controls.insert(number, child);
    OnInitDialog();
    tarn::name_controls(*this);
    return true;
}

void CChildDlg::OnInitDialog()
{
    CTarnLanguageConvert::init_dlg_language(this, m_page_name);
}

QWidget* CChildDlg::create_widget(const QString&, QWidget*)
{
    return nullptr;
}

CButtonST* CChildDlg::button(int id) const
{
    return control_as<CButtonST>(id);
}

QByteArray CChildDlg::merge_key(int id) const
{
    return m_page_name.toLatin1() + '/' + QByteArray::number(id);
}

void CChildDlg::run_action(const std::function<void()>& handler, const QString& name, const QByteArray& merge_key)
{
    std::optional<tarn::UserAction> action;
    if (tarn::Journal* record = journal())
        action.emplace(*record, name, merge_key, tarn::Journal::Merging::Replaces);
    handler();
}

void CChildDlg::on_click(int id, std::function<void()> handler)
{
    auto* widget = control_as<QAbstractButton>(id);
    if (!widget)
        return;
    connect(widget, &QAbstractButton::clicked, this,
            [this, widget, handler = std::move(handler)] { run_action(handler, action_name(widget)); });
}

void CChildDlg::on_choose(int id, std::function<void(int)> handler)
{
    auto* widget = control_as<QComboBox>(id);
    if (!widget)
        return;
    connect(widget, &QComboBox::activated, this, [this, handler = std::move(handler)](int index) {
        run_action([&] { handler(index); }, lang(u"选择", u"Choose"));
    });
}

void CChildDlg::on_text(int id, std::function<void(const QString&)> handler)
{
    auto* widget = control_as<QLineEdit>(id);
    if (!widget)
        return;
    connect(widget, &QLineEdit::textEdited, this, [this, id, handler = std::move(handler)](const QString& text) {
        run_action([&] { handler(text); }, lang(u"输入", u"Typing"), merge_key(id));
    });
    connect(widget, &QLineEdit::editingFinished, this, &CChildDlg::end_typing);
}

void CChildDlg::on_number(int id, std::function<void(double)> handler)
{
    auto* widget = control_as<CSuperEdit>(id);
    if (!widget)
        return;
    connect(widget, &CSuperEdit::text_changed_by_user, this, [this, id, handler = std::move(handler)](double value) {
        run_action([&] { handler(value); }, lang(u"输入", u"Typing"), merge_key(id));
    });
    connect(widget, &CSuperEdit::editing_finished, this, &CChildDlg::end_typing);
}

void CChildDlg::end_typing()
{
    if (tarn::Journal* record = journal())
        record->break_merge();
}
