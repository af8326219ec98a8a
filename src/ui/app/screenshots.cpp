// quillon-screenshots OUTDIR [--light-only]
//
// Renders every section of the recorded Macs (the built-in sample, the one whose profiler
// answers fail, the desktop without battery, the worn battery, the nearly full disk) at the
// default window size (1000 × 700) and at the minimum size (820 × 560), in the light and
// dark appearances, plus the About and settings windows, as PNG files in OUTDIR. The journal
// page is shot empty with the desktop and full with the sample, which goes last and finds in
// its journal every Mac shot before it. Run it off-screen: QT_QPA_PLATFORM=offscreen.

#include "core/app_section.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "platform/factory/platform_factory.h"
#include "records/history.h"
#include "records/workshop_settings.h"
#include "state/app_state.h"
#include "ui/app/main_window_controller.h"
#include "ui/app/quillon_app.h"
#include "ui/theme/theme.h"

#include <QDir>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLocale>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QSettings>
#include <QTemporaryDir>
#include <QtQml/QQmlExtensionPlugin>

#include <algorithm>
#include <cstdio>

Q_IMPORT_QML_PLUGIN(QuillonPlugin)

using namespace Qt::StringLiterals;

namespace {

struct Size
{
    int width;
    int height;
};

// What a shot Mac leaves for the journal of the Macs shot after it.
struct CheckedMac
{
    std::optional<HardwareInfo> hardware;
    std::optional<BatteryInfo> battery;
    QList<StorageVolume> volumes;
    std::optional<DiagnosticsReport> report;
};

// How the journal page of a capture is shot: with the one entry its own load recorded, empty,
// or with every Mac shot before it added.
enum class JournalShot { asRecorded, empty, full };

void prepareJournal(History &history, JournalShot shot, const QList<CheckedMac> &checked)
{
    if (shot == JournalShot::empty)
        history.clear();
    if (shot != JournalShot::full)
        return;
    for (const CheckedMac &mac : checked)
        history.record(mac.hardware, mac.battery, mac.volumes, mac.report);
    // A Mac known only by its model: no serial number, no battery, no volume.
    if (!checked.isEmpty() && checked.constFirst().hardware) {
        HardwareInfo bare = *checked.constFirst().hardware;
        bare.serialNumber.reset();
        history.record(bare, std::nullopt, {}, checked.constFirst().report);
    }
}

// Lets the event loop run until `done` holds (or a few seconds went by).
template <typename Condition> bool settle(Condition done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done() && timer.elapsed() < 15000)
        QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    // Bindings, loaders and layouts catch up.
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
    return done();
}

// The running monitors take their readings now rather than on their timers, so that the
// live figures are on screen: the processor load needs two readings.
void takeLiveReadings(QuillonApp &app)
{
    if (app.processorMonitor().isRunning()) {
        app.processorMonitor().readNow();
        app.processorMonitor().readNow();
        app.processorMonitor().waitForQueue();
    }
    if (app.lidAngleMonitor().isRunning()) {
        app.lidAngleMonitor().readNow();
        app.lidAngleMonitor().waitForQueue();
    }
}

// The scroll area of the section on screen (the scaffold's content or the journal page);
// null when the section shows none.
QObject *detailScrollArea(QQuickItem *item)
{
    if (!item->isVisible())
        return nullptr;
    if (item->objectName() == u"contentView"_s || item->objectName() == u"journalPage"_s)
        return item->property("contentItem").value<QObject *>();
    for (QQuickItem *child : item->childItems()) {
        if (QObject *found = detailScrollArea(child))
            return found;
    }
    return nullptr;
}

bool save(QQuickWindow *window, const QString &path)
{
    const QImage image = window->grabWindow();
    if (image.isNull() || !image.save(path)) {
        std::fprintf(stderr, "Impossible d'enregistrer %s\n", qUtf8Printable(path));
        return false;
    }
    return true;
}

