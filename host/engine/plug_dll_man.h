#pragma once

#include "core/status.h"

#include <QString>

#include <memory>
#include <vector>

class CPlugInfo;

/// What a plug-in says it is, as g_get_plug_type() answers.
enum PlugType : int {
    plug_type_scene = 2, ///< holds content of the world
    plug_type_ui = 3,    ///< adds windows to the program
};

/// The functions that a plug-in exports under these names.
extern "C" {
using PlugCreateFunction = CPlugInfo* (*)();
using PlugDestroyFunction = void (*)();
using PlugTypeFunction = int (*)();
/// Writes the description, with its end, into a buffer of plug_desc_size characters; 0 when it fitted.
using PlugDescFunction = int (*)(wchar_t* buffer);
}
constexpr int plug_desc_size = 1024;

/// One loaded plug-in and its main object.
class PlugModule {
public:
    /// Loads the library and makes its main object. A file that is no plug-in is refused with a message that names it.
    static tarn::Result<std::unique_ptr<PlugModule>> load(const QString& path);
    ~PlugModule();
    PlugModule(const PlugModule&) = delete;
    PlugModule& operator=(const PlugModule&) = delete;

    const QString& path() const { return m_path; }
    const QString& description() const { return m_description; }
    int type() const { return m_type; }
    CPlugInfo* main_object() const { return m_main_object; }

private:
    PlugModule() = default;

    QString m_path;
    QString m_description;
    int m_type = 0;
    CPlugInfo* m_main_object = nullptr;
    PlugDestroyFunction m_destroy = nullptr;
};

/// The loaded plug-ins.
class CPlugDllMan {
public:
    ~CPlugDllMan();

    tarn::Status load(const QString& path);
    /// Loads every library of the folder, scene plug-ins before those of the interface; answers one failure a file.
    std::vector<tarn::Status> load_folder(const QString& folder);
    /// Null when no loaded plug-in has this description.
    CPlugInfo* find_main_object_from_plug_desc(const QString& description) const;
    const std::vector<std::unique_ptr<PlugModule>>& modules() const { return m_modules; }
    /// Destroys the main objects, last loaded first. The libraries stay in memory until the program ends.
    void unload_all();

private:
    std::vector<std::unique_ptr<PlugModule>> m_modules;
};
