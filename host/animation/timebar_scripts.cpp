// The script keys of a timebar, and the functions that are made for them.

#include "animation_scene.h"
#include "core/authored.h"
#include "core/field.h"
#include "core/language.h"
#include "script/config_scene.h"
#include "step_functions.h"
#include "timebar.h"

#include <algorithm>

using namespace tarn;

namespace {

const QString own_prefix = QStringLiteral("TIMER_FUNC_");

/// What the function that is made for a script key is called.
QString own_name(quint32 key)
{
    return own_prefix + QString::number(key);
}

/// How many attributes of the document's objects name each function; of kinds whose objects can.
QHash<QString, int> uses_of_functions(const Document& document)
{
    QHash<QString, int> uses;
    for (const ObjectKind& kind : document.kinds()) {
        const auto objects = document.objects_of(kind);
        if (objects.empty())
            continue;
        for (const FieldBase* field : objects.front()->fields().link_fields())
            if (field->rules().function)
                for (const ModelObject* object : objects)
                    for (const QString& name : field->names(Authored::state(*object)))
                        ++uses[name];
    }
    return uses;
}

} // namespace

CScriptKey::CScriptKey(CAnimationScene& scene, StatePtr state) : ModelObject(scene.document(), std::move(state)) {}

void CScriptKey::state_changed()
{
    if (auto* bar = static_cast<CTimebar*>(parent()))
        bar->m_script_keys_stale = true;
}

const std::vector<CScriptKey*>& CTimebar::script_keys() const
{
    if (m_script_keys_stale) {
        m_script_keys = m_listed_script_keys.get(document(), bar_state().script_keys);
        std::stable_sort(m_script_keys.begin(), m_script_keys.end(),
                         [](const CScriptKey* a, const CScriptKey* b) { return a->time() < b->time(); });
        m_script_keys_stale = false;
    }
    return m_script_keys;
}

std::vector<float> CTimebar::script_key_times() const
{
    std::vector<float> times;
    for (const CScriptKey* key : script_keys())
        times.push_back(key->time());
    return times;
}

CScriptKey* CTimebar::script_key(float time) const
{
    const auto& keys = script_keys();
    const auto found = std::lower_bound(keys.begin(), keys.end(), time,
                                        [](const CScriptKey* key, float t) { return key->time() < t; });
    return found != keys.end() && (*found)->time() == time ? *found : nullptr;
}

QString CTimebar::get_script_name(float time) const
{
    const CScriptKey* key = script_key(time);
    return key ? key->function() : QString();
}

CScriptKey* CTimebar::make_script_key(float time, QString function)
{
    auto* state = new ScriptKeyState;
    state->time = time;
    state->function = function.left(IFunc::max_name);
    auto* key = static_cast<CScriptKey*>(
        m_scene.add(m_scene.script_key_kind(), state, *this, bar_state().script_keys.size()));
    if (!key || !function.isEmpty())
        return key;
    function = own_name(key->id());
    const CConfigScene* functions = m_scene.functions();
    for (int number = 2; functions && functions->find_function(function); ++number)
        function = own_name(key->id()) + QLatin1Char('_') + QString::number(number);
    key->set_function(function);
    return key;
}

CScriptKey* CTimebar::insert_script_key(float time, const QString& function)
{
    if (CScriptKey* present = script_key(time))
        return present;
    if (!(time >= 0 && time <= max_time))
        return nullptr;
    const UserAction action(journal(), lang(u"插入脚本", u"Insert Script"));
    return make_script_key(time, function);
}

bool CTimebar::create_script_function(float time)
{
    CConfigScene* functions = m_scene.functions();
    const QString name = get_script_name(time);
    if (!functions || name.isEmpty())
        return false;
    if (!functions->find_function(name)) {
        const UserAction action(journal(), lang(u"插入脚本", u"Insert Script"));
        make_functions(*functions, {{name, {}}});
    }
    return functions->find_function(name) != nullptr;
}

bool CTimebar::remove_script_key(float time)
{
    return remove_script_keys({time});
}

bool CTimebar::remove_script_keys(const std::vector<float>& times)
{
    std::vector<ModelObject*> gone;
    for (const float time : times)
        if (CScriptKey* key = script_key(time))
            gone.push_back(key);
    if (gone.empty())
        return false;
    const UserAction action(journal(), lang(u"删除脚本", u"Delete Script"));
    QStringList names;
    for (const ModelObject* key : gone)
        if (const QString& name = static_cast<const CScriptKey*>(key)->function(); name.startsWith(own_prefix))
            names << name;
    remove_children(gone);
    m_scene.remove_unused(names);
    return true;
}

bool CTimebar::retime_script_keys(std::vector<float>& times, const std::function<float(float)>& moved)
{
    struct Moving {
        CScriptKey* key;
        float time;
    };
    std::vector<Moving> moving;
    for (const float time : times)
        if (CScriptKey* key = script_key(time))
            moving.push_back({key, std::clamp(moved(time), 0.f, max_time)});
    std::stable_sort(moving.begin(), moving.end(), [](const Moving& a, const Moving& b) { return a.time < b.time; });
    std::vector<float> to;
    for (const Moving& row : moving)
        to.push_back(row.time);
    keep_apart(to);
    for (const float time : to) {
        const CScriptKey* present = script_key(time);
        const auto is_present = [present](const Moving& row) { return row.key == present; };
        if (present && std::none_of(moving.begin(), moving.end(), is_present))
            return false;
    }
    const UserAction action(journal(), lang(u"移动脚本", u"Move Script"));
    for (std::size_t i = 0; i < moving.size(); ++i)
        if (moving[i].key->time() != to[i])
            moving[i].key->write<ScriptKeyState>([&](ScriptKeyState& state) { state.time = to[i]; });
    times = std::move(to);
    return true;
}

void CAnimationScene::remove_unused(const QStringList& names)
{
    CConfigScene* present = functions();
    if (!present || names.isEmpty())
        return;
    const auto uses = uses_of_functions(document());
    std::vector<QString> unused;
    for (const QString& name : names)
        if (!uses.contains(name))
            unused.push_back(name);
    remove_functions(*present, unused);
}

void CTimebar::copy_script_keys(const CTimebar& other, float at, float until)
{
    CConfigScene* functions = m_scene.functions();
    std::vector<FunctionText> copied;
    for (const CScriptKey* theirs : std::vector(other.script_keys())) {
        const float time = theirs->time() + at;
        if (theirs->time() > until || is_script_key_time(time))
            continue;
        const bool is_own = theirs->function().startsWith(own_prefix);
        const CScriptKey* key = make_script_key(time, is_own ? QString() : theirs->function());
        const FuncPtr function = key && is_own && functions ? functions->find_function(theirs->function()) : nullptr;
        if (function)
            copied.push_back({key->function(), function->text()});
    }
    if (functions)
        make_functions(*functions, std::move(copied));
}
