// quillon-bench-app --first-frame | --idle SECONDS | --screen journal|usb|refresh
//
// The application as `quillon` starts it (same style, translations, platform and windows),
// with its journal and preferences in a temporary folder and a watch on its window, for
// quillon-bench. It prints "key value" lines:
//   --first-frame  reportMs, firstVerdictFrameMs: milliseconds since the benchmark started
//                  the process (QUILLON_BENCH_SPAWN_NS) until the report was built, and until
//                  the first frame whose items show the report's headline was on screen.
//   --idle N       then, after the first load settled, N seconds on the overview (three
//                  monitors running) and N seconds on the storage section (all stopped),
//                  in 5-second slices: overviewCorePercent / otherCorePercent per slice
//                  (processor time of the whole process over wall time, in % of one core),
//                  overviewFramesPerSecond / otherFramesPerSecond.
//   --screen S     then, once the journal is read and the first load is over, the time from
//                  asking for a screen to the first frame that shows it (screenMs): the
//                  journal, the USB section, or a refresh (⌘R) of the USB section on screen
//                  whose answer did not change. QUILLON_JOURNAL_DIR names the journal folder
//                  to use instead of an empty one (the benchmark gives a copy).
// Run it off-screen: QT_QPA_PLATFORM=offscreen.

#include "core/app_section.h"
#include "platform/factory/platform_factory.h"
#include "records/history.h"
#include "state/app_state.h"
#include "ui/app/main_window_controller.h"
#include "ui/app/quillon_app.h"
#include "ui/theme/theme.h"

#include "child_process.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLibraryInfo>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QtQml/QQmlExtensionPlugin>

#include <sys/resource.h>

#include <atomic>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(QuillonPlugin)

using namespace Qt::StringLiterals;

namespace {

qint64 spawnedAt()
{
    bool ok = false;
    const qint64 at = qEnvironmentVariable("QUILLON_BENCH_SPAWN_NS").toLongLong(&ok);
    return ok ? at : monotonicNanoseconds();
}

double sinceSpawnMs(qint64 nanoseconds)
{
    static const qint64 spawned = spawnedAt();
    return double(nanoseconds - spawned) / 1e6;
}

double processorMs()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return double(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) * 1000.0
        + double(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1000.0;
}

// Whether a visible item under `item` shows exactly `text`.
bool showsText(const QQuickItem *item, const QString &text)
{
    if (!item->isVisible() || item->opacity() <= 0.0)
        return false;
    const QVariant shown = item->property("text");
    if (shown.typeId() == QMetaType::QString && shown.toString() == text)
        return true;
    const QList<QQuickItem *> children = item->childItems();
    for (const QQuickItem *child : children) {
        if (showsText(child, text))
            return true;
    }
    return false;
}

// The same as main.cpp: the platform's palette with the Fusion style, Qt's texts in French.
void prepareApplication(QGuiApplication &application)
{
    QGuiApplication::setOrganizationName(u"Quillon"_s);
    QGuiApplication::setOrganizationDomain(u"quillon.app"_s);
    QGuiApplication::setApplicationName(u"Quillon"_s);
    for (const QString &catalogue : { u"qtbase_fr"_s, u"qtdeclarative_fr"_s }) {
        auto *translator = new QTranslator(&application);
        if (translator->load(catalogue, QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QGuiApplication::installTranslator(translator);
        else
            delete translator;
    }
    QQuickStyle::setStyle(u"Fusion"_s);
    QGuiApplication::setPalette(Theme::controlsPalette(Theme::isDarkPalette(application.palette())));
}

// Watches the frames of the main window: counts them, and notes the first one whose items
// show the report's headline. The check runs while the scene is synchronised (the main
// thread waits then), so the frame that follows is the one that shows what was checked.
class FrameWatch : public QObject
{
public:
    FrameWatch(QQuickWindow *window, AppState &state) : m_window(window)
    {
        connect(&state, &AppState::reportChanged, this, [this, &state] {
            if (m_reportAt == 0)
                m_reportAt = monotonicNanoseconds();
            m_headline = state.report() ? state.report()->headline() : QString();
        });
        connect(
            window, &QQuickWindow::beforeSynchronizing, this,
            [this] {
                if (m_verdictFrameAt.load() == 0 && !m_headline.isEmpty())
                    m_verdictsInScene = showsText(m_window->contentItem(), m_headline);
            },
            Qt::DirectConnection);
        connect(
            window, &QQuickWindow::frameSwapped, this,
            [this] {
                if (m_firstFrameAt.load() == 0)
                    m_firstFrameAt = monotonicNanoseconds();
                ++m_frames;
                if (m_verdictsInScene && m_verdictFrameAt.load() == 0) {
                    m_verdictFrameProcessorMs = processorMs();
                    m_verdictFrameAt = monotonicNanoseconds();
                }
            },
            Qt::DirectConnection);
    }

    qint64 reportAt() const { return m_reportAt; }
    qint64 firstFrameAt() const { return m_firstFrameAt.load(); }
    qint64 verdictFrameAt() const { return m_verdictFrameAt.load(); }
    int frames() const { return m_frames.load(); }
    // The whole process's processor time when that frame was on screen.
    double verdictFrameProcessorMs() const { return m_verdictFrameProcessorMs; }

private:
    QQuickWindow *m_window;
    QString m_headline;
    qint64 m_reportAt = 0;
    std::atomic<bool> m_verdictsInScene = false;
    std::atomic<qint64> m_verdictFrameAt = 0;
    std::atomic<qint64> m_firstFrameAt = 0;
    std::atomic<int> m_frames = 0;
    double m_verdictFrameProcessorMs = 0; // written before m_verdictFrameAt, read after it
};

// Runs the event loop until `done` holds or `timeoutMs` went by.
template <typename Condition> bool runUntil(Condition done, int timeoutMs)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < timeoutMs)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 5);
    return done();
}

