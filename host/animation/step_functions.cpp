#include "step_functions.h"

#include "core/journal.h"
#include "script/config_scene.h"

#include <memory>

namespace tarn {

namespace {

class StepFunctions final : public Journal::SideEffect {
public:
    StepFunctions(CConfigScene& functions, std::vector<FunctionText> texts, bool are_there)
        : m_functions(functions), m_texts(std::move(texts)), m_are_there(are_there)
    {
    }
    void exchange() override
    {
        const RecordingOff off(m_functions.journal());
        for (FunctionText& function : m_texts)
            m_are_there ? take_out(function) : put_in(function);
        m_are_there = !m_are_there;
    }

private:
    void take_out(FunctionText& function)
    {
        if (const FuncPtr present = m_functions.find_function(function.name))
            function.text = present->text();
        m_functions.del_function(function.name);
    }
    void put_in(const FunctionText& function)
    {
        if (!m_functions.find_function(function.name))
            (void)m_functions.set_function(function.name, function.text);
    }

    CConfigScene& m_functions;
    std::vector<FunctionText> m_texts;
    bool m_are_there;
};

void exchange(CConfigScene& functions, std::vector<FunctionText> texts, bool are_there)
{
    if (texts.empty())
        return;
    auto step = std::make_unique<StepFunctions>(functions, std::move(texts), are_there);
    step->exchange();
    functions.journal().add_side_effect(std::move(step));
}

} // namespace

void make_functions(CConfigScene& functions, std::vector<FunctionText> made)
{
    exchange(functions, std::move(made), false);
}

void remove_functions(CConfigScene& functions, const std::vector<QString>& names)
{
    std::vector<FunctionText> there;
    for (const QString& name : names)
        if (functions.find_function(name))
            there.push_back({name, {}});
    exchange(functions, std::move(there), true);
}

} // namespace tarn
