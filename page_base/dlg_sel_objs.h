#pragma once

#include "core/value.h"

#include <QDialog>

#include <optional>

class CBaseWorld;

namespace tarn {

class WorldObject;

/// Which objects of the world are offered. The numbers are those that pages have always asked with.
enum class SceneObjectKind : int {
    Camera = 2,
    Model = 9 ///< everything that is no camera
};

bool is_of_kind(const WorldObject& object, SceneObjectKind kind);

} // namespace tarn

/// The modal dialog in which an object of the 3D world is chosen.
class CDlgSelObjs : public QDialog {
    Q_OBJECT

public:
    /// Asks for one object of the kind; `current` is the one to begin with, or none. No answer when it was cancelled.
    static std::optional<tarn::ObjectRef> sel_objs(QWidget* parent, const CBaseWorld& world, tarn::SceneObjectKind kind,
                                                   tarn::ObjectRef current);

private:
    class Page;

    CDlgSelObjs(const CBaseWorld& world, tarn::SceneObjectKind kind, tarn::ObjectRef current);

    Page* m_page;
};
