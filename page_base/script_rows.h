#pragma once

#include <QString>
#include <QtGlobal>

#include <span>
#include <vector>

class CBoundPage;

namespace tarn {

/// An event of the current dialog or control, with the button that opens its script and the one that removes it.
struct ScriptRow {
    quint32 event; ///< GuiEventType
    int script_button;
    int remove_button;
};

/// The buttons of a page through which the author binds scripts to the events of the current object. A script of a
/// control is tied to its event; one of a dialog is known by its name alone. Neither is undone.
class ScriptRows {
public:
    explicit ScriptRows(CBoundPage& page) : m_page(page) {}

    void bind(std::span<const ScriptRow> rows);
    /// The events that have a script stand out, those whose function is missing or faulty more so, and only these can lose
    /// it.
    void show() const;

private:
    void open(quint32 event);
    void remove(quint32 event);
    void pop_menu(quint32 event);
    void choose_function(quint32 event);
    bool is_broken(quint32 event) const;
    QString tip_of(quint32 event) const;

    CBoundPage& m_page;
    std::vector<ScriptRow> m_rows;
};

} // namespace tarn
