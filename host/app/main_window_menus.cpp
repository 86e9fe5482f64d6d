// The menus of the main window.

#include "command_palette.h"
#include "core/journal.h"
#include "core/language.h"
#include "edit_menu.h"
#include "engine/scene_editor.h"
#include "engine/scene_plug.h"
#include "frame/boxes.h"
#include "licences.h"
#include "main_window.h"
#include "replay/recording_menu.h"
#include "screen_size_menu.h"
#include "settings.h"
#include "shortcut_editor.h"
#include "store/filefun.h"
#include "studio.h"
#include "view/view3d.h"
#include "widgets/iconfun.h"

#include <QActionGroup>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>

#include <algorithm>
#include <iterator>

using tarn::lang;

namespace {

constexpr int tool_icon = 18; ///< pixels

// Numbers in the icon table.
enum Icon : int { icon_new = 10, icon_open, icon_save, icon_undo, icon_redo, icon_play, icon_stop };

/// `name` is that of the author's own keys in the settings.
QAction* add(QMenu* menu, const char* name, int icon, const QString& text, const QKeySequence& keys = {})
{
    QAction* action = menu->addAction(text);
    action->setObjectName(QLatin1String(name));
    if (icon)
        action->setIcon(iconfun::icon(icon));
    action->setShortcut(keys);
    return action;
}

/// A choice among several; the one in force is checked.
QAction* add_choice(QMenu* menu, QActionGroup* group, const char* name, const QString& text, bool chosen)
{
    QAction* action = add(menu, name, 0, text);
    action->setCheckable(true);
    action->setChecked(chosen);
    group->addAction(action);
    return action;
}

QString with_step(const QString& verb, const QString& step)
{
    return step.isEmpty() ? verb
                          : verb + QLatin1Char(' ') + QString(step).replace(QLatin1Char('&'), QLatin1String("&&"));
}

} // namespace

void MainWindow::make_menus()
{
    make_file_menu();
    make_edit_menu();
    make_view_menu();
    make_help_menu();
    make_tool_bar();
}

void MainWindow::make_tool_bar()
{
    auto* bar = new QToolBar(lang(u"工具栏", u"Tool Bar"), this);
    bar->setObjectName(QStringLiteral("tool_bar"));
    bar->setIconSize(QSize(tool_icon, tool_icon));
    bar->setMovable(false);
    bar->addActions(m_file_actions);
    bar->addSeparator();
    bar->addActions({m_undo, m_redo});
    bar->addSeparator();
    bar->addAction(m_play);
    addToolBar(bar);
    for (QAction* action : bar->actions())
        if (QWidget* button = bar->widgetForAction(action))
            button->setFocusPolicy(Qt::NoFocus); // The view keeps the keyboard.
}

void MainWindow::make_file_menu()
{
    QMenu* menu = menuBar()->addMenu(lang(u"文件(&F)", u"&File"));
    QAction* make = add(menu, "new", icon_new, lang(u"新建(&N)", u"&New"), QKeySequence::New);
    connect(make, &QAction::triggered, this, &MainWindow::ask_and_new);
    QAction* open = add(menu, "open", icon_open, lang(u"打开(&O)...", u"&Open..."), QKeySequence::Open);
    connect(open, &QAction::triggered, this, &MainWindow::ask_and_open);
    m_recent_menu = menu->addMenu(lang(u"最近的文件(&R)", u"Open &Recent"));
    connect(m_recent_menu, &QMenu::aboutToShow, this, &MainWindow::fill_recent_files);
    menu->addSeparator();
    QAction* save = add(menu, "save", icon_save, lang(u"保存(&S)", u"&Save"), QKeySequence::Save);
    connect(save, &QAction::triggered, this, &MainWindow::save);
    m_file_actions = {make, open, save};
    connect(
        add(menu, "save_as", 0, lang(u"另存为(&A)...", u"Save &As..."), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)),
        &QAction::triggered, this, &MainWindow::ask_and_save);
    menu->addSeparator();
    connect(add(menu, "quit", 0, lang(u"退出(&Q)", u"&Quit"), QKeySequence(Qt::CTRL | Qt::Key_Q)), &QAction::triggered,
            this, &QWidget::close);
}

