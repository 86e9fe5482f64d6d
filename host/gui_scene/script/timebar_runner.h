#pragma once

#include "animation/animation_target.h"
#include "script/script_api.h"

class CGuiPlugScene;

namespace tarn {

struct ScriptLogEntry;
struct ScriptResult;

/// Lets the scene's functions run where timebars come by script keys, and tells the log. While the author plays or scrubs
/// none runs: the log tells what would be called.
class TimebarRunner final : public AnimationListener {
public:
    explicit TimebarRunner(CGuiPlugScene& scene) : m_scene(scene) {}

    /// Called with the timebar, "ScriptKey" and the key's time.
    void script_key_passed(CTimebar& bar, float time, const QString& function) override;
    /// The line runs as it stands, with the values of the object's variables.
    void command_due(CTCommandScript& object) override;
    void bar_ended(CTimebar& bar) override;

private:
    /// What the log says instead of a result while the author plays, and no function runs.
    QString not_run(const QString& function, const QString& arguments) const;
    /// `every`: what went well is told, too.
    void tell_result(const ScriptResult& result, ScriptLogEntry entry, bool every);
    void tell(ScriptLogEntry entry) const;

    CGuiPlugScene& m_scene;
};

} // namespace tarn
