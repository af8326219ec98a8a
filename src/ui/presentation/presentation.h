#pragma once

#include "core/app_section.h"
#include "core/device_node.h"
#include "core/info_row.h"

#include <QObject>
#include <QString>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <functional>
#include <optional>

// The small rules the shared view components apply, kept out of QML so that they are
// tested: which state a section scaffold shows, how a device status is badged, which live
// monitors a section runs, how the application names itself.
namespace Presentation {

// The one state a section scaffold shows, tested in this order: a failure, loading with
// nothing to show, nothing to show, the content (also while a refresh runs).
enum class ScaffoldState { failure, loading, empty, content };
ScaffoldState scaffoldState(bool isLoading, const std::optional<QString> &failure, bool isEmpty);

// Which live monitors run while a section is shown (none selected counts as the overview).
struct MonitorPlan
{
    bool lidAngle = false;
    bool processor = false;
    bool battery = false;

    friend bool operator==(const MonitorPlan &, const MonitorPlan &) = default;
};
MonitorPlan monitorsFor(AppSection section);

// A device status as its badge shows it: its label (none for a neutral device, which shows
// no badge) and the colour role of text and fill ("green", "orange" or "secondary").
std::optional<QString> badgeLabel(DeviceStatus status);
QString badgeColourRole(DeviceStatus status);
QString statusRawValue(DeviceStatus status);
std::optional<DeviceStatus> statusFromRawValue(const QString &rawValue);

// Indentation of a device card in the device list, by depth in its tree.
constexpr double deviceIndentPerLevel = 22;
double deviceIndent(int depth);

// Label/value rows as QML reads them: a list of maps with "label" and "value".
QVariantList rowsForQml(const QList<InfoRow> &rows);

// The application's name: its display name, else its bundle name, else "Quillon".
using BundleLookup = std::function<std::optional<QString>(const QString &key)>;
QString applicationName(const BundleLookup &lookup);
// "Version " followed by the version label.
QString versionText(const QString &versionLabel);

} // namespace Presentation

// The same rules for QML.
class PresentationHelpers : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(Presentation)
    QML_SINGLETON

public:
    enum ScaffoldStateValue { Failure, Loading, Empty, Content };
    Q_ENUM(ScaffoldStateValue)

    explicit PresentationHelpers(QObject *parent = nullptr);

    // The scaffold state; an empty failure text counts as no failure.
    Q_INVOKABLE int scaffoldState(bool isLoading, const QString &failure, bool isEmpty) const;
    // The badge of a status given by its raw value ("connected"…); empty for no badge.
    Q_INVOKABLE QString badgeLabel(const QString &status) const;
    Q_INVOKABLE QString badgeColourRole(const QString &status) const;
    // A section's title, symbol and empty message, by its raw value.
    Q_INVOKABLE QString sectionTitle(const QString &section) const;
    Q_INVOKABLE QString sectionSymbol(const QString &section) const;
    Q_INVOKABLE QString sectionEmptyMessage(const QString &section) const;
    // A verdict level given by its raw value ("ok", "attention"…): its label, icon and colour
    // role ("green", "orange", "red", "accent", "secondary"); empty for an unknown value.
    Q_INVOKABLE QString levelLabel(const QString &status) const;
    Q_INVOKABLE QString levelSymbol(const QString &status) const;
    Q_INVOKABLE QString levelColourRole(const QString &status) const;
    // What VoiceOver reads for a verdict: "Batterie, à surveiller, 78 %" (the value left out
    // when empty).
    Q_INVOKABLE QString spokenCheck(const QString &title, const QString &status, const QString &value) const;
    // Upper case with the full Unicode mapping, independent of the locale ("ß" gives "SS").
    Q_INVOKABLE QString upperCased(const QString &text) const;
};
