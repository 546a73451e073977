#include "UnixSignals.h"

#include <QSocketNotifier>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

static constexpr int kSignals[] = { SIGINT, SIGTERM, SIGHUP };
static int thePipe[2] = { -1, -1 };

// Only a write is allowed inside a signal handler; a full pipe has already said it.
static void onSignal(int)
{
    const int error = errno;
    const char byte = 1;
    const ssize_t written = write(thePipe[1], &byte, 1);
    static_cast<void>(written);
    errno = error;
}

static void install(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int number : kSignals)
        sigaction(number, &action, nullptr);
}

UnixSignals::UnixSignals(QObject *parent)
    : QObject(parent)
{
    if (pipe2(thePipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return; // the signals keep their default action
    m_notifier = new QSocketNotifier(thePipe[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (read(thePipe[0], &byte, 1) == 1) { }
        emit endRequested();
    });
    install(onSignal);
}

UnixSignals::~UnixSignals()
{
    if (!m_notifier)
        return;
    install(SIG_DFL);
    delete m_notifier;
    for (int &end : thePipe) {
        close(end);
        end = -1;
    }
}
