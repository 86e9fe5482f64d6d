#pragma once

#include <QTextLayout>

namespace tarn {

/// A laid-out line of text: where its characters are.
struct TextLine {
    TextLine(const QString& text, const QFont& font) : layout(text, font)
    {
        QTextOption option;
        option.setWrapMode(QTextOption::NoWrap);
        layout.setTextOption(option);
        layout.beginLayout();
        line = layout.createLine();
        layout.endLayout();
    }
    QTextLayout layout;
    QTextLine line;
};

} // namespace tarn
