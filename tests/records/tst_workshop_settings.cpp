#include "common/test_main.h"
#include "records/workshop_settings.h"

#include <QFile>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

// The workshop fields kept in a preferences file, and the report header drawn from them.
class TestWorkshopSettings : public QObject
{
    Q_OBJECT

private:
    QTemporaryDir m_folder;
    int m_fileNumber = 0;

    // A fresh preferences file for each test.
    QString newSettingsPath() { return m_folder.filePath(u"preferences-%1.ini"_s.arg(++m_fileNumber)); }

    static std::unique_ptr<QSettings> openSettings(const QString &path)
    {
        return std::make_unique<QSettings>(path, QSettings::IniFormat);
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_folder.isValid()); }

    void header_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("phone");
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("hasHeader");
        QTest::addColumn<QString>("expectedName");
        QTest::addColumn<QString>("expectedDetails"); // empty: no details

        const QString dot = u" \u00B7 "_s;
        QTest::newRow("all three empty") << QString() << QString() << QString() << false << QString() << QString();
        QTest::newRow("name only: no details") << u"Atelier du Port"_s << QString() << QString() << true
                                               << u"Atelier du Port"_s << QString();
        QTest::newRow("padded name and a phone")
            << u"  Atelier du Port "_s << u"01 23 45 67 89"_s << QString() << true << u"Atelier du Port"_s
            << u"01 23 45 67 89"_s;
        QTest::newRow("name of spaces only hides everything")
            << u"   "_s << u"01 23 45 67 89"_s << u"3 quai des Brumes"_s << false << QString() << QString();
        QTest::newRow("phone of spaces only: address alone, no separator")
            << u"Atelier"_s << u"    "_s << u" 3 quai des Brumes  "_s << true << u"Atelier"_s
            << u"3 quai des Brumes"_s;
        QTest::newRow("phone then address") << u"Atelier"_s << u" 01 23 45 67 89"_s << u"3 quai des Brumes\n"_s
                                            << true << u"Atelier"_s
                                            << u"01 23 45 67 89"_s + dot + u"3 quai des Brumes"_s;
        QTest::newRow("no-break spaces count as white space")
            << u"\u00A0Atelier\u202F"_s << u"\u00A001 23 45 67 89"_s << QString() << true << u"Atelier"_s
            << u"01 23 45 67 89"_s;
        QTest::newRow("line break inside the address is kept")
            << u"Atelier"_s << QString() << u"3 quai des Brumes\n76600 Le Havre"_s << true << u"Atelier"_s
            << u"3 quai des Brumes\n76600 Le Havre"_s;
    }

    void header()
    {
        QFETCH(QString, name);
        QFETCH(QString, phone);
        QFETCH(QString, address);
        QFETCH(bool, hasHeader);
        QFETCH(QString, expectedName);
        QFETCH(QString, expectedDetails);

        WorkshopSettings settings(openSettings(newSettingsPath()));
        settings.setWorkshopName(name);
        settings.setWorkshopPhone(phone);
        settings.setWorkshopAddress(address);

        const std::optional<WorkshopHeader> header = settings.header();
        QCOMPARE(header.has_value(), hasHeader);
        if (!header)
            return;
        QCOMPARE(header->name, expectedName);
        QCOMPARE(header->details.has_value(), !expectedDetails.isEmpty());
        QCOMPARE(header->details.value_or(QString()), expectedDetails);
    }

    // Values are kept exactly as typed, under the three keys, and read back on the next start.
    void valuesSurviveARestartUntrimmed()
    {
        const QString path = newSettingsPath();
        {
            WorkshopSettings settings(openSettings(path));
            QCOMPARE(settings.workshopAddress(), QString()); // first start
            settings.setWorkshopName(u"\nAtelier du Port "_s);
            settings.setWorkshopPhone(u"01 23 45 67 89"_s);
            settings.setWorkshopAddress(u"3 quai des Brumes"_s);
        }
        QSettings stored(path, QSettings::IniFormat);
        QCOMPARE(stored.value(u"workshop.name"_s).toString(), u"\nAtelier du Port "_s);
        QCOMPARE(stored.value(u"workshop.phone"_s).toString(), u"01 23 45 67 89"_s);
        QCOMPARE(stored.value(u"workshop.address"_s).toString(), u"3 quai des Brumes"_s);

        WorkshopSettings reopened(openSettings(path));
        QCOMPARE(reopened.workshopName(), u"\nAtelier du Port "_s);
        QCOMPARE(reopened.workshopPhone(), u"01 23 45 67 89"_s);
        QCOMPARE(reopened.workshopAddress(), u"3 quai des Brumes"_s);
        QCOMPARE(reopened.header()->name, u"Atelier du Port"_s);
    }

    // Each change is written at once, without waiting for the store to be closed.
    void eachChangeIsWrittenAtOnce()
    {
        const QString path = newSettingsPath();
        WorkshopSettings settings(openSettings(path));
        settings.setWorkshopPhone(u"0123456789"_s);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("0123456789"));
    }

    void changesArePublished()
    {
        WorkshopSettings settings(openSettings(newSettingsPath()));
        QSignalSpy nameSpy(&settings, &WorkshopSettings::workshopNameChanged);
        QSignalSpy phoneSpy(&settings, &WorkshopSettings::workshopPhoneChanged);
        QSignalSpy addressSpy(&settings, &WorkshopSettings::workshopAddressChanged);

        QVERIFY(settings.setProperty("workshopName", u"Atelier"_s));
        QVERIFY(settings.setProperty("workshopAddress", u"3 quai des Brumes"_s));
        QCOMPARE(nameSpy.count(), 1);
        QCOMPARE(phoneSpy.count(), 0);
        QCOMPARE(addressSpy.count(), 1);
        QCOMPARE(settings.property("workshopName").toString(), u"Atelier"_s);
    }
};

QUILLON_TEST_MAIN(TestWorkshopSettings)
#include "tst_workshop_settings.moc"
