#pragma once

#include <QColor>
#include <QPoint>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

class QDialog;
class QWidget;

/// The one gateway for everything that waits for the user: message boxes, prompts, file and colour dialogs, popup menus
/// and modal dialogs. Automation answers here, so that no box stays open under a script and no test hangs.
namespace tarn::boxes {

enum class Button { Ok, Cancel, Yes, No };

struct Message {
    QString text;
    QString title;
    std::vector<Button> buttons{Button::Ok};
    bool is_error = false;
    QString cancel_caption{}; ///< what Cancel says where it does something of its own; Escape is then the first button
    QStringList captions{};   ///< what the buttons say, in their order, where it is not the usual
    QStringList headings{};   ///< lines of the text that stand out
};

struct Prompt {
    QString text;
    QString title;
    QString initial;
    int max_length = 300;
};

struct File {
    bool save = false;
    QString title;
    /// Pairs of a label and a pattern, "label|*.ext|label|*.*||".
    QString filter;
    QString initial; ///< file name or folder to begin with
};

struct MenuItem {
    int id = 0; ///< 0 draws a separator
    QString text;
    bool enabled = true;
    bool checked = false;
};

struct Menu {
    std::vector<MenuItem> items;
    QPoint place; ///< on the desktop
};

/// Shows how far long work is, until it is destroyed.
class ProgressBox {
public:
    virtual ~ProgressBox() = default;
    /// `share` of the work is done, 0 to 1. Windows are drawn meanwhile; false: the user cancels.
    virtual bool show(double share) = 0;
};

/// Who answers. The default asks the user.
class Responder {
public:
    virtual ~Responder() = default;
    virtual Button message(QWidget* parent, const Message& box) = 0;
    virtual std::optional<QString> prompt(QWidget* parent, const Prompt& box) = 0;
    /// An empty path when cancelled.
    virtual QString file(QWidget* parent, const File& box) = 0;
    /// The chosen command; 0 for none.
    virtual int menu(QWidget* parent, const Menu& menu) = 0;
    virtual std::optional<QColor> color(QWidget* parent, const QColor& initial) = 0;
    /// Runs a modal dialog and answers its result.
    virtual int dialog(QDialog& dialog) = 0;
    /// Null: the work is not shown.
    virtual std::unique_ptr<ProgressBox> progress(QWidget*, const QString&) { return nullptr; }
};

/// Null takes the default responder back.
void set_responder(Responder* responder);

Button message(QWidget* parent, const Message& box);
std::optional<QString> prompt(QWidget* parent, const Prompt& box);
QString file(QWidget* parent, const File& box);
int menu(QWidget* parent, const Menu& menu);
std::optional<QColor> color(QWidget* parent, const QColor& initial);
int dialog(QDialog& dialog);
/// `text` says what is done.
std::unique_ptr<ProgressBox> progress(QWidget* parent, const QString& text);

/// An OK-only box that tells what went wrong. Work that the user gave up has an empty text, and needs no box.
void error(QWidget* parent, const QString& text);
/// An OK/Cancel box; true on OK.
bool confirm(QWidget* parent, const QString& text, const QString& title = {});

} // namespace tarn::boxes
