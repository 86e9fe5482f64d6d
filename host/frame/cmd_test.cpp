#include "cmd_test.h"

#include "boxes.h"
#include "child_dlg.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "engine/base_world.h"
#include "engine/script/config_scene.h"
#include "engine/script/script_runtime.h"
#include "script_edit.h"
#include "widgets/button_st.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScopeGuard>
#include <QShortcut>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include <utility>

using tarn::lang;

namespace {

constexpr int template_id = 6600;
constexpr int result_cancel = 2;
constexpr int line_role = Qt::UserRole; ///< of a log row: the line to jump to, from 1; 0 for none

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
    id_script = 6601,
    id_find = 6602,
    id_replacement = 6603,
    id_previous = 6604,
    id_next = 6605,
    id_replace = 6606,
    id_replace_all = 6607,
    id_match_case = 6608,
    id_whole_word = 6609,
    id_fault = 6612,
    id_log = 6613,
    id_run = 6614,
    id_find_bar = 6616,
    id_bar = 6620,
};

QSize& last_size()
{
    static QSize size(820, 600);
    return size;
}

/// Runs the function with `text`, which it does not keep; the document does not count it as a change.
tarn::Result<tarn::ScriptResult> try_out(CBaseWorld& world, IFunc& function, const QString& text)
{
    CConfigScene& table = world.config_scene();
    const QString kept = function.text();
    auto on_changed = std::exchange(table.on_changed, nullptr);
    const auto restore = qScopeGuard([&] {
        static_cast<void>(function.set_text(kept)); // it was accepted before
        table.on_changed = std::move(on_changed);
    });
    if (const tarn::Status set = function.set_text(text); !set)
        return set;
    return world.scripts().call(function.name());
}

} // namespace

// The template's controls, by which automation knows the dialog.
class CDlgCmdTest::Page : public CChildDlg {
public:
    explicit Page(CDlgCmdTest& dialog) : CChildDlg(QStringLiteral("CDlgCmdTest"), &dialog), m_dialog(dialog) {}

    CScriptEdit& script() const { return *control_as<CScriptEdit>(id_script); }

protected:
    QWidget* create_widget(const QString& class_name, QWidget* parent) override
    {
        return class_name == QLatin1String("CScriptEdit") ? new CScriptEdit(parent) : nullptr;
    }

    void OnInitDialog() override
    {
        CChildDlg::OnInitDialog();
        control(id_bar)->hide();
        control_as<QListView>(id_log)->setModel(&m_log);
        connect(&script(), &CScriptEdit::checked, control_as<QLabel>(id_fault), &QLabel::setText);
        connect(control_as<QListView>(id_log), &QListView::doubleClicked, this, [this](const QModelIndex& row) {
            if (const int line = row.data(line_role).toInt())
                script().go_to_line(line - 1);
        });
        on_click(id_ok, [this] { m_dialog.accept(); });
        on_click(id_cancel, [this] { m_dialog.reject(); });
        on_click(id_run, [this] { run(); });
        on_click(id_find_bar, [this] { show_bar(id_find); });
        on_click(id_previous, [this] { find(false); });
        on_click(id_next, [this] { find(true); });
        on_click(id_replace, [this] { script().replace_next(what(), by(), match_case(), whole_word()); });
        on_click(id_replace_all, [this] { replace_all(); });
        connect(control_as<QLineEdit>(id_find), &QLineEdit::returnPressed, this, [this] { find(true); });
        for (int id : {id_ok, id_cancel, id_run, id_find_bar, id_previous, id_next, id_replace, id_replace_all})
            button(id)->setAutoDefault(false);
        add_shortcuts();
    }

private:
    QString what() const { return control_as<QLineEdit>(id_find)->text(); }
    QString by() const { return control_as<QLineEdit>(id_replacement)->text(); }
    bool match_case() const { return control_as<QCheckBox>(id_match_case)->isChecked(); }
    bool whole_word() const { return control_as<QCheckBox>(id_whole_word)->isChecked(); }

    void add_shortcuts()
    {
        const auto on_key = [this](const QKeySequence& keys, auto handler) {
            connect(new QShortcut(keys, this), &QShortcut::activated, this, handler);
        };
        on_key(Qt::Key_F5, [this] { button(id_run)->click(); });
        on_key(Qt::CTRL | Qt::Key_Return, [this] { button(id_ok)->click(); });
        on_key(Qt::CTRL | Qt::Key_F, [this] { show_bar(id_find); });
        on_key(Qt::CTRL | Qt::Key_H, [this] { show_bar(id_replacement); });
        on_key(Qt::CTRL | Qt::Key_G, [this] { go_to_line(); });
        on_key(Qt::Key_F3, [this] { find(true); });
        on_key(Qt::SHIFT | Qt::Key_F3, [this] { find(false); });
    }

