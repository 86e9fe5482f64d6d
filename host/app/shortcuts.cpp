#include "shortcuts.h"

#include "command_palette.h"
#include "core/language.h"
#include "settings.h"

#include <QAction>

#include <algorithm>

namespace tarn {

namespace {

constexpr QLatin1String settings_group("shortcuts/");

QString settings_key(const QAction& action)
{
    return settings_group + action.objectName();
}

bool overlap(const QList<QKeySequence>& a, const QList<QKeySequence>& b)
{
    return std::any_of(a.begin(), a.end(), [&b](const QKeySequence& keys) { return b.contains(keys); });
}

} // namespace

Shortcuts::Shortcuts(const QWidget& window)
{
    for (const NamedAction& named : actions_in_menus(window))
        if (!named.action->objectName().isEmpty())
            m_commands.push_back({named.path, named.action, named.action->shortcuts()});
    // First those that the author changed: they go before the usual keys of others.
    QList<QKeySequence> taken;
    for (const Command& command : m_commands) {
        const QVariant kept = settings::store().value(settings_key(*command.action));
        if (!kept.isValid())
            continue;
        QList<QKeySequence> keys = QKeySequence::listFromString(kept.toString(), QKeySequence::PortableText);
        keys.removeIf([&](const QKeySequence& one) { return !reason_against(one).isEmpty() || taken.contains(one); });
        command.action->setShortcuts(keys);
        taken += keys;
    }
    for (const Command& command : m_commands)
        if (!settings::store().contains(settings_key(*command.action)) && overlap(command.usual, taken)) {
            QList<QKeySequence> left = command.usual;
            left.removeIf([&](const QKeySequence& keys) { return taken.contains(keys); });
            command.action->setShortcuts(left);
        }
}

bool Shortcuts::is_usual(const Command& command) const
{
    return command.action->shortcuts() == command.usual;
}

const Shortcuts::Command* Shortcuts::holder_of(const QKeySequence& keys) const
{
    const auto found = std::find_if(m_commands.begin(), m_commands.end(), [&](const Command& command) {
        return !keys.isEmpty() && command.action->shortcuts().contains(keys);
    });
    return found == m_commands.end() ? nullptr : &*found;
}

void Shortcuts::set_keys(const Command& command, const QKeySequence& keys)
{
    put(command, keys.isEmpty() ? QList<QKeySequence>() : QList<QKeySequence>{keys});
}

void Shortcuts::reset(const Command& command)
{
    put(command, command.usual);
}

void Shortcuts::reset_all()
{
    for (const Command& command : m_commands) {
        command.action->setShortcuts(command.usual);
        keep(command);
    }
}

void Shortcuts::put(const Command& command, const QList<QKeySequence>& keys)
{
    take_from_others(command, keys);
    command.action->setShortcuts(keys);
    keep(command);
}

void Shortcuts::take_from_others(const Command& command, const QList<QKeySequence>& keys)
{
    for (const Command& other : m_commands) {
        QList<QKeySequence> left = other.action->shortcuts();
        if (other.action == command.action || !overlap(left, keys))
            continue;
        left.removeIf([&](const QKeySequence& one) { return keys.contains(one); });
        other.action->setShortcuts(left);
        keep(other);
    }
}

void Shortcuts::keep(const Command& command) const
{
    const QString key = settings_key(*command.action);
    if (is_usual(command))
        settings::store().remove(key);
    else
        settings::store().setValue(key,
                                   QKeySequence::listToString(command.action->shortcuts(), QKeySequence::PortableText));
}

bool is_modifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock: return true;
    default: return false;
    }
}

QString reason_against(const QKeySequence& keys)
{
    if (keys.count() != 1)
        return lang(u"快捷键必须是一个按键组合。", u"A shortcut is one key, with or without others held.");
    const Qt::Key key = keys[0].key();
    const auto held = keys[0].keyboardModifiers() & ~Qt::KeyboardModifiers(Qt::ShiftModifier | Qt::KeypadModifier);
    static constexpr Qt::Key of_windows[] = {
        Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space,  Qt::Key_Left,     Qt::Key_Right,    Qt::Key_Up,
        Qt::Key_Down,   Qt::Key_Home,   Qt::Key_End,   Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Backspace};
    const bool is_tab = key == Qt::Key_Tab || key == Qt::Key_Backtab;
    const bool moves = held == Qt::NoModifier
        && std::find(std::begin(of_windows), std::end(of_windows), key) != std::end(of_windows);
    if (is_tab || moves || key == Qt::Key_unknown)
        return lang(u"窗口自己需要这个键。", u"The windows need this key themselves.");
    return {};
}

} // namespace tarn
