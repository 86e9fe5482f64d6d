#pragma once

#include "field_row.h"
#include "widgets/number_format.h"

#include <functional>
#include <memory>

class CChildDlg;
class QWidget;

namespace tarn {

class FieldBase;

/// What a selection says about one attribute. That objects disagree is a state of its own, never a magic value.
struct CommonValue {
    enum class Agreement { None, Same, Mixed };
    Agreement agreement = Agreement::None;
    Value value = {};                 ///< of the first object where they disagree
    const FieldBase* field = nullptr; ///< whose rules hold; null for None
};

/// What a widget is to show of it.
struct RowView : CommonValue {
    bool enabled = false;
    Limits limits{0, 0};             ///< of a number
    const char* format = nullptr;    ///< of a number
    std::vector<ChoiceItem> choices; ///< of a combo box with entries of any kind
    int chosen = -1;                 ///< of a list of texts: the index that the object itself has chosen, -1 for none
};

/// What the user wants of an attribute: a value, the attribute's default, or each object's number changed.
struct Edit {
    Value value = {};
    std::optional<Sum> change = {};
    bool to_default = false;
    std::optional<int> chosen = {}; ///< of a list of texts: which one is chosen from now on, -1 for none
};

/// A widget of a form as the editor of one value. There is one kind for each kind of widget, not for each attribute.
class ValueEditor {
public:
    virtual ~ValueEditor() = default;

    /// Shows `view`; tells of nothing.
    virtual void show(const RowView& view) = 0;
    /// Whether the edit that was told last and one that follows it (typing) are one step of undo.
    virtual bool merges() const { return false; }
    /// Whether the user's keys for undo belong to the widget: it holds a text that nobody was told of yet.
    virtual bool keeps_undo() const { return false; }

    /// An edit by the user.
    std::function<void(const Edit&)> on_edited;
    /// The user is done with a text or number.
    std::function<void()> on_finished;
    /// The user opened a picker and left everything as it was.
    std::function<void()> on_abandoned;
    /// The user chose another text of a list.
    std::function<void(int index)> on_chosen;

protected:
    void edited(const Value& value) const
    {
        if (on_edited)
            on_edited({.value = value});
    }
    void finished() const
    {
        if (on_finished)
            on_finished();
    }
};

/// The editor of the kind that fits the row's control in `page`; null when there is none.
std::unique_ptr<ValueEditor> make_value_editor(const CChildDlg& page, const FieldRow& row);

/// The editors of lists, choices and colours; null for other widgets.
std::unique_ptr<ValueEditor> make_picking_editor(const CChildDlg& page, const FieldRow& row);

/// What texts say where the selection disagrees.
QString mixed_text();

} // namespace tarn
