#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickWindow>

class DesktopLook;

// The title bar of a main window on a desktop that can merge it with the window's content
// (macOS): the content runs under it, the window's buttons sit over the top of the sidebar,
// the toolbar and the sidebar's top band move the window, and a double click on them does
// what the user set for title bars. The window reads it from its `chrome` property.
class WindowChrome : public QObject
{
    Q_OBJECT

public:
    // Merges the title bar of `window` and hands the window its chrome; false, and the
    // window left as it was, when the desktop cannot.
    static bool merge(const DesktopLook &desktop, QQuickWindow &window);

    Q_INVOKABLE void titleBarDoubleClicked() const;

private:
    WindowChrome(const DesktopLook &desktop, QQuickWindow &window);

    const DesktopLook &m_desktop;
    QPointer<QQuickWindow> m_window;
};
