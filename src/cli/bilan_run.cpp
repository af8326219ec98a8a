#include "cli/bilan_run.h"

#include "cli/interruption.h"
#include "cli/live_readings.h"
#include "collectors/app_info.h"
#include "collectors/battery_service.h"
#include "platform/capture/capture_writer.h"
#include "platform/factory/platform_factory.h"
#include "records/history.h"
#include "records/visit_changes.h"
#include "records/report_builder.h"
#ifdef QUILLON_HAS_PDF
#include "records/report_pdf.h"
#endif
#include "records/workshop_settings.h"
#include "state/app_state.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::StringLiterals;

namespace {

constexpr int exitSuccess = 0;
constexpr int exitWriteFailed = 1;
constexpr int exitBadInput = 2;
constexpr int exitIncomplete = 3;

int fail(QTextStream &errors, int status, const QString &message)
{
    errors << u"quillon-bilan : "_s << message << Qt::endl;
    return status;
}

// The stored workshop fields, each replaced by its command-line value when one is given;
// nothing is written back to the preferences.
std::optional<WorkshopHeader> workshopFor(const BilanOptions &options)
{
    WorkshopSettings stored;
    return workshopHeader(options.workshopName.value_or(stored.workshopName()),
                          options.workshopPhone.value_or(stored.workshopPhone()),
                          options.workshopAddress.value_or(stored.workshopAddress()));
}

// The full load of the application, waited for here.
void loadEverything(AppState &state)
{
    QEventLoop loop;
    bool finished = false;
    state.loadEverything(false, [&] {
        finished = true;
        loop.quit();
    });
    if (!finished)
        loop.exec();
}

ReportOutline reportOutline(const AppState &state, const LiveValues &live, const BilanOptions &options)
{
    const Platform &platform = state.platform();
    ReportContents contents;
    contents.hardware = state.hardware();
    contents.battery = state.battery();
    contents.snapshot = BatteryService::liveSnapshot(platform);
    contents.volumes = state.volumes();
    contents.inventory = state.inventory();
    contents.report = state.report();
    contents.live = live;
    contents.workshop = workshopFor(options);
    const QDateTime now = platform.clock->now();
    // The journal is read, never made, for the changes since this Mac's previous visit.
    const QString journal = History::defaultDirectory() + u"/journal.sqlite"_s;
    if (contents.hardware && contents.report && !History::defaultDirectory().isEmpty() && QFileInfo::exists(journal)) {
        const HistoryEntry current
            = History::entryFor(*contents.hardware, contents.battery, contents.volumes, *contents.report, now);
        if (const auto previous = VisitChanges::previousVisit(JournalStore::readEntries(journal), current))
            contents.sinceLastVisit = VisitChanges::since(*previous, current);
    }
    return ReportBuilder::outline(contents, ReportStamp::ofThisApplication(platform.clock->now()));
}

std::optional<QString> writeAtomically(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return file.errorString();
    // The report holds the serial number: readable by its owner only, from the first byte on.
    file.setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    if (file.write(bytes) != bytes.size() || !file.commit())
        return file.errorString();
    return std::nullopt;
}

bool wantsPdf(const BilanOptions &options)
{
    return options.output && options.output->endsWith(u".pdf"_s, Qt::CaseInsensitive);
}

// The report in the form its file name asks for: a PDF for ".pdf", else the text.
std::optional<QString> writeReport(const ReportOutline &outline, const BilanOptions &options)
{
    if (!wantsPdf(options))
        return writeAtomically(*options.output, ReportBuilder::build(outline).toUtf8());
#ifdef QUILLON_HAS_PDF
    const QString failure = ReportPdf::write(outline, *options.output);
    return failure.isEmpty() ? std::nullopt : std::optional(failure);
#else
    return u"cette construction de quillon-bilan n’écrit pas de PDF"_s;
#endif
}

} // namespace

