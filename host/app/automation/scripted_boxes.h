#pragma once

#include "frame/boxes.h"
#include "lua_values.h"

#include <QPointer>

#include <deque>

class Automation;

namespace tarn::script {

/// A function of the script, kept alive for a modal dialog.
struct FunctionRef {
    int reference;
};

/// What a script queued for one box.
using Answer = std::variant<bool, qint64, QString, QColor, FunctionRef>;

/// Answers boxes with what the script queued. A box that finds no fitting answer is given the most harmless one, and
/// leaves a failure for the call of the script that opened it.
class ScriptedBoxes : public boxes::Responder {
public:
    explicit ScriptedBoxes(Automation& app) : m_app(app) {}

    void queue(Answer answer) { m_answers.push_back(std::move(answer)); }
    int pending() const { return int(m_answers.size()); }
    /// The boxes since the last call, as records for the script.
    Data::List take_shown();
    /// The first failure since the last call.
    Status take_failure() { return std::exchange(m_failure, {}); }

    boxes::Button message(QWidget* parent, const boxes::Message& box) override;
    std::optional<QString> prompt(QWidget* parent, const boxes::Prompt& box) override;
    QString file(QWidget* parent, const boxes::File& box) override;
    int menu(QWidget* parent, const boxes::Menu& menu) override;
    std::optional<QColor> color(QWidget* parent, const QColor& initial) override;
    int dialog(QDialog& dialog) override;

private:
    /// Keeps what the box shows; answers its place in m_shown.
    std::size_t show(Data::Record box);
    /// The next answer when it is a T or `false` (which is not taken for a function); null after a failure.
    template <class T>
    std::optional<std::variant<bool, T>> next(const QString& box, const char* needed);
    void fail(const QString& message);
    void run_function(QDialog& dialog, FunctionRef function);

    Automation& m_app;
    std::deque<Answer> m_answers;
    std::vector<Data::Record> m_shown;
    Status m_failure;
};

/// A colour as {r, g, b}.
Data color_data(const QColor& color);

} // namespace tarn::script