bool shootCapture(const QString &capture, bool dark, const QDir &out, JournalShot journal, QList<CheckedMac> &checked)
{
    auto opened = PlatformFactory::open(QDir(QStringLiteral(QUILLON_CAPTURES_DIR)).filePath(capture));
    if (const QString *error = std::get_if<QString>(&opened)) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(*error));
        return false;
    }
    QTemporaryDir home;
    QuillonApp::Options options;
    options.journalDirectory = home.filePath(u"journal"_s);
    options.preferences = std::make_unique<QSettings>(home.filePath(u"preferences.ini"_s), QSettings::IniFormat);
    QuillonApp app(std::get<Platform>(std::move(opened)), std::move(options));
    app.workshop().setWorkshopName(u"Atelier du Port"_s);
    app.workshop().setWorkshopPhone(u"01 23 45 67 89"_s);

    QQmlApplicationEngine engine;
    QuillonApp::prepareEngine(engine);
    if (!app.openWindows(engine))
        return false;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    MainWindowController &controller = app.mainWindow();
    AppState &state = app.state();
    if (!settle([&state] { return state.loading().isEmpty() && state.report().has_value(); }))
        std::fprintf(stderr, "%s : chargement incomplet\n", qUtf8Printable(capture));
    const QList<CheckedMac> checkedBefore = checked;
    checked.append({ state.hardware(), state.battery(), state.volumes(), state.report() });

    const QString appearance = dark ? u"dark"_s : u"light"_s;
    bool ok = true;
    for (const Size size : { Size { 1000, 700 }, Size { 820, 560 } }) {
        window->resize(size.width, size.height);
        const QList<AppSection> sections = AppSections::allCases();
        for (qsizetype i = 0; i < sections.size(); ++i) {
            controller.setSelection(sections.at(i));
            settle([&state] { return state.loading().isEmpty(); });
            // Every selection may record this Mac again: the journal is prepared last.
            if (sections.at(i) == AppSection::history)
                prepareJournal(app.history(), journal, checkedBefore);
            takeLiveReadings(app);
            settle([] { return true; });
            const QString name = u"%1-%2-%3x%4-%5-%6.png"_s.arg(capture, appearance)
                                     .arg(size.width)
                                     .arg(size.height)
                                     .arg(i + 1, 2, 10, QChar(u'0'))
                                     .arg(AppSections::rawValue(sections.at(i)));
            ok = save(window, out.filePath(name)) && ok;
            // A section longer than the window is shot again page by page down to its end.
            QObject *scroll = detailScrollArea(window->contentItem());
            const double page = scroll ? scroll->property("height").toDouble() : 0;
            const double overflow = scroll ? scroll->property("contentHeight").toDouble() - page : 0;
            for (int at = 2; overflow > 1 && (at - 2) * page * 0.9 < overflow; ++at) {
                scroll->setProperty("contentY", std::min((at - 1) * page * 0.9, overflow));
                settle([] { return true; });
                QString pageName = name;
                pageName.replace(u".png"_s, u"-p%1.png"_s.arg(at));
                ok = save(window, out.filePath(pageName)) && ok;
            }
            if (scroll)
                scroll->setProperty("contentY", 0);
        }
    }
    // The About and settings windows, once per appearance.
    if (capture == u"sample"_s) {
        const std::pair<const char *, QString> windows[]
            = { { "showAbout", u"about"_s }, { "showSettings", u"settings"_s } };
        for (const auto &[method, child] : windows) {
            QMetaObject::invokeMethod(window, method);
            settle([] { return true; });
            for (QWindow *top : QGuiApplication::topLevelWindows()) {
                auto *quick = qobject_cast<QQuickWindow *>(top);
                if (quick && quick != window && quick->isVisible()) {
                    ok = save(quick, out.filePath(u"%1-%2.png"_s.arg(child, appearance))) && ok;
                    quick->hide();
                }
            }
        }
    }
    window->close();
    return ok;
}

// The window shown when the capture to replay cannot be read.
bool shootStartupError(const QString &appearance, const QDir &out)
{
    auto opened = PlatformFactory::open(out.filePath(u"capture-absente"_s));
    const QString *error = std::get_if<QString>(&opened);
    if (!error)
        return false;
    QQmlApplicationEngine engine;
    QuillonApp::prepareEngine(engine);
    engine.setInitialProperties({ { u"message"_s, *error } });
    engine.load(QuillonApp::startupErrorUrl());
    if (engine.rootObjects().isEmpty())
        return false;
    auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    settle([] { return true; });
    const bool ok = save(window, out.filePath(u"startup-error-%1.png"_s.arg(appearance)));
    window->close();
    return ok;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("TZ", "Europe/Paris");
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    QQuickStyle::setStyle(u"Fusion"_s);
    QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() < 2) {
        std::fprintf(stderr, "Usage : quillon-screenshots DOSSIER [--light-only]\n");
        return 2;
    }
    QDir out(arguments.at(1));
    if (!out.mkpath(u"."_s)) {
        std::fprintf(stderr, "Dossier impossible à créer : %s\n", qUtf8Printable(out.path()));
        return 2;
    }

    // The controls take their palette once, when the first window appears: each appearance
    // is rendered by a run of its own.
    const qsizetype appearanceAt = arguments.indexOf(u"--appearance"_s);
    if (appearanceAt < 0) {
        QStringList appearances { u"light"_s };
        if (!arguments.contains(u"--light-only"_s))
            appearances << u"dark"_s;
        bool ok = true;
        for (const QString &appearance : std::as_const(appearances)) {
            const int status = QProcess::execute(
                QCoreApplication::applicationFilePath(), { out.path(), u"--appearance"_s, appearance });
            ok = status == 0 && ok;
        }
        return ok ? 0 : 1;
    }

    const bool dark = arguments.value(appearanceAt + 1) == u"dark"_s;
    QGuiApplication::setPalette(Theme::controlsPalette(dark));
    bool ok = true;
    QList<CheckedMac> checked;
    const std::pair<QString, JournalShot> captures[] = {
        { u"desktop-mac-studio"_s, JournalShot::empty },
        { u"worn-battery"_s, JournalShot::asRecorded },
        { u"storage-mix"_s, JournalShot::asRecorded },
        { u"profiler-failures"_s, JournalShot::asRecorded },
        { u"sample"_s, JournalShot::full },
    };
    for (const auto &[capture, journal] : captures)
        ok = shootCapture(capture, dark, out, journal, checked) && ok;
    ok = shootStartupError(dark ? u"dark"_s : u"light"_s, out) && ok;
    return ok ? 0 : 1;
}
