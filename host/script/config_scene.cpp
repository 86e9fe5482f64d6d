#include "config_scene.h"

#include "core/language.h"
#include "core/utf8.h"

#include <algorithm>

using namespace tarn;

namespace {

quint64 next_revision()
{
    static quint64 last = 0;
    return ++last;
}

/// What a package gives back: saving replaces halves of surrogate pairs, and two names must not become one there.
QString as_saved(const QString& text)
{
    return text.isValidUtf16() ? text : tarn::from_utf8(text.toUtf8().toStdString());
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

/// A function of a package, before it is added.
struct SavedFunction {
    QString name;
    QString text;
    QList<std::pair<QString, QByteArray>> unknown;
};

Status read_function(JsonCursor& cursor, SavedFunction& function)
{
    auto status = cursor.each_member([&](std::string_view key, JsonCursor& value) {
        if (key == "name")
            return value.read(function.name);
        if (key == "text")
            return value.read(function.text);
        QByteArray json;
        auto raw = value.read_raw(json);
        function.unknown.append({tarn::from_utf8(key), json});
        return raw;
    });
    if (status)
        status = check_name(function.name);
    else
        return status;
    return status ? Status() : cursor.fail(status.message());
}

} // namespace

IFunc::IFunc(const QString& name) : m_name(as_saved(name)), m_revision(next_revision()) {}

FuncPtr IFunc::create_func(const QString& name)
{
    return FuncPtr(new IFunc(name));
}

FuncPtr IFunc::copy(const QString& name, const QString& text) const
{
    FuncPtr copy = create_func(name);
    copy->m_text = as_saved(text);
    copy->m_unknown = m_unknown;
    return copy;
}

Status IFunc::set_text(const QString& text)
{
    if (text.size() > max_text)
        return Status::error(
            lang(u"脚本“%1”过长（最多 %2 个字符）", u"The script \"%1\" is too long (at most %2 characters).")
                .arg(m_name)
                .arg(max_text));
    QString saved = as_saved(text);
    if (saved == m_text)
        return {};
    m_text = std::move(saved);
    m_revision = next_revision();
    if (m_table)
        m_table->changed();
    return {};
}

CConfigScene::~CConfigScene()
{
    for (const FuncPtr& function : m_functions)
        release(*function);
}

Status CConfigScene::add_function(const FuncPtr& function, bool replace, const QString& text)
{
    if (auto status = check_name(function->name()); !status)
        return status;
    const FuncPtr old = find_function(function->name());
    if (old == function)
        return text.isNull() ? Status() : function->set_text(text);
    if (function->m_table || (old && !replace))
        return Status::error(is_double(function->name()));
    if (!old && m_functions.size() >= max_functions)
        return Status::error(too_many());
    if (!text.isNull())
        if (auto status = function->set_text(text); !status)
            return status;
    if (old) {
        release(*old);
        std::replace(m_functions.begin(), m_functions.end(), old, function);
    } else {
        m_functions.push_back(function);
    }
    m_by_name.insert(function->name(), function);
    function->m_table = this;
    changed();
    return {};
}

bool CConfigScene::del_function(const QString& name)
{
    const FuncPtr function = m_by_name.take(name);
    if (!function)
        return false;
    std::erase(m_functions, function);
    release(*function);
    changed();
    return true;
}

void CConfigScene::clear()
{
    if (m_functions.empty())
        return;
    for (const FuncPtr& function : m_functions)
        release(*function);
    m_functions.clear();
    m_by_name.clear();
    changed();
}

void CConfigScene::own_all()
{
    for (const FuncPtr& function : m_functions)
        function->m_table = this;
    ++m_changes;
}

void CConfigScene::swap(CConfigScene& other)
{
    m_functions.swap(other.m_functions);
    m_by_name.swap(other.m_by_name);
    own_all();
    other.own_all();
}

std::vector<FuncPtr> CConfigScene::attach(const std::vector<FuncPtr>& functions)
{
    std::vector<FuncPtr> attached;
    for (const FuncPtr& function : functions) {
        if (function->m_table || find_function(function->name()))
            continue;
        function->m_table = this;
        m_functions.push_back(function);
        m_by_name.insert(function->name(), function);
        attached.push_back(function);
    }
    ++m_changes;
    return attached;
}

std::vector<FuncPtr> CConfigScene::detach(const std::vector<FuncPtr>& functions)
{
    std::vector<FuncPtr> detached;
    for (const FuncPtr& function : functions) {
        if (function->m_table != this)
            continue;
        release(*function);
        m_by_name.remove(function->name());
        detached.push_back(function);
    }
    std::erase_if(m_functions, [this](const FuncPtr& function) { return function->m_table != this; });
    ++m_changes;
    return detached;
}

void CConfigScene::changed()
{
    ++m_changes;
    if (on_changed)
        on_changed();
}

void CConfigScene::write(JsonWriter& writer, const std::function<bool(const IFunc&)>& wanted) const
{
    writer.begin_array();
    bool any = false;
    for (const FuncPtr& function : m_functions) {
        if (!wanted(*function))
            continue;
        any = true;
        writer.new_line();
        writer.begin_object();
        writer.key("name");
        writer.value(function->name());
        if (!function->text().isEmpty()) {
            writer.key("text");
            writer.value(function->text());
        }
        for (const auto& [name, json] : function->m_unknown)
            writer.raw_member(name, std::string_view(json.constData(), std::size_t(json.size())));
        writer.end_object();
    }
    if (any)
        writer.new_line();
    writer.end_array();
}

Status CConfigScene::read(JsonCursor& cursor)
{
    CConfigScene fresh;
    auto status = cursor.each_element([&](JsonCursor& element) {
        SavedFunction saved;
        if (auto read = read_function(element, saved); !read)
            return read;
        const FuncPtr function = IFunc::create_func(saved.name);
        function->m_unknown = std::move(saved.unknown);
        auto added = fresh.add_function(function, false, saved.text);
        return added ? Status() : element.fail(added.message());
    });
    if (!status)
        return status;
    swap(fresh);
    return {};
}
