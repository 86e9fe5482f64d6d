#pragma once

#include <QObject>

#include <functional>

/// Lets the program put things in order before it is ended from outside: SIGTERM, SIGHUP and SIGINT. It then ends by that
/// signal; a second one ends it at once.
class EndSignals : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(std::function<void()> put_in_order, QObject* parent = nullptr);

private:
    void end();

    std::function<void()> m_put_in_order;
};
