#pragma once

#include "core/json_reader.h"
#include "core/json_writer.h"
#include "core/status.h"

#include <QHash>

#include <functional>
#include <memory>
#include <vector>

class CConfigScene;

/// A function of the scene: a name and the Lua source that runs under it.
class IFunc {
public:
    static constexpr int max_name = 300;         ///< UTF-16 units
    static constexpr int max_text = 1024 * 1024; ///< UTF-16 units

    /// A function without text that is in no table yet.
    static std::shared_ptr<IFunc> create_func(const QString& name);
    /// A function in no table that differs from this one in name and text only.
    std::shared_ptr<IFunc> copy(const QString& name, const QString& text) const;

    const QString& name() const { return m_name; }
    const QString& text() const { return m_text; }
    /// Refuses a text over max_text and leaves the old one.
    tarn::Status set_text(const QString& text);
    /// Differs after every change of the text, and from that of every other function.
    quint64 revision() const { return m_revision; }

private:
    friend class CConfigScene;
    explicit IFunc(const QString& name);

    QString m_name;
    QString m_text;
    quint64 m_revision;
    CConfigScene* m_table = nullptr;                 ///< the one that holds it; null when none does
    QList<std::pair<QString, QByteArray>> m_unknown; ///< members of the saved function that this version does not know
};

using FuncPtr = std::shared_ptr<IFunc>;

/// The scene's functions in the order of adding. They stand outside the undo journal; on_changed tells the document.
class CConfigScene {
public:
    static constexpr int max_functions = 10'000;

    CConfigScene() = default;
    ~CConfigScene();
    CConfigScene(const CConfigScene&) = delete;
    CConfigScene& operator=(const CConfigScene&) = delete;

    /// Null when there is no function of that name.
    FuncPtr find_function(const QString& name) const { return m_by_name.value(name); }
    /// `replace`: another function of the same name gives up its place; without it, it stays and the call fails.
    /// A null `text` leaves the function's text as it is.
    tarn::Status add_function(const FuncPtr& function, bool replace, const QString& text = {});
    /// Answers whether there was one.
    bool del_function(const QString& name);
    void clear();
    const std::vector<FuncPtr>& functions() const { return m_functions; }

    /// Counts the changes of the table and of its functions' texts.
    quint64 changes() const { return m_changes; }
    /// Called after each of them.
    std::function<void()> on_changed;

    // Whole contents. on_changed is not called: whoever does this tells of it.
    void swap(CConfigScene& other);
    /// Appends those functions that are in no table and whose names are free; answers them.
    std::vector<FuncPtr> attach(const std::vector<FuncPtr>& functions);
    /// Takes out those of the functions that are in this table; answers them.
    std::vector<FuncPtr> detach(const std::vector<FuncPtr>& functions);

    /// One value: a list with a function a line, of those for which `wanted` answers true.
    void write(tarn::JsonWriter& writer, const std::function<bool(const IFunc&)>& wanted) const;
    /// Takes the place of what was there, which stays when the list cannot be read. on_changed is not called.
    tarn::Status read(tarn::JsonCursor& cursor);

private:
    friend class IFunc;
    void changed();
    void own_all();
    void release(IFunc& function) { function.m_table = nullptr; }

    std::vector<FuncPtr> m_functions;
    QHash<QString, FuncPtr> m_by_name;
    quint64 m_changes = 0;
};
