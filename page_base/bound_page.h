#pragma once

#include "field_row.h"
#include "gui_child_dlg.h"
#include "image_rows.h"
#include "script_rows.h"
#include "value_editor.h"

#include <deque>
#include <span>
#include <vector>

namespace tarn {

class FieldTable;
class ModelObject;

/// What `objects` say about the attribute `field`; those that do not have it have no say.
CommonValue common_value(std::span<ModelObject* const> objects, FieldKey field);

} // namespace tarn

/// A page that shows and edits attributes of the selected dialogs or controls. Most of it is a table of rows: an edit
/// writes to the selection as one step of undo, tells the other pages and redraws the views.
class CBoundPage : public CGuiChildDlg {
    Q_OBJECT

public:
    enum class Target { Dialogs, Controls };

    CBoundPage(const QString& page_name, Target target, QWidget* parent = nullptr);
    /// A page for the attributes of one type of controls: it works while the current control is of that type, and only
    /// on the selected controls that are.
    CBoundPage(const QString& page_name, int control_type, QWidget* parent = nullptr);
    ~CBoundPage() override;

    /// Refreshes for the codes after which the selection or its attributes may be others.
    void update_ui(int code) override;

protected:
    /// To be called when the form is there.
    void bind(std::span<const tarn::FieldRow> rows);
    void bind_scripts(std::span<const tarn::ScriptRow> rows) { m_scripts.bind(rows); }
    void bind_images(std::span<const tarn::ImageRow> rows, tarn::SetImage set = nullptr) { m_images.bind(rows, set); }

    /// Whether the interface is edited, the selection is of what the page edits, and there is a current object.
    bool has_selection() const;
    /// The current object; null without a selection.
    tarn::ModelObject* current() const;
    /// The selected objects in selection order; empty without a selection.
    std::vector<tarn::ModelObject*> selected() const;

    /// Fills the page from the selection. Pages that show more than their rows extend it.
    virtual void refresh();
    /// The user's edit of the row for control `id` is about to be written; a page may add writes of its own, which are
    /// part of the same step.
    virtual void row_edited(int, const tarn::Value&) {}
    /// Writes one attribute of the selected objects that have it; what goes wrong is told in a box.
    void write(tarn::FieldKey field, const tarn::Value& value, tarn::Scope scope = tarn::Scope::EverySelected);
    /// After a change of the selected objects: tells the other pages and redraws the views.
    void tell_changed();
    /// Whether an edit of a row is being written; refreshes then come from the page itself.
    bool is_writing() const { return m_written != nullptr; }

private:
    friend class tarn::ScriptRows;
    friend class tarn::ImageRows;
    struct Row {
        tarn::FieldRow row;
        std::unique_ptr<tarn::ValueEditor> editor;
    };
    class Writing;
    static constexpr int any_type = -1;

    bool reacts_to(int code) const;
    void on_edited(const Row& row, const tarn::Value& value);
    void write_row(const Row& row, const tarn::Value& value);
    void follow(tarn::Follows follows);
    QString caption_of(int id) const;

    Target m_target;
    int m_control_type = any_type;
    std::deque<Row> m_rows; ///< the editors' callbacks know their rows by address
    tarn::ScriptRows m_scripts{*this};
    tarn::ImageRows m_images{*this};
    const Row* m_written = nullptr; ///< the row whose edit is being written: its widget is left alone meanwhile
};
