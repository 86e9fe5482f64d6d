#include "command_line.h"

#include "commands/command.h"

namespace tarn {

namespace {

const char16_t usage[] = uR"(Usage: tarn-studio [OPTION...] [FILE.tarn]

Opens FILE, or an empty scene.

  --lang zh|en             language of the program
  --theme light|dark       colours of the program
  --render FILE.png        draws the interface of FILE.tarn into a picture and exits
  --size WxH               size of that picture in pixels (1280x720)
  --screen WxH             before or after --render: the screen that the interface is laid
                           out on; the picture shows it reduced or enlarged to its size
  --dialog NAME            draws that dialog alone, as large as it is
  --time S                 draws the first timebar at that time in seconds; S..T draws a
                           picture for each frame, FILE-0000.png and so on
  --timebar NAME           takes another timebar
  --fps N                  frames a second (25)
  --play FILE.tarn         runs the interface as its players see it, in a window of
                           --size WxH or with --fullscreen (F11 changes between the two)
  --texts LANGUAGE         with --play and --render: shows the texts in that language of the
                           interface
  --record SCRIPT          with --play: writes what is done into a script when the window is
                           closed; F7 has it expect what the mouse is over as it is then
  --replay SCRIPT [FILE]   does that to the interface again, without a window, and exits with
                           1 and a line that says where, when something differs
  --script FILE.lua [ARG]  runs a script and exits with 0, or 1 when it fails;
                           whatever follows FILE.lua goes to the script
  --recovery               before --script: keeps what is not saved as without it
  --plugins DIR            folder of the plug-ins
  --help                   shows this text and exits
  --version                shows the version and exits

Commands that open no window; COMMAND --help tells more:

)";

const QStringList picture_options{QStringLiteral("--screen"), QStringLiteral("--dialog"), QStringLiteral("--time"),
                                  QStringLiteral("--timebar"), QStringLiteral("--fps")};

/// Takes the arguments one by one.
class Parser {
public:
    explicit Parser(const QStringList& arguments) : m_rest(arguments) {}
    CommandLine parse();

private:
    bool next(QString& argument)
    {
        if (m_rest.isEmpty())
            return false;
        argument = m_rest.takeFirst();
        return true;
    }
    void option(const QString& name);
    bool parameter(const QString& name, QString& value);
    void parse_size(const QString& text, QSize& size);
    void parse_times(const QString& text);
    double parse_number(const QString& text, double least, double most);
    void picture_option(const QString& name);
    void check_picture_options();
    void fail(const QString& what);

