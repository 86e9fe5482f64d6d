#pragma once

#include "animation/pose.h"
#include "entered_text.h"
#include "page_base/bound_page.h"

#include <optional>

class CReportListTimerCmd;
class CReportListTimerVar;
class CTCommandScript;
class CTimebar;
class CTimerObject;
class CTVar;

/// What the current timebar animates: how its times count, its timer objects with their channels, the command and the
/// variables of a script object.
class CDlgPropTimerAnimation : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropTimerAnimation(QWidget* parent = nullptr);

    void model_changed(const tarn::ModelChange& change) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void refresh() override;

private:
    CTimebar* bar() const;
    CTimerObject* object() const;    ///< the current one; null for none
    CTCommandScript* script() const; ///< the current one, if it is a script object
    std::vector<void*> listed_variables() const;
    void show_enabled();
    void show_channels();

    void choose_object();
    void remove_object();
    void add_script_object();
    void retarget();
    void choose_variable();
    void clear_variable();
    void add_variable();
    void ask_first_value(CTVar& variable);
    void remove_variable();
    void rename_variable();
    void set_command(const QString& line);
    void enter_command();
    void edit_command();

    CReportListTimerCmd* m_objects = nullptr;
    CReportListTimerVar* m_variables = nullptr;
    std::optional<tarn::EnteredText> m_command;
    std::optional<tarn::EnteredText> m_variable_name;
};
