#pragma once

#include "page_base/bound_page.h"

class CDXUTFlash;
class QListWidget;

namespace tarn {

extern const SelectedControls flash_controls;

} // namespace tarn

/// The page of Flash movies: where the movie comes from, how it plays, and the functions that it calls.
class CDlgPropFlash : public CBoundPage {
    Q_OBJECT

public:
    explicit CDlgPropFlash(QWidget* parent = nullptr);
    ~CDlgPropFlash() override;

protected:
    void OnInitDialog() override;
    void refresh() override;
    bool confirm_edit(int id, const tarn::Value& value) override;
    void row_edited(int id, const tarn::Value& value) override;

private:
    CDXUTFlash* flash() const;
    void show_permission(const QString& url);
    void take_back_permission();
    void load_file();
    void load_url();
    void load(const QString& source, bool is_local);

    QString callback_name(const QString& entered) const;
    void create_callback();
    void remove_callback();
    void open_callback(const QString& function);
    void write_callbacks(const QStringList& callbacks, const QString& step);

    QString m_address; ///< of the movie that is shown; empty for none that could be loaded
    QListWidget* m_callbacks = nullptr;
};
