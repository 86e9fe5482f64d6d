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

void exchange_handlers(void (*from)(int), void (*to)(int))
{
    for (const int signal : {SIGTERM, SIGHUP, SIGINT}) {
        struct sigaction action {};
        if (::sigaction(signal, nullptr, &action) != 0 || action.sa_handler != from)
            continue; // nohup, for example, lets it ignore one.
        action.sa_handler = to;
        action.sa_flags = SA_RESTART | int(SA_RESETHAND);
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace

EndSignals::EndSignals(std::function<void()> put_in_order) : m_put_in_order(std::move(put_in_order))
{
    if (pipe_ends[0] < 0 && ::pipe2(pipe_ends, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* told = new QSocketNotifier(pipe_ends[0], QSocketNotifier::Read, this);
    connect(told, &QSocketNotifier::activated, this, &EndSignals::end);
    exchange_handlers(SIG_DFL, pass_on);
}

EndSignals::~EndSignals()
{
    exchange_handlers(pass_on, SIG_DFL);
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

EndSignals::EndSignals(std::function<void()> put_in_order) : m_put_in_order(std::move(put_in_order)) {}

EndSignals::~EndSignals() = default;

#endif
