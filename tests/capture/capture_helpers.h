#pragma once

#include "core/formatting.h"
#include "platform/capture/capture_folder.h"
#include "sources/property_values.h"

#include <QDir>
#include <QTemporaryDir>

// A capture folder opened, or the test program stopped.
inline std::shared_ptr<CaptureFolder> openCapture(const QString &path)
{
    auto opened = CaptureFolder::open(path);
    if (auto *error = std::get_if<QString>(&opened))
        qFatal("%s", qPrintable(*error));
    return std::get<std::shared_ptr<CaptureFolder>>(opened);
}

// A capture folder written for one test, removed afterwards.
struct Capture
{
    QTemporaryDir dir;
    explicit Capture(const QByteArray &header
        = R"({"format": 1, "capturedAt": "2026-11-16T09:05:07+01:00", "description": "Atelier"})")
    {
        write(QStringLiteral("capture.json"), header);
    }
    // Writes one file; a null byte array writes none.
    void write(const QString &relativePath, const QByteArray &bytes) const
    {
        if (bytes.isNull())
            return;
        QDir().mkpath(QFileInfo(dir.filePath(relativePath)).path());
        QFile file(dir.filePath(relativePath));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write a capture file");
    }
    std::shared_ptr<CaptureFolder> open() const { return openCapture(dir.path()); }
};

// A property value in words, its kind kept apart so that 1, 1.0 and true differ:
// 1, 1.0, true, "text", <00ff>, @2026-11-16T08:05:07Z (Z only in UTC), [a, b], {key: value}.
inline QString propertyText(const QVariant &value)
{
    QStringList parts;
    switch (PropertyValues::kindOf(value)) {
    case PropertyValues::Kind::real:
        parts << Format::shortestNumber(value.toDouble());
        return parts[0].contains(u'.') || parts[0].contains(u'e') ? parts[0] : parts[0] + QStringLiteral(".0");
    case PropertyValues::Kind::text:
        return u'"' + value.toString() + u'"';
    case PropertyValues::Kind::data:
        return u'<' + QString::fromLatin1(value.toByteArray().toHex()) + u'>';
    case PropertyValues::Kind::date:
        return u'@' + value.toDateTime().toString(Qt::ISODate);
    case PropertyValues::Kind::array:
        for (const QVariant &element : value.toList())
            parts << propertyText(element);
        return u'[' + parts.join(QStringLiteral(", ")) + u']';
    case PropertyValues::Kind::dictionary:
        for (auto [key, element] : value.toMap().asKeyValueRange())
            parts << key + QStringLiteral(": ") + propertyText(element);
        return u'{' + parts.join(QStringLiteral(", ")) + u'}';
    default:
        return value.toString(); // booleans, integers
    }
}

// Registry services in words, in their order.
inline QString propertyText(const QList<PropertyDictionary> &services)
{
    return propertyText(QVariantList(services.begin(), services.end()));
}
