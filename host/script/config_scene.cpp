#include "config_scene.h"

#include "core/language.h"
#include "core/utf8.h"

#include <utility>

using namespace tarn;

namespace {

constexpr const char* entry = "functions.json";

quint64 next_revision()
{
    static quint64 last = 0;
    return ++last;
}

QString as_saved(const QString& text)
{
    return text.isValidUtf16() ? text : from_utf8(text.toUtf8().toStdString());
}

Status check_name(const QString& name)
{
    if (name.isEmpty())
        return Status::error(lang(u"脚本函数需要一个名称", u"A script function needs a name."));
    if (name.size() > IFunc::max_name)
        return Status::error(lang(u"脚本函数的名称过长（最多 %1 个字符）：%2",
                                  u"The name of a script function is too long (at most %1 characters): %2")
                                 .arg(IFunc::max_name)
                                 .arg(name.left(40) + QChar(0x2026)));
    return {};
}

QString too_many()
{
    return lang(u"脚本函数过多（最多 %1 个）", u"there are too many script functions (at most %1)")
        .arg(CConfigScene::max_functions);
}

QString is_double(const QString& name)
{
    return lang(u"已有名为“%1”的脚本函数", u"there is a script function named \"%1\" already").arg(name);
}

} // namespace

const FieldTable& FunctionState::field_table()
{
    using S = FunctionState;
    static const FieldTable table(nullptr, field<S, &S::id>("id", 0u, read_only()),
                                  field<S, &S::name>("name", {}, {.max_length = IFunc::max_name, .read_only = true}),
                                  field<S, &S::text>("text", {}, max_length(IFunc::max_text)));
    return table;
}

void FunctionState::settle(const WrittenFields&)
{
    name = as_saved(name);
    text = as_saved(text);
}

const FieldTable& FunctionsState::field_table()
{
    using S = FunctionsState;
    static const FieldTable table(nullptr, field<S, &S::functions>("function_ids", {}, children()));
    return table;
}

IFunc::IFunc(CConfigScene& functions, StatePtr state)
    : ModelObject(functions.document(), std::move(state)), m_functions(functions), m_revision(next_revision())
{
}

FuncPtr IFunc::create_func(CConfigScene& functions, const QString& name)
{
    auto* fresh = new FunctionState;
    StatePtr state(fresh);
    fresh->id = functions.document().take_id(false);
    fresh->name = as_saved(name);
    if (fresh->id == 0)
        return nullptr;
    return std::static_pointer_cast<IFunc>(functions.document().create(functions.function_kind(), std::move(state)));
}

Status IFunc::check_text(const QString& name, const QString& text)
{
    if (text.size() <= max_text)
        return {};
    return Status::error(
        lang(u"脚本“%1”过长（最多 %2 个字符）", u"The script \"%1\" is too long (at most %2 characters).")
            .arg(name)
            .arg(max_text));
}

Status IFunc::set_text(const QString& text)
{
    if (auto status = check_text(name(), text); !status)
        return status;
    change<&FunctionState::text>(text);
    return {};
}

void IFunc::state_changed()
{
    m_revision = next_revision();
    ++m_functions.m_changes;
}

CConfigScene::CConfigScene(Document& document) : ModelObject(document, new FunctionsState)
{
    document.add_part({.entry = entry, .container = this, .recorded = false});
    document.add_kind(
        {.part = entry,
         .key = "functions",
         .chinese = u"脚本函数",
         .english = u"function",
         .container = this,
         .make_state = [](int) -> ObjectState* { return new FunctionState; },
         .make_object = [this](StatePtr state) { return std::make_shared<IFunc>(*this, std::move(state)); },
         .children =
             [](ObjectState& parent) {
                 auto* functions = dynamic_cast<FunctionsState*>(&parent);
                 return functions ? &functions->functions : nullptr;
             },
         .unique_key = [](const ObjectState& state) { return static_cast<const FunctionState&>(state).name; },
         .most = max_functions});
    m_kind = &document.kinds().back();
}

void CConfigScene::children_changed()
{
    m_stale = true;
    ++m_changes;
}

void CConfigScene::find_functions() const
{
    m_stale = false;
    m_functions.clear();
    m_by_name.clear();
    for (const ObjectRef child : functions_state().functions) {
        const auto function = std::static_pointer_cast<IFunc>(document().find(child.id)->shared_from_this());
        m_functions.push_back(function);
        m_by_name.insert(function->name(), function);
    }
}

const std::vector<FuncPtr>& CConfigScene::functions() const
{
    if (m_stale)
        find_functions();
    return m_functions;
}

FuncPtr CConfigScene::find_function(const QString& name) const
{
    if (m_stale)
        find_functions();
    return m_by_name.value(name);
}

Status CConfigScene::add_function(const FuncPtr& function, bool replace, const QString& text)
{
    if (!function)
        return Status::error(lang(u"界面的编号已用完", u"the interface has no ids left"));
    if (auto status = check_name(function->name()); !status)
        return status;
    const FuncPtr old = find_function(function->name());
    if (old == function)
        return text.isNull() ? Status() : function->set_text(text);
    if (function->parent() || (old && !replace))
        return Status::error(is_double(function->name()));
    if (!old && functions().size() >= max_functions)
        return Status::error(too_many());
    if (!text.isNull())
        if (auto status = function->set_text(text); !status)
            return status;
    const IdList& ids = functions_state().functions;
    const qsizetype place = old ? ids.indexOf(ObjectRef{old->id()}) : ids.size();
    if (old) {
        ModelObject* gone = old.get();
        document().detach(std::span(&gone, 1));
        document().attach(*function, *this, place);
        return {};
    }
    document().attach(*function, *this, place);
    m_functions.push_back(function);
    m_by_name.insert(function->name(), function);
    m_stale = false; // It was not before: many that are added one by one need no search each.
    return {};
}

Status CConfigScene::set_function(const QString& name, const QString& text)
{
    if (const FuncPtr function = find_function(name))
        return function->set_text(text);
    return add_function(IFunc::create_func(*this, name), false, text);
}

bool CConfigScene::del_function(const QString& name)
{
    const FuncPtr function = find_function(name);
    if (!function)
        return false;
    ModelObject* gone = function.get();
    document().detach(std::span(&gone, 1));
    return true;
}
