#pragma once

#include <QString>

#include <span>
#include <vector>

class CBoundPage;
class CGuiPlugScene;

namespace tarn {

class ModelObject;

struct ActionResult {
    bool changed = false; ///< the other pages are told
    QString message = {}; ///< is shown in a box unless it is empty
};

/// A button that does something to the target of a page.
struct ActionRow {
    int button;
    ActionResult (*run)(CGuiPlugScene& scene, std::span<ModelObject* const> selected, ModelObject& current);
    bool (*enabled_if)(const ModelObject& current) = nullptr; ///< null: whenever there is a current object
};

/// The buttons of a page that do something to its target. A click is one step of undo and redraws the views.
class ActionRows {
public:
    explicit ActionRows(CBoundPage& page) : m_page(page) {}

    void bind(std::span<const ActionRow> rows);
    void show() const;

private:
    void run(const ActionRow& row);

    CBoundPage& m_page;
    std::vector<ActionRow> m_rows;
};

} // namespace tarn
