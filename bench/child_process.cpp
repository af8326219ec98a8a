#include "child_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <vector>

extern char **environ;

qint64 monotonicNanoseconds()
{
    timespec now {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return qint64(now.tv_sec) * 1000000000 + now.tv_nsec;
}

namespace {

double milliseconds(const timeval &time)
{
    return double(time.tv_sec) * 1000.0 + double(time.tv_usec) / 1000.0;
}

// The current environment with `extra` set over it, as execve wants it.
std::vector<QByteArray> environmentWith(const QHash<QByteArray, QByteArray> &extra)
{
    std::vector<QByteArray> entries;
    for (char **entry = environ; *entry; ++entry) {
        const QByteArray text(*entry);
        if (!extra.contains(text.left(text.indexOf('='))))
            entries.push_back(text);
    }
    for (auto it = extra.cbegin(); it != extra.cend(); ++it)
        entries.push_back(it.key() + '=' + it.value());
    return entries;
}

std::vector<char *> pointers(std::vector<QByteArray> &texts)
{
    std::vector<char *> result;
    for (QByteArray &text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

} // namespace

ChildRun runChild(const QString &program, const QStringList &arguments,
    const QHash<QByteArray, QByteArray> &environment, bool keepOutput)
{
    ChildRun run;
    std::vector<QByteArray> argumentTexts { program.toLocal8Bit() };
    for (const QString &argument : arguments)
        argumentTexts.push_back(argument.toLocal8Bit());
    std::vector<char *> argv = pointers(argumentTexts);

    int pipeEnds[2] = { -1, -1 };
    if (keepOutput && pipe2(pipeEnds, O_CLOEXEC) != 0)
        return run;
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (keepOutput)
        posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
    else
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);

    QHash<QByteArray, QByteArray> extra = environment;
    const qint64 start = monotonicNanoseconds();
    extra.insert("QUILLON_BENCH_SPAWN_NS", QByteArray::number(start));
    std::vector<QByteArray> environmentTexts = environmentWith(extra);
    std::vector<char *> envp = pointers(environmentTexts);

    pid_t child = 0;
    const int spawned = posix_spawn(&child, argv[0], &actions, nullptr, argv.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    if (keepOutput)
        close(pipeEnds[1]);
    if (spawned != 0) {
        if (keepOutput)
            close(pipeEnds[0]);
        return run;
    }
    run.started = true;
    if (keepOutput) {
        char buffer[4096];
        ssize_t count = 0;
        while ((count = read(pipeEnds[0], buffer, sizeof buffer)) > 0)
            run.standardOutput.append(buffer, count);
        close(pipeEnds[0]);
    }
    int status = 0;
    rusage usage {};
    wait4(child, &status, 0, &usage);
    run.wallMs = double(monotonicNanoseconds() - start) / 1e6;
    run.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    run.peakResidentMB = double(usage.ru_maxrss) * 1024.0 / 1e6;
    run.processorMs = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    return run;
}
