#pragma once

#include "animation/animation_target.h"
#include "script/script_api.h"

#include <span>

class CGuiPlugScene;

namespace tarn {

struct ScriptLogEntry;

/// Lets the scene's functions run where timebars come by script keys, and tells the log. While the author plays or scrubs
/// none runs: the log tells what would be called.
class TimebarRunner final : public AnimationListener {
public:
    explicit TimebarRunner(CGuiPlugScene& scene) : m_scene(scene) {}

    /// Called with the timebar, "ScriptKey" and the key's time.
    void script_key_passed(CTimebar& bar, float time, const QString& function) override;
    /// Called with the values of the variables that the command names, numbers and texts.
    void command_due(CTCommandScript& object) override;
    void bar_ended(CTimebar& bar) override;

private:
    /// `every`: what went well is told, too.
    /// Why a function does not run while the author plays.
    QString not_run(const QString& function) const;
    void call(CTimebar& bar, ScriptLogEntry entry, std::span<const ScriptValue> arguments, bool every);
    void tell(ScriptLogEntry entry) const;

    CGuiPlugScene& m_scene;
};

} // namespace tarn
