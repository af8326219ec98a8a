#pragma once

#include "common/test_main.h"

#include <QTemporaryDir>

// The model overrides are read once per process from the user's data folder. These test
// programs give the process a home folder of its own, so that no other run or user file
// can be read in its place.
#define QUILLON_TEST_MAIN_IN_FRESH_HOME(TestClass, prepareHome)                                                        \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        QTemporaryDir home;                                                                                            \
        qputenv("HOME", home.path().toLocal8Bit());                                                                    \
        pinTestEnvironment();                                                                                          \
        QCoreApplication app(argc, argv);                                                                              \
        prepareHome();                                                                                                 \
        TestClass test;                                                                                                \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }
