#pragma once

#include <QObject>
#include <QPointer>

#include <functional>

class CChildDlg;
class QLineEdit;

namespace tarn {

/// Calls `entered` at each Enter in one of the page's own controls; the key goes on to the control.
class EnterWatch : public QObject {
    Q_OBJECT

public:
    EnterWatch(CChildDlg& page, std::function<void()> entered);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::function<void()> m_entered;
};

/// A line that counts only when it is entered. What is being typed stays while the page is filled anew, as long as it is
/// about the same object.
class EnteredText {
public:
    explicit EnteredText(QLineEdit& edit);

    /// Shows `text` of the object, whose id it is.
    void show(const QString& text, quint32 object);
    QString text() const;
    /// What was typed was taken, or is to be dropped.
    void done();

private:
    QLineEdit& m_edit;
    quint32 m_object = 0;
};

} // namespace tarn
