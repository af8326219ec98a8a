#include "common/test_main.h"

#include "core/app_state.h"
#include "platform/macos/mac_profiler_source.h"

#include <QFile>
#include <QTemporaryDir>

#include <cerrno>
#include <csignal>

using namespace Qt::StringLiterals;

namespace {

class NoRegistry final : public RegistrySource
{
public:
    QList<PropertyDictionary> servicesOfClass(const QString &) const override { return {}; }
    QList<PropertyDictionary> servicesNamed(const QString &) const override { return {}; }
};

class NoKernel final : public KernelSource
{
public:
    std::optional<QByteArray> value(const QByteArray &) const override { return std::nullopt; }
};

class NoPowerSources final : public PowerSourceList
{
public:
    QList<PropertyDictionary> descriptions() const override { return {}; }
};

class NoProcess final : public ProcessInformation
{
public:
    QString hostName() const override { return {}; }
    QString operatingSystemVersion() const override { return {}; }
    ThermalState thermalState() const override { return ThermalState::unknown; }
};

class FixedClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime(QDate(2026, 11, 16), QTime(8, 5, 7), Qt::UTC); }
};

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

        Platform platform;
        platform.profiler = std::make_shared<MacProfilerSource>(tool);
        platform.kernel = std::make_shared<NoKernel>();
        platform.registry = std::make_shared<NoRegistry>();
        platform.powerSources = std::make_shared<NoPowerSources>();
        platform.process = std::make_shared<NoProcess>();
        platform.clock = std::make_shared<FixedClock>();
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
        QCOMPARE(platform.profiler->run({u"-json"_s, u"SPUSBDataType"_s}).started, false);
    }
};

QUILLON_TEST_MAIN(TestQuitEndsTheTool)
#include "tst_quit_ends_the_tool.moc"
