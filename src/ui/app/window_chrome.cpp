#include "ui/app/window_chrome.h"

#include "sources/desktop_look.h"

WindowChrome::WindowChrome(const DesktopLook &desktop, QQuickWindow &window)
    : QObject(&window), m_desktop(desktop), m_window(&window)
{
}

bool WindowChrome::merge(const DesktopLook &desktop, QQuickWindow &window)
{
    if (!desktop.mergeTitleBar(window.winId()))
        return false;
    window.setProperty("chrome", QVariant::fromValue<QObject *>(new WindowChrome(desktop, window)));
    return true;
}

void WindowChrome::titleBarDoubleClicked() const
{
    if (m_window)
        m_desktop.titleBarDoubleClicked(m_window->winId());
}
