// The text of a scene's function: it is checked and run, and stops at its limits.

#include "fuzz.h"

#include "script/config_scene.h"
#include "script/script_runtime.h"

void fuzz(FuzzInput input)
{
    const QString text = QString::fromUtf8(input.rest());
    const bool sound = tarn::ScriptRuntime::check(text).empty();
    tarn::Document document;
    CConfigScene functions(document);
    const QString name = QStringLiteral("main");
    if (!functions.set_function(name, text))
        return;
    tarn::ScriptLimits limits;
    limits.memory = 4 * 1024 * 1024;
    limits.text = 64 * 1024;
    limits.block = 1024 * 1024;
    limits.steps = 20'000;
    tarn::ScriptRuntime runtime(functions, {}, limits);
    const auto result = runtime.call(name);
    require(sound || !result.ok(), "what cannot be compiled is not run");
    for (int i = 1; i < 4; ++i)
        runtime.tick(i);
}