void MainWindow::fill_recent_files()
{
    m_recent_menu->clear();
    const QStringList files = m_studio.recent_files();
    for (const QString& path : files) {
        QAction* action = m_recent_menu->addAction(
            QDir::toNativeSeparators(path).replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setEnabled(filefun::file_exist(path));
        connect(action, &QAction::triggered, this, [this, path] {
            if (may_discard())
                open_file(path);
        });
    }
    if (files.isEmpty())
        m_recent_menu->addAction(lang(u"（没有）", u"(none)"))->setEnabled(false);
}

void MainWindow::make_edit_menu()
{
    QMenu* menu = menuBar()->addMenu(lang(u"编辑(&E)", u"&Edit"));
    m_undo = add(menu, "undo", icon_undo, {}, QKeySequence::Undo);
    m_redo = add(menu, "redo", icon_redo, {}, QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z));
    m_redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(m_undo, &QAction::triggered, this, &MainWindow::undo);
    connect(m_redo, &QAction::triggered, this, &MainWindow::redo);
    new EditMenu(m_studio, *m_view, *menu);
    menu->addSeparator();
    for (CBasePlugUi* plug_in : m_studio.ui_plug_ins())
        menu->addActions({plug_in->menu_actions().begin(), plug_in->menu_actions().end()});
}

void MainWindow::update_edit_menu()
{
    if (!m_undo)
        return;
    const CScenePlug* scene = m_studio.scene();
    const tarn::Journal* journal = scene ? &m_studio.scene()->journal() : nullptr;
    const bool editing = journal && !m_studio.is_playing();
    m_undo->setText(with_step(lang(u"撤销(&U)", u"&Undo"), journal ? journal->undo_name() : QString()));
    m_redo->setText(with_step(lang(u"重做(&R)", u"&Redo"), journal ? journal->redo_name() : QString()));
    // An action that is open, as while a box of its own is, may end without a word.
    const bool is_open = editing && journal->in_action();
    m_undo->setEnabled(editing && (journal->can_undo() || (is_open && journal->position() > 0)));
    m_redo->setEnabled(editing && (journal->can_redo() || (is_open && journal->position() < journal->step_count())));
    m_play->setText(m_studio.is_playing() ? lang(u"停止预览(&P)", u"Stop &Preview") : lang(u"预览(&P)", u"&Preview"));
    m_play->setIcon(iconfun::icon(m_studio.is_playing() ? icon_stop : icon_play));
    m_play->setEnabled(scene != nullptr);
}

void MainWindow::make_view_menu()
{
    using tarn::Language;
    using tarn::Theme;
    QMenu* menu = menuBar()->addMenu(lang(u"视图(&V)", u"&View"));
    m_play = add(menu, "preview", icon_play, {}, QKeySequence(Qt::Key_F5));
    connect(m_play, &QAction::triggered, this, &MainWindow::toggle_preview);
    m_recording = std::make_unique<tarn::RecordingMenu>(m_studio, *m_view, *this, *menu);
    menu->addSeparator();
    for (QDockWidget* dock : findChildren<QDockWidget*>()) {
        dock->toggleViewAction()->setObjectName(QStringLiteral("show_") + dock->objectName());
        menu->addAction(dock->toggleViewAction());
    }
    connect(add(menu, "reset_layout", 0, lang(u"恢复默认布局(&R)", u"&Reset Layout")), &QAction::triggered, this,
            &MainWindow::reset_layout);
    const auto add_panel = [&](const char* name, const QString& text, QKeySequence keys, int step) {
        connect(add(menu, name, 0, text, keys), &QAction::triggered, this, [this, step] { focus_panel(step); });
    };
    add_panel("next_panel", lang(u"下一个面板(&N)", u"&Next Panel"), Qt::Key_F6, 1);
    add_panel("previous_panel", lang(u"上一个面板", u"Previous Panel"), Qt::SHIFT | Qt::Key_F6, -1);
    menu->addSeparator();
    make_zoom_menu(*menu->addMenu(lang(u"缩放(&Z)", u"&Zoom")));
    make_grid_menu(*menu);
    new ScreenSizeMenu(*m_view, *menu->addMenu(lang(u"屏幕尺寸(&S)", u"&Screen Size")));
    menu->addSeparator();

    QMenu* themes = menu->addMenu(lang(u"主题(&T)", u"&Theme"));
    auto* theme_group = new QActionGroup(this);
    const auto add_theme = [&](const char* name, const QString& text, Theme theme) {
        connect(add_choice(themes, theme_group, name, text, tarn::settings::theme() == theme), &QAction::triggered,
                this, [theme] {
                    tarn::settings::set_theme(theme);
                    tarn::apply_theme(*qApp, theme);
                });
    };
    add_theme("theme_system", lang(u"跟随系统", u"System"), Theme::System);
    add_theme("theme_light", lang(u"浅色", u"Light"), Theme::Light);
    add_theme("theme_dark", lang(u"深色", u"Dark"), Theme::Dark);

    QMenu* languages = menu->addMenu(lang(u"语言(&L) / Language", u"&Language / 语言"));
    auto* language_group = new QActionGroup(this);
    const auto add_language = [&](const char* name, const QString& text, std::optional<Language> language) {
        connect(add_choice(languages, language_group, name, text, tarn::settings::language() == language),
                &QAction::triggered, this, [this, language] {
                    tarn::settings::set_language(language);
                    tarn::boxes::message(
                        this,
                        {.text = lang(u"语言将在下次启动时改变。", u"The language changes at the next start."),
                         .title = {}});
                });
    };
    add_language("language_system", lang(u"跟随系统", u"System"), std::nullopt);
    add_language("language_zh", QStringLiteral("中文"), Language::Chinese);
    add_language("language_en", QStringLiteral("English"), Language::English);
}

