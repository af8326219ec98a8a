#pragma once

#include <QCoreApplication>
#include <QLocale>
#include <QStandardPaths>
#include <QTest>

#include <ctime>

// Every test runs in French (France) and in the Paris time zone, the setting the
// formatting rules are written for, and writes its files in Qt's test locations.
inline void pinTestEnvironment()
{
    qputenv("TZ", "Europe/Paris");
    tzset();
    QLocale::setDefault(QLocale(QLocale::French, QLocale::France));
    QStandardPaths::setTestModeEnabled(true);
}

#define QUILLON_TEST_MAIN(TestClass)                                                               \
    int main(int argc, char *argv[])                                                               \
    {                                                                                              \
        pinTestEnvironment();                                                                      \
        QCoreApplication app(argc, argv);                                                          \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }
