#pragma once

#include <QString>

class QWidget;

/// Asks for one line of text: `prompt` over a field that starts with `initial` and takes at most `max_length`
/// characters. `flag` 1 selects the starting text. Answers 1 and sets `result` when the user confirms; otherwise 0 and
/// `result` is empty.
int PopDlgStrInput(QWidget* parent, const QString& prompt, const QString& title, const QString& initial,
                   QString& result, int max_length = 300, int flag = 1);
