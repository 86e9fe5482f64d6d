#include "plug_dll_man.h"

#include "core/language.h"
#include "plug_info.h"

#include <QDir>
#include <QFileInfo>
#include <QLibrary>

#include <algorithm>
#include <array>

using tarn::lang;
using tarn::Result;
using tarn::Status;

namespace {

Status refused(const QString& path, const QString& reason)
{
    return Status::error(lang(u"插件 %1 无法载入：%2。", u"The plug-in %1 cannot be loaded: %2.")
                             .arg(QDir::toNativeSeparators(path), reason));
}

} // namespace

Result<std::unique_ptr<PlugModule>> PlugModule::load(const QString& path)
{
    QLibrary library(path);
    // Qt keeps addresses in a library (types, resources, translations) beyond the last object of it: unloading would
    // leave them hanging.
    library.setLoadHints(QLibrary::PreventUnloadHint);
    if (!library.load())
        return refused(path, library.errorString());
    const auto create = reinterpret_cast<PlugCreateFunction>(library.resolve("g_create_main_object"));
    const auto destroy = reinterpret_cast<PlugDestroyFunction>(library.resolve("g_destroy_main_object"));
    const auto type = reinterpret_cast<PlugTypeFunction>(library.resolve("g_get_plug_type"));
    const auto describe = reinterpret_cast<PlugDescFunction>(library.resolve("g_get_plug_desc"));
    if (!create || !destroy || !type || !describe)
        return refused(path, lang(u"它不是本程序的插件", u"it is not a plug-in of this program"));

    std::array<wchar_t, plug_desc_size> description{};
    if (describe(description.data()) != 0)
        return refused(path, lang(u"它没有说明自己是什么", u"it does not tell what it is"));
    std::unique_ptr<PlugModule> module(new PlugModule);
    module->m_path = path;
    module->m_type = type();
    module->m_description = QString::fromWCharArray(description.data());
    module->m_main_object = create();
    module->m_destroy = destroy;
    if (!module->m_main_object)
        return refused(path, lang(u"它无法创建主对象", u"its main object could not be made"));
    return module;
}

PlugModule::~PlugModule()
{
    if (m_main_object)
        m_destroy();
}

CPlugDllMan::~CPlugDllMan()
{
    unload_all();
}

void CPlugDllMan::unload_all()
{
    // The last first: the editor's plug-in works on the scene's, which has a lower type and stands before it.
    while (!m_modules.empty())
        m_modules.pop_back();
}

Status CPlugDllMan::load(const QString& path)
{
    // Before it is loaded: a library has one main object, which a second module of it would destroy.
    const QString file = QFileInfo(path).canonicalFilePath();
    for (const auto& known : m_modules)
        if (!file.isEmpty() && QFileInfo(known->path()).canonicalFilePath() == file)
            return refused(path, lang(u"“%1”已经载入", u"\"%1\" is loaded already").arg(known->description()));
    auto module = PlugModule::load(path);
    if (!module)
        return module.status();
    if (find_main_object_from_plug_desc(module.value()->description()))
        return refused(path, lang(u"“%1”已经载入", u"\"%1\" is loaded already").arg(module.value()->description()));
    m_modules.push_back(std::move(module.value()));
    return {};
}

std::vector<Status> CPlugDllMan::load_folder(const QString& folder)
{
    std::vector<Status> failures;
    for (const QFileInfo& file : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
        if (!QLibrary::isLibrary(file.fileName()))
            continue;
        if (auto status = load(file.absoluteFilePath()); !status)
            failures.push_back(std::move(status));
    }
    // Who looks for another plug-in when the world starts finds it, whatever the files are called.
    std::stable_sort(m_modules.begin(), m_modules.end(),
                     [](const auto& a, const auto& b) { return a->type() < b->type(); });
    return failures;
}

CPlugInfo* CPlugDllMan::find_main_object_from_plug_desc(const QString& description) const
{
    for (const auto& module : m_modules)
        if (module->description() == description)
            return module->main_object();
    return nullptr;
}
