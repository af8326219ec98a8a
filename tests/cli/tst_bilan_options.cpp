#include "common/test_main.h"

#include "cli/bilan_options.h"

using namespace Qt::StringLiterals;

class TestBilanOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void acceptedCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("capture");
        QTest::addColumn<QString>("output");
        QTest::addColumn<QString>("workshopName");
        QTest::addColumn<bool>("record");
        QTest::addColumn<bool>("journalCsv");

        QTest::newRow("nothing: this Mac to standard output") << QStringList() << QString() << QString() << QString()
                                                              << false << false;
        QTest::newRow("capture and output")
            << QStringList{u"--capture"_s, u"captures/sample"_s, u"--output"_s, u"bilan.txt"_s} << u"captures/sample"_s
            << u"bilan.txt"_s << QString() << false << false;
        QTest::newRow("value after an equals sign") << QStringList{u"--output=a b.txt"_s} << QString() << u"a b.txt"_s
                                                    << QString() << false << false;
        QTest::newRow("workshop name with spaces and flags")
            << QStringList{u"--record"_s, u"--workshop-name"_s, u"Atelier du Port"_s, u"--journal-csv"_s} << QString()
            << QString() << u"Atelier du Port"_s << true << true;
        QTest::newRow("empty workshop name clears the stored one")
            << QStringList{u"--workshop-name"_s, QString()} << QString() << QString() << QString() << false << false;
    }

    void acceptedCommandLines()
    {
        QFETCH(QStringList, arguments);
        const auto parsed = BilanCommandLine::parse(arguments);
        if (const QString *error = std::get_if<QString>(&parsed))
            QFAIL(qPrintable(*error));
        const BilanOptions options = std::get<BilanOptions>(parsed);
        QTEST(options.capture.value_or(QString()), "capture");
        QTEST(options.output.value_or(QString()), "output");
        QTEST(options.workshopName.value_or(QString()), "workshopName");
        QTEST(options.record, "record");
        QTEST(options.journalCsv, "journalCsv");
    }

    void refusedCommandLines_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QString>("named");

        QTest::newRow("unknown option") << QStringList{u"--verbose"_s} << u"--verbose"_s;
        QTest::newRow("stray argument") << QStringList{u"captures/sample"_s} << u"captures/sample"_s;
        QTest::newRow("missing value at the end") << QStringList{u"--capture"_s} << u"--capture"_s;
        QTest::newRow("option given twice") << QStringList{u"--output"_s, u"a"_s, u"--output"_s, u"b"_s}
                                            << u"--output"_s;
        QTest::newRow("empty output path") << QStringList{u"--output="_s} << u"--output"_s;
        QTest::newRow("flag with a value") << QStringList{u"--record=yes"_s} << u"--record"_s;
        QTest::newRow("save and replay at once")
            << QStringList{u"--capture"_s, u"x"_s, u"--save-capture"_s, u"y"_s} << u"--save-capture"_s;
        QTest::newRow("a search without the journal") << QStringList{u"--search"_s, u"C02"_s} << u"--journal-csv"_s;
        QTest::newRow("unknown level") << QStringList{u"--journal-csv"_s, u"--level"_s, u"rouge"_s} << u"--level"_s;
        QTest::newRow("date in French order") << QStringList{u"--journal-csv"_s, u"--from"_s, u"16/11/2026"_s}
                                              << u"16/11/2026"_s;
    }

    void refusedCommandLines()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QString, named);
        const auto parsed = BilanCommandLine::parse(arguments);
        QVERIFY(std::holds_alternative<QString>(parsed));
        const QString message = std::get<QString>(parsed);
        // One line that names what is wrong.
        QVERIFY2(message.contains(named), qPrintable(message));
        QVERIFY(!message.contains(u'\n'));
    }
};

QUILLON_TEST_MAIN(TestBilanOptions)
#include "tst_bilan_options.moc"