void runFor(int milliseconds)
{
    QEventLoop loop;
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

// The process's processor time over `seconds` on the section on screen, slice by slice.
void measureIdle(const char *key, const char *framesKey, int seconds, const FrameWatch &watch)
{
    constexpr int sliceMs = 5000;
    const int framesBefore = watch.frames();
    QElapsedTimer total;
    total.start();
    for (int done = 0; done < seconds * 1000; done += sliceMs) {
        QElapsedTimer wall;
        wall.start();
        const double before = processorMs();
        runFor(sliceMs);
        const double used = processorMs() - before;
        std::printf("%s %.4f\n", key, 100.0 * used / double(wall.nsecsElapsed() / 1e6));
    }
    std::printf("%s %.2f\n", framesKey, double(watch.frames() - framesBefore) * 1000.0 / double(total.elapsed()));
}

// Milliseconds from `ask` to the first frame swapped after `ready` holds; `readyMs` gets
// the milliseconds until `ready` held.
template <typename Ask, typename Ready> double untilShown(QQuickWindow *window, Ask ask, Ready ready, double *readyMs = nullptr)
{
    std::atomic<int> frames = 0;
    const QMetaObject::Connection counting
        = QObject::connect(window, &QQuickWindow::frameSwapped, window, [&frames] { ++frames; }, Qt::DirectConnection);
    QElapsedTimer timer;
    timer.start();
    ask();
    runUntil(ready, 60000);
    if (readyMs)
        *readyMs = double(timer.nsecsElapsed()) / 1e6;
    const int before = frames.load();
    window->update();
    runUntil([&] { return frames.load() > before; }, 60000);
    QObject::disconnect(counting);
    return double(timer.nsecsElapsed()) / 1e6;
}

// The journal screen, the USB section, or a refresh of the USB section on screen.
bool measureScreen(const QString &screen, QuillonApp &quillon, QQuickWindow *window)
{
    MainWindowController &controller = quillon.mainWindow();
    if (!runUntil([&] { return !quillon.history().isReading() && !controller.isRefreshing(); }, 60000))
        return false;
    runFor(500);
    double milliseconds = 0;
    if (screen == u"journal"_s) {
        milliseconds = untilShown(window, [&] { controller.setSelection(AppSection::history); }, [] { return true; });
    } else if (screen == u"usb"_s) {
        milliseconds = untilShown(window, [&] { controller.setSelection(AppSection::usb); }, [] { return true; });
    } else if (screen == u"refresh"_s) {
        controller.setSelection(AppSection::usb);
        runFor(500);
        double updatedMs = 0;
        milliseconds = untilShown(
            window, [&] { controller.refresh(); }, [&] { return !controller.isRefreshing(); }, &updatedMs);
        std::printf("updatedMs %.2f\n", updatedMs);
    } else {
        return false;
    }
    std::printf("screenMs %.2f\n", milliseconds);
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    sinceSpawnMs(0); // reads the start time before anything else
    QGuiApplication application(argc, argv);
    prepareApplication(application);
    const QStringList arguments = QCoreApplication::arguments();
    const bool idle = arguments.value(1) == u"--idle"_s;
    const int idleSecs = idle ? arguments.value(2).toInt() : 0;
    const QString screen = arguments.value(1) == u"--screen"_s ? arguments.value(2) : QString();

    std::optional<QString> capturePath;
    if (const QString fromEnvironment = qEnvironmentVariable("QUILLON_CAPTURE"); !fromEnvironment.isEmpty())
        capturePath = fromEnvironment;
    auto opened = PlatformFactory::open(capturePath);
    if (const QString *error = std::get_if<QString>(&opened)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*error));
        return 2;
    }
    QTemporaryDir home;
    QuillonApp::Options options;
    const QString journal = qEnvironmentVariable("QUILLON_JOURNAL_DIR");
    options.journalDirectory = journal.isEmpty() ? home.filePath(u"journal"_s) : journal;
    options.preferences = std::make_unique<QSettings>(home.filePath(u"preferences.ini"_s), QSettings::IniFormat);
    QuillonApp quillon(std::get<Platform>(std::move(opened)), std::move(options));
    QQmlApplicationEngine engine;
    QuillonApp::prepareEngine(engine);
    if (!quillon.openWindows(engine))
        return 1;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (!window)
        return 1;
    FrameWatch watch(window, quillon.state());
    const double windowLoadedMs = sinceSpawnMs(monotonicNanoseconds());

    if (!runUntil([&watch] { return watch.verdictFrameAt() != 0; }, 20000)) {
        std::fprintf(stderr, "quillon-bench-app : aucune image ne montre les verdicts\n");
        return 1;
    }
    std::printf("windowLoadedMs %.2f\n", windowLoadedMs);
    std::printf("firstFrameMs %.2f\n", sinceSpawnMs(watch.firstFrameAt()));
    std::printf("reportMs %.2f\n", sinceSpawnMs(watch.reportAt()));
    std::printf("processorAtFirstVerdictFrameMs %.2f\n", watch.verdictFrameProcessorMs());
    std::printf("firstVerdictFrameMs %.2f\n", sinceSpawnMs(watch.verdictFrameAt()));
    std::fflush(stdout);
    if (!screen.isEmpty())
        return measureScreen(screen, quillon, window) ? 0 : 1;
    if (!idle)
        return 0;

    // The journal line, the first monitor readings and the layout settle first.
    runFor(3000);
    measureIdle("overviewCorePercent", "overviewFramesPerSecond", idleSecs, watch);
    quillon.mainWindow().setSelection(AppSection::storage);
    runFor(1000);
    measureIdle("otherCorePercent", "otherFramesPerSecond", idleSecs, watch);
    std::fflush(stdout);
    return 0;
}
