// quillon-screenshots [options] FOLDER
//
// Renders every section of the recorded Macs (the built-in sample, the one whose profiler
// answers fail, the desktop without battery, the worn battery, the nearly full disk) at the
// default window size (1000 × 700) and at the minimum size (820 × 560), in the light and
// dark appearances, plus the About and settings windows, as PNG files in FOLDER. The journal
// page is shot empty with the desktop and full with the sample, which goes last and finds in
// its journal every Mac shot before it. `--readme` makes the README's pictures instead.
// Run it off-screen: QT_QPA_PLATFORM=offscreen.

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

#include <QCommandLineParser>
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

bool shootCapture(const QString &capture, const QList<Size> &sizes, bool dark, const QDir &out, JournalShot journal,
                  QList<CheckedMac> &checked)
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
    for (const Size size : sizes) {
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

// What the command line asks for.
struct Request
{
    QDir out;
    QStringList captures;
    QStringList appearances;
    QList<Size> sizes;
    bool readme = false;
};

const QStringList allCaptures { u"desktop-mac-studio"_s, u"worn-battery"_s,       u"storage-mix"_s,
                                u"profiler-failures"_s,  u"intel-macbook-pro"_s,   u"m5-max-tahoe"_s,
                                u"air-m5-macos27"_s,     u"sample"_s };

std::optional<Size> sizeFrom(const QString &text)
{
    const QStringList parts = text.split(u'x');
    bool wide = false;
    bool high = false;
    const Size size { parts.value(0).toInt(&wide), parts.value(1).toInt(&high) };
    if (parts.size() != 2 || !wide || !high || size.width < 200 || size.height < 200 || size.width > 4000
        || size.height > 4000)
        return std::nullopt;
    return size;
}

// Reads the command line; prints the reason and gives nothing when it is wrong.
std::optional<Request> parse(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Captures d'écran de chaque section de Quillon, sur les Mac enregistrés."_s);
    parser.addHelpOption();
    parser.addPositionalArgument(u"dossier"_s, u"Le dossier où écrire les images PNG."_s);
    const QCommandLineOption capture(u"capture"_s, u"Une capture de captures/ à photographier (répétable ; toutes par défaut)."_s,
                                     u"nom"_s);
    const QCommandLineOption appearance(u"appearance"_s, u"light ou dark (les deux par défaut)."_s, u"apparence"_s);
    const QCommandLineOption size(u"size"_s, u"La taille de la fenêtre, LARGEURxHAUTEUR (répétable ; 1000x700 et 820x560 par défaut)."_s,
                                  u"taille"_s);
    const QCommandLineOption readme(u"readme"_s, u"Les images du README seulement : vue d'ensemble, diagnostic et journal du Mac d'exemple, clair et sombre."_s);
    parser.addOptions({ capture, appearance, size, readme });
    parser.process(arguments);
    const auto refuse = [](const QString &message) {
        std::fprintf(stderr, "quillon-screenshots : %s\n", qUtf8Printable(message));
        return std::nullopt;
    };
    if (parser.positionalArguments().size() != 1)
        return refuse(u"nommez un seul dossier de sortie (--help pour l'aide)."_s);
    Request request { QDir(parser.positionalArguments().constFirst()), parser.values(capture),
                      parser.values(appearance), {}, parser.isSet(readme) };
    if (request.captures.isEmpty())
        request.captures = allCaptures;
    for (const QString &name : std::as_const(request.captures)) {
        if (!allCaptures.contains(name))
            return refuse(u"capture inconnue : %1 (%2)."_s.arg(name, allCaptures.join(u", "_s)));
    }
    if (request.appearances.isEmpty())
        request.appearances = QStringList { u"light"_s, u"dark"_s };
    for (const QString &name : std::as_const(request.appearances)) {
        if (name != u"light"_s && name != u"dark"_s)
            return refuse(u"apparence inconnue : %1 (light ou dark)."_s.arg(name));
    }
    for (const QString &text : parser.values(size)) {
        const std::optional<Size> parsed = sizeFrom(text);
        if (!parsed)
            return refuse(u"taille illisible : %1 (par exemple 1000x700)."_s.arg(text));
        request.sizes.append(*parsed);
    }
    if (request.sizes.isEmpty())
        request.sizes = request.readme ? QList<Size> { { 1000, 700 } } : QList<Size> { { 1000, 700 }, { 820, 560 } };
    return request;
}

// Shoots every requested capture in one appearance, in this process.
bool shootAppearance(const Request &request, const QString &appearance)
{
    const bool dark = appearance == u"dark"_s;
    QGuiApplication::setPalette(Theme::controlsPalette(dark));
    bool ok = true;
    QList<CheckedMac> checked;
    for (const QString &capture : allCaptures) {
        if (!request.captures.contains(capture))
            continue;
        const JournalShot journal = capture == u"sample"_s             ? JournalShot::full
                                    : capture == u"desktop-mac-studio"_s ? JournalShot::empty
                                                                         : JournalShot::asRecorded;
        ok = shootCapture(capture, request.sizes, dark, request.out, journal, checked) && ok;
    }
    if (!request.readme)
        ok = shootStartupError(appearance, request.out) && ok;
    return ok;
}

// The README's pictures, taken from a full run in `shots`: the sample's overview, diagnostics
// and journal at the default size, 800 pixels wide.
bool keepReadmePictures(const QDir &shots, const Request &request)
{
    bool ok = true;
    for (const QString &appearance : request.appearances) {
        for (const QString &section : { u"overview"_s, u"diagnostics"_s, u"history"_s }) {
            const QStringList found
                = shots.entryList({ u"sample-%1-1000x700-*-%2.png"_s.arg(appearance, section) }, QDir::Files);
            const QImage image = found.isEmpty() ? QImage() : QImage(shots.filePath(found.constFirst()));
            const QString path = request.out.filePath(u"readme-%1-%2.png"_s.arg(section, appearance));
            if (image.isNull() || !image.scaledToWidth(800, Qt::SmoothTransformation).save(path)) {
                std::fprintf(stderr, "Impossible d'enregistrer %s\n", qUtf8Printable(path));
                ok = false;
            }
        }
    }
    return ok;
}

// The command line of a run that shoots one appearance of `request` into `out`.
QStringList oneAppearance(const Request &request, const QString &out, const QString &appearance)
{
    QStringList arguments { out, u"--appearance"_s, appearance };
    for (const QString &capture : request.captures)
        arguments << u"--capture"_s << capture;
    for (const Size size : request.sizes)
        arguments << u"--size"_s << u"%1x%2"_s.arg(size.width).arg(size.height);
    return arguments;
}

} // namespace

int main(int argc, char *argv[])
{
    qputenv("TZ", "Europe/Paris");
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    QQuickStyle::setStyle(u"Fusion"_s);
    QGuiApplication application(argc, argv);
    std::optional<Request> request = parse(QCoreApplication::arguments());
    if (!request)
        return 2;
    if (!request->out.mkpath(u"."_s)) {
        std::fprintf(stderr, "Dossier impossible à créer : %s\n", qUtf8Printable(request->out.path()));
        return 2;
    }
    // The controls take their palette once, when the first window appears: each appearance
    // is rendered by a run of its own. For the README, every capture is shot first, so that
    // the sample's journal holds them all.
    if (request->readme || request->appearances.size() > 1) {
        QTemporaryDir shots;
        const QString out = request->readme ? shots.path() : request->out.path();
        bool ok = true;
        for (const QString &appearance : std::as_const(request->appearances))
            ok = QProcess::execute(QCoreApplication::applicationFilePath(), oneAppearance(*request, out, appearance)) == 0
                && ok;
        if (request->readme)
            ok = ok && keepReadmePictures(QDir(shots.path()), *request);
        return ok ? 0 : 1;
    }
    return shootAppearance(*request, request->appearances.constFirst()) ? 0 : 1;
}
