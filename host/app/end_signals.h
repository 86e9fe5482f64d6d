#pragma once

#include <QObject>

#include <functional>

/// Lets the program put things in order before it is ended from outside: by SIGTERM, SIGHUP or SIGINT, unless it was
/// started to ignore them. It then ends by that signal; a second one ends it at once. One at a time.
class EndSignals : public QObject {
    Q_OBJECT

public:
    explicit EndSignals(std::function<void()> put_in_order);
    ~EndSignals() override;

private:
    void end();

    std::function<void()> m_put_in_order;
};
