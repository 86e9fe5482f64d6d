#pragma once

#include "engine/scene_editor.h"

#include <QObject>

class QRect;
class QWidget;

namespace tarn {

/// A field over a view in which a text of the scene is edited. Enter and the loss of the focus store the text, Escape
/// drops it. While it is open the view's keys are the field's.
class InlineEditor : public QObject {
    Q_OBJECT

public:
    /// `place` is the text's place in `view`, which becomes the field's parent.
    InlineEditor(EditableText text, const QRect& place, QWidget& view);

    QWidget& field() const { return *m_field; }
    /// Closes the field; the second call does nothing. This object deletes itself later.
    void finish(bool keep);

protected:
    bool eventFilter(QObject* target, QEvent* event) override;

private:
    QWidget* make_field(const EditableText& text);
    QString text() const;

    QWidget& m_view;
    QWidget* m_field;
    std::function<void(const QString&)> m_commit; ///< null once the field was closed
};

} // namespace tarn
