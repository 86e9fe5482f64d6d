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

private:
    Result<ModelObject*> create_dialog(const Making& making);
    Result<ModelObject*> create_control(const Making& making);
    Result<ModelObject*> create_menu(const Making& making);

    CGuiPlugScene& m_scene;
    mutable std::shared_ptr<const ScriptObjects> m_objects; ///< made when it is first asked for: then there is a core
    mutable ProblemFinder m_problems;
};

} // namespace tarn
