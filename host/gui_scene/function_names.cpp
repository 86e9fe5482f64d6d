#include "function_names.h"

#include "core/authored.h"
#include "core/document.h"
#include "core/field.h"
#include "script/config_scene.h"

#include <algorithm>

namespace tarn {

QSet<QString> named_functions(const Document& document)
{
    QSet<QString> names;
    for (const ModelObject* object : document.objects())
        for (const FieldBase* field : object->fields().link_fields())
            if (field->rules().function)
                for (const QString& name : field->names(Authored::state(*object)))
                    names.insert(name);
    return names;
}

bool is_function_used(const CConfigScene& functions, const QString& name)
{
    if (named_functions(functions.document()).contains(name))
        return true;
    const auto& all = functions.functions();
    return std::any_of(all.begin(), all.end(), [&](const FuncPtr& function) {
        return function->name() != name
            && (function->text().contains(QLatin1Char('"') + name + QLatin1Char('"'))
                || function->text().contains(QLatin1Char('\'') + name + QLatin1Char('\'')));
    });
}

} // namespace tarn
