#include "script_fault.h"

#include "core/language.h"
#include "script/script_runtime.h"

namespace tarn {

QString fault_text(const ScriptError& fault)
{
    return fault.line > 0 ? lang(u"第 %1 行：%2", u"Line %1: %2").arg(fault.line).arg(fault.message) : fault.message;
}

} // namespace tarn