void MainWindow::make_zoom_menu(QMenu& menu)
{
    const auto add_zoom = [&](const char* name, const QString& text, const QList<QKeySequence>& keys, auto run) {
        QAction* action = add(&menu, name, 0, text);
        action->setShortcuts(keys);
        connect(action, &QAction::triggered, m_view, run);
    };
    add_zoom("zoom_in", lang(u"放大(&I)", u"Zoom &In"), {Qt::CTRL | Qt::Key_Equal, Qt::CTRL | Qt::Key_Plus},
             [this] { m_view->zoom_by(1); });
    add_zoom("zoom_out", lang(u"缩小(&O)", u"Zoom &Out"), {Qt::CTRL | Qt::Key_Minus}, [this] { m_view->zoom_by(-1); });
    add_zoom("zoom_fit", lang(u"适应视图(&F)", u"&Fit"), {Qt::CTRL | Qt::Key_0}, [this] { m_view->zoom_to_fit(); });
    add_zoom("zoom_100", QStringLiteral("&100 %"), {Qt::CTRL | Qt::Key_1},
             [this] { m_view->zoom_to(1, m_view->surface_rect().toRectF().center()); });
    add_zoom("zoom_selection", lang(u"缩放到所选(&S)", u"To &Selection"), {Qt::CTRL | Qt::Key_2}, [this] {
        if (m_studio.scene())
            m_view->zoom_to_area(m_studio.scene()->editor().selected_area());
    });
}

/// What the scene's tools offer to switch; a choice of values is a menu of its own.
void MainWindow::make_grid_menu(QMenu& menu)
{
    if (!m_studio.scene())
        return;
    tarn::SceneEditor& editor = m_studio.scene()->editor();
    const auto add_value = [&](QMenu& to, const QString& key, const QString& text, quint32 value) {
        QAction* action = to.addAction(text);
        action->setObjectName(value == 0 ? key : QStringLiteral("%1_%2").arg(key).arg(value));
        action->setCheckable(true);
        connect(action, &QAction::triggered, this,
                [&editor, key, value](bool on) { editor.set_view_setting(key, value == 0 ? quint32(on) : value); });
        return action;
    };
    const auto value_of = [&editor](const QString& key) {
        for (const tarn::ViewSetting& setting : editor.view_settings())
            if (key == QLatin1String(setting.key))
                return setting.value;
        return quint32(0);
    };
    for (const tarn::ViewSetting& setting : editor.view_settings()) {
        const QString key = QLatin1String(setting.key);
        if (setting.name.isNull())
            continue;
        if (setting.choices.empty()) {
            QAction* action = add_value(menu, key, setting.name, 0);
            connect(&menu, &QMenu::aboutToShow, action, [=] { action->setChecked(value_of(key)); });
            continue;
        }
        QMenu* values = menu.addMenu(setting.name);
        for (const quint32 value : setting.choices) {
            QAction* action = add_value(*values, key, lang(u"%1 像素", u"%1 pixels").arg(value), value);
            connect(values, &QMenu::aboutToShow, action, [=] { action->setChecked(value_of(key) == value); });
        }
    }
}