int runBilan(const BilanOptions &options, QTextStream &output, QTextStream &errors)
{
    if (options.help) {
        output << BilanCommandLine::helpText();
        return exitSuccess;
    }
    if (options.version) {
        output << u"quillon-bilan "_s << AppInfo::versionLabel() << Qt::endl;
        return exitSuccess;
    }
    if (options.saveCapture && !PlatformFactory::runsOnMac())
        return fail(errors, exitBadInput, u"--save-capture n’est possible que sur un Mac."_s);

    auto opened = PlatformFactory::open(options.capture);
    if (const QString *error = std::get_if<QString>(&opened))
        return fail(errors, exitBadInput, *error);
    return runBilan(options, std::get<Platform>(opened), output, errors);
}

int runBilan(const BilanOptions &options, const Platform &platform, QTextStream &output, QTextStream &errors)
{
    // Ctrl-C or SIGTERM ends the profiler runs in flight, so the program ends at once and
    // leaves no tool running; nothing is printed, recorded or written then.
    Interruption interruption([&platform](int) {
        if (platform.profiler)
            platform.profiler->cancelAll();
    });
    const auto interrupted = [&] {
        return fail(errors, Interruption::exitStatus(interruption.signalNumber()),
                    u"interrompu, les relevés en cours sont arrêtés."_s);
    };

    if (options.saveCapture) {
        const CaptureWriter::Outcome saved = CaptureWriter::save(platform, *options.saveCapture);
        if (interruption.signalNumber() != 0)
            return interrupted();
        for (const QString &note : saved.notes)
            errors << u"quillon-bilan : attention : "_s << note << Qt::endl;
        if (!saved.error.isEmpty())
            return fail(errors, exitWriteFailed, saved.error);
        output << u"Capture enregistrée dans « %1 »."_s.arg(*options.saveCapture) << Qt::endl;
        return exitSuccess;
    }

    // With only --journal-csv, the journal is printed as it stands.
    const bool wantsReport = !options.journalCsv || options.output || options.record;
    std::optional<ReportOutline> report;
    AppState state(platform);
    if (wantsReport) {
        LiveReadings readings(platform);
        loadEverything(state);
        if (interruption.signalNumber() != 0)
            return interrupted();
        const LiveValues live = readings.finish();
        for (const QString &problem : PlatformFactory::captureProblems(platform))
            errors << u"quillon-bilan : attention : "_s << problem << Qt::endl;
        report = reportOutline(state, live, options);
    }

    // Every section that could not be read is said, and makes the run incomplete.
    int status = exitSuccess;
    if (wantsReport) {
        for (AppSection section : AppSections::dataSections()) {
            if (const std::optional<QString> failure = state.failure(section)) {
                errors << u"quillon-bilan : Lecture impossible : %1 — %2"_s.arg(AppSections::title(section), *failure)
                       << Qt::endl;
                status = exitIncomplete;
            }
        }
    }

    if (options.record || options.journalCsv) {
        History history(platform.clock);
        for (const QString &note : history.notes())
            errors << u"quillon-bilan : journal : "_s << note << Qt::endl;
        if (options.record && !state.hardware()) {
            errors << u"quillon-bilan : rien n’est noté au journal : la fiche matérielle de ce Mac n’a pas pu être lue."_s
                   << Qt::endl;
            status = exitIncomplete;
        } else if (options.record && !history.record(state.hardware(), state.battery(), state.volumes(), state.report())) {
            errors << u"quillon-bilan : "_s << history.problem() << Qt::endl;
            status = exitIncomplete;
        }
        if (options.journalCsv && !history.problem().isEmpty() && !options.record)
            errors << u"quillon-bilan : "_s << history.problem() << Qt::endl;
        if (options.journalCsv) {
            history.search(options.search.value_or(QString()), options.level.value_or(QString()),
                           options.from.value_or(QString()), options.to.value_or(QString()));
            output << history.csv();
        }
    }

    if (report && options.output) {
        if (const auto error = writeReport(*report, options))
            return fail(errors, exitWriteFailed, u"écriture impossible de « %1 » : %2"_s.arg(*options.output, *error));
    } else if (report && !options.journalCsv) {
        output << ReportBuilder::build(*report);
    }
    output.flush();
    return status;
}
