#pragma once

#include "page_base/gui_child_dlg.h"
#include "translation_table.h"

#include <QTimer>

class CTranslationView;

/// The table of the interface's texts by language. What is missing, outdated or too long is marked, and can be listed alone.
class CDlgTranslations : public CGuiChildDlg {
    Q_OBJECT

public:
    explicit CDlgTranslations(QWidget* parent = nullptr);

    void on_world_created(CBaseWorld* world) override;

protected:
    void OnInitDialog() override;
    QWidget* create_widget(const QString& class_name, QWidget* parent) override;
    void model_changed(const tarn::ModelChange& change) override;
    void showEvent(QShowEvent* event) override;

private:
    void set_up_table();
    void refresh();
    void list();
    bool is_typing() const;
    void measure();
    tarn::TranslationTable::Filter filter() const;
    void show_languages();
    void on_add();
    void on_remove();
    void on_import();
    void on_export();

    CTranslationView* m_view = nullptr;
    tarn::TranslationTable* m_table = nullptr;
    bool m_stale = true; ///< what changed while nobody saw the table
    QTimer m_measuring;  ///< waits until nothing more changes
};
