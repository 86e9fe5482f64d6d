#pragma once

#include "action_rows.h"
#include "edit_buffer.h"
#include "field_row.h"
#include "gui_child_dlg.h"
#include "image_rows.h"
#include "menu_rows.h"
#include "object_rows.h"
#include "row_mark.h"
#include "script_rows.h"
#include "target.h"
#include "value_editor.h"

#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace tarn {

struct FieldRules;

/// What `objects` say about an attribute; those that do not have it have no say.
CommonValue common_value(std::span<ModelObject* const> objects, FieldKey field);

} // namespace tarn

/// A page that shows and edits attributes of its target. Most of it is a table of rows: an edit writes to the target as
/// one step of undo, in whole or not at all, tells the other pages and redraws the views.
class CBoundPage : public CGuiChildDlg {
    Q_OBJECT

public:
    CBoundPage(const QString& page_name, const tarn::Target& target, QWidget* parent = nullptr);
    ~CBoundPage() override;

    /// Refreshes for the target's codes.
    void update_ui(int code) override;

    const tarn::Target& target() const { return m_target; }
    /// The page's table as it stands, in the order in which it was bound.
    std::vector<const tarn::FieldRow*> field_rows() const;
    /// The attribute that control `id` of the form shows or helps to edit; none for others.
    tarn::FieldKey key_of(int id) const;
    /// That attribute's name with the current object; empty when that does not have it.
    QString attribute_of(int id) const;

protected:
    using Objects = std::span<tarn::ModelObject* const>;

    // To be called when the form is there. A row whose control the form does not have, or has of a kind that cannot show
    // the value, is told in a box.
    void bind(std::span<const tarn::FieldRow> rows);
    void bind_scripts(std::span<const tarn::ScriptRow> rows) { m_scripts.bind(rows); }
    void bind_images(std::span<const tarn::ImageRow> rows, tarn::SetImage set = nullptr) { m_images.bind(rows, set); }
    void bind_menus(std::span<const tarn::BoundMenuRow> rows) { m_menus.bind(rows); }
    void bind_objects(std::span<const tarn::SceneObjectRow> rows) { m_objects.bind(rows); }
    void bind_actions(std::span<const tarn::ActionRow> rows) { m_actions.bind(rows); }
    /// From now on edits wait until `ok_button` writes them, as one step called `name`, or `cancel_button` drops them.
    /// Those of objects that are selected no more wait until they are selected again.
    void buffer_edits(int ok_button, int cancel_button, const QString& name);

    bool has_selection() const { return current() != nullptr; }
    /// The current object of the target; null when there is nothing to edit.
    tarn::ModelObject* current() const;
    /// All objects of the target; empty when there is nothing to edit.
    std::vector<tarn::ModelObject*> selected() const;

    void model_changed(const tarn::ModelChange& change) override;
    void showEvent(QShowEvent* event) override;
    /// Fills the page from the target. Pages that show more than their rows extend it.
    virtual void refresh();
    /// The user's edit of the row for control `id` would give the current object `value`; false drops it. A page asks
    /// the user here.
    virtual bool confirm_edit(int id, const tarn::Value& value);
    /// The user's edit of the row for control `id` is about to be written; a page may add writes of its own, which are
    /// part of the same step. `value` is the one that the current object gets.
    virtual void row_edited(int id, const tarn::Value& value);

