#include "str_input.h"

#include "boxes.h"

int PopDlgStrInput(QWidget* parent, const QString& prompt, const QString& title, const QString& initial,
                   QString& result, int max_length, int)
{
    const auto answer = tarn::boxes::prompt(
        parent, {.text = prompt, .title = title, .initial = initial, .max_length = max_length});
    result = answer.value_or(QString()).left(max_length);
    return answer.has_value();
}
