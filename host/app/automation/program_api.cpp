#include "api.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "main_window.h"
#include "mouse_surface.h"
#include "page_handles.h"
#include "studio.h"
#include "user_input.h"
#include "view/view3d.h"

#include <QAction>
#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPixmap>
#include <QRegularExpression>
#include <QUrl>

#include <algorithm>

namespace tarn::script {

namespace {

constexpr int largest_view = 32767; ///< pixels; Qt's own limit for a widget is not far above

Data language(Automation&)
{
    return VLCMsgIniW::language() == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
}

Data settled(Automation& app, bool done)
{
    app.settle();
    return done;
}

Data new_file(Automation& app)
{
    return settled(app, app.window().new_file());
}

Data open(Automation& app, const QString& path)
{
    return settled(app, app.window().open_file(path));
}

Data save(Automation& app, const QString& path)
{
    return settled(app, app.window().save_file(path));
}

Data recover(Automation& app)
{
    return settled(app, app.window().offer_recovery());
}

Status resize(Automation& app, int w, int h)
{
    for (const auto& [name, length] : {std::pair("w", w), std::pair("h", h)})
        if (length < 1 || length > largest_view)
            return Status::error(QStringLiteral("bad argument \"%1\": 1 to %2 pixels are possible")
                                     .arg(QLatin1String(name))
                                     .arg(largest_view));
    CView3D& view = app.window().view();
    view.set_fixed_view_size(QSize(w, h));
    // The window follows, so that its pictures show the whole view and little around it.
    app.window().resize(app.window().size() + QSize(w, h) - view.size());
    app.settle();
    return {};
}

/// A menu's text as a person reads it: without the marks of its keys.
QString read_text(QString text)
{
    static const QRegularExpression marks(QStringLiteral("\\(&.\\)|&(?!&)"));
    return text.remove(marks);
}

/// Chooses an entry of the menu bar, or of a menu in a menu.
Status menu(Automation& app, const QString& name, const QString& entry, const std::optional<QString>& inner)
{
    QList<QAction*> actions = app.window().menuBar()->actions();
    QAction* chosen = nullptr;
    for (const QString& text : {name, entry, inner.value_or(QString())}) {
        if (text.isNull())
            break;
        const auto found = std::find_if(actions.begin(), actions.end(),
                                        [&](const QAction* action) { return read_text(action->text()) == text; });
        if (found == actions.end())
            return Status::error(QStringLiteral("there is no entry \"%1\" in the menu").arg(text));
        chosen = *found;
        if (!chosen->isEnabled())
            return Status::error(QStringLiteral("the menu's entry \"%1\" is disabled").arg(text));
        if (chosen->menu())
            Q_EMIT chosen->menu()->aboutToShow(); // Some are filled only then.
        actions = chosen->menu() ? chosen->menu()->actions() : QList<QAction*>();
    }
    if (chosen->menu())
        return Status::error(QStringLiteral("\"%1\" is a menu itself").arg(read_text(chosen->text())));
    chosen->trigger();
    app.settle();
    return {};
}

Status process(Automation& app)
{
    app.settle();
    return {};
}

Status wait(Automation& app, int ms)
{
    input::wait(std::max(0, ms));
    app.settle();
    return {};
}

/// The picture of a part of the program.
Result<QImage> picture_of(Automation& app, const QString& what)
{
    if (what == QLatin1String("window"))
        return app.window().grab().toImage();
    if (what == QLatin1String("view"))
        return app.window().view().grab_view();
    if (what == QLatin1String("timeline"))
        return app.timeline() ? app.timeline()->picture()
                              : Result<QImage>(Status::error(QStringLiteral("there is no timeline")));
    CChildDlg* page = find_page(what);
    if (!page)
        return Status::error(QStringLiteral("there is no page %1").arg(what));
    if (!is_shown(*page))
        return Status::error(QStringLiteral("page %1 is not shown").arg(what));
    return page->grab().toImage();
}

Status screenshot(Automation& app, const QString& path, const std::optional<QString>& what)
{
    app.settle();
    const auto picture = picture_of(app, what.value_or(QStringLiteral("window")));
    if (!picture)
        return picture.status();
    if (picture.value().isNull() || !picture.value().save(path, "PNG"))
        return Status::error(QStringLiteral("the picture %1 could not be written").arg(path));
    return {};
}

Data undo(Automation& app)
{
    return settled(app, app.window().undo());
}

Data redo(Automation& app)
{
    return settled(app, app.window().redo());
}

Result<Data> mode(Automation& app, const std::optional<QString>& name)
{
    if (!name)
        return Data(app.window().active_mode());
    if (!app.window().activate_mode(*name))
        return Status::error(QStringLiteral("there is no mode \"%1\"").arg(*name));
    app.settle();
    return Data();
}

Status play(Automation& app, bool on)
{
    if (const auto model = app.model(); !model)
        return model.status();
    app.studio().set_playing(on);
    app.settle();
    return {};
}

Status broadcast(Automation& app, int code)
{
    app.world().broadcast(code);
    app.settle();
    return {};
}

Data codes(Automation& app)
{
    return list_of(app.take_codes(), [](int code) { return Data(code); });
}

Data redraws(Automation& app)
{
    return app.take_redraws();
}

/// Drops a file at a place of the view; beside the view where there are no coordinates.
Status drop(Automation& app, const QString& path, std::optional<double> x, std::optional<double> y)
{
    MainWindow& window = app.window();
    const QPointF corner = window.view().surface_rect().topLeft() + QPointF(x.value_or(-1), y.value_or(-1));
    const QPoint place = x && y ? window.view().mapTo(&window, corner.toPoint()) : QPoint(2, 2);
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(path)});
    QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &enter);
    QDragMoveEvent move(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    if (enter.isAccepted())
        QApplication::sendEvent(&window, &move);
    if (!enter.isAccepted() || !move.isAccepted())
        return Status::error(QStringLiteral("the window does not take %1 there").arg(path));
    QDropEvent drop(place, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &drop);
    app.settle();
    return {};
}

constexpr Binding functions[] = {
    {"language", "", binding<language>},
    {"new", "", binding<new_file>},
    {"open", "path", binding<open>},
    {"save", "path", binding<save>},
    {"recover", "", binding<recover>},
    {"resize", "w h", binding<resize>},
    {"menu", "name entry inner", binding<menu>},
    {"drop", "path x y", binding<drop>},
    {"process", "", binding<process>},
    {"wait", "ms", binding<wait>},
    {"screenshot", "path what", binding<screenshot>},
    {"undo", "", binding<undo>},
    {"redo", "", binding<redo>},
    {"mode", "name", binding<mode>},
    {"play", "on", binding<play>},
    {"broadcast", "code", binding<broadcast>},
    {"codes", "", binding<codes>},
    {"redraws", "", binding<redraws>},
};

} // namespace

std::span<const Binding> program_functions()
{
    return functions;
}

} // namespace tarn::script
