#include "ui_test_support.h"

#include "live/battery_monitor.h"
#include "live/cpu_monitor.h"
#include "live/lid_angle_monitor.h"
#include "records/history.h"
#include "records/workshop_settings.h"
#include "ui/export/report_export.h"

#include <QFile>
#include <QStringDecoder>

using namespace Qt::StringLiterals;
using UiTest::waitForFullLoad;

namespace {

bool allDataSectionsCached(const AppState &state)
{
    for (AppSection section : AppSections::dataSections()) {
        if (!state.isCached(section))
            return false;
    }
    return true;
}

QString readUtf8(const QString &path, bool *valid)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringDecoder decoder(QStringDecoder::Utf8);
    const QString text = decoder(file.readAll());
    *valid = !decoder.hasError();
    return text;
}

} // namespace

class TestMainWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstAppearanceLoadsEverythingAndRecordsTheMachine()
    {
        UiTest::App app(u"sample"_s);
        AppState &state = app.app->state();
        MainWindowController &window = app.app->mainWindow();
        QVERIFY(!window.selection());
        QCOMPARE(window.current()->section(), AppSection::overview);
        QVERIFY(!state.isCached(AppSection::hardware));

        window.appear();
        // The ten data sections load side by side from the first appearance on.
        QCOMPARE(state.loading().size(), 10);
        QVERIFY(window.isRefreshing());
        QVERIFY(waitForFullLoad(state));
        QVERIFY(allDataSectionsCached(state));
        QVERIFY(state.report());
        QVERIFY(!window.isRefreshing());
        QCOMPARE(app.app->history().count(), 1);
        QCOMPARE(app.app->history().entries().first().modelName, u"MacBook Pro"_s);
    }

    void monitorsRunOnlyWhileTheWindowShowsASectionThatNeedsThem()
    {
        UiTest::App app(u"sample"_s);
        MainWindowController &window = app.app->mainWindow();
        const auto running = [&app] {
            return QList<bool> { app.app->lidAngleMonitor().isRunning(), app.app->processorMonitor().isRunning(),
                app.app->batteryMonitor().isRunning() };
        };
        const QList<bool> all { true, true, true }, none { false, false, false };

        window.setSelection(AppSection::hardware);
        QCOMPARE(running(), none); // nothing before the window appears
        window.appear();
        QCOMPARE(running(), all);
        window.setSelection(AppSection::battery);
        QCOMPARE(running(), (QList<bool> { false, true, true }));
        window.setSelection(AppSection::usb);
        QCOMPARE(running(), none);
        window.setSelection(std::nullopt); // back to the overview
        QCOMPARE(running(), all);
        window.disappear();
        QCOMPARE(running(), none);
        QVERIFY(waitForFullLoad(app.app->state()) || allDataSectionsCached(app.app->state()));
    }

    void aFailedSectionShowsItsFailureRatherThanEmptiness_data()
    {
        QTest::addColumn<QString>("section");
        QTest::newRow("usb: the tool failed") << u"usb"_s;
    }

    void aFailedSectionShowsItsFailureRatherThanEmptiness()
    {
        QFETCH(QString, section);
        UiTest::App app(u"profiler-failures"_s);
        MainWindowController &window = app.app->mainWindow();
        window.appear();
        QVERIFY(waitForFullLoad(app.app->state()));

        window.setSelectionRawValue(section);
        SectionState *state = window.current();
        QCOMPARE(state->sectionRawValue(), section);
        // A failed section is not cached: selecting it loads it again, and the old message
        // gives way to the loading state at once.
        QVERIFY(state->isLoading());
        QVERIFY(state->failureText().isEmpty());
        QTRY_VERIFY_WITH_TIMEOUT(!state->isLoading(), 10000);
        QVERIFY(state->isEmpty());
        QVERIFY(!state->failureText().isEmpty());
        // Sections that answered show their devices.
        QVERIFY(window.section(AppSection::displays)->devices()->count() > 0);
        QVERIFY(window.section(AppSection::displays)->failureText().isEmpty());
    }

    void exportLoadsEverythingFirstThenCancelsOrWrites()
    {
        UiTest::App app(u"sample"_s);
        AppState &state = app.app->state();
        MainWindowController &window = app.app->mainWindow();
        app.app->workshop().setWorkshopName(u"  Atelier du Port "_s);
        QStringList revealed;
        window.setFileRevealer([&revealed](const QString &path) { revealed << path; });
        QSignalSpy asked(&window, &MainWindowController::saveRequested);
        QSignalSpy failures(&window, &MainWindowController::exportFailed);

        // Right after start: everything loads before a file is asked for.
        window.startExport();
        QVERIFY(window.isExporting());
        QVERIFY(!allDataSectionsCached(state));
        QVERIFY(asked.wait(10000));
        QVERIFY(allDataSectionsCached(state));
        QVERIFY(state.report());
        // The model name and the capture's date, not today's.
        QCOMPARE(asked.first().first().toUrl().fileName(), u"Bilan-MacBook-Pro-2026-11-16.pdf"_s);

        // Cancelling writes nothing, and a second export can start.
        window.cancelExport();
        window.startExport();
        QTRY_COMPARE_WITH_TIMEOUT(asked.count(), 2, 10000);

        const QString path = app.folder.filePath(u"bilan.txt"_s);
        window.finishExport(QUrl::fromLocalFile(path));
        QVERIFY(!window.isExporting());
        QCOMPARE(failures.count(), 0);
        QCOMPARE(revealed, QStringList { path });
        bool validUtf8 = false;
        const QString text = readUtf8(path, &validUtf8);
        QVERIFY(validUtf8);
        QVERIFY(text.contains(u"ATELIER DU PORT"_s));
        // 08:05:07 UTC is 09:05 in Paris.
        QVERIFY(text.contains(u"Établi le 16 novembre 2026 à 09:05"_s));

        // A file that cannot be written: the failure with the system's words, nothing shown.
        window.startExport();
        QTRY_COMPARE_WITH_TIMEOUT(asked.count(), 3, 10000);
        window.finishExport(QUrl::fromLocalFile(app.folder.filePath(u"absent/bilan.txt"_s)));
        QCOMPARE(failures.count(), 1);
        QVERIFY(!failures.first().first().toString().isEmpty());
        QCOMPARE(revealed.size(), 1);
        QVERIFY(!window.isExporting());
    }

};

QUILLON_UI_TEST_MAIN(TestMainWindow)
#include "tst_main_window.moc"
