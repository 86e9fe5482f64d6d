#include "boxes.h"

#include "qt_boxes.h"

namespace tarn::boxes {

namespace {

Responder* current = nullptr;

Responder& responder()
{
    static QtBoxes default_responder;
    return current ? *current : default_responder;
}

} // namespace

void set_responder(Responder* responder)
{
    current = responder;
}

Button message(QWidget* parent, const Message& box)
{
    return responder().message(parent, box);
}

std::optional<QString> prompt(QWidget* parent, const Prompt& box)
{
    return responder().prompt(parent, box);
}

QString file(QWidget* parent, const File& box)
{
    return responder().file(parent, box);
}

int menu(QWidget* parent, const Menu& menu)
{
    return responder().menu(parent, menu);
}

std::optional<QColor> color(QWidget* parent, const QColor& initial)
{
    return responder().color(parent, initial);
}

int dialog(QDialog& dialog)
{
    return responder().dialog(dialog);
}

std::unique_ptr<ProgressBox> progress(QWidget* parent, const QString& text)
{
    return responder().progress(parent, text);
}

void error(QWidget* parent, const QString& text)
{
    if (!text.isEmpty())
        message(parent, {.text = text, .title = {}, .buttons = {Button::Ok}, .is_error = true});
}

bool confirm(QWidget* parent, const QString& text, const QString& title)
{
    return message(parent, {.text = text, .title = title, .buttons = {Button::Ok, Button::Cancel}}) == Button::Ok;
}

} // namespace tarn::boxes
