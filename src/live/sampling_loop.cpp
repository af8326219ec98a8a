#include "live/sampling_loop.h"

#include <QTimer>

using namespace Qt::StringLiterals;

QString monitorThreadLabel(const QString &name)
{
    return u"fr.quillon.Quillon."_s + name;
}

SamplingLoop::SamplingLoop(const QString &label, std::chrono::milliseconds interval, std::function<void()> tick)
    : m_context(new QObject), m_interval(interval), m_tick(std::move(tick))
{
    m_thread.setObjectName(label);
    m_context->moveToThread(&m_thread);
    // The context and its timer are deleted on their own thread, once its event loop ends.
    QObject::connect(&m_thread, &QThread::finished, m_context, &QObject::deleteLater);
    m_thread.start();
}

SamplingLoop::~SamplingLoop()
{
    shutdown();
}

void SamplingLoop::start()
{
    if (m_running)
        return;
    m_running = true;
    post([this] { createTimer(); });
}

void SamplingLoop::stop()
{
    m_running = false;
    post([this] { dropTimer(); });
}

void SamplingLoop::post(std::function<void()> work)
{
    if (m_thread.isRunning())
        QMetaObject::invokeMethod(m_context, std::move(work), Qt::QueuedConnection);
}

void SamplingLoop::tickNow()
{
    post([this] { m_tick(); });
}

void SamplingLoop::waitForQueue()
{
    if (m_thread.isRunning())
        QMetaObject::invokeMethod(m_context, [] {}, Qt::BlockingQueuedConnection);
}

void SamplingLoop::shutdown()
{
    if (!m_thread.isRunning())
        return;
    m_running = false;
    m_thread.quit();
    m_thread.wait();
}

void SamplingLoop::createTimer()
{
    dropTimer();
    m_timer = new QTimer(m_context);
    m_timer->setTimerType(Qt::PreciseTimer);
    m_timer->setInterval(m_interval);
    QObject::connect(m_timer, &QTimer::timeout, m_context, [this] { m_tick(); });
    m_timer->start();
    m_tick(); // the first firing is immediate
}

void SamplingLoop::dropTimer()
{
    delete m_timer;
    m_timer = nullptr;
}
