#pragma once

#include "core/status.h"
#include "field_row.h"

#include <span>
#include <vector>

class CBoundPage;
class CGuiPlugScene;

namespace tarn {

class ModelObject;
class RowMark;

/// What a button says of a picture of the scene: its file's name without folders.
QString picture_caption(const QString& picture);

/// An attribute that names a picture, with the button that shows and chooses it and the one that clears it.
struct ImageRow {
    int button;
    int clear_button;
    FieldKey field;
    Part part = {}; ///< which one of several
};

/// Gives the objects the picture in the file `path`; `slot` is the row's place among the page's.
using SetImage = Status (CGuiPlugScene::*)(const std::vector<ModelObject*>& objects, int slot, const QString& path);

/// The pictures of the selected objects in a page. The buttons show those of the current object, and a mark where others
/// have another one.
class ImageRows {
public:
    explicit ImageRows(CBoundPage& page) : m_page(page) {}

    /// A null `set` writes the rows' attributes and no more.
    void bind(std::span<const ImageRow> rows, SetImage set);
    void show() const;
    FieldKey key_of(int button) const;

private:
    void choose(int slot);
    Status put(int slot, const QString& path) const;
    void clear(const ImageRow& row);

    CBoundPage& m_page;
    std::vector<ImageRow> m_rows;
    std::vector<RowMark*> m_marks; ///< by row
    SetImage m_set = nullptr;
};

} // namespace tarn
