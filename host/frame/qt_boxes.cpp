#include "qt_boxes.h"

#include "core/language.h"
#include "core/text_part.h"

#include <QApplication>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QVBoxLayout>

namespace tarn::boxes {

namespace {

QMessageBox::StandardButton standard(Button button)
{
    switch (button) {
    case Button::Ok: return QMessageBox::Ok;
    case Button::Cancel: return QMessageBox::Cancel;
    case Button::Yes: return QMessageBox::Yes;
    case Button::No: return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

QString caption(Button button)
{
    switch (button) {
    case Button::Ok: return lang(u"确定", u"OK");
    case Button::Cancel: return lang(u"取消", u"Cancel");
    case Button::Yes: return lang(u"是(&Y)", u"&Yes");
    case Button::No: return lang(u"否(&N)", u"&No");
    }
    return {};
}

/// As much of `text` as a person may read in a box. A script's may be a million letters long, and Qt would lay out all
/// of them before it showed the box.
QString readable(const QString& text, qsizetype lines, qsizetype units)
{
    const QString part = text_part(text_part(text, lines, units, 0, 0), units, 0);
    return part.size() < text.size() ? part + QChar(0x2026) : part;
}

QString readable(const QString& text)
{
    return readable(text, 30, 2000);
}

QString title_or_name(const QString& title)
{
    return title.isEmpty() ? QApplication::applicationDisplayName() : readable(title, 1, 200);
}

/// With its headings in bold. Everything else is text, whatever it looks like; words without an end, as addresses have them,
/// may break anywhere.
QString rich_text(const QString& text, const QStringList& headings)
{
    constexpr qsizetype breaks_after = 10; // letters
    QStringList lines;
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        QStringList pieces;
        for (qsizetype at = 0; at < line.size(); at += breaks_after)
            pieces << line.mid(at, breaks_after).toHtmlEscaped();
        const QString whole = line.contains(QLatin1Char(' ')) ? line.toHtmlEscaped() : pieces.join(QChar(0x200b));
        lines << (headings.contains(line) ? QStringLiteral("<b>%1</b>").arg(whole) : whole);
    }
    return lines.join(QStringLiteral("<br>"));
}

constexpr int progress_steps = 1000;

class QtProgressBox : public ProgressBox {
public:
    QtProgressBox(QWidget* parent, const QString& text) : m_window(parent)
    {
        auto* label = new QLabel(readable(text));
        label->setTextFormat(Qt::PlainText); // It may name a file.
        m_window.setLabel(label);
        m_window.setWindowTitle(title_or_name({}));
        m_window.setCancelButtonText(caption(Button::Cancel));
        m_window.setWindowModality(Qt::ApplicationModal); // Nobody edits what is being worked on.
        m_window.setMinimumDuration(0);
        m_window.setMinimumWidth(progress_width);
        m_window.setAutoClose(false);
        m_window.setAutoReset(false);
        m_window.setRange(0, progress_steps);
        m_window.show();
    }
    bool show(double share) override
    {
        m_window.setValue(int(share * progress_steps));
        QCoreApplication::processEvents();
        return !m_window.wasCanceled();
    }

private:
    static constexpr int progress_width = 360; ///< pixels

    QProgressDialog m_window;
};

} // namespace

QStringList name_filters(const QString& filter)
{
    QStringList filters;
    const QStringList parts = filter.split(QLatin1Char('|'), Qt::SkipEmptyParts);
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString patterns = QString(parts[i + 1]).replace(QLatin1Char(';'), QLatin1Char(' '));
        const QString label = parts[i].section(QLatin1Char('('), 0, 0).trimmed();
        // "*.*" leaves files without an extension out on this platform.
        filters.append(
            QStringLiteral("%1 (%2)").arg(label, patterns == QLatin1String("*.*") ? QStringLiteral("*") : patterns));
    }
    return filters;
}

Button QtBoxes::message(QWidget* parent, const Message& box)
{
    QMessageBox window(parent);
    window.setIcon(box.is_error                                                 ? QMessageBox::Warning
                       : box.buttons.size() > 1 && box.cancel_caption.isEmpty() ? QMessageBox::Question
                                                                                : QMessageBox::Information);
    window.setWindowTitle(title_or_name(box.title));
    // It may name what a package calls anything.
    window.setTextFormat(box.headings.isEmpty() ? Qt::PlainText : Qt::RichText);
    window.setText(box.headings.isEmpty() ? readable(box.text) : rich_text(readable(box.text), box.headings));
    for (std::size_t i = 0; i < box.buttons.size(); ++i) {
        const QString special = box.captions.value(qsizetype(i));
        window.addButton(standard(box.buttons[i]))->setText(special.isEmpty() ? caption(box.buttons[i]) : special);
    }
    if (!box.cancel_caption.isEmpty()) {
        window.button(QMessageBox::Cancel)->setText(box.cancel_caption);
        window.setEscapeButton(standard(box.buttons.front()));
    }
    window.setDefaultButton(standard(box.buttons.front()));
    const int chosen = window.exec();
    for (const Button button : box.buttons)
        if (standard(button) == chosen)
            return button;
    return box.buttons.size() > 1 ? Button::Cancel : Button::Ok;
}

std::optional<QString> QtBoxes::prompt(QWidget* parent, const Prompt& box)
{
    QDialog window(parent);
    window.setWindowTitle(title_or_name(box.title));
    QVBoxLayout layout(&window);
    QLabel label(readable(box.text));
    label.setTextFormat(Qt::PlainText);
    QLineEdit edit(box.initial);
    edit.setMaxLength(box.max_length);
    edit.selectAll();
    edit.setMinimumWidth(300);
    QDialogButtonBox buttons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons.button(QDialogButtonBox::Ok)->setText(caption(Button::Ok));
    buttons.button(QDialogButtonBox::Cancel)->setText(caption(Button::Cancel));
    layout.addWidget(&label);
    layout.addWidget(&edit);
    layout.addWidget(&buttons);
    QObject::connect(&buttons, &QDialogButtonBox::accepted, &window, &QDialog::accept);
    QObject::connect(&buttons, &QDialogButtonBox::rejected, &window, &QDialog::reject);
    if (window.exec() != QDialog::Accepted)
        return std::nullopt;
    return edit.text();
}

QString QtBoxes::file(QWidget* parent, const File& box)
{
    QFileDialog window(parent, box.title, box.initial);
    window.setAcceptMode(box.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    window.setFileMode(box.save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    window.setNameFilters(name_filters(box.filter));
    if (box.save) {
        const QString pattern = box.filter.section(QLatin1Char('|'), 1, 1).section(QLatin1Char(';'), 0, 0);
        window.setDefaultSuffix(QFileInfo(pattern).suffix());
    }
    return window.exec() == QDialog::Accepted ? window.selectedFiles().value(0) : QString();
}

int QtBoxes::menu(QWidget* parent, const Menu& menu)
{
    QMenu window(parent);
    for (const MenuItem& item : menu.items) {
        if (item.id == 0) {
            window.addSeparator();
            continue;
        }
        // A name may hold an ampersand; it is no shortcut.
        QAction* action = window.addAction(QString(item.text).replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setData(item.id);
        action->setEnabled(item.enabled);
        action->setCheckable(item.checked);
        action->setChecked(item.checked);
    }
    const QAction* chosen = window.exec(menu.place);
    return chosen ? chosen->data().toInt() : 0;
}

std::optional<QColor> QtBoxes::color(QWidget* parent, const QColor& initial)
{
    const QColor chosen = QColorDialog::getColor(initial, parent);
    return chosen.isValid() ? std::optional(chosen) : std::nullopt;
}

int QtBoxes::dialog(QDialog& dialog)
{
    return dialog.exec();
}

std::unique_ptr<ProgressBox> QtBoxes::progress(QWidget* parent, const QString& text)
{
    return std::make_unique<QtProgressBox>(parent, text);
}

} // namespace tarn::boxes
