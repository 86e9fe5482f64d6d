#pragma once

#include "core/status.h"
#include "core/value.h"

#include <QList>
#include <QPointF>
#include <QSize>
#include <QString>

#include <vector>

namespace tarn {

/// One line of recorded input: something that a player did, or what was to be seen then.
struct InputStep {
    enum class Kind {
        Wait,
        Move,
        Leave, ///< the mouse leaves the screen
        Press,
        Release,
        Click,
        DoubleClick, ///< the second press of one
        RightClick,
        Drag,
        Wheel,
        Turn, ///< of the camera
        Pan,
        Key,
        Type,
        Screen,
        ExpectCall,
        ExpectPrint,
        ExpectError,
        ExpectMessage,
        ExpectNoMore, ///< nothing else was called, printed or shown since the last input
        ExpectValue,
    };
    Kind kind = Kind::Wait;
    int line = 0;            ///< of the file, from 1
    QList<QPointF> places{}; ///< pixels of the screen; of the camera how far the mouse went
    double number = 0;       ///< seconds of a wait or drag, steps of the wheel, the line of an error
    QString text{};          ///< keys, a text, or what is called, printed, shown
    QString object{};        ///< as ObjectPaths names it; empty: whichever
    QString attribute{};
    Value value{};

    bool is_expectation() const { return kind >= Kind::ExpectCall; }
};

/// Recorded input of an interface.
struct InputScript {
    QString scene{};  ///< path of the package, which counts from the script's folder; empty: not told
    QSize screen{};   ///< pixels
    QString texts{};  ///< the language of the scene's texts; empty: as the author wrote them
    quint32 seed = 1; ///< of the numbers that scripts get from `random`
    std::vector<InputStep> steps{};
};

/// Reads a script, as hostile: it fails with the number of the line that is wrong.
Result<InputScript> parse_input_script(const QByteArray& bytes);

/// The lines as parse_input_script() reads them; `notes` stand behind them as comments, by the places of the steps.
QString input_script_text(const InputScript& script, const QList<QString>& notes = {});
QString input_step_text(const InputStep& step);

/// Of a step that sets it.
QSize screen_of(const InputStep& step);

/// As a script writes it: numbers and truth values as they are, texts in quotes.
QString input_value_text(const Value& value);

constexpr const char* input_script_suffix = "tarn-input";

} // namespace tarn
