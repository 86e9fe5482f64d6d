#pragma once

#include <QDialog>

#include <optional>

class CBaseWorld;

namespace tarn {

struct SceneObject;

/// Which objects of the world are offered. The numbers are those that pages have always asked with.
enum class SceneObjectKind : int {
    Camera = 2,
    Model = 9 ///< everything that is no camera
};

bool is_of_kind(const SceneObject& object, SceneObjectKind kind);

} // namespace tarn

/// The modal dialog in which an object of the 3D world is chosen.
class CDlgSelObjs : public QDialog {
    Q_OBJECT

public:
    /// Asks for one object of the kind; `current` is the identifier of the one to begin with, empty for none. Answers an
    /// identifier, empty for none; no answer when it was cancelled.
    static std::optional<QString> sel_objs(QWidget* parent, const CBaseWorld& world, tarn::SceneObjectKind kind,
                                           const QString& current);

private:
    class Page;

    CDlgSelObjs(const CBaseWorld& world, tarn::SceneObjectKind kind, const QString& current);

    Page* m_page;
};
