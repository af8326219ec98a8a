#include "ui_test_support.h"

#include "core/app_section.h"
#include "core/built_in_components.h"
#include "diagnostics/diagnostics_report.h"
#include "ui/symbols/symbol_provider.h"
#include "ui/symbols/symbol_table.h"
#include "ui/theme/theme.h"

#include <QFile>
#include <QSet>

using namespace Qt::StringLiterals;

class TestSymbols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everySymbolTheRecordsGiveHasADrawing_data()
    {
        QTest::addColumn<QString>("capture");
        for (const QString &capture : { u"sample"_s, u"desktop-mac-studio"_s, u"profiler-failures"_s, u"worn-battery"_s,
                 u"intel-macbook-pro"_s, u"storage-mix"_s })
            QTest::newRow(qPrintable(capture)) << capture;
    }

    void everySymbolTheRecordsGiveHasADrawing()
    {
        QFETCH(QString, capture);
        AppState state(UiTest::capturePlatform(capture));
        bool finished = false;
        state.loadEverything(false, [&finished] { finished = true; });
        QTRY_VERIFY_WITH_TIMEOUT(finished, 10000);

        QSet<QString> names;
        for (AppSection section : AppSections::allCases())
            names.insert(AppSections::symbol(section));
        for (CheckStatus status : CheckStatuses::allCases())
            names.insert(CheckStatuses::symbol(status));
        for (const BuiltInComponents::Listed &listed : BuiltInComponents().listed())
            names.insert(listed.symbol);
        for (const QList<DeviceNode> &roots : state.inventory()) {
            for (const auto &[node, depth] : flattenedAll(roots))
                names.insert(node.symbol);
        }
        QVERIFY(state.report());
        for (const HardwareCheck &check : state.report()->checks)
            names.insert(check.symbol);
        // Each drawn in one colour: every covered pixel is the tint, and enough of them to be seen.
        QStringList missing;
        const QColor tint(200, 40, 30);
        for (const QString &name : std::as_const(names)) {
            const std::optional<QString> path = SymbolTable::resourcePath(name);
            const QImage image = SymbolProvider::render(name, QSize(32, 32), tint).convertToFormat(QImage::Format_ARGB32);
            int covered = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    covered += image.pixelColor(x, y).alpha() >= 250 && image.pixelColor(x, y).rgb() == tint.rgb();
            if (!path || !QFile::exists(*path) || covered < 40)
                missing.append(name);
        }
        QCOMPARE(missing, QStringList());
    }

    // Where the desktop draws a symbol itself, its drawing is used, centred and in the tint;
    // a name it lacks falls back to the bundled drawing.
    void desktopDrawingsFirst()
    {
        UiTest::StandInDesktop desktop;
        desktop.drawings = { u"cable.connector"_s };
        Theme::followDesktop(&desktop);
        const QImage own = SymbolProvider::render(u"cpu"_s, QSize(20, 16), Qt::red);
        const QImage drawn = SymbolProvider::render(u"cable.connector"_s, QSize(20, 16), Qt::red);
        Theme::followDesktop(nullptr);
        QCOMPARE(own, SymbolProvider::render(u"cpu"_s, QSize(20, 16), Qt::red));
        QCOMPARE(drawn.size(), QSize(20, 16));
        // A 16-pixel square in the middle of 20: two clear columns on each side.
        QCOMPARE(drawn.pixelColor(1, 8).alpha(), 0);
        QCOMPARE(drawn.pixelColor(2, 0), QColor(Qt::red));
        QCOMPARE(drawn.pixelColor(17, 15), QColor(Qt::red));
        QCOMPARE(drawn.pixelColor(18, 8).alpha(), 0);
    }
};

QUILLON_UI_TEST_MAIN(TestSymbols)
#include "tst_symbols.moc"
