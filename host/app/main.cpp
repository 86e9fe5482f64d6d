// tarn-studio: an editor of 2D interfaces in a 3D world.

#include "address_permissions.h"
#include "automation/automation.h"
#include "command_line.h"
#include "commands/command.h"
#include "core/appinfo.h"
#include "end_signals.h"
#include "frame/boxes.h"
#include "main_window.h"
#include "merge_window.h"
#include "play_window.h"
#include "render.h"
#include "replay/input_recorder.h"
#include "replay/recording_menu.h"
#include "replay/replay_command.h"
#include "settings.h"
#include "studio.h"
#include "widgets/iconfun.h"

#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QScreen>
#include <QStandardPaths>
#include <QTimer>
#include <QTranslator>

#include <algorithm>
#include <csignal>
#include <cstdio>

using tarn::CommandLine;

namespace {

constexpr QSize window_frame(16, 48); ///< about what the desktop draws around a window, pixels

void print(std::FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

/// Without the file the texts stay as they are.
void install_translation(QApplication& app, const QString& file, const QString& folder)
{
    auto* translator = new QTranslator(&app);
    if (translator->load(file, folder))
        QApplication::installTranslator(translator);
}

void name_program()
{
    QCoreApplication::setApplicationName(QStringLiteral("tarn-studio"));
    QCoreApplication::setApplicationVersion(QStringLiteral(TARN_VERSION));
    VLCMsgIniW::set_language(tarn::settings::system_language());
}

int print_result(const tarn::CommandResult& result)
{
    print(stdout, result.output);
    print(stderr, result.errors);
    return result.status;
}

bool has_argument(int argc, char** argv, const char* wanted)
{
    return std::any_of(argv + 1, argv + argc,
                       [wanted](const char* argument) { return qstrcmp(argument, wanted) == 0; });
}

/// Without one the windows' library would end the program.
bool has_display()
{
#ifdef Q_OS_LINUX
    constexpr const char* names[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};
    return std::any_of(std::begin(names), std::end(names),
                       [](const char* name) { return !qEnvironmentVariableIsEmpty(name); });
#else
    return true;
#endif
}

void dress_windows()
{
    constexpr int program_icon = 100;
    QApplication::setApplicationDisplayName(QStringLiteral("Tarn studio"));
    QApplication::setWindowIcon(iconfun::icon(program_icon));
}

/// Its conflicts are decided in a window.
int run_merge_window(const tarn::Command& command, int argc, char** argv)
{
    QApplication app(argc, argv);
    name_program();
    dress_windows();
    if (const auto language = tarn::settings::language())
        VLCMsgIniW::set_language(*language);
    const QStringList arguments = QCoreApplication::arguments();
    const QString theme = arguments.value(arguments.indexOf(QLatin1String("--theme")) + 1);
    tarn::apply_theme(app, tarn::theme_named(theme).value_or(tarn::settings::theme()));
    tarn::set_ask_conflicts(tarn::ask_in_window);
    return print_result(tarn::run_command(command, QCoreApplication::arguments().mid(1)));
}

/// Commands run where there is no display, too.
int run_command(const tarn::Command& command, int argc, char** argv)
{
    name_program();
    if (const auto language = tarn::settings::language())
        VLCMsgIniW::set_language(*language);
    if (!command.needs_fonts) {
        const QCoreApplication app(argc, argv);
        return print_result(tarn::run_command(command, QCoreApplication::arguments().mid(1)));
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication app(argc, argv);
    return print_result(tarn::run_command(command, QCoreApplication::arguments().mid(1)));
}

const tarn::Command* asked_command(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    return tarn::find_command(arguments);
}

void set_up_language(QApplication& app, const CommandLine& line)
{
    const auto chosen = line.language ? line.language : tarn::settings::language();
    VLCMsgIniW::set_language(chosen.value_or(tarn::settings::system_language()));
    if (VLCMsgIniW::language() == tarn::Language::Chinese) {
        // What Qt words itself: its dialogs, and the menus of edits.
        QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
        install_translation(app, QStringLiteral("qtbase_zh_CN"), QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    } else {
        // The forms' captions are Chinese; the plug-in of the windows brings their translation along.
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        install_translation(app, QStringLiteral("tarn_en"), QStringLiteral(":/gui_ui/i18n"));
    }
}

int refuse(const QString& why)
{
    print(stderr, QStringLiteral("tarn-studio: %1\n").arg(why));
    return tarn::CommandResult::Refused;
}

/// The file, in the language that is asked for.
tarn::Status open_shown(Studio& studio, const CommandLine& line)
{
    studio.start_world();
    if (auto status = studio.open_file(line.file); !status || line.texts.isEmpty())
        return status;
    return studio.scene()->show_texts(line.texts);
}

int render(Studio& studio, const CommandLine& line)
{
    if (const auto status = open_shown(studio, line); !status)
        return refuse(status.message());
    if (const auto status = tarn::render_to_files(studio, line); !status)
        return refuse(status.message());
    return 0;
}

/// Told before somebody plays for nothing.
bool can_keep(const QString& file)
{
    const QFileInfo folder(QFileInfo(file).absolutePath());
    return file.isEmpty() || (folder.isDir() && folder.isWritable());
}

int play(Studio& studio, const CommandLine& line)
{
    if (!can_keep(line.input_script))
        return refuse(tarn::lang(u"无法写入 %1", u"%1 cannot be written").arg(line.input_script));
    if (const auto status = open_shown(studio, line); !status)
        return refuse(status.message());
    // What the author allowed on this machine; players are asked nothing.
    const AddressPermissions addresses(studio.world(), appinfo::get_preset_ini());
    PlayWindow window(studio, line.size);
    if (!line.input_script.isEmpty())
        window.record_input();
    line.full_screen ? window.showFullScreen() : window.show();
    const int status = QApplication::exec();
    const auto recorded = window.take_recorded();
    if (!recorded)
        return status;
    const auto saved = tarn::save_recording(*recorded, line.input_script);
    return saved ? status : refuse(saved.message());
}

int run(QApplication& app, Studio& studio, const QStringList& failures, const CommandLine& line)
{
    AddressPermissions addresses(studio.world(), tarn::settings::store().fileName());
    MainWindow window(studio);
    addresses.set_window(&window);
    studio.start_world();
    // Scripts count on the usual size; for a person all of the window is to be on the screen.
    if (line.action == CommandLine::Action::Run && !window.isMaximized())
        window.resize(window.size().boundedTo(window.screen()->availableSize() - window_frame));
    window.show();
    std::optional<EndSignals> end_signals;
    if (line.action == CommandLine::Action::Run || line.recovery) {
        studio.keep_data(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
        end_signals.emplace([&window] { window.keep_unsaved(); });
    }
    if (line.action == CommandLine::Action::Script) {
        QTimer::singleShot(0, &app, [&] {
            Automation automation(studio, window);
            QApplication::exit(automation.run(line.script, line.script_args));
        });
        for (const QString& failure : failures)
            print(stderr, failure + QLatin1Char('\n'));
        return QApplication::exec();
    }
    QTimer::singleShot(0, &window, [&] {
        for (const QString& failure : failures)
            tarn::boxes::error(&window, failure);
        if (!window.offer_recovery() && !line.file.isEmpty())
            window.open_file(line.file);
    });
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
#ifdef SIGXFSZ
    std::signal(SIGXFSZ, SIG_IGN); // A file over the user's limit is an error of its save, not the program's end.
#endif
    if (const tarn::Command* command = asked_command(argc, argv)) {
        const bool has_window = qstrcmp(command->name, "merge") == 0 && has_argument(argc, argv, "--window")
            && has_display();
        return has_window ? run_merge_window(*command, argc, argv) : run_command(*command, argc, argv);
    }
    const auto asks_for = [&](const char* option) { return has_argument(argc, argv, option); };
    const bool shows_nothing = asks_for("--render") || asks_for("--help") || asks_for("--version");
    if ((asks_for("--replay") || (shows_nothing && !has_display())) && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // The renderer of the world draws pictures that the views show.
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    name_program();
    dress_windows();
    const CommandLine line = tarn::parse_command_line(QApplication::arguments().mid(1));
    if (line.action == CommandLine::Action::PrintAndExit) {
        print(line.status ? stderr : stdout, line.output);
        return line.status;
    }
    if (line.action != CommandLine::Action::Run)
        tarn::settings::forget_all();

    Studio studio;
    const bool is_replayed = line.action == CommandLine::Action::Replay;
    const bool is_played = line.action == CommandLine::Action::Play || is_replayed;
    const QStringList failures = studio.load_plug_ins(
        line.plug_ins.isEmpty() ? appinfo::get_data_path(QStringLiteral("plugins")) : line.plug_ins,
        is_played ? Studio::Windows::None : Studio::Windows::All);
    set_up_language(app, line);
    if (is_replayed)
        return print_result(tarn::run_replay(studio, line.input_script, line.file));
    if (is_played)
        return play(studio, line);
    tarn::apply_theme(app, line.theme.value_or(tarn::settings::theme()));
    if (line.action == CommandLine::Action::Render)
        return render(studio, line);
    return run(app, studio, failures, line);
}
