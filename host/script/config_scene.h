#pragma once

#include "core/model_object.h"

#include <QHash>

#include <memory>
#include <vector>

class CConfigScene;

namespace tarn {

struct FunctionState : StateOf<FunctionState> {
    QString name;
    QString text;

    static const FieldTable& field_table();
    /// Texts become what a package gives back: saving replaces halves of surrogate pairs, and two names must not become
    /// one there.
    void settle(const WrittenFields& fields) override;
};

/// The table of functions as an object: what the functions hang on.
struct FunctionsState : StateOf<FunctionsState> {
    IdList functions;

    static const FieldTable& field_table();
};

} // namespace tarn

/// A function of the scene: a name and the Lua source that runs under it.
class IFunc final : public tarn::ModelObject {
public:
    static constexpr int max_name = 300;         ///< UTF-16 units
    static constexpr int max_text = 1024 * 1024; ///< UTF-16 units

    /// Use create_func().
    IFunc(CConfigScene& functions, tarn::StatePtr state);
    /// A function without text that add_function() can take; null when the scene has no ids left.
    static std::shared_ptr<IFunc> create_func(CConfigScene& functions, const QString& name);

    const QString& name() const { return function_state().name; }
    const QString& text() const { return function_state().text; }
    /// Whether the function of that name may have that text.
    static tarn::Status check_text(const QString& name, const QString& text);
    /// Refuses a text over max_text and leaves the old one.
    tarn::Status set_text(const QString& text);
    /// Differs after every change, and from that of every other function.
    quint64 revision() const { return m_revision; }

    const char* class_name() const override { return "IFunc"; }
    void state_changed() override;

private:
    const tarn::FunctionState& function_state() const { return state<tarn::FunctionState>(); }

    CConfigScene& m_functions;
    quint64 m_revision = 0;
};

using FuncPtr = std::shared_ptr<IFunc>;

/// The scene's functions in the order of adding. They stand outside the undo journal, but come and go with a step that
/// replaces or merges whole contents.
class CConfigScene final : public tarn::ModelObject {
public:
    static constexpr int max_functions = 10'000;

    /// The functions become a part of the document.
    explicit CConfigScene(tarn::Document& document);

    /// Null when there is no function of that name.
    FuncPtr find_function(const QString& name) const;
    /// `replace`: another function of the same name gives up its place; without it, it stays and the call fails.
    /// A null `text` leaves the function's text as it is.
    tarn::Status add_function(const FuncPtr& function, bool replace, const QString& text = {});
    /// The same for a name that may be new: the function of that name gets the text.
    tarn::Status set_function(const QString& name, const QString& text);
    /// Answers whether there was one.
    bool del_function(const QString& name);
    const std::vector<FuncPtr>& functions() const;
    const tarn::ObjectKind& function_kind() const { return *m_kind; }

    /// Counts the changes of the table and of its functions' texts.
    quint64 changes() const { return m_changes; }

    tarn::ObjectState* fresh_state() const override { return new tarn::FunctionsState; }
    const char* class_name() const override { return "CConfigScene"; }
    void children_changed() override;

private:
    friend class IFunc;
    const tarn::FunctionsState& functions_state() const { return state<tarn::FunctionsState>(); }
    void find_functions() const;

    const tarn::ObjectKind* m_kind = nullptr; ///< of the functions
    // Worked out from the list of ids, and found anew after that changed.
    mutable std::vector<FuncPtr> m_functions;
    mutable QHash<QString, FuncPtr> m_by_name;
    mutable bool m_stale = false;
    quint64 m_changes = 0;
};
