#pragma once

#include "frame/boxes.h"

#include <QObject>

#include <deque>

class Studio;

/// The messages that scripts show: each once what its script does now is done, one after the other. While one is open
/// scripts stand still, and each can end them, so that a script which shows message after message locks nobody out.
class ScriptMessages : public QObject {
    Q_OBJECT

public:
    ScriptMessages(QWidget& window, Studio& studio);

    void post(const QString& text, const QString& title);

private:
    void show_all();

    QWidget& m_window;
    Studio& m_studio;
    std::deque<tarn::boxes::Message> m_messages; ///< the first is being shown, or will be next
};
