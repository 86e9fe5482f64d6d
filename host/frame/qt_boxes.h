#pragma once

#include "boxes.h"

namespace tarn::boxes {

/// Asks the user with the toolkit's own dialogs.
class QtBoxes : public Responder {
public:
    Button message(QWidget* parent, const Message& box) override;
    std::optional<QString> prompt(QWidget* parent, const Prompt& box) override;
    QString file(QWidget* parent, const File& box) override;
    int menu(QWidget* parent, const Menu& menu) override;
    std::optional<QColor> color(QWidget* parent, const QColor& initial) override;
    int dialog(QDialog& dialog) override;
    std::unique_ptr<ProgressBox> progress(QWidget* parent, const QString& text) override;
};

/// The toolkit's form of a filter "label|*.ext|label|*.*||".
QStringList name_filters(const QString& filter);

} // namespace tarn::boxes