    QStringList m_rest;
    CommandLine m_line;
    QString m_picture_option; ///< the last one that was given
    bool m_has_rate = false;
    bool m_failed = false;
};

void Parser::fail(const QString& what)
{
    m_failed = true;
    m_line.action = CommandLine::Action::PrintAndExit;
    m_line.status = 2;
    m_line.output = QStringLiteral("tarn-studio: %1\n%2\n").arg(what, lang(u"使用 --help 查看用法。", u"Try --help."));
}

bool Parser::parameter(const QString& name, QString& value)
{
    if (next(value) && !value.isEmpty() && !value.startsWith(QLatin1String("--")))
        return true;
    fail(lang(u"%1 缺少参数", u"%1 needs a value").arg(name));
    return false;
}

void Parser::parse_size(const QString& text, QSize& out)
{
    const QStringList parts = text.split(QLatin1Char('x'));
    const QSize size(parts.value(0).toInt(), parts.value(1).toInt());
    if (parts.size() != 2 || size.width() < 1 || size.height() < 1 || size.width() > 16384 || size.height() > 16384)
        fail(lang(u"“%1”不是尺寸（例如 1280x720）", u"\"%1\" is not a size (such as 1280x720)").arg(text));
    out = size;
}

double Parser::parse_number(const QString& text, double least, double most)
{
    bool is_number = false;
    const double number = text.toDouble(&is_number);
    if (!is_number || !(number >= least && number <= most))
        fail(lang(u"“%1”不是 %2 到 %3 之间的数", u"\"%1\" is no number from %2 to %3").arg(text).arg(least).arg(most));
    return number;
}

void Parser::parse_times(const QString& text)
{
    constexpr double longest = 100'000; // seconds
    const qsizetype dots = text.indexOf(QLatin1String(".."));
    m_line.picture.from = parse_number(dots < 0 ? text : text.left(dots), 0, longest);
    if (dots >= 0 && !m_failed)
        m_line.picture.until = parse_number(text.mid(dots + 2), *m_line.picture.from, longest);
}

void Parser::picture_option(const QString& name)
{
    QString value;
    if (!parameter(name, value))
        return;
    m_picture_option = name;
    m_has_rate = m_has_rate || name == QLatin1String("--fps");
    if (name == QLatin1String("--screen"))
        parse_size(value, m_line.picture.screen);
    else if (name == QLatin1String("--dialog"))
        m_line.picture.dialog = value;
    else if (name == QLatin1String("--timebar"))
        m_line.picture.timebar = value;
    else if (name == QLatin1String("--time"))
        parse_times(value);
    else
        m_line.picture.rate = parse_number(value, 0.001, 1000);
}

void Parser::option(const QString& name)
{
    QString value;
    if (name == QLatin1String("--help")) {
        m_line.action = CommandLine::Action::PrintAndExit;
        m_line.output = QString::fromUtf16(usage);
        for (const Command& command : commands())
            for (const QString& form : QString::fromLatin1(command.usage).split(QLatin1Char('\n')))
                m_line.output += QStringLiteral("  tarn-studio %1\n").arg(form);
    } else if (name == QLatin1String("--version")) {
        m_line.action = CommandLine::Action::PrintAndExit;
        m_line.output = QStringLiteral("tarn-studio " TARN_VERSION "\n");
    } else if (name == QLatin1String("--lang") && parameter(name, value)) {
        if (value != QLatin1String("zh") && value != QLatin1String("en"))
            return fail(lang(u"语言“%1”不可用（zh 或 en）", u"there is no language \"%1\" (zh or en)").arg(value));
        m_line.language = value == QLatin1String("zh") ? Language::Chinese : Language::English;
    } else if (name == QLatin1String("--theme") && parameter(name, value)) {
        m_line.theme = theme_named(value);
        if (!m_line.theme)
            fail(lang(u"主题“%1”不可用（light 或 dark）", u"there is no theme \"%1\" (light or dark)").arg(value));
    } else if (name == QLatin1String("--render") && parameter(name, value)) {
        m_line.action = CommandLine::Action::Render;
        m_line.render_target = value;
    } else if (name == QLatin1String("--play") && parameter(name, value)) {
        m_line.action = CommandLine::Action::Play;
        m_line.file = value;
    } else if (name == QLatin1String("--record") && parameter(name, value)) {
        m_line.input_script = value;
    } else if (name == QLatin1String("--replay") && parameter(name, value)) {
        m_line.action = CommandLine::Action::Replay;
        m_line.input_script = value;
    } else if (name == QLatin1String("--texts") && parameter(name, value)) {
        m_line.texts = value;
    } else if (name == QLatin1String("--fullscreen")) {
        m_line.full_screen = true;
    } else if (picture_options.contains(name)) {
        picture_option(name);
    } else if (name == QLatin1String("--size") && parameter(name, value)) {
        parse_size(value, m_line.size);
    } else if (name == QLatin1String("--plugins") && parameter(name, value)) {
        m_line.plug_ins = value;
    } else if (name == QLatin1String("--recovery")) {
        m_line.recovery = true;
    } else if (name == QLatin1String("--script") && parameter(name, value)) {
        m_line.action = CommandLine::Action::Script;
        m_line.script = value;
        m_line.script_args = std::exchange(m_rest, {});
    } else if (!m_failed) {
        fail(lang(u"未知选项 %1", u"unknown option %1").arg(name));
    }
}

/// What a picture shows means nothing where none is made.
void Parser::check_picture_options()
{
    const PictureOptions& picture = m_line.picture;
    if (m_line.action == CommandLine::Action::PrintAndExit || m_picture_option.isEmpty())
        return;
    if (m_line.action != CommandLine::Action::Render)
        fail(lang(u"%1 只能与 --render 一起使用", u"%1 goes with --render only").arg(m_picture_option));
    else if (!picture.timebar.isEmpty() && !picture.from)
        fail(lang(u"--timebar 需要 --time", u"--timebar needs --time"));
    else if (m_has_rate && !picture.until)
        fail(lang(u"--fps 需要 --time A..B", u"--fps needs --time A..B"));
}

CommandLine Parser::parse()
{
    QString argument;
    while (!m_failed && m_line.action != CommandLine::Action::PrintAndExit && next(argument)) {
        if (argument.startsWith(QLatin1Char('-')))
            option(argument);
        else if (m_line.file.isEmpty())
            m_line.file = argument;
        else
            fail(lang(u"只能打开一个文件", u"only one file can be opened"));
    }
    if (m_line.action == CommandLine::Action::Render && m_line.file.isEmpty())
        fail(lang(u"--render 需要一个 .tarn 文件", u"--render needs a .tarn file"));
    check_picture_options();
    const bool runs = m_line.action == CommandLine::Action::Play || m_line.action == CommandLine::Action::Replay;
    if (!m_failed && !m_line.input_script.isEmpty() && !runs)
        fail(lang(u"--record 只能与 --play 一起使用", u"--record goes with --play only"));
    return m_line;
}

} // namespace

std::optional<Theme> theme_named(const QString& word)
{
    if (word == QLatin1String("light"))
        return Theme::Light;
    return word == QLatin1String("dark") ? std::optional(Theme::Dark) : std::nullopt;
}

CommandLine parse_command_line(const QStringList& arguments)
{
    return Parser(arguments).parse();
}

} // namespace tarn
