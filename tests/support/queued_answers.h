#pragma once

#include "frame/boxes.h"

#include <QColor>
#include <QDialog>
#include <QTimer>

#include <gtest/gtest.h>

#include <deque>
#include <functional>

namespace tarn::test {

using namespace Qt::StringLiterals;

/// Answers boxes from a queue and keeps what they said; a box without an answer fails the test.
class QueuedAnswers : public boxes::Responder {
public:
    QueuedAnswers() { boxes::set_responder(this); }
    ~QueuedAnswers() override { boxes::set_responder(nullptr); }

    boxes::Button message(QWidget*, const boxes::Message& box) override
    {
        texts.append(box.text);
        titles.append(box.title);
        return take(buttons, boxes::Button::Cancel);
    }
    std::optional<QString> prompt(QWidget*, const boxes::Prompt& box) override
    {
        texts.append(box.text);
        return take(prompts, std::optional<QString>());
    }
    QString file(QWidget*, const boxes::File& box) override
    {
        filters.append(box.filter);
        return take(files, QString());
    }
    int menu(QWidget*, const boxes::Menu& menu) override
    {
        for (const boxes::MenuItem& item : menu.items)
            texts.append(u"%1 %2"_s.arg(item.id).arg(item.text));
        return take(commands, 0);
    }
    std::optional<QColor> color(QWidget*, const QColor& initial) override
    {
        texts.append(initial.name(QColor::HexArgb));
        return take(colors, std::optional<QColor>());
    }
    /// Shows the dialog, lets the next visitor use it, and answers what it was ended with.
    int dialog(QDialog& dialog) override
    {
        texts.append(dialog.windowTitle());
        QTimer::singleShot(0, &dialog, [this, &dialog] {
            take(dialogs, std::function<void(QDialog&)>([](QDialog& open) { open.reject(); }))(dialog);
        });
        return dialog.exec();
    }

    std::deque<boxes::Button> buttons;
    std::deque<std::optional<QString>> prompts;
    std::deque<QString> files;
    std::deque<int> commands;
    std::deque<std::optional<QColor>> colors;
    std::deque<std::function<void(QDialog&)>> dialogs;
    QStringList texts;
    QStringList titles; ///< of the message boxes
    QStringList filters;

private:
    template <class Queue, class T>
    T take(Queue& queue, T otherwise)
    {
        if (queue.empty()) {
            ADD_FAILURE() << "a box came without an answer: " << texts.join(u" | "_s).toStdString();
            return otherwise;
        }
        T answer = queue.front();
        queue.pop_front();
        return answer;
    }
};

} // namespace tarn::test
