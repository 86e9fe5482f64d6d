#include "list_page.h"

#include "core/edit_limit.h"
#include "core/field.h"
#include "core/language.h"
#include "core/model_object.h"
#include "frame/boxes.h"
#include "frame/edit_commands.h"
#include "gui_scene/gui_plug_scene.h"
#include "widgets/report_list.h"

#include <algorithm>

using tarn::lang;

namespace {

constexpr int rename_command = 1000; ///< beside those of the scene's editor

} // namespace

void CListPage::offer_renaming(CReportList& list, const Naming& naming)
{
    m_named_list = &list;
    m_naming = naming;
    connect(&list, &CReportList::rename_pressed, this, &CListPage::edit_name);
    connect(&list, &CReportList::caption_edited, this,
            [this](int row, int, const QString& text) { rename(row, text); });
}

void CListPage::pop_list_menu(const QPoint& place)
{
    tarn::SceneEditor& editor = scene()->editor();
    std::vector<tarn::EditCommand> commands = editor.selection_commands();
    if (!commands.empty())
        commands.push_back({.id = rename_command,
                            .name = lang(u"重命名\tF2", u"Rename\tF2"),
                            .keys = {},
                            .enabled = m_named_list->get_last_sel_index() >= 0,
                            .begins_group = true,
                            .question = {}});
    if (tarn::pop_edit_menu(this, editor, commands, place) == rename_command)
        edit_name();
}

void CListPage::edit_name()
{
    const QModelIndex at = m_named_list->currentIndex();
    const int row = m_named_list->selectionModel()->isSelected(at) ? at.row() : m_named_list->get_last_sel_index();
    void* const item = m_named_list->get_binded_ptr(row);
    if (!item || !core() || !is_editing()
        || m_named_list->item_caption(row, m_naming.column).size() > tarn::longest_edited_line)
        return;
    const tarn::FieldBase* name = m_naming.object_of(item)->fields().find(m_naming.name);
    m_named_list->edit_caption(row, m_naming.column,
                               std::min(name->rules().max_length, int(tarn::longest_edited_line)));
}

void CListPage::rename(int row, const QString& name)
{
    tarn::ModelObject* object = m_naming.object_of(m_named_list->get_binded_ptr(row));
    tarn::Status status;
    run_action([&] { status = object->set_property(*object->fields().find(m_naming.name), name); },
               lang(u"重命名", u"Rename"));
    if (!status)
        tarn::boxes::error(this, status.message());
    broadcast(m_naming.changed_code);
}
