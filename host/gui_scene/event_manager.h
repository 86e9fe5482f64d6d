#pragma once

#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/status.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <vector>

/// The binding of an event of a control to the scene function that runs when it happens.
struct CGuiEvent {
    quint32 control = 0;                             ///< the control's id; kept when the control is gone
    quint32 type = 0;                                ///< GuiEventType
    QString function;                                ///< the function's name; there need not be one of that name
    QList<std::pair<QString, QByteArray>> unknown{}; ///< members of the saved event that this version does not know
};

/// The event bindings of a scene. They are not recorded by the undo journal.
class CEventManager {
public:
    static constexpr std::size_t max_events = 1'000'000;

    /// The name of the function that is made for an event that has none yet.
    static QString new_function_name(quint32 control, quint32 type);

    /// Called after every change by one of the operations that follow.
    std::function<void()> on_changed;

    bool IsFuncExist(quint32 control, quint32 type) const { return GetFunc(control, type) != nullptr; }
    /// Null when nothing is tied to the event.
    CGuiEvent* GetFunc(quint32 control, quint32 type) const;
    /// Binds the function to the event, in place of what was bound to it. Null when there is no room for more events.
    CGuiEvent* CreateEventW(quint32 control, quint32 type, const QString& function);
    void RemoveEvent(CGuiEvent* event);
    /// Removes the events for which `gone` answers true; answers how many.
    std::size_t remove_if(const std::function<bool(const CGuiEvent&)>& gone);

    /// In the order in which they were made.
    const std::vector<std::unique_ptr<CGuiEvent>>& events() const { return m_events; }
    bool empty() const { return m_events.empty(); }

    // Whole contents. on_changed is not called: whoever does this tells of it.
    void swap(CEventManager& other);
    /// Adds those events that nothing is tied to yet; answers them.
    std::vector<CGuiEvent> attach(std::vector<CGuiEvent> events);
    /// Takes out what is tied to the events now; answers it.
    std::vector<CGuiEvent> detach(const std::vector<CGuiEvent>& events);

    /// Those events for which `wanted` answers true, one a line.
    void write(tarn::JsonWriter& writer, const std::function<bool(const CGuiEvent&)>& wanted) const;
    /// Into an empty manager. Names over the limit of names of functions and events that appear twice are refused;
    /// events that this version does not know are kept.
    tarn::Status read(tarn::JsonCursor& cursor);

private:
    void add(CGuiEvent event);
    void tell_changed() const;
    std::size_t take_out(const std::function<bool(const CGuiEvent&)>& gone, std::vector<CGuiEvent>* taken);

    std::vector<std::unique_ptr<CGuiEvent>> m_events;
    QHash<quint64, CGuiEvent*> m_by_key;
};