    void show_bar(int id)
    {
        control(id_bar)->show();
        auto* edit = control_as<QLineEdit>(id);
        edit->setFocus();
        edit->selectAll();
    }

    void find(bool forward)
    {
        if (!script().find(what(), match_case(), whole_word(), forward))
            add_log(lang(u"没有找到“%1”。", u"\"%1\" was not found.").arg(what()));
    }

    void replace_all()
    {
        const int count = script().replace_all(what(), by(), match_case(), whole_word());
        add_log(lang(u"已替换 %1 处。", u"Replaced: %1.").arg(count));
    }

    void go_to_line()
    {
        const auto answer = tarn::boxes::prompt(
            this, {.text = lang(u"行号：", u"Line:"), .title = lang(u"转到行", u"Go to Line"), .initial = {}});
        bool is_number = false;
        const int line = answer.value_or(QString()).toInt(&is_number);
        if (is_number)
            script().go_to_line(line - 1);
    }

    void add_log(const QString& text, int line = 0)
    {
        auto* row = new QStandardItem(text);
        row->setData(line, line_role);
        m_log.appendRow(row);
        control_as<QListView>(id_log)->scrollToBottom();
    }

    void run();

    CDlgCmdTest& m_dialog;
    QStandardItemModel m_log;
};

void CDlgCmdTest::Page::run()
{
    m_log.clear();
    const FuncPtr function = m_dialog.m_world.config_scene().find_function(m_dialog.m_name);
    if (!function)
        return add_log(lang(u"函数已不存在。", u"The function is gone."));
    auto& on_print = m_dialog.m_world.scripts().on_print;
    auto printed_elsewhere = std::exchange(on_print, [this](const QString& text) { add_log(text); });
    const auto restore = qScopeGuard([&] { on_print = std::move(printed_elsewhere); });
    const auto result = try_out(m_dialog.m_world, *function, script().script());
    if (!result)
        add_log(result.status().message());
    else if (result.value().error)
        add_log(result.value().error->text(), result.value().error->line);
    else if (result.value().suspended)
        add_log(lang(u"正在等待。", u"It is waiting."));
    else
        add_log(lang(u"运行完毕。", u"Done."));
}

CDlgCmdTest::CDlgCmdTest(const QString& function_name, CBaseWorld& world, QWidget* owner)
    : QDialog(owner), m_name(function_name), m_world(world), m_page(new Page(*this))
{
    const CResHandleMan guard(QStringLiteral(":/frame"));
    m_page->Create(template_id, this);
    m_page->script().offer(world.scripts().verbs());
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowTitle(lang(u"脚本 — %1", u"Script - %1").arg(function_name));
    resize(last_size());
}

int CDlgCmdTest::do_modal(const QString& function_name, CBaseWorld* world, QWidget* owner, int line)
{
    const FuncPtr function = world->config_scene().find_function(function_name);
    if (!function) {
        tarn::boxes::error(owner, lang(u"没有名为“%1”的函数。", u"There is no function \"%1\".").arg(function_name));
        return result_cancel;
    }
    CDlgCmdTest dialog(function_name, *world, owner);
    CScriptEdit& script = dialog.m_page->script();
    script.setText(function->text());
    script.SendScintilla(QsciScintilla::SCI_EMPTYUNDOBUFFER);
    script.setModified(false);
    script.go_to_line(line);
    const int result = tarn::boxes::dialog(dialog);
    last_size() = dialog.size();
    return result;
}

void CDlgCmdTest::accept()
{
    const FuncPtr function = m_world.config_scene().find_function(m_name);
    const QString text = m_page->script().script();
    if (!function)
        return tarn::boxes::error(this, lang(u"函数已不存在。", u"The function is gone."));
    if (text != function->text())
        if (const tarn::Status set = function->set_text(text); !set)
            return tarn::boxes::error(this, set.message());
    QDialog::accept();
}

void CDlgCmdTest::reject()
{
    if (m_page->script().isModified()
        && !tarn::boxes::confirm(this,
                                 lang(u"脚本已修改，要放弃修改吗？", u"The script was changed. Discard the changes?")))
        return;
    done(result_cancel);
}
