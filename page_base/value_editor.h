#pragma once

#include "core/value.h"

#include <functional>
#include <memory>

class QWidget;

namespace tarn {

class FieldBase;
struct FieldRow;

/// What a selection says about one attribute. That objects disagree is a state of its own, never a magic value.
struct CommonValue {
    enum class Agreement { None, Same, Mixed };
    Agreement agreement = Agreement::None;
    Value value = {};                 ///< means something only for Same
    const FieldBase* field = nullptr; ///< whose rules hold; null for None
};

/// A widget of a form as the editor of one value. There is one kind for each kind of widget, not for each attribute.
class ValueEditor {
public:
    virtual ~ValueEditor() = default;

    /// Shows `value`; tells of nothing. Edits stay disabled where no object has the attribute.
    virtual void show(const CommonValue& value) = 0;
    /// Whether edits that follow each other (typing) are one step of undo.
    virtual bool merges() const { return false; }

    /// An edit by the user.
    std::function<void(const Value&)> on_edited;
    /// The user is done with a text or number.
    std::function<void()> on_finished;

protected:
    void edited(const Value& value) const
    {
        if (on_edited)
            on_edited(value);
    }
    void finished() const
    {
        if (on_finished)
            on_finished();
    }
};

/// The editor of the kind that fits `widget`; null when there is none.
std::unique_ptr<ValueEditor> make_value_editor(QWidget& widget, const FieldRow& row);

} // namespace tarn
