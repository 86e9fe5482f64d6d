#include "action_rows.h"

#include "bound_page.h"
#include "frame/boxes.h"
#include "widgets/button_st.h"

namespace tarn {

void ActionRows::bind(std::span<const ActionRow> rows)
{
    for (const ActionRow& row : rows) {
        if (!m_page.button(row.button)) {
            m_page.tell_missing(row.button, {});
            continue;
        }
        m_rows.push_back(row);
        m_page.on_click(row.button, [this, row] { run(row); });
    }
}

void ActionRows::show() const
{
    const ModelObject* current = m_page.current();
    for (const ActionRow& row : m_rows)
        m_page.button(row.button)->setEnabled(current && (!row.enabled_if || row.enabled_if(*current)));
}

void ActionRows::run(const ActionRow& row)
{
    ModelObject* current = m_page.current();
    if (!current)
        return;
    const ActionResult result = row.run(*m_page.scene(), m_page.selected(), *current);
    if (result.changed)
        m_page.tell_changed();
    if (!result.message.isEmpty())
        boxes::message(&m_page, {.text = result.message, .title = {}});
    m_page.update_all_views();
}

} // namespace tarn
