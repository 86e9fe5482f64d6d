#pragma once

#include "core/field_key.h"
#include "dlg_sel_objs.h"

#include <span>
#include <vector>

class CBoundPage;

namespace tarn {

class RowMark;

/// An attribute that refers to an object of the world, with the button that shows and chooses it and the one
/// that clears it.
struct SceneObjectRow {
    int button;
    int clear_button;
    FieldKey field;
    SceneObjectKind kind;
};

/// The objects of the world that the current object names, to which alone is written what the user chooses. A mark tells
/// where others that are selected have another one.
class SceneObjectRows {
public:
    explicit SceneObjectRows(CBoundPage& page) : m_page(page) {}

    void bind(std::span<const SceneObjectRow> rows);
    void show() const;
    FieldKey key_of(int button) const;

private:
    void choose(const SceneObjectRow& row);
    void put(FieldKey field, ObjectRef object);

    CBoundPage& m_page;
    std::vector<SceneObjectRow> m_rows;
    std::vector<RowMark*> m_marks; ///< by row
};

} // namespace tarn
