#include "script_rows.h"

#include "bound_page.h"
#include "core/field.h"
#include "core/language.h"
#include "dlg_function_pick.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "frame/menufun.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_core/gui_event.h"
#include "gui_scene/function_names.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/config_scene.h"
#include "script/script_runtime.h"
#include "widgets/button_st.h"

#include <algorithm>

namespace tarn {

namespace {

constexpr quint32 bound_color = 0xff0000; ///< COLORREF: blue
constexpr quint32 free_color = 0;
constexpr int warning_icon = 6953;

/// The script that runs when an event happens to a dialog or a control.
class EventScript {
public:
    EventScript(CGuiPlugScene& scene, ModelObject& object, quint32 event)
        : m_functions(scene.functions()),
          m_events(scene.events()),
          m_object(object),
          m_event(event),
          m_dialog(dynamic_cast<const CDXUTDialog*>(&object))
    {
    }

    QString function_name() const
    {
        if (m_dialog)
            return m_dialog->get_func_str(m_event);
        const CGuiEvent* bound = m_events.GetFunc(m_object.id(), m_event);
        return bound ? bound->function() : CEventManager::new_function_name(m_object.id(), m_event);
    }

    bool exists() const
    {
        return m_dialog ? m_functions.find_function(function_name()) != nullptr
                        : m_events.IsFuncExist(m_object.id(), m_event);
    }

    /// What the function is called with while the interface runs; the value is the one of now.
    CDlgCmdTest::Use use()
    {
        const EventKind* kind = event_kind(m_event);
        const FieldBase* field = kind && kind->value ? m_object.fields().find(kind->value) : nullptr;
        return {.first_line = m_dialog ? QStringLiteral("local self, event = ...\n")
                                       : QStringLiteral("local self, event, value = ...\n"),
                .arguments = {m_object.shared_from_this(), Value(GetEventStrName(m_event)),
                              field ? m_object.property(*field) : Value()}};
    }

    /// The event calls a function that there is already. A dialog's function bears the event's name, so it calls that.
    Status choose(const QString& name)
    {
        const QString before = function_name();
        if (name == before)
            return create();
        if (m_dialog) {
            if (Status created = create(); !created)
                return created;
            return m_functions.find_function(before)->set_text(QStringLiteral("return call(\"%1\", ...)\n").arg(name));
        }
        if (!m_events.CreateEventW(m_object.id(), m_event, name))
            return too_many();
        // An empty function that was only made for the event is of no more use.
        const FuncPtr function = m_functions.find_function(before);
        if (function && function->text().trimmed().isEmpty() && !is_function_used(m_functions, before))
            m_functions.del_function(before);
        return {};
    }

    Status create()
    {
        const QString name = function_name();
        if (!m_functions.find_function(name))
            if (Status added = m_functions.add_function(IFunc::create_func(m_functions, name), true); !added)
                return added;
        if (m_dialog || m_events.CreateEventW(m_object.id(), m_event, name))
            return {};
        return too_many();
    }

    void remove()
    {
        if (!exists())
            return;
        const QString name = function_name();
        if (!m_dialog)
            m_events.RemoveEvent(m_events.GetFunc(m_object.id(), m_event));
        // What a dialog's event calls is told by the function's name alone.
        if (m_dialog || !is_function_used(m_functions, name))
            m_functions.del_function(name);
    }

    /// Whether the function stays when the event no longer calls it.
    bool is_shared() const
    {
        const CGuiEvent* bound = m_dialog ? nullptr : m_events.GetFunc(m_object.id(), m_event);
        const auto& all = m_events.events();
        return bound && std::any_of(all.begin(), all.end(), [&](const CGuiEvent* event) {
                   return event != bound && event->function() == bound->function();
               });
    }

private:
    static Status too_many()
    {
        return Status::error(lang(u"事件数量已达上限（%1）。", u"There are as many events as a scene can have (%1).")
                                 .arg(CEventManager::max_events));
    }

