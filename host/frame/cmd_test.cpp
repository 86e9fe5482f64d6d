#include "cmd_test.h"

#include "boxes.h"
#include "core/document.h"
#include "core/field.h"
#include "core/language.h"
#include "core/res_handle_man.h"
#include "engine/base_world.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"
#include "script_page.h"

#include <QSplitter>
#include <QVBoxLayout>

using tarn::lang;

namespace {

constexpr int template_id = 6600;
constexpr int result_cancel = 2;

/// How the author left the dialog when it was last closed.
struct LastLook {
    QSize size{860, 640};
    QList<int> parts{430, 120};
    long zoom = 0;
};

/// What can be named in the brackets of a verb: of `control` the names of controls, of `call` those of functions.
QMap<QString, QStringList> names_by_verb(CBaseWorld& world)
{
    QMap<QString, QStringList> names;
    for (const auto& object : world.document().objects())
        if (const tarn::ObjectKind* kind = object->kind())
            if (const tarn::FieldBase* name = object->fields().find("name"))
                if (const tarn::Value value = object->property(*name); std::holds_alternative<QString>(value))
                    names[QString::fromUtf16(kind->english)].append(std::get<QString>(value));
    for (const FuncPtr& function : world.config_scene().functions())
        names[QStringLiteral("call")].append(function->name());
    return names;
}

LastLook& last_look()
{
    static LastLook look;
    return look;
}

} // namespace

CDlgCmdTest::CDlgCmdTest(const QString& function_name, const QString& text, CBaseWorld& world, QWidget* owner, Use use)
    : QDialog(owner),
      m_name(function_name),
      m_world(world),
      m_page(new tarn::ScriptPage(function_name, world, *this, std::move(use.arguments)))
{
    const CResHandleMan guard(QStringLiteral(":/frame"));
    m_page->Create(template_id, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_page);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    const QString title = lang(u"脚本 — %1", u"Script - %1").arg(function_name);
    setWindowTitle(title);
    resize(last_look().size);
    m_page->splitter().setSizes(last_look().parts);

    CScriptEdit& script = m_page->script();
    script.offer(world.scripts().verbs(), world.scripts().field_names(), names_by_verb(world));
    script.setText(text.isEmpty() ? use.first_line : text);
    script.SendScintilla(QsciScintilla::SCI_EMPTYUNDOBUFFER);
    script.setModified(false);
    script.SendScintilla(QsciScintilla::SCI_SETZOOM, last_look().zoom);
    connect(&script, &QsciScintilla::modificationChanged, this,
            [this, title](bool modified) { setWindowTitle(modified ? title + QLatin1Char('*') : title); });
}

int CDlgCmdTest::do_modal(const QString& function_name, CBaseWorld* world, QWidget* owner, int line, Use use)
{
    const FuncPtr function = world->config_scene().find_function(function_name);
    if (!function) {
        tarn::boxes::error(owner, lang(u"没有名为“%1”的函数。", u"There is no function \"%1\".").arg(function_name));
        return result_cancel;
    }
    const bool begins = function->text().isEmpty() && !use.first_line.isEmpty();
    CDlgCmdTest dialog(function_name, function->text(), *world, owner, std::move(use));
    dialog.m_page->script().go_to_line(begins ? 1 : line);
    const int result = tarn::boxes::dialog(dialog);
    last_look() = {dialog.size(), dialog.m_page->splitter().sizes(),
                   dialog.m_page->script().SendScintilla(QsciScintilla::SCI_GETZOOM)};
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
    using tarn::boxes::Button;
    // Enter loses nothing.
    if (m_page->script().isModified()
        && tarn::boxes::message(
               this,
               {.text = lang(u"脚本已修改，要放弃修改吗？", u"The script was changed. Discard the changes?"),
                .title = {},
                .buttons = {Button::Cancel, Button::Ok},
                .captions = {lang(u"继续编辑", u"Keep Editing"), lang(u"放弃修改", u"Discard")}})
            != Button::Ok)
        return;
    done(result_cancel);
}
