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
    std::vector<ModelObject*> dialogs() const override;
    ModelObject* root_dialog() const override;
    std::vector<ModelObject*> controls() const override;
    std::vector<ModelObject*> controls_of(const ModelObject& dialog) const override;
    std::vector<ModelObject*> menus() const override;
    std::vector<ModelObject*> items_of(const ModelObject& menu) const override;
    Result<ModelObject*> create_dialog(const QString& name, const QRectF& rect) override;
    Result<ModelObject*> create_control(int type, ModelObject& dialog, const QString& name,
                                        const QRectF& rect) override;
    Result<ModelObject*> create_menu(const QString& name) override;
    Selection selection() const override;
    Status select(const std::vector<ModelObject*>& objects) override;
    std::vector<Event> events() const override;
    std::vector<Problem> problems() const override;

private:
    CGuiPlugScene& m_scene;
    mutable std::shared_ptr<const ScriptObjects> m_objects; ///< made when it is first asked for: then there is a core
    mutable ProblemFinder m_problems;
};

} // namespace tarn
