#pragma once

#include <QKeySequence>
#include <QList>
#include <QString>

#include <vector>

class QAction;
class QWidget;

namespace tarn {

/// The keys of all that a window's menus offer. What the author changes is in force at once and at the next start; it is
/// kept under the actions' object names. Actions without one, such as files that were opened lately, have no keys.
class Shortcuts {
public:
    struct Command {
        QString path; ///< "View > Theme > Dark"
        QAction* action;
        QList<QKeySequence> usual; ///< the keys that the program gives it
    };

    /// The menus of `window` are made, and stay as they are. Gives them the keys that were kept.
    explicit Shortcuts(const QWidget& window);

    const std::vector<Command>& commands() const { return m_commands; }
    bool is_usual(const Command& command) const;
    /// Who has the keys now; null for nobody.
    const Command* holder_of(const QKeySequence& keys) const;
    /// Gives the command these keys and no others, none when they are empty. Whoever had them loses them.
    void set_keys(const Command& command, const QKeySequence& keys);
    /// Gives it its usual keys; whoever had them loses them.
    void reset(const Command& command);
    void reset_all();

private:
    void put(const Command& command, const QList<QKeySequence>& keys);
    void take_from_others(const Command& command, const QList<QKeySequence>& keys);
    void keep(const Command& command) const;

    std::vector<Command> m_commands;
};

/// Whether the key does nothing alone: whoever holds it is about to press another.
bool is_modifier(int key);

/// Why a key cannot be given to a command, for a person; empty when it can.
QString reason_against(const QKeySequence& keys);

} // namespace tarn
