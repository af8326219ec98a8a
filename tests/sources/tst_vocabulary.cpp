#include "common/test_main.h"

#include "sources/vocabulary.h"

using namespace Qt::StringLiterals;

class TestVocabulary : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void humanize_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("wording");
        // Table words.
        QTest::newRow("display on, feminine") << u"spdisplays_on"_s << u"Activée"_s;
        QTest::newRow("display off, feminine") << u"spdisplays_off"_s << u"Désactivée"_s;
        QTest::newRow("attribute on, masculine") << u"attrib_on"_s << u"Activé"_s;
        QTest::newRow("attribute off, masculine") << u"attrib_off"_s << u"Désactivé"_s;
        QTest::newRow("activation lock on") << u"activation_lock_enabled"_s << u"Activé"_s;
        QTest::newRow("activation lock off") << u"activation_lock_disabled"_s << u"Désactivé"_s;
        QTest::newRow("built-in XDR from the table") << u"spdisplays_built-in-liquid-retina-xdr"_s
                                                     << u"Liquid Retina XDR intégré"_s;
        QTest::newRow("no devices connected") << u"receptacle_no_devices_connected"_s << u"Aucun appareil connecté"_s;
        QTest::newRow("audio default") << u"spaudio_default"_s << u"Par défaut"_s;
        QTest::newRow("audio USB, fixed") << u"coreaudio_device_type_usb"_s << u"USB"_s;
        QTest::newRow("audio unknown type") << u"coreaudio_device_type_unknown"_s << u"Autre"_s;
        QTest::newRow("S.M.A.R.T. verified") << u"Verified"_s << u"Vérifié"_s;
        QTest::newRow("yes") << u"yes"_s << u"Oui"_s;
        QTest::newRow("TRUE") << u"TRUE"_s << u"Oui"_s;
        QTest::newRow("ssd") << u"ssd"_s << u"SSD"_s;
        // Other spellings are not table words.
        QTest::newRow("Yes") << u"Yes"_s << u"Yes"_s;
        QTest::newRow("true") << u"true"_s << u"true"_s;
        QTest::newRow("SSD") << u"SSD"_s << u"SSD"_s;
        // The rule for unknown words of the profiler's prefixes.
        QTest::newRow("unknown built-in panel") << u"spdisplays_built-in-mini-led"_s << u"Built in mini led"_s;
        QTest::newRow("last part only") << u"spdisplays_supported_by_hardware"_s << u"Hardware"_s;
        QTest::newRow("dashes to spaces") << u"spusb_device-speed"_s << u"Device speed"_s;
        QTest::newRow("coreaudio prefix") << u"coreaudio_output"_s << u"Output"_s;
        QTest::newRow("ordinary name with the prefix") << u"spare_part"_s << u"Part"_s;
        QTest::newRow("accented first letter") << u"spx_état"_s << u"État"_s;
        QTest::newRow("full upper-casing") << u"spx_ßig"_s << u"SSig"_s;
        QTest::newRow("letter outside the basic plane") << u"spx_\U00010428x"_s << u"\U00010400x"_s;
        QTest::newRow("empty tail") << u"sp_"_s << u"sp_"_s;
        QTest::newRow("no known prefix") << u"Intel_HD"_s << u"Intel_HD"_s;
        QTest::newRow("prefix in another case") << u"SPdisplays_yes"_s << u"SPdisplays_yes"_s;
        QTest::newRow("no underscore") << u"spnone"_s << u"spnone"_s;
        QTest::newRow("empty") << u""_s << u""_s;
    }

    void humanize()
    {
        QFETCH(QString, code);
        const std::optional<QString> wording = Vocabulary::humanize(code);
        QVERIFY(wording);
        QTEST(*wording, "wording");
    }

    void absentStaysAbsent() { QVERIFY(!Vocabulary::humanize(std::nullopt)); }

    void thirtyFourWords() { QCOMPARE(Vocabulary::table().size(), 34); }
};

QUILLON_TEST_MAIN(TestVocabulary)
#include "tst_vocabulary.moc"
