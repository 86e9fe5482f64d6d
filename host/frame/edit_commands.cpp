#include "edit_commands.h"

#include "boxes.h"

#include <QPoint>
#include <QRegularExpression>

#include <algorithm>

namespace tarn {

namespace {

/// A command's name without its mnemonic, "(&X)" or "&": popup menus show their texts as they are.
QString without_mnemonic(QString name)
{
    static const QRegularExpression own_letter(QStringLiteral("\\(&.\\)"));
    return name.remove(own_letter).remove(QLatin1Char('&'));
}

} // namespace

void run_edit_command(QWidget* parent, SceneEditor& editor, const EditCommand& command)
{
    if (!command.question.isEmpty() && !boxes::confirm(parent, command.question, command.question_title))
        return;
    if (auto status = editor.run(command.id); !status)
        boxes::error(parent, status.message());
}

int pop_edit_menu(QWidget* parent, SceneEditor& editor, const std::vector<EditCommand>& commands, QPoint place)
{
    if (commands.empty())
        return 0;
    boxes::Menu menu{.items = {}, .place = place};
    for (const EditCommand& command : commands) {
        if (command.begins_group && !menu.items.empty())
            menu.items.push_back({});
        menu.items.push_back({.id = command.id,
                              .text = without_mnemonic(command.name),
                              .enabled = command.enabled,
                              .checked = command.checked});
    }
    const int chosen = boxes::menu(parent, menu);
    const auto command = std::find_if(commands.begin(), commands.end(),
                                      [chosen](const EditCommand& entry) { return entry.id == chosen; });
    if (command != commands.end())
        run_edit_command(parent, editor, *command);
    return chosen;
}

} // namespace tarn
