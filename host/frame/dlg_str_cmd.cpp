// The dialog in which a command line is put together.

#include "boxes.h"
#include "child_dlg.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "engine/base_world.h"
#include "script/command_line.h"
#include "str_cmd.h"
#include "widgets/button_st.h"

#include <QComboBox>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

using tarn::lang;
using tarn::StrCommand;

namespace {

constexpr int template_id = 6945;

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
    id_filter = 6946,
    id_list = 6947,
    id_about = 6948,
    id_object_label = 6949,
    id_kind = 6950,
    id_object = 6951,
    id_line = 6952,
    id_first_label = 6960,
    id_first_field = 6970,
};
constexpr int field_count = 8;

} // namespace

namespace tarn {

class StrCmdPage : public CChildDlg {
public:
    StrCmdPage(QDialog& dialog, CBaseWorld& world, QStringList names)
        : CChildDlg(QStringLiteral("CDlgStrCmd"), &dialog),
          m_dialog(dialog),
          m_world(world),
          m_commands(str_commands(world)),
          m_names(std::move(names))
    {
    }

    void begin(int id, const QString& call, const QStringList& parameters)
    {
        const qsizetype open = call.indexOf(u'(');
        const qsizetype close = call.lastIndexOf(u')');
        if (open > 0 && close > open) {
            m_kind = call.left(open).trimmed();
            control_as<QLineEdit>(id_object)->setText(call.mid(open + 1, close - open - 1).trimmed());
        }
        for (int row = 0; row < m_list->count(); ++row)
            if (m_list->item(row)->data(Qt::UserRole).toInt() == id)
                m_list->setCurrentRow(row);
        m_parameters = parameters; // Choosing another row forgets them.
        show_command();
    }
    QString line() const
    {
        const StrCommand* command = chosen();
        if (!command)
            return {};
        CommandLine line;
        line.call = command->name;
        if (!command->kinds.isEmpty())
            line.call = control_as<QComboBox>(id_kind)->currentText() + u'(' + object_text() + QStringLiteral("):")
                + command->name;
        for (int i = 0; i < field_count; ++i)
            line.parameters.append(i < shown_fields() ? field_text(i) : QString());
        while (!line.parameters.isEmpty() && line.parameters.last().isEmpty())
            line.parameters.removeLast();
        for (QString& parameter : line.parameters)
            if (parameter.isEmpty())
                parameter = QStringLiteral("nil");
        return line.text();
    }

protected:
    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        m_list = control_as<QListWidget>(id_list);
        for (std::size_t i = 0; i < m_commands.size(); ++i)
            (new QListWidgetItem(m_commands[i].caption(), m_list))->setData(Qt::UserRole, int(i));
        connect(m_list, &QListWidget::currentRowChanged, this, [this] {
            m_parameters.clear();
            show_command();
        });
        connect(control_as<QLineEdit>(id_filter), &QLineEdit::textChanged, this, [this](const QString& part) {
            for (int row = 0; row < m_list->count(); ++row)
                m_list->item(row)->setHidden(!m_list->item(row)->text().contains(part, Qt::CaseInsensitive));
        });
        connect(control_as<QComboBox>(id_kind), &QComboBox::currentTextChanged, this, [this](const QString& kind) {
            m_kind = kind;
            show_line();
        });
        connect(control_as<QLineEdit>(id_object), &QLineEdit::textChanged, this, [this] { show_line(); });
        for (int i = 0; i < field_count; ++i) {
            auto* field = control_as<QComboBox>(id_first_field + i);
            field->addItems(m_names);
            field->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
            connect(field, &QComboBox::currentTextChanged, this, [this] {
                show_fields();
                show_line();
            });
        }
        on_click(id_ok, [this] { confirm(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        button(id_ok)->setDefault(true);
    }

private:
    const StrCommand* chosen() const
    {
        const QListWidgetItem* item = m_list->currentItem();
        return item ? &m_commands[std::size_t(item->data(Qt::UserRole).toInt())] : nullptr;
    }
    QString field_text(int i) const { return control_as<QComboBox>(id_first_field + i)->currentText().trimmed(); }
    /// A name is enough: it becomes a text in quotes. A number is an id.
    QString object_text() const
    {
        const QString typed = control_as<QLineEdit>(id_object)->text().trimmed();
        bool is_id = false;
        typed.toUInt(&is_id);
        const bool is_quoted = typed.startsWith(u'"') || typed.startsWith(u'\'');
        return typed.isEmpty() || is_id || is_quoted ? typed : lua_quoted(typed);
    }
    /// As many as there are parameters, and one more where more are taken.
    int shown_fields() const
    {
        const StrCommand* command = chosen();
        if (!command)
            return 0;
        int count = int(command->parameter_names.size());
        if (command->takes_more) {
            for (int i = count; i < field_count; ++i)
                if (!field_text(i).isEmpty())
                    count = i + 1;
            ++count;
        }
        return std::min(count, field_count);
    }

    void show_command()
    {
        const StrCommand* command = chosen();
        control_as<QLabel>(id_about)->setText(command ? command->about
                                                      : lang(u"请选择要调用的函数。", u"Choose what is called."));
        const bool is_method = command && !command->kinds.isEmpty();
        for (const int id : {id_object_label, id_kind, id_object})
            control(id)->setVisible(is_method);
        auto* kind = control_as<QComboBox>(id_kind);
        const QString wanted = m_kind;
        {
            const QSignalBlocker quiet(kind);
            kind->clear();
            if (command)
                kind->addItems(command->kinds);
            kind->setCurrentIndex(std::max(kind->findText(wanted), 0));
        }
        for (int i = 0; i < field_count; ++i) {
            auto* field = control_as<QComboBox>(id_first_field + i);
            const QSignalBlocker quiet(field);
            // What has no field of its own stands in the last one.
            const bool is_last = i == field_count - 1;
            field->setEditText(is_last ? m_parameters.mid(i).join(QStringLiteral(", ")) : m_parameters.value(i));
        }
        show_fields();
        show_line();
    }
    void show_fields()
    {
        const StrCommand* command = chosen();
        const int count = shown_fields();
        for (int i = 0; i < field_count; ++i) {
            auto* label = control_as<QLabel>(id_first_label + i);
            auto* field = control_as<QComboBox>(id_first_field + i);
            label->setVisible(i < count);
            field->setVisible(i < count);
            if (i >= count)
                continue;
            const QString name = command->parameter_names.value(i);
            label->setText(name.isEmpty() ? lang(u"参数 %1", u"Parameter %1").arg(i + 1) : name);
            const bool is_told = std::size_t(i) < command->parameters.size();
            const QString about = is_told ? command->parameters[std::size_t(i)].about.text() : QString();
            field->setToolTip(about);
            field->lineEdit()->setPlaceholderText(about);
        }
    }
    void show_line() { control_as<QLineEdit>(id_line)->setText(line()); }
    void confirm()
    {
        const QString refusal = chosen() ? refusal_of_command(m_world, line())
                                         : lang(u"请选择要调用的函数。", u"Choose what is called.");
        if (refusal.isEmpty())
            m_dialog.accept();
        else
            boxes::error(&m_dialog, refusal);
    }

    QDialog& m_dialog;
    CBaseWorld& m_world;
    std::vector<StrCommand> m_commands;
    QStringList m_names;
    QStringList m_parameters; ///< as they were before the author chose
    QString m_kind;
    QListWidget* m_list = nullptr;
};

} // namespace tarn

bool g_edit_str_cmd(QWidget* owner, CBaseWorld& world, int id, const QString& command, const QStringList& parameters,
                    const QStringList& names, QString& line)
{
    QDialog dialog(owner);
    auto* page = new tarn::StrCmdPage(dialog, world, names);
    {
        const CResHandleMan guard(QStringLiteral(":/frame"));
        page->Create(template_id, &dialog);
    }
    auto* layout = new QVBoxLayout(&dialog);
    layout->setContentsMargins({});
    layout->addWidget(page);
    dialog.setWindowTitle(lang(u"脚本命令", u"Script Command"));
    dialog.resize(620, 420);
    page->begin(id, command, parameters);
    if (tarn::boxes::dialog(dialog) != QDialog::Accepted)
        return false;
    line = page->line();
    return true;
}