void MainWindow::make_help_menu()
{
    QMenu* menu = menuBar()->addMenu(lang(u"帮助(&H)", u"&Help"));
    connect(
        add(menu, "mouse_and_keys", 0, lang(u"视图中的操作(&M)", u"&Mouse and Keys in the View")), &QAction::triggered,
        this, [this] {
            tarn::boxes::message(
                this,
                {.text = lang(
                     u"左键：选择、移动；在空白处拖动：框选\nCtrl+左键：加选或取消选择　Shift+左键：加选\n"
                     u"在同一处再次单击：选择下面的对象\n双击文字：就地修改\n"
                     u"拖动手柄：调整大小（Shift 保持比例，Alt 中心不动）\n方向键：移动 1 像素，加 Shift 为 10 像素\n"
                     u"按住 Ctrl 拖动：暂停捕捉　从标尺拖出：辅助线\n"
                     u"Esc：取消拖动或创建；取消选择\n右键单击：菜单　右键拖动：旋转相机\n"
                     u"中键：平移相机　滚轮：缩放\n"
                     u"Ctrl+滚轮：缩放界面（放大后用中键平移）　F6：下一个面板\n"
                     u"三维物体：右键单击地面添加；拖动箭头、圆弧和方块移动、旋转、缩放（Ctrl 按步长）\n"
                     u"路径：拖动点（Shift 上下），双击添加或删除点　F：查看所选物体\nF5：预览",
                     u"Left button: select and move; drag beside everything to draw a selection frame\n"
                     u"Ctrl + left button: add to the selection or take from it. Shift: add\n"
                     u"Another click in the same place: select what lies beneath\n"
                     u"Double-click on a text: edit it in place\n"
                     u"Drag a handle: resize (Shift keeps the ratio, Alt the center)\n"
                     u"Arrow keys: move by 1 pixel, with Shift by 10\n"
                     u"Hold Ctrl while dragging: no snapping. Drag out of a ruler: a guide line\n"
                     u"Esc: drop a drag or a creation; select less\n"
                     u"Right click: menu. Right drag: turn the camera\n"
                     u"Middle button: pan the camera. Wheel: zoom\n"
                     u"Ctrl + wheel: zoom the interface; the middle button then moves it. F6: the next panel\n"
                     u"Objects of the world: a right click on the ground adds them; arrows, arcs and cubes move, turn "
                     u"and scale (Ctrl: in steps)\n"
                     u"Paths: drag points (Shift: up and down), a double click adds or removes one. F: look at the "
                     u"selection\nF5: preview"),
                 .title = {}});
        });
    connect(add(menu, "command_palette", 0, lang(u"命令面板(&C)...", u"&Command Palette..."),
                QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_P)),
            &QAction::triggered, this, &MainWindow::choose_command);
    connect(add(menu, "shortcuts", 0, lang(u"快捷键(&K)...", u"&Keyboard Shortcuts...")), &QAction::triggered, this,
            [this] {
                tarn::ShortcutEditor editor(this, *m_shortcuts);
                tarn::boxes::dialog(editor);
            });
    menu->addSeparator();
    connect(add(menu, "about", 0, lang(u"关于 Tarn studio(&A)", u"&About Tarn studio")), &QAction::triggered, this,
            [this] {
                tarn::boxes::message(
                    this,
                    {.text = lang(u"Tarn studio %1\n三维世界中二维界面的编辑器。\n\n使用的库：\n%2",
                                  u"Tarn studio %1\nAn editor of 2D interfaces in a 3D world.\n\nIt uses:\n%2")
                                 .arg(QStringLiteral(TARN_VERSION), tarn::licences_text()),
                     .title = {}});
            });
}

void MainWindow::choose_command()
{
    auto actions = tarn::actions_in_menus(*this);
    std::ranges::move(tarn::buttons_in_view(*this), std::back_inserter(actions));
    tarn::CommandPalette palette(this, actions);
    if (tarn::boxes::dialog(palette) == QDialog::Accepted && palette.chosen())
        tarn::run(*palette.chosen());
}
