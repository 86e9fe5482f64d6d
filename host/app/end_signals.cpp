#include "end_signals.h"

#include <QSocketNotifier>

#include <utility>

#ifndef Q_OS_WIN
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

int pipe_ends[2] = {-1, -1};

/// All that can be done within a signal: tell the event loop.
void pass_on(int signal)
{
    const auto number = static_cast<unsigned char>(signal);
    (void)!::write(pipe_ends[1], &number, 1);
}

} // namespace

EndSignals::EndSignals(std::function<void()> put_in_order, QObject* parent)
    : QObject(parent), m_put_in_order(std::move(put_in_order))
{
    if (pipe_ends[0] < 0 && ::pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* told = new QSocketNotifier(pipe_ends[0], QSocketNotifier::Read, this);
    connect(told, &QSocketNotifier::activated, this, &EndSignals::end);
    struct sigaction action {};
    action.sa_handler = pass_on;
    action.sa_flags = SA_RESTART | int(SA_RESETHAND);
    for (const int signal : {SIGTERM, SIGHUP, SIGINT})
        ::sigaction(signal, &action, nullptr);
}

void EndSignals::end()
{
    unsigned char signal = 0;
    if (::read(pipe_ends[0], &signal, 1) != 1)
        return;
    m_put_in_order();
    std::signal(signal, SIG_DFL);
    ::raise(signal);
}

#else

EndSignals::EndSignals(std::function<void()> put_in_order, QObject* parent)
    : QObject(parent), m_put_in_order(std::move(put_in_order))
{
}

#endif
