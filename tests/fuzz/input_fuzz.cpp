// Recorded input: what is read is written and reads the same.

#include "commands/input_script.h"
#include "fuzz.h"

void fuzz(FuzzInput input)
{
    const auto script = tarn::parse_input_script(input.rest());
    if (!script)
        return;
    const QString text = tarn::input_script_text(script.value());
    const auto again = tarn::parse_input_script(text.toUtf8());
    require(again.ok(), "what is written can be read");
    require(again.value().steps.size() == script.value().steps.size(), "no step comes or goes");
    require(tarn::input_script_text(again.value()) == text, "what is read again is the same");
}
