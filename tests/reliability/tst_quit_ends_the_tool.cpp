#include "common/silent_platform.h"
#include "common/test_main.h"

#include "platform/macos/mac_profiler_source.h"
#include "state/app_state.h"

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

QStringList lines(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
}

bool processExists(qint64 pid)
{
    return ::kill(pid_t(pid), 0) == 0 || errno != ESRCH;
}

} // namespace

// The real runner of the system profiler tool, on a stand-in tool that never answers. Ending
// the runs cannot be undone in a process, so this program holds this one test.
class TestQuitEndsTheTool : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void endingTheStateEndsEveryToolAndLeavesNoProcess()
    {
        QTemporaryDir folder;
        QVERIFY(folder.isValid());
        const QString pids = folder.filePath(u"pids"_s);
        // Each run notes its process number, then waits far longer than any test.
        const QString tool = folder.filePath(u"system_profiler"_s);
        QFile script(tool);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\necho $$ >> '" + pids.toLocal8Bit() + "'\nexec sleep 600\n");
        script.close();
        QVERIFY(script.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner));

        const Platform platform = SilentPlatform::with(std::make_shared<MacProfilerSource>(tool));
        auto state = std::make_unique<AppState>(platform);
        state->loadEverything(false);

        // Hardware, storage and the seven device sections run the tool side by side.
        QTRY_COMPARE_WITH_TIMEOUT(lines(pids).size(), 9, 60000);
        const QStringList started = lines(pids);
        for (const QString &pid : started)
            QVERIFY2(processExists(pid.toLongLong()), qPrintable(pid));

        state.reset();

        for (const QString &pid : started)
            QVERIFY2(!processExists(pid.toLongLong()), qPrintable(u"the tool %1 still runs"_s.arg(pid)));
        // No run starts the tool once the runs have been ended.
        QCOMPARE(lines(pids), started);
        QCOMPARE(platform.profiler->run({ u"-json"_s, u"SPUSBDataType"_s }).started, false);
    }
};

QUILLON_TEST_MAIN(TestQuitEndsTheTool)
#include "tst_quit_ends_the_tool.moc"