    /// Which part of its value the row for control `id` shows from the next refresh on.
    void set_part(int id, tarn::Part part);
    /// An attribute of `object` with the edits that wait; monostate when it has none.
    tarn::Value value_of(const tarn::ModelObject& object, tarn::FieldKey field) const;
    /// Runs `change`, which calls write(), as one step of undo called `name` that happens in whole or not at all: what
    /// goes wrong is told in a box. False then.
    bool change(const std::function<void()>& change, const QString& name, const QByteArray& merge_key = {});
    /// Writes one attribute, or a part of it, of the objects that have it.
    void write(tarn::FieldKey field, const tarn::Value& value, tarn::Scope scope = tarn::Scope::EverySelected,
               tarn::Part part = {});
    /// Writes the defaults.
    void write_default(tarn::FieldKey field, tarn::Part part = {});
    /// Writes to each object that has the attribute what `value_of` gives for it.
    using ValueOf = std::function<tarn::Value(const tarn::ModelObject& object, const tarn::FieldBase& field)>;
    void write_each(tarn::FieldKey field, tarn::Scope scope, const ValueOf& value_of);
    void write_each(Objects objects, tarn::FieldKey field, const ValueOf& value_of);
    /// The confirmed edits are to be written, which `write` does; what fails undoes the step.
    virtual tarn::Status write_buffered(const std::function<tarn::Status()>& write) { return write(); }
    /// Whether one of the objects has something else than the default.
    bool differs_from_default(tarn::FieldKey field, tarn::Part part, Objects objects) const;
    /// Has the mark tell what drives the attribute of some of the objects.
    void mark_driven(tarn::FieldKey field, Objects objects, tarn::RowMark::State& mark) const;
    /// After a change of the target's objects: tells the other pages and redraws the views.
    void tell_changed();
    /// Whether an edit of a row is being written; refreshes then come from the page itself.
    bool is_writing() const { return m_written != nullptr; }

private:
    friend class tarn::ScriptRows;
    friend class tarn::ImageRows;
    friend class tarn::BoundMenuRows;
    friend class tarn::SceneObjectRows;
    friend class tarn::ActionRows;
    struct Row {
        tarn::FieldRow row;
        std::unique_ptr<tarn::ValueEditor> editor;
        tarn::RowMark* mark;
    };
    class Writing;

    void bind_row(const tarn::FieldRow& row);
    void connect_row(Row& bound);
    void connect_input(Row& bound);
    void tell_missing(int control, const QString& what);

    tarn::Value held_by(const tarn::ModelObject& object, const tarn::FieldBase& field) const;
    tarn::Value shown_value(const tarn::FieldRow& row, const tarn::ModelObject& object,
                            const tarn::FieldBase& field) const;
    tarn::CommonValue common_of(Objects objects, const tarn::FieldRow& row) const;
    void show_row(const Row& bound, Objects all, Objects one) const;
    tarn::RowView view_of(const tarn::FieldRow& row, tarn::CommonValue common, const tarn::ModelObject* shown) const;
    tarn::Limits limits_of(const tarn::FieldRow& row, const tarn::FieldRules& rules,
                           const tarn::ModelObject& shown) const;
    const tarn::Target& target_of(const tarn::FieldRow& row) const { return row.target ? *row.target : m_target; }
    tarn::ModelObject* current_of(const tarn::FieldRow& row) const;
    std::vector<tarn::ModelObject*> targets_of(const tarn::FieldRow& row) const;
    std::vector<tarn::ModelObject*> targets_of(const tarn::Target& target, tarn::Scope scope) const;

    void on_edited(const Row& row, const tarn::Edit& edit);
    void open_files(const Row& row);
    QString veto_of(const tarn::FieldRow& row, const tarn::Edit& edit) const;
    tarn::Value edited_value(const tarn::FieldRow& row, const tarn::ModelObject& object, const tarn::FieldBase& field,
                             const tarn::Edit& edit) const;
    void write_row(const tarn::FieldRow& row, const tarn::Edit& edit);
    bool run_whole(const std::function<void()>& change, const QString& name, const QByteArray& merge_key = {});
    void follow(tarn::Follows follows);
    void confirm_edits(const QString& name);
    void drop_edits();
    QString caption_of(int id) const;

    bool m_stale = false;           ///< the model changed while the page was hidden
    std::size_t m_refreshed_in = 0; ///< the turn of the model's changes in which the page was refreshed for them
    const tarn::Target& m_target;
    std::deque<Row> m_rows; ///< the editors' callbacks know their rows by address
    tarn::ScriptRows m_scripts{*this};
    tarn::ImageRows m_images{*this};
    tarn::BoundMenuRows m_menus{*this};
    tarn::SceneObjectRows m_objects{*this};
    tarn::ActionRows m_actions{*this};
    std::optional<tarn::EditBuffer> m_buffer; ///< none: edits are written at once
    int m_ok_button = 0;
    int m_cancel_button = 0;
    tarn::Status m_failed;          ///< of the change that runs
    const Row* m_written = nullptr; ///< the row whose edit is being written: its widget is left alone meanwhile
};
