#include "screens_bench.h"

#include "child_process.h"
#include "journal_bench.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

void copyFolder(const QString &from, const QString &to)
{
    QDirIterator files(from, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString target = to + path.mid(from.size());
        QDir().mkpath(QFileInfo(target).path());
        QFile::copy(path, target);
    }
}

// The sample Mac with `devices` USB devices on one bus, ten to a hub.
QString usbCapture(const QString &root, int devices)
{
    const QString folder = root + u"/usb-%1"_s.arg(devices);
    copyFolder(QStringLiteral(QUILLON_SAMPLE_CAPTURE_DIR), folder);
    QJsonArray hubs;
    for (int hub = 0; hub * 10 < devices; ++hub) {
        QJsonArray items;
        for (int i = hub * 10; i < std::min(devices, hub * 10 + 10); ++i) {
            items.append(QJsonObject{{u"_name"_s, u"Clé USB %1"_s.arg(i)}, {u"manufacturer"_s, u"SanDisk"_s},
                                     {u"device_speed"_s, u"super_speed"_s}, {u"product_id"_s, u"0x5581"_s},
                                     {u"vendor_id"_s, u"0x0781"_s}, {u"serial_num"_s, u"4C53%1"_s.arg(i, 6, 10, QChar(u'0'))},
                                     {u"location_id"_s, u"0x%1"_s.arg(0x01100000 + i, 8, 16, QChar(u'0'))}});
        }
        hubs.append(QJsonObject{{u"_name"_s, u"USB3.1 Hub %1"_s.arg(hub)}, {u"manufacturer"_s, u"VIA Labs, Inc."_s},
                                {u"_items"_s, items}});
    }
    const QJsonObject answer{{u"SPUSBDataType"_s,
                              QJsonArray{QJsonObject{{u"_name"_s, u"USB31Bus"_s},
                                                     {u"host_controller"_s, u"AppleT8103USBXHCI"_s},
                                                     {u"_items"_s, hubs}}}}};
    QFile file(folder + u"/profiler/SPUSBDataType.json"_s);
    if (file.open(QIODevice::WriteOnly))
        file.write(QJsonDocument(answer).toJson(QJsonDocument::Compact));
    return folder;
}

struct Measured
{
    Samples screen;
    Samples updated;
    Samples firstFrame;
    Samples memory;
};

// `runs` fresh applications over the capture and a copy of the journal, on one screen.
Measured measure(const QString &probe, const QString &screen, const QString &capture, const QString &journal, int runs)
{
    Measured measured;
    for (int i = 0; i < runs; ++i) {
        QTemporaryDir home;
        const QString journalCopy = home.filePath(u"journal"_s);
        if (!journal.isEmpty())
            copyFolder(journal, journalCopy);
        QDir(home.path()).mkdir(u"runtime"_s);
        QFile::setPermissions(home.filePath(u"runtime"_s), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        const QHash<QByteArray, QByteArray> environment{
            {"XDG_RUNTIME_DIR", home.filePath(u"runtime"_s).toLocal8Bit()},
            {"XDG_CONFIG_HOME", home.filePath(u"config"_s).toLocal8Bit()},
            {"XDG_DATA_HOME", home.filePath(u"data"_s).toLocal8Bit()},
            {"QT_QPA_PLATFORM", "offscreen"},
            {"QUILLON_CAPTURE", capture.toLocal8Bit()},
            {"QUILLON_JOURNAL_DIR", journalCopy.toLocal8Bit()},
        };
        const ChildRun run = runChild(probe, {u"--screen"_s, screen}, environment, true);
        QHash<QString, double> readings;
        for (const QByteArray &line : run.standardOutput.split('\n')) {
            const QList<QByteArray> parts = line.trimmed().split(' ');
            if (parts.size() == 2)
                readings.insert(QString::fromLatin1(parts.at(0)), parts.at(1).toDouble());
        }
        if (run.exitStatus != 0 || !readings.contains(u"screenMs"_s)) {
            std::fprintf(stderr, "quillon-bench : l’écran %s n’a pas pu être mesuré (sortie %d)\n", qPrintable(screen),
                         run.exitStatus);
            continue;
        }
        measured.screen.values.append(readings.value(u"screenMs"_s));
        measured.updated.values.append(readings.value(u"updatedMs"_s));
        measured.firstFrame.values.append(readings.value(u"firstFrameMs"_s));
        measured.memory.values.append(run.peakResidentMB);
    }
    return measured;
}

} // namespace

void benchScreens(BenchTable &table, const QString &probeProgram, const Platform &platform, int runs)
{
    QTemporaryDir scratch;
    const QString journal500 = scratch.filePath(u"journal-500"_s);
    const QString journal10000 = scratch.filePath(u"journal-10000"_s);
    QDir().mkpath(journal500);
    QDir().mkpath(journal10000);
    writeJournal(journal500, platform, 500);
    writeJournal(journal10000, platform, 10000);
    const QString usb100 = usbCapture(scratch.path(), 100);
    const QString usb1000 = usbCapture(scratch.path(), 1000);
    const QString sample = QStringLiteral(QUILLON_SAMPLE_CAPTURE_DIR);

    table.heading(u"6. Écrans aux longues listes, application neuve à chaque essai (offscreen)"_s);
    const Measured journalSmall = measure(probeProgram, u"journal"_s, sample, journal500, runs);
    table.add({u"écran Journal, 500 entrées : demande → image"_s, journalSmall.screen, u"ms"_s, 100.0});
    table.add({u"  mémoire résidente maximale"_s, journalSmall.memory, u"Mo"_s, 100.0});
    const Measured journalLarge = measure(probeProgram, u"journal"_s, sample, journal10000, runs);
    table.add({u"écran Journal, 10 000 entrées : demande → image"_s, journalLarge.screen, u"ms"_s});
    table.add({u"  mémoire résidente maximale"_s, journalLarge.memory, u"Mo"_s});
    table.add({u"1re image de la fenêtre, journal de 10 000 entrées"_s, journalLarge.firstFrame, u"ms"_s, 200.0});
    const Measured usbSmall = measure(probeProgram, u"usb"_s, usb100, {}, runs);
    table.add({u"section USB, 100 appareils : demande → image"_s, usbSmall.screen, u"ms"_s});
    table.add({u"  mémoire résidente maximale"_s, usbSmall.memory, u"Mo"_s});
    const Measured usbLarge = measure(probeProgram, u"usb"_s, usb1000, {}, runs);
    table.add({u"section USB, 1 000 appareils : demande → image"_s, usbLarge.screen, u"ms"_s, 150.0});
    table.add({u"  mémoire résidente maximale"_s, usbLarge.memory, u"Mo"_s, 120.0});
    const Measured refresh = measure(probeProgram, u"refresh"_s, usb1000, {}, runs);
    table.add({u"⌘R, section USB inchangée de 1 000 appareils : demande → mise à jour faite"_s, refresh.updated,
               u"ms"_s, 20.0, u"relecture de la réponse, analyse, verdicts refaits, aucune carte refaite"_s});
    table.add({u"  demande → image suivante"_s, refresh.screen, u"ms"_s, std::nullopt,
               u"plus l’attente de l’image suivante (environ 16 ms hors écran)"_s});
    table.add({u"  mémoire résidente maximale"_s, refresh.memory, u"Mo"_s});
}
