#include "script_rows.h"

#include "bound_page.h"
#include "core/language.h"
#include "engine/base_world.h"
#include "frame/boxes.h"
#include "frame/cmd_test.h"
#include "gui_core/dxut_control.h"
#include "gui_core/dxut_dialog.h"
#include "gui_scene/gui_plug_scene.h"
#include "script/config_scene.h"
#include "widgets/button_st.h"

namespace tarn {

namespace {

constexpr quint32 bound_color = 0xff0000; ///< COLORREF: blue
constexpr quint32 free_color = 0;

/// The script that runs when an event happens to a dialog or a control.
class EventScript {
public:
    EventScript(CGuiPlugScene& scene, const ModelObject& object, quint32 event)
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

    Status create()
    {
        const QString name = function_name();
        if (!m_functions.find_function(name))
            if (Status added = m_functions.add_function(IFunc::create_func(m_functions, name), true); !added)
                return added;
        if (m_dialog || m_events.CreateEventW(m_object.id(), m_event, name))
            return {};
        return Status::error(lang(u"事件数量已达上限（%1）。", u"There are as many events as a scene can have (%1).")
                                 .arg(CEventManager::max_events));
    }

    void remove()
    {
        if (!exists())
            return;
        m_functions.del_function(function_name());
        if (!m_dialog)
            m_events.RemoveEvent(m_events.GetFunc(m_object.id(), m_event));
    }

private:
    CConfigScene& m_functions;
    CEventManager& m_events;
    const ModelObject& m_object;
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
        m_page.on_click(row.remove_button, [this, event = row.event] { remove(event); });
    }
}

void ScriptRows::show() const
{
    const ModelObject* object = m_page.current();
    for (const ScriptRow& row : m_rows) {
        const bool exists = object && EventScript(*m_page.scene(), *object, row.event).exists();
        CButtonST* button = m_page.button(row.script_button);
        button->SetColor(CButtonST::normal_text_color, exists ? bound_color : free_color);
        button->setEnabled(object);
        m_page.button(row.remove_button)->setEnabled(exists);
    }
}

void ScriptRows::open(quint32 event)
{
    const ModelObject* object = m_page.current();
    if (!object)
        return;
    EventScript script(*m_page.scene(), *object, event);
    if (const Status created = script.create(); !created)
        return boxes::error(&m_page, created.message());
    CDlgCmdTest::do_modal(script.function_name(), m_page.world(), &m_page, -1);
    m_page.refresh();
}

void ScriptRows::remove(quint32 event)
{
    if (!boxes::confirm(&m_page, lang(u"是否删除当前脚本？", u"Remove Script?"),
                        lang(u"脚本删除！请注意！", u"Removed script cannot be recovered!")))
        return;
    if (const ModelObject* object = m_page.current())
        EventScript(*m_page.scene(), *object, event).remove();
    m_page.refresh();
}

} // namespace tarn
