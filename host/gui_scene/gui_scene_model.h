#pragma once

#include "engine/scene_plug.h"
#include "problems.h"

#include <memory>

class CGuiPlugScene;

namespace tarn {

/// The interface's model for automation.
class GuiSceneModel : public SceneModel {
public:
    explicit GuiSceneModel(CGuiPlugScene& scene);

    const ScriptObjects& objects() const override;
    Result<ModelObject*> create(const ObjectKind& kind, const Making& making) override;
    Status remove(ModelObject& object) override;
    ModelObject* current(const ModelObject* parent) const override;
    std::vector<KeyRow> keys(const ModelObject& variable) const override;
    Selection selection() const override;
    Status select(const std::vector<ModelObject*>& objects) override;
    std::vector<Event> events() const override;
    std::vector<Problem> problems() const override;
    Status check_layout(const std::vector<QSize>& sizes, const Progress& progress) override;
    void show_time(quint32 timebar, float time) override;
    ModelObject* object_at(QPointF place) const override;
    ModelObject* open_list() const override;
    std::vector<LiveValue> live_values(const ModelObject& object) const override;

    /// What the last check of the layout found, of what is still there.
    std::vector<Problem> layout_problems() const;
    /// What was found of the layout was of another scene.
    void forget_layout() { m_layout.clear(); }

private:
    Result<ModelObject*> create_dialog(const Making& making);
    Result<ModelObject*> create_control(const Making& making);
    Result<ModelObject*> create_menu(const Making& making);

    struct LayoutProblem {
        quint32 object; ///< id; the object may go
        Problem problem;
    };

    CGuiPlugScene& m_scene;
    std::vector<LayoutProblem> m_layout;                    ///< of the last check
    mutable std::shared_ptr<const ScriptObjects> m_objects; ///< made when it is first asked for: then there is a core
    mutable ProblemFinder m_problems;
};

} // namespace tarn
