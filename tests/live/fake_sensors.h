#pragma once

#include "platform/capture/capture_platform.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>

// A capture folder holding its header and, when given, live.json: a Mac whose sensors replay
// the readings written by the test, in a loop.
struct LiveCapture
{
    QTemporaryDir dir;
    std::shared_ptr<CaptureFolder> folder;
    Platform platform;

    explicit LiveCapture(const std::optional<QByteArray> &liveJson)
    {
        const auto write = [this](const char *name, const QByteArray &bytes) {
            QFile file(dir.filePath(QString::fromLatin1(name)));
            return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
        };
        write("capture.json", R"({"format": 1, "capturedAt": "2026-11-16T08:05:07Z"})");
        if (liveJson)
            write("live.json", *liveJson);
        folder = std::get<std::shared_ptr<CaptureFolder>>(CaptureFolder::open(dir.path()));
        platform = makeCapturePlatform(folder);
    }
};

using Products = QList<std::optional<QString>>;
using Readings = QList<std::optional<double>>;

// Services named `products`, whose temperature events read `readings`, one per service.
class Services final : public TemperatureEventSource
{
public:
    Services(Products products, Readings readings) : m_products(std::move(products)), m_readings(std::move(readings))
    {
    }

    Products serviceProducts() const override { return m_products; }
    Readings temperatures(const QList<qsizetype> &serviceIndices) override
    {
        Readings readings;
        for (const qsizetype index : serviceIndices)
            readings.append(m_readings.value(index));
        return readings;
    }

private:
    Products m_products;
    Readings m_readings;
};

// The same factory, counting in `made` the readers it makes.
template <typename Factory>
Factory counted(const Factory &factory, std::atomic<int> &made)
{
    return [factory, &made] {
        ++made;
        return factory();
    };
}

// A reading as the tests write it: the value's text, or "-" for none.
inline QString text(const auto &reading)
{
    return reading ? QVariant::fromValue(*reading).toString() : QStringLiteral("-");
}

// The texts of what `read` gives each time `object` emits `signal`, added to `log`.
template <typename Object, typename Signal, typename Read>
std::shared_ptr<QStringList> logOf(Object &object, Signal signal, Read read,
                                   std::shared_ptr<QStringList> log = std::make_shared<QStringList>())
{
    QObject::connect(&object, signal, [log, &object, read] { *log << text(std::invoke(read, object)); });
    return log;
}

// Waits until the monitor's thread has done what it was asked, then delivers what it
// published to this thread; twice, for a give-up that stops the timer from here.
template <typename Monitor>
void settle(Monitor &monitor)
{
    for (int round = 0; round < 2; ++round) {
        monitor.waitForQueue();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::MetaCall);
    }
}
