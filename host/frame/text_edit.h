#pragma once

#include <QPlainTextEdit>

namespace tarn {

/// A field of several lines that takes no more, by pasting or dropping, than it can lay out in time.
class TextEdit : public QPlainTextEdit {
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

protected:
    void insertFromMimeData(const QMimeData* source) override;
};

} // namespace tarn
