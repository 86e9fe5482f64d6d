#pragma once

#include "core/field_key.h"

#include <QtGlobal>

#include <span>
#include <vector>

class CBoundPage;

namespace tarn {

class RowMark;

/// An attribute that names a menu, with the button that shows and chooses it and the one that clears it.
struct BoundMenuRow {
    int button;
    int clear_button;
    FieldKey field;
};

/// The menus that the selected objects open. The buttons show those of the current object, and a mark where others have
/// another one; objects without the attribute are left alone.
class BoundMenuRows {
public:
    explicit BoundMenuRows(CBoundPage& page) : m_page(page) {}

    void bind(std::span<const BoundMenuRow> rows);
    void show() const;
    FieldKey key_of(int button) const;

private:
    void choose(FieldKey field);
    void put(FieldKey field, quint32 menu);

    CBoundPage& m_page;
    std::vector<BoundMenuRow> m_rows;
    std::vector<RowMark*> m_marks; ///< by row
};

} // namespace tarn
