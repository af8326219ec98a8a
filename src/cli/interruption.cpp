#include "cli/interruption.h"

#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

// The handler may only do async-signal-safe things: note the number and wake the watcher
// through a pipe.
volatile std::sig_atomic_t received = 0;
int wakeUp[2] = {-1, -1};
struct sigaction previousInt;
struct sigaction previousTerm;

// Written to the pipe when the object ends, so that the watcher stops.
constexpr unsigned char stopByte = 0;

extern "C" void onSignal(int signalNumber)
{
    const int savedErrno = errno;
    if (received == 0)
        received = signalNumber;
    const unsigned char byte = static_cast<unsigned char>(signalNumber);
    [[maybe_unused]] const ssize_t written = write(wakeUp[1], &byte, 1);
    errno = savedErrno;
}

void install(int signalNumber, struct sigaction *previous)
{
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    // The second signal finds the default handling back and ends the program.
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigaction(signalNumber, &action, previous);
}

} // namespace

Interruption::Interruption(std::function<void(int)> onInterrupt) : m_onInterrupt(std::move(onInterrupt))
{
    received = 0;
    if (pipe(wakeUp) != 0)
        return; // no pipe: the signals keep their default handling
    for (int fd : wakeUp)
        fcntl(fd, F_SETFD, FD_CLOEXEC);
    m_watcher = std::thread([this] {
        unsigned char byte = stopByte;
        while (true) {
            const ssize_t got = read(wakeUp[0], &byte, 1);
            if (got < 0 && errno == EINTR)
                continue;
            if (got <= 0 || byte == stopByte)
                return;
            if (m_onInterrupt)
                m_onInterrupt(byte);
        }
    });
    install(SIGINT, &previousInt);
    install(SIGTERM, &previousTerm);
}

Interruption::~Interruption()
{
    if (!m_watcher.joinable())
        return;
    sigaction(SIGINT, &previousInt, nullptr);
    sigaction(SIGTERM, &previousTerm, nullptr);
    [[maybe_unused]] const ssize_t written = write(wakeUp[1], &stopByte, 1);
    m_watcher.join();
    close(wakeUp[0]);
    close(wakeUp[1]);
    wakeUp[0] = wakeUp[1] = -1;
}

int Interruption::signalNumber() const
{
    return received;
}
