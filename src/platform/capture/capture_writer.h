#pragma once

#include "sources/platform.h"

#include <QByteArray>
#include <QJsonValue>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>

#include <functional>
#include <optional>

// Records a capture folder (format 1) from any platform: the raw answers the collectors read,
// written so that replaying the folder gives them back unchanged. On a Mac this saves the
// machine; from a capture it saves a copy of what that capture answers.
namespace CaptureWriter {

struct Options
{
    // Seconds of live readings for live.json: one processor and one temperature reading per
    // second, five lid-angle reports per second. Zero leaves live.json out.
    int liveSeconds = 5;
    // Waits between two live readings; by default the thread sleeps.
    std::function<void(int milliseconds)> wait;
    // Who made the capture, named in its description.
    QString madeBy = QStringLiteral("quillon-bilan --save-capture");
};

struct Outcome
{
    QString error;     // empty when the folder was written
    QStringList notes; // answers that could not be recorded as they came, one French line each
};

// Writes the capture into `folderPath`, which must not exist yet or be empty. Nothing is
// left half-written on disk in a file: each file is written whole or not at all.
Outcome save(const Platform &platform, const QString &folderPath, const Options &options = {});

// What a capture records: the profiler's data types, the registry classes and names the
// collectors look up, and the kernel values they read.
const QStringList &profilerDataTypes();
const QStringList &registryClasses();
const QStringList &registryNames();
const QList<QByteArray> &kernelValueNames();

// A property value (see sources/property_values.h) as an XML property list, or nothing when
// libplist cannot write it. A value of no property-list kind inside an array or dictionary is
// left out; so is a date that the format cannot hold (before 1933 or after 2069). A character
// that XML cannot hold (a control character other than tab and line ends) becomes U+FFFD.
std::optional<QByteArray> propertyListXml(const QVariant &root);

// The kernel.json member for the raw bytes of a kernel value: a text, an integer, whole boot
// seconds, the swap object, or {"hex": "…"} when the bytes fit none of these. Reading it back
// with kernelBytes() gives the same values through Sysctl.
QJsonValue kernelJson(const QByteArray &name, const QByteArray &bytes);

// "Capture de ce Mac (MacBookPro18,3) du 2026-11-16, faite par …".
QString description(const std::optional<QString> &modelIdentifier, const QDateTime &capturedAt,
                    const QString &madeBy);

} // namespace CaptureWriter
