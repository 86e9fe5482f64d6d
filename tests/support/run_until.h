#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QThread>

namespace tarn::test {

/// Runs the event loop until `done`; false when that took too long.
template <class Done>
bool run_until(Done&& done, int milliseconds = 60000)
{
    QElapsedTimer clock;
    clock.start();
    while (!done()) {
        if (clock.hasExpired(milliseconds))
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
        QThread::msleep(1);
    }
    return true;
}

inline void run_for(int milliseconds)
{
    (void)run_until([] { return false; }, milliseconds);
}

} // namespace tarn::test
