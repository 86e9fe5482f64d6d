#pragma once

#include <QString>

class QWidget;

/// Puts the filter of a file dialog together: "label(*.ext)|*.ext|all files(*.*)|*.*||".
class filter_man {
public:
    /// Adds a label and its pattern list, which itself may go on with further pairs.
    void add_filter(const QString& label, const QString& patterns);
    const QString& filter() const { return m_filter; }

private:
    QString m_filter;
};

namespace filedlg {

enum Mode : int { mode_save = 0, mode_open = 1 };

/// The chosen path, absolute; empty when cancelled. Saving adds the filter's extension when the name has none.
QString pop_file_dlg(const filter_man& filter, int mode, QWidget* parent, const QString& initial = {});
/// Asks for a picture that can be read.
QString pop_open_dlg_img(QWidget* parent);

} // namespace filedlg
