#include "ui_test_support.h"

#include "core/app_section.h"
#include "core/built_in_components.h"
#include "diagnostics/diagnostics_report.h"
#include "ui/symbols/symbol_provider.h"
#include "ui/symbols/symbol_table.h"

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

// What a symbol name looks like: lower-case words and digits joined by dots.
const QRegularExpression symbolShape(u"^[a-z][a-z0-9]*(\\.[a-z0-9]+)*$"_s);
const QRegularExpression literal(u"\"([^\"\\\\]*)\""_s);

QString sourceText(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(file.readAll());
}

// Removes parenthesised groups, so that arguments of calls are not taken for symbols.
QString withoutCalls(QString text)
{
    static const QRegularExpression group(u"\\([^()]*\\)"_s);
    for (qsizetype before = -1; before != text.size();) {
        before = text.size();
        text.remove(group);
    }
    return text;
}

void addLiterals(const QString &text, QSet<QString> &names)
{
    for (const QRegularExpressionMatch &match : literal.globalMatch(text)) {
        if (symbolShape.match(match.captured(1)).hasMatch())
            names.insert(match.captured(1));
    }
}

// Symbol names written in the C++ sources: values assigned to a `symbol`, and the values
// returned by (or tabled in) the functions that choose a symbol.
void collectFromCpp(const QString &text, QSet<QString> &names)
{
    static const QRegularExpression assignment(u"\\bsymbol\\s*=\\s*([^;]*);"_s);
    for (const QRegularExpressionMatch &match : assignment.globalMatch(text))
        addLiterals(withoutCalls(match.captured(1)), names);

    static const QRegularExpression chooser(u"\\n[^\\n]*\\bsymbol\\w*\\([^)]*\\)\\s*(const\\s*)?\\n\\{(.*?)\\n\\}"_s,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    static const QRegularExpression returned(u"return\\s+([^;]*);"_s);
    static const QRegularExpression pairValue(u"\\{\\s*u?\"[^\"]*\"(?:_s)?\\s*,\\s*(u?\"[^\"]*\"(?:_s)?)\\s*\\}"_s);
    for (const QRegularExpressionMatch &function : chooser.globalMatch(text)) {
        const QString body = function.captured(2);
        for (const QRegularExpressionMatch &match : returned.globalMatch(body))
            addLiterals(withoutCalls(match.captured(1)), names);
        for (const QRegularExpressionMatch &match : pairValue.globalMatch(body))
            addLiterals(match.captured(1), names);
    }
}

// Symbol names written in the QML files: literals given to `symbol`, `systemImage` or a
// SymbolImage's `name`, including both sides of a choice, and those of list entries.
void collectFromQml(const QString &text, QSet<QString> &names)
{
    static const QRegularExpression binding(u"\\b(?:symbol|systemImage|name)\\s*:\\s*([^\\n}]*)"_s);
    for (const QRegularExpressionMatch &match : binding.globalMatch(text))
        addLiterals(withoutCalls(match.captured(1)), names);
}

QSet<QString> namesInSources()
{
    QSet<QString> names;
    QDirIterator files(QStringLiteral(QUILLON_SOURCE_DIR), { u"*.cpp"_s, u"*.h"_s, u"*.qml"_s }, QDir::Files,
        QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString text = sourceText(path);
        if (path.endsWith(u".qml"_s))
            collectFromQml(text, names);
        else
            collectFromCpp(text, names);
    }
    return names;
}

QString withoutDrawing(const QSet<QString> &names)
{
    QStringList missing;
    for (const QString &name : names) {
        if (!SymbolTable::resourcePath(name))
            missing.append(name);
    }
    missing.sort();
    return missing.join(u", "_s);
}

} // namespace

class TestSymbols : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyMappedDrawingIsBundledAndDrawsSomething_data()
    {
        QTest::addColumn<QString>("name");
        for (const QString &name : SymbolTable::names())
            QTest::newRow(qPrintable(name)) << name;
    }

    void everyMappedDrawingIsBundledAndDrawsSomething()
    {
        QFETCH(QString, name);
        const std::optional<QString> path = SymbolTable::resourcePath(name);
        QVERIFY(path);
        QVERIFY2(QFile::exists(*path), qPrintable(*path));

        // Drawn in one colour: every covered pixel is the tint, and enough of them to be seen.
        const QColor tint(200, 40, 30);
        const QImage image = SymbolProvider::render(name, QSize(32, 32), tint).convertToFormat(QImage::Format_ARGB32);
        int covered = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor pixel = image.pixelColor(x, y);
                if (pixel.alpha() < 250)
                    continue;
                ++covered;
                QCOMPARE(pixel.rgb(), tint.rgb());
            }
        }
        QVERIFY2(covered >= 40, qPrintable(u"only %1 pixels drawn"_s.arg(covered)));
    }

    void theProviderReadsColourAndNameFromTheSource()
    {
        const QColor translucent = QColor::fromRgb(0, 0, 0, 140);
        const QString source = SymbolProvider::source(u"battery.100.bolt"_s, translucent);
        QCOMPARE(source, u"image://symbol/8c000000/battery.100.bolt"_s);

        SymbolProvider provider;
        QSize size;
        const QImage image
            = provider.requestImage(source.mid(QStringLiteral("image://symbol/").size()), &size, QSize(20, 20));
        QCOMPARE(size, QSize(20, 20));
        // The opacity of the colour carries over to the drawing.
        int maximumAlpha = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                maximumAlpha = qMax(maximumAlpha, qAlpha(image.pixel(x, y)));
        QVERIFY(maximumAlpha > 100 && maximumAlpha <= 141);
    }

    void aNameWithoutMappingDrawsNothing()
    {
        QTest::ignoreMessage(QtWarningMsg, "No drawing for the symbol \"sparkles\"");
        const QImage image = SymbolProvider::render(u"sparkles"_s, QSize(16, 16), Qt::black);
        QCOMPARE(image.size(), QSize(16, 16));
        QCOMPARE(image.pixelColor(8, 8).alpha(), 0);
    }

    void everySymbolWrittenInTheSourcesHasADrawing()
    {
        const QSet<QString> names = namesInSources();
        // Guards the scan itself: names written in each of the ways the sources use, and words
        // matched against reported types that are not symbols.
        for (const QString &expected :
            { u"cable.connector.horizontal"_s, u"hifispeaker"_s, u"antenna.radiowaves.left.and.right"_s, u"powerplug"_s,
                u"exclamationmark.triangle"_s, u"lock.shield"_s, u"memorychip"_s })
            QVERIFY2(names.contains(expected), qPrintable(expected));
        QVERIFY(!names.contains(u"headphone"_s));
        QVERIFY(!names.contains(u"hardware"_s));
        QCOMPARE(withoutDrawing(names), QString());
    }

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
        QCOMPARE(withoutDrawing(names), QString());
    }
};

QUILLON_UI_TEST_MAIN(TestSymbols)
#include "tst_symbols.moc"
