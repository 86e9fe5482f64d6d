#include "script_page.h"

#include "boxes.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "engine/scene_plug.h"
#include "widgets/button_st.h"
#include "widgets/plain_tip.h"

#include <QCheckBox>
#include <QClipboard>
#include <QDialog>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QShortcut>
#include <QSplitter>
#include <QStyle>
#include <QToolButton>

#include <algorithm>

namespace tarn {

namespace {

enum Id : int {
    id_ok = 1,
    id_cancel = 2,
    id_script = 6601,
    id_what = 6602,
    id_by = 6603,
    id_previous = 6604,
    id_next = 6605,
    id_replace = 6606,
    id_replace_all = 6607,
    id_match_case = 6608,
    id_whole_word = 6609,
    id_result = 6610,
    id_close_bar = 6611,
    id_fault = 6612,
    id_log = 6613,
    id_run = 6614,
    id_place = 6615,
    id_find = 6616,
    id_stop = 6617,
    id_bar = 6620,
};

constexpr int icon_run = 15;
constexpr int icon_stop = 16;

bool a_scene_plays(CBaseWorld& world)
{
    const auto& modules = world.plug_man().modules();
    return std::any_of(modules.begin(), modules.end(), [](const auto& module) {
        const auto* scene = dynamic_cast<const CScenePlug*>(module->main_object());
        return scene && scene->is_playing();
    });
}

} // namespace

ScriptPage::ScriptPage(QString function_name, CBaseWorld& world, QDialog& dialog, std::vector<ScriptValue> arguments)
    : CChildDlg(QStringLiteral("CDlgCmdTest"), &dialog),
      m_dialog(dialog),
      m_world(world),
      m_run(std::move(function_name), world, m_log, std::move(arguments))
{
}

QWidget* ScriptPage::create_widget(const QString& class_name, QWidget* parent)
{
    if (class_name == QLatin1String("CScriptEdit"))
        return m_script = new CScriptEdit(parent);
    if (class_name == QLatin1String("QSplitter"))
        return m_splitter = new QSplitter(parent);
    return nullptr;
}

void ScriptPage::OnInitDialog()
{
    CChildDlg::OnInitDialog();
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setChildrenCollapsible(false);
    init_bar();
    init_log();
    init_status();
    on_click(id_ok, [this] { m_dialog.accept(); });
    on_click(id_cancel, [this] { m_dialog.reject(); });
    add_shortcuts();
}

void ScriptPage::init_bar()
{
    m_bar = std::make_unique<ScriptFindBar>(
        script(),
        ScriptFindBar::Controls{control(id_bar), control_as<QLineEdit>(id_what), control_as<QLineEdit>(id_by),
                                control_as<QCheckBox>(id_match_case), control_as<QCheckBox>(id_whole_word),
                                control_as<QLabel>(id_result)});
    control_as<QToolButton>(id_close_bar)->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    on_click(id_close_bar, [this] { m_bar->close(); });
    on_click(id_find, [this] { m_bar->open(false); });
    on_click(id_previous, [this] { m_bar->find(false); });
    on_click(id_next, [this] { m_bar->find(true); });
    on_click(id_replace, [this] { m_bar->replace(); });
    on_click(id_replace_all, [this] { m_bar->replace_all(); });
}

void ScriptPage::init_log()
{
    auto* list = control_as<QListView>(id_log);
    list->setModel(&m_log);
    list->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    connect(list, &QListView::doubleClicked, this, [this](const QModelIndex& row) {
        if (const int line = row.data(ScriptRunLog::line_role).toInt(); line >= 0)
            script().go_to_line(line);
    });
    button(id_run)->SetIcon(icon_run);
    button(id_stop)->SetIcon(icon_stop);
    button(id_stop)->setEnabled(false);
    on_click(id_run, [this] { m_run.start(script().script()); });
    if (a_scene_plays(m_world)) {
        // A run begins with a runtime of its own, which would end the functions that wait in the scene.
        button(id_run)->setEnabled(false);
        button(id_run)->SetTooltipText(lang(u"预览时不能试运行：场景的函数正在运行。请先停止预览。",
                                            u"Not while the preview runs: the scene's functions are running. Stop the "
                                            u"preview first."));
    }
    on_click(id_stop, [this] { m_run.stop(); });
    connect(&m_run, &ScriptRun::went_on, list, [this, list] {
        button(id_stop)->setEnabled(m_run.is_waiting());
        list->scrollToBottom();
    });
}

void ScriptPage::init_status()
{
    auto* fault = control_as<QLabel>(id_fault);
    fault->setTextFormat(Qt::PlainText); // It may quote the script.
    fault->setForegroundRole(QPalette::BrightText);
    fault->installEventFilter(this);
    connect(&script(), &CScriptEdit::checked, fault, [this, fault](const QString& message, int line) {
        m_fault_line = line;
        fault->setText(message);
        fault->setToolTip(plain_tip(message));
        fault->setCursor(line < 0 ? Qt::ArrowCursor : Qt::PointingHandCursor);
    });
    const auto show_place = [this] {
        int line = 0;
        int column = 0;
        script().getCursorPosition(&line, &column);
        control_as<QLabel>(id_place)->setText(
            lang(u"行 %1，列 %2", u"Line %1, column %2").arg(line + 1).arg(column + 1));
    };
    connect(&script(), &QsciScintilla::cursorPositionChanged, this, show_place);
    show_place();
}

void ScriptPage::add_shortcuts()
{
    const auto on_key = [this](const QKeySequence& keys, auto handler) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, handler);
    };
    on_key(Qt::Key_F5, [this] { button(id_run)->click(); });
    on_key(Qt::SHIFT | Qt::Key_F5, [this] { button(id_stop)->click(); });
    on_key(Qt::CTRL | Qt::Key_Return, [this] { button(id_ok)->click(); });
    on_key(Qt::CTRL | Qt::Key_F, [this] { m_bar->open(false); });
    on_key(Qt::CTRL | Qt::Key_H, [this] { m_bar->open(true); });
    on_key(Qt::CTRL | Qt::Key_G, [this] { ask_for_line(); });
    on_key(Qt::Key_F3, [this] { m_bar->find(true); });
    on_key(Qt::SHIFT | Qt::Key_F3, [this] { m_bar->find(false); });
    auto* copy = new QShortcut(QKeySequence::Copy, control(id_log));
    copy->setContext(Qt::WidgetShortcut);
    connect(copy, &QShortcut::activated, this, &ScriptPage::copy_log);
}

void ScriptPage::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool used = enter ? m_bar->enter(event->modifiers() & Qt::ShiftModifier)
                            : event->key() == Qt::Key_Escape && m_bar->close();
    if (!used)
        CChildDlg::keyPressEvent(event);
}

bool ScriptPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == control(id_fault) && event->type() == QEvent::MouseButtonRelease && m_fault_line >= 0)
        script().go_to_line(m_fault_line);
    return CChildDlg::eventFilter(watched, event);
}

void ScriptPage::ask_for_line()
{
    const auto answer = boxes::prompt(
        this, {.text = lang(u"行号：", u"Line:"), .title = lang(u"转到行", u"Go to Line"), .initial = {}});
    bool is_number = false;
    const int line = answer.value_or(QString()).toInt(&is_number);
    if (is_number)
        script().go_to_line(line - 1);
}

void ScriptPage::copy_log() const
{
    QModelIndexList rows = control_as<QListView>(id_log)->selectionModel()->selectedIndexes();
    std::sort(rows.begin(), rows.end());
    QStringList lines;
    for (const QModelIndex& row : rows)
        lines.append(row.data().toString());
    QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

} // namespace tarn