    CConfigScene& m_functions;
    CEventManager& m_events;
    ModelObject& m_object;
    quint32 m_event;
    const CDXUTDialog* m_dialog; ///< null for a control
};

} // namespace

void ScriptRows::bind(std::span<const ScriptRow> rows)
{
    for (const ScriptRow& row : rows) {
        for (const int id : {row.script_button, row.remove_button})
            if (!m_page.button(id))
                return m_page.tell_missing(id, QString::number(row.event, 16));
        m_rows.push_back(row);
        m_page.on_click(row.script_button, [this, event = row.event] { open(event); });
        CButtonST* button = m_page.button(row.script_button);
        button->setContextMenuPolicy(Qt::CustomContextMenu);
        QObject::connect(button, &QWidget::customContextMenuRequested, &m_page,
                         [this, event = row.event] { pop_menu(event); });
        m_page.on_click(row.remove_button, [this, event = row.event] { remove(event); });
    }
}

void ScriptRows::show() const
{
    ModelObject* object = m_page.current();
    for (const ScriptRow& row : m_rows) {
        const bool exists = object && EventScript(*m_page.scene(), *object, row.event).exists();
        CButtonST* button = m_page.button(row.script_button);
        button->SetColor(CButtonST::normal_text_color, exists ? bound_color : free_color);
        button->setEnabled(object);
        button->SetIcon(object && is_broken(row.event) ? warning_icon : 0);
        button->SetTooltipText(object ? tip_of(row.event) : QString());
        m_page.button(row.remove_button)->setEnabled(exists);
    }
}

void ScriptRows::open(quint32 event)
{
    ModelObject* object = m_page.current();
    if (!object)
        return;
    EventScript script(*m_page.scene(), *object, event);
    if (const Status created = script.create(); !created)
        return boxes::error(&m_page, created.message());
    CDlgCmdTest::do_modal(script.function_name(), m_page.world(), &m_page, -1, script.use());
    m_page.refresh();
}

/// Whether the event names a function that is not there or that cannot be run.
bool ScriptRows::is_broken(quint32 event) const
{
    EventScript script(*m_page.scene(), *m_page.current(), event);
    if (!script.exists())
        return false;
    const FuncPtr function = m_page.scene()->functions().find_function(script.function_name());
    return !function || !ScriptRuntime::check(function->text()).empty();
}

QString ScriptRows::tip_of(quint32 event) const
{
    EventScript script(*m_page.scene(), *m_page.current(), event);
    const QString more = lang(u"右键单击：选择已有的函数", u"Right click: choose a function that there is");
    if (!script.exists())
        return more;
    const QString name = script.function_name();
    return (is_broken(event) ? lang(u"函数“%1”不存在或有错误", u"The function \"%1\" is missing or faulty")
                             : lang(u"函数：%1", u"Function: %1"))
               .arg(name)
        + QLatin1Char('\n') + more;
}

void ScriptRows::pop_menu(quint32 event)
{
    ModelObject* object = m_page.current();
    if (!object)
        return;
    enum Command : int { edit = 1, choose, remove_script };
    const bool exists = EventScript(*m_page.scene(), *object, event).exists();
    const std::vector<boxes::MenuItem> items{
        {.id = edit, .text = lang(u"编辑脚本", u"Edit Script")},
        {.id = choose, .text = lang(u"选择已有的函数...", u"Choose a Function...")},
        {.id = 0, .text = {}},
        {.id = remove_script, .text = lang(u"删除", u"Remove"), .enabled = exists}};
    switch (menufun::pop_menu(&m_page, items)) {
    case edit: return open(event);
    case choose: return choose_function(event);
    case remove_script: return remove(event);
    default: return;
    }
}

void ScriptRows::choose_function(quint32 event)
{
    EventScript script(*m_page.scene(), *m_page.current(), event);
    const auto chosen = CDlgFunctionPick(m_page.scene()->functions(), script.function_name()).do_modal(&m_page);
    if (!chosen)
        return;
    if (chosen->isEmpty() || !m_page.scene()->functions().find_function(*chosen))
        return open(event); // A new one is the event's own.
    if (const Status set = script.choose(*chosen); !set)
        boxes::error(&m_page, set.message());
    m_page.refresh();
}

void ScriptRows::remove(quint32 event)
{
    ModelObject* object = m_page.current();
    const bool stays = object && EventScript(*m_page.scene(), *object, event).is_shared();
    if (!stays
        && !boxes::confirm(&m_page, lang(u"是否删除当前脚本？", u"Remove Script?"),
                           lang(u"脚本删除！请注意！", u"Removed script cannot be recovered!")))
        return;
    if (object)
        EventScript(*m_page.scene(), *object, event).remove();
    m_page.refresh();
}

} // namespace tarn
