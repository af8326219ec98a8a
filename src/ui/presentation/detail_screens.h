#pragma once

#include "ui/models/journal_list_model.h"

#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

class AppState;
class CPUMonitor;
class History;
class LidAngleMonitor;
class MainWindowController;

// What the hardware screen draws: the rows and bars of the live processor card, and the
// built-in components with their state texts and rows, following the processor and
// lid-angle monitors.
class HardwareScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    // The main window's controller (its monitors and its records).
    Q_PROPERTY(QObject *controller READ controller WRITE setController NOTIFY controllerChanged)
    // "Charge globale" and "Température du die" as label/value maps.
    Q_PROPERTY(QVariantList processorRows READ processorRows NOTIFY processorChanged)
    // "die 52 °C"; empty while the temperature is unknown.
    Q_PROPERTY(QString processorAccessory READ processorAccessory NOTIFY processorChanged)
    // One map per core, in core order: "number" (from 1), "opacity", "height".
    Q_PROPERTY(QVariantList coreBars READ coreBars NOTIFY processorChanged)
    // The icon of the machine sheet: a laptop for a portable Mac, else a desktop.
    Q_PROPERTY(QString sheetSymbol READ sheetSymbol NOTIFY componentsChanged)
    // "{count} interfaces de capteurs".
    Q_PROPERTY(QString componentsAccessory READ componentsAccessory NOTIFY componentsChanged)
    // One map per built-in component, in list order: "title", "symbol", "present",
    // "stateText", "rows".
    Q_PROPERTY(QVariantList components READ components NOTIFY componentsChanged)

public:
    explicit HardwareScreen(QObject *parent = nullptr);

    QObject *controller() const { return m_controller; }
    void setController(QObject *controller);

    QVariantList processorRows() const;
    QString processorAccessory() const;
    QVariantList coreBars() const;
    QString sheetSymbol() const;
    QString componentsAccessory() const;
    QVariantList components() const;

Q_SIGNALS:
    void controllerChanged();
    void processorChanged();
    void componentsChanged();

private:
    QPointer<QObject> m_controller;
    // The application state behind the controller; it outlives the screens.
    const AppState *m_state = nullptr;
    QPointer<CPUMonitor> m_processor;
    QPointer<LidAngleMonitor> m_lidAngle;
};

// What the storage screen draws: one map per volume, in the state's order, with its
// header, capacity, usage figures, tint, legend and rows.
class StorageScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    // The main window's controller (its records).
    Q_PROPERTY(QObject *controller READ controller WRITE setController NOTIFY controllerChanged)
    // Maps with "name", "symbol", "badge", "totalValue", "totalUnit", "percentText",
    // "tintRole", "usedFraction", "usedText", "freeText" and "rows".
    Q_PROPERTY(QVariantList volumes READ volumes NOTIFY volumesChanged)

public:
    explicit StorageScreen(QObject *parent = nullptr);

    QObject *controller() const { return m_controller; }
    void setController(QObject *controller);
    QVariantList volumes() const;

    // The gauge bar's width on a track of `trackWidth` points.
    Q_INVOKABLE double gaugeBarWidth(double trackWidth, double usedFraction) const;

Q_SIGNALS:
    void controllerChanged();
    void volumesChanged();

private:
    QPointer<QObject> m_controller;
    const AppState *m_state = nullptr;
};

// What the journal screen draws beside the journal's own roles: the count line, and for
// one entry its rows, icon and headline colour.
class JournalScreen : public QObject
{
    Q_OBJECT
    QML_ELEMENT

    // The journal.
    Q_PROPERTY(QObject *history READ history WRITE setHistory NOTIFY historyChanged)
    // Number of entries.
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    // "{count} machine(s) contrôlée(s)".
    Q_PROPERTY(QString countText READ countText NOTIFY countChanged)
    // The entries for the list: the journal's roles, plus "rows", "symbol", "headlineColour".
    Q_PROPERTY(QAbstractItemModel *entries READ entries CONSTANT)
    // The journal is still being read.
    Q_PROPERTY(bool isReading READ isReading NOTIFY readingChanged)

public:
    explicit JournalScreen(QObject *parent = nullptr);

    QObject *history() const;
    void setHistory(QObject *history);
    int count() const;
    QString countText() const;

    // Removes that entry ("Retirer"), or every entry ("Tout effacer"); the journal saves.
    Q_INVOKABLE void remove(const QString &entryId);
    Q_INVOKABLE void clear();
    QAbstractItemModel *entries() const;
    bool isReading() const;

Q_SIGNALS:
    void historyChanged();
    void countChanged();
    void readingChanged();

private:
    QPointer<History> m_history;
    JournalListModel *m_entries;
};
