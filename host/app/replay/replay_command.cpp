#include "replay_command.h"

#include "core/language.h"
#include "engine/scene_plug.h"
#include "input_replay.h"
#include "store/plain_file.h"
#include "studio.h"
#include "view/view3d.h"

#include <QDir>
#include <QFileInfo>

namespace tarn {

namespace {

constexpr qint64 largest_script = 16 << 20; ///< bytes

} // namespace

CommandResult run_replay(Studio& studio, const QString& script, const QString& package)
{
    const auto bytes = read_plain_file(script, largest_script);
    if (!bytes)
        return CommandResult::refused(QStringLiteral("%1: %2").arg(script, bytes.status().message()));
    const auto parsed = parse_input_script(bytes.value());
    if (!parsed)
        return CommandResult::refused(QStringLiteral("%1: %2").arg(script, parsed.status().message()));
    const QString named = parsed.value().scene;
    const QString file = !package.isEmpty() || named.isEmpty() ? package
                                                               : QFileInfo(script).absoluteDir().filePath(named);
    if (file.isEmpty())
        return CommandResult::refused(
            lang(u"%1 没有指明界面；请给出一个 .tarn 文件", u"%1 names no interface; give a .tarn file").arg(script));
    studio.start_world();
    if (const auto status = studio.open_file(file); !status)
        return CommandResult::refused(status.message());
    if (const QString& texts = parsed.value().texts; !texts.isEmpty())
        if (const auto status = studio.scene()->show_texts(texts); !status)
            return CommandResult::refused(QStringLiteral("%1: %2").arg(script, status.message()));
    CView3D view(studio.world());
    const auto result = replay_input(studio, view, parsed.value());
    if (!result)
        return CommandResult::refused(result.status().message());
    if (result.value().line > 0)
        return {.status = CommandResult::Found,
                .errors
                = QStringLiteral("%1:%2: %3\n").arg(script).arg(result.value().line).arg(result.value().difference)};
    return {.output = lang(u"%1：%2 项期望全部符合\n", u"%1: all %2 expectations hold\n")
                          .arg(script)
                          .arg(result.value().expectations)};
}

} // namespace tarn
